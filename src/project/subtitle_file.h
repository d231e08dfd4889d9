// A text subtitle file looked at before spumux is: whether it is one, and in which characters it is
// written. Files may be anything: what somebody picked, or what a stranger's project names.
#pragma once

#include "platform/result.h"
#include "project/plain_texts.h"

#include <cstdint>
#include <string>
#include <string_view>

namespace corvane {

/// No text subtitles are larger: a film's are some 100 KiB.
inline constexpr std::uintmax_t largest_subtitle_file = std::uintmax_t{16} << 20;

class subtitle_file {
 public:
  /// Reads it whole. Fails when it is missing, no file, empty or too large, as the end of a
  /// sentence
  /// ("it is empty").
  static result<subtitle_file> read(const std::string& native);

  /// Of bytes that were read already; `name` is the file's.
  subtitle_file(std::string name, std::string bytes);

  /// "UTF-8" or "UTF-16" when the bytes say for themselves that they are: they hold
  /// letters beyond ASCII and are well-formed UTF-8, or begin with the byte order mark of UTF-16.
  /// Returns an empty text if they do not: they are ASCII, or in a set that only the user knows.
  const std::string& unicode() const { return unicode_; }

  const std::string& bytes() const { return bytes_; }

  /// The set in which spumux reads it when it is told this one: UTF-8 for files of some names.
  std::string set_read(const std::string& charset) const;

  /// Why spumux cannot draw it when it reads it in this character set, or would draw wrong letters
  /// without a word, as the end of a sentence; nullopt if no reason is sure. Names of lines count
  /// from 1.
  refusal why_not(const std::string& charset) const;

 private:
  refusal why_not_text() const;
  refusal why_not_a_format() const;
  refusal why_not_charset(const std::string& charset) const;
  std::string found_unicode() const;

  std::string name_, bytes_;
  std::string unicode_;
};

}  // namespace corvane
