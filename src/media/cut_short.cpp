#include "media/cut_short.h"

#include <algorithm>
#include <array>
#include <string_view>

namespace corvane {

namespace {

/// Reads numbers and names at places of a file; 0 and nothing behind its end.
class part_reader {
 public:
  explicit part_reader(source_bytes& bytes) : bytes_(bytes), size_(bytes.size()) {}

  std::int64_t size() const { return size_; }

  std::uint64_t big(std::int64_t at, std::size_t count) { return number(at, count, true); }
  std::uint64_t little(std::int64_t at, std::size_t count) { return number(at, count, false); }
  bool is(std::int64_t at, std::string_view name) {
    std::uint64_t wanted = 0;
    for (const char c : name)
      wanted = wanted << 8 | static_cast<std::uint8_t>(c);
    return big(at, name.size()) == wanted;
  }

 private:
  std::uint64_t number(std::int64_t at, std::size_t count, bool big_first) {
    std::array<std::uint8_t, 8> read{};
    const auto got = bytes_.read(at, read.data(), count);
    if (!got || *got < count)
      return 0;
    if (!big_first)
      std::reverse(read.begin(), read.begin() + static_cast<std::ptrdiff_t>(count));
    std::uint64_t value = 0;
    for (std::size_t i = 0; i < count; ++i)
      value = value << 8 | read[i];
    return value;
  }

  source_bytes& bytes_;
  std::int64_t size_;
};

constexpr int most_parts = 10'000;

/// Whether a part of this length, from a place in the file, goes beyond the file's end.
bool overruns(const part_reader& file, std::int64_t at, std::uint64_t length) {
  return length > static_cast<std::uint64_t>(file.size() - at);
}

bool is_box_of_mp4(part_reader& file, std::int64_t at) {
  constexpr std::array<std::string_view, 7> outermost = {"ftyp", "moov", "mdat", "wide",
                                                         "free", "skip", "pnot"};
  return std::any_of(outermost.begin(), outermost.end(),
                     [&](std::string_view name) { return file.is(at + 4, name); });
}

bool is_cut_mp4(part_reader& file) {
  std::int64_t at = 0;
  for (int i = 0; i < most_parts && file.size() - at >= 8; ++i) {
    std::uint64_t length = file.big(at, 4);
    if (length == 1)
      length = file.big(at + 8, 8);
    else if (length == 0)
      return false;  // to the end, wherever that is
    if (overruns(file, at, length))
      return true;
    if (length < 8)
      return false;
    at += static_cast<std::int64_t>(length);
  }
  return false;
}

bool is_cut_riff(part_reader& file) {
  std::int64_t at = 0;
  for (int i = 0; i < most_parts && file.is(at, "RIFF"); ++i) {
    const std::uint64_t length = file.little(at + 4, 4);
    if (length == 0 || length == 0xFFFFFFFF)
      return false;  // written without knowing
    // The byte that makes the length even may be left out at the end.
    if (overruns(file, at, 8 + length))
      return true;
    at += static_cast<std::int64_t>(8 + length + length % 2);
  }
  return false;
}

/// A length as Matroska has them, of one to eight bytes.
struct matroska_length {
  std::int64_t bytes = 0;  ///< that it takes itself; 0 for none
  std::uint64_t value = 0;
  bool known = false;
};

matroska_length matroska_length_at(part_reader& file, std::int64_t at) {
  const std::uint64_t first = file.big(at, 1);
  matroska_length length;
  for (std::int64_t bytes = 1; bytes <= 8; ++bytes) {
    if ((first & 0x100u >> bytes) == 0)
      continue;
    const std::uint64_t most = (std::uint64_t{1} << 7 * bytes) - 1;
    length.bytes = bytes;
    length.value = file.big(at, static_cast<std::size_t>(bytes)) & most;
    length.known = length.value != most;
    return length;
  }
  return length;
}

bool is_cut_matroska(part_reader& file) {
  const matroska_length head = matroska_length_at(file, 4);
  if (head.bytes == 0 || !head.known || overruns(file, 4 + head.bytes, head.value))
    return false;
  const std::int64_t at = 4 + head.bytes + static_cast<std::int64_t>(head.value);
  if (!file.is(at, "\x18\x53\x80\x67"))
    return false;
  const matroska_length segment = matroska_length_at(file, at + 4);
  return segment.known && overruns(file, at + 4 + segment.bytes, segment.value);
}

}  // namespace

bool is_cut_short(source_bytes& bytes) {
  part_reader file(bytes);
  if (file.is(0, "RIFF"))
    return is_cut_riff(file);
  if (file.is(0, "\x1A\x45\xDF\xA3"))
    return is_cut_matroska(file);
  return is_box_of_mp4(file, 0) && is_cut_mp4(file);
}

}  // namespace corvane
