#include "runner/tools/still_pictures.h"

#include "formats/start_code_scanner.h"
#include "platform/files/file_slices.h"

#include <cstdint>
#include <optional>
#include <span>

namespace corvane {
namespace {

constexpr int still_width = 720;

/// Counts pictures, and sees how the stream begins and ends.
class still_sink : public start_code_sink {
 public:
  void start_code_found(std::uint8_t code, std::uint64_t position,
                        const std::uint8_t* bytes) override {
    if (code == start_code::sequence_header && !size)
      size = read_stored_size(bytes);
    if (code == start_code::picture)
      ++pictures;
    ends = code == start_code::sequence_end;
    behind_last = position + 4;
  }

  std::optional<stored_size> size;
  int pictures = 0;
  bool ends = false;  ///< the last code is the one that ends a stream
  std::uint64_t behind_last = 0;
};

std::string size_text(int width, int height) {
  return std::to_string(width) + "x" + std::to_string(height);
}

std::string count_of_pictures(int count) {
  return count == 1 ? "1 picture" : std::to_string(count) + " pictures";
}

}  // namespace

std::string why_not_this_still(const std::string& m2v, const still_form& asked) {
  result<file_slices> file = file_slices::open(m2v);
  if (!file)
    return "it cannot be read: " + file.error;
  still_sink seen;
  start_code_scanner scanner(seen);
  for (;;) {
    const result<std::span<const std::uint8_t>> slice = file->next();
    if (!slice)
      return "it cannot be read: " + slice.error;
    if (slice->empty())
      break;
    scanner.feed(slice->data(), slice->size());
  }
  scanner.finish();
  if (!seen.size)
    return "there is no video in it";
  if (*seen.size != stored_size{still_width, asked.lines})
    return "its picture is " + size_text(seen.size->width, seen.size->height) + ", not " +
           size_text(still_width, asked.lines);
  if (!seen.ends || seen.behind_last != file->size())
    return "it is cut off";
  if (seen.pictures != asked.pictures)
    return "it has " + count_of_pictures(seen.pictures) + ", not " + std::to_string(asked.pictures);
  return {};
}

}  // namespace corvane
