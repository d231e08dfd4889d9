// The window "clean subtitles" without its window: what a cleaned copy of a title's subtitle file
// would be, where it is to be written, and the project that uses it then.
//
// The window makes one with open() and keeps it until it closes; project and prompts must live as
// long.
#pragma once

#include "disc/finding.h"
#include "project/document.h"
#include "tools/cleaned_subtitles.h"

#include <cstddef>
#include <optional>
#include <string>
#include <vector>

namespace corvane {

/// Whether a cleaned copy of the subtitle file would no longer have this finding.
bool cleaning_helps(const finding& f);

class subtitle_cleaning {
 public:
  /// For a title's subtitle (both 1-based). Returns nullopt, after a message, when there is none,
  /// its file cannot be read, or nothing in it is to be cleaned.
  static std::optional<subtitle_cleaning> open(document& doc, int title, int subtitle);

  const std::string& file() const { return file_; }  ///< that is read; native path
  const std::string& copy() const { return copy_; }  ///< that will be written; native path
  const std::vector<cleaned_cue>& changes() const { return cleaned_.changes; }

  /// How many cues are changed, and what becomes of the settings.
  std::string summary() const;

  /// Asks where the copy is to be; no answer changes nothing.
  void choose_place();

  /// Writes the copy; a file that is there is replaced only if the user agrees. Then the title uses
  /// it, as UTF-8 and at the rate that the file told. False, after a message unless the user said
  /// no, when that could not be: nothing has changed then.
  bool write_and_use();

 private:
  subtitle_cleaning(document& doc, std::size_t title, std::size_t subtitle);
  bool is_written();
  void use(const std::string& stored);

  document* doc_;
  std::size_t title_, subtitle_;  // 0-based
  std::string file_, copy_;
  cleaned_subtitles cleaned_;
};

}  // namespace corvane
