#include "formats/aspect_code.h"

#include "formats/start_code_scanner.h"
#include "platform/files/file_slices.h"
#include "platform/files/files.h"

#include <cerrno>
#include <cstdint>
#include <fstream>
#include <ios>
#include <optional>
#include <span>
#include <system_error>
#include <vector>

namespace corvane {
namespace {

constexpr int sequence_extension = 1;    // the first four bits of that extension
constexpr std::size_t byte_of_code = 3;  // of a sequence header; its upper half

struct changed_byte {
  std::uint64_t position = 0;
  std::uint8_t value = 0;
};

/// Finds the bytes that are to be others. A header is believed when the extension of MPEG-2 is the
/// next code behind it.
class header_finder : public start_code_sink {
 public:
  explicit header_finder(int code) : code_(static_cast<std::uint8_t>(code << 4)) {}

  void start_code_found(std::uint8_t code, std::uint64_t position,
                        const std::uint8_t* bytes) override {
    if (header_)
      believe(code == start_code::extension && bytes[0] >> 4 == sequence_extension);
    header_.reset();
    if (code == start_code::sequence_header)
      header_ = {position + 4 + byte_of_code, bytes[byte_of_code]};
  }

  /// The stream has ended.
  void end() {
    if (header_)
      is_mpeg2 = false;
  }

  std::vector<changed_byte> to_change;  ///< found since it was emptied
  bool has_video = false;
  bool is_mpeg2 = true;  ///< as far as was seen

 private:
  void believe(bool has_extension) {
    has_video = true;
    is_mpeg2 = is_mpeg2 && has_extension;
    const auto wanted = static_cast<std::uint8_t>(code_ | (header_->value & 0x0F));
    if (is_mpeg2 && wanted != header_->value)
      to_change.push_back({header_->position, wanted});
  }

  std::uint8_t code_;
  std::optional<changed_byte> header_;  ///< the last one, as it stands
};

/// Writes single bytes into a file that is there; opens it when there is one to write.
class byte_writer {
 public:
  explicit byte_writer(const std::string& path) : path_(path) {}

  failure write(const std::vector<changed_byte>& bytes) {
    if (!bytes.empty() && !stream_.is_open())
      open();
    for (const changed_byte& one : bytes) {
      stream_.seekp(static_cast<std::streamoff>(one.position));
      stream_.put(static_cast<char>(one.value));
    }
    return why_not();
  }

  /// What the system has kept back is written now.
  failure close() {
    errno = 0;
    if (stream_.is_open())
      stream_.close();
    return why_not();
  }

 private:
  void open() {
    errno = 0;
    stream_.open(path_of(path_), std::ios::binary | std::ios::in | std::ios::out);
  }

  failure why_not() const {
    if (stream_)
      return std::nullopt;
    return "it cannot be written: " + std::generic_category().message(errno != 0 ? errno : EIO);
  }

  std::string path_;
  std::fstream stream_;
};

}  // namespace

failure set_aspect_code(const std::string& m2v, int code) {
  result<file_slices> file = file_slices::open(m2v);
  if (!file)
    return "it cannot be read: " + file.error;
  header_finder finder(code);
  start_code_scanner scanner(finder);
  byte_writer writer(m2v);
  for (bool more = true; more && finder.is_mpeg2;) {
    const result<std::span<const std::uint8_t>> slice = file->next();
    if (!slice)
      return "it cannot be read: " + slice.error;
    more = !slice->empty();
    if (more) {
      scanner.feed(slice->data(), slice->size());
    } else {
      scanner.finish();
      finder.end();
    }
    if (failure why = writer.write(finder.to_change))
      return why;
    finder.to_change.clear();
  }
  if (failure why = writer.close())
    return why;
  if (!finder.is_mpeg2)
    return "it is no MPEG-2 video";
  return finder.has_video ? failure() : "there is no video in it";
}

}  // namespace corvane
