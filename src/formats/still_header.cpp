#include "formats/still_header.h"

#include <algorithm>
#include <cstddef>
#include <cstdlib>

namespace corvane {

namespace {

using byte_vector = std::vector<std::uint8_t>;

constexpr std::size_t file_header = 14;
constexpr std::uint32_t core_header = 12;  // the size of OS/2's information header
constexpr std::uint32_t info_header = 40;  // of Windows'; later ones begin with the same fields

constexpr const char* cut_off = "the bitmap is cut off";

std::uint32_t number(const byte_vector& bytes, std::size_t at, std::size_t count) {
  std::uint32_t n = 0;
  for (std::size_t i = count; i-- > 0;)
    n = n << 8 | bytes.at(at + i);
  return n;
}

void put(byte_vector& bytes, std::size_t at, std::uint32_t n) {
  for (std::size_t i = 0; i < 4; ++i)
    bytes.at(at + i) = static_cast<std::uint8_t>(n >> 8 * i);
}

struct bitmap_header {
  std::uint32_t size = 0;
  std::int64_t width = 0;
  std::int64_t height = 0;  // negative: rows from the top
  std::uint32_t bits = 0;
  std::uint32_t compression = 0;
  std::uint32_t colours = 0;
};

result<bitmap_header> read_header(const byte_vector& bytes) {
  using read = result<bitmap_header>;
  constexpr const char* damaged = "the bitmap's header is damaged";
  if (bytes.size() < file_header + core_header)
    return read::fail(damaged);
  bitmap_header header;
  header.size = number(bytes, file_header, 4);
  if (header.size == core_header) {
    header.width = number(bytes, 18, 2);
    header.height = number(bytes, 20, 2);
    header.bits = number(bytes, 24, 2);
  } else if (header.size >= info_header && bytes.size() >= file_header + info_header) {
    header.width = static_cast<std::int32_t>(number(bytes, 18, 4));
    header.height = static_cast<std::int32_t>(number(bytes, 22, 4));
    header.bits = number(bytes, 28, 2);
    header.compression = number(bytes, 30, 4);
    header.colours = number(bytes, 46, 4);
  } else {
    return read::fail(damaged);
  }
  if (header.width <= 0 || header.height == 0)
    return read::fail(damaged);
  if (header.width > largest_side || std::abs(header.height) > largest_side ||
      header.width * std::abs(header.height) > most_pixels)
    return read::fail("the picture is too large");
  return read::ok(header);
}

std::size_t bytes_a_row(std::int64_t width, std::uint32_t bits) {
  return (static_cast<std::size_t>(width) * bits + 31) / 32 * 4;
}

// Whether all pixels are there. What fills up the last row is added where a program left it out.
bool complete_pixels(byte_vector& bytes, const bitmap_header& header) {
  const std::size_t begin = number(bytes, 10, 4);
  const auto rows = static_cast<std::size_t>(std::abs(header.height));
  const std::size_t row = bytes_a_row(header.width, header.bits);
  const std::size_t last_row = (static_cast<std::size_t>(header.width) * header.bits + 7) / 8;
  if (begin > bytes.size() || bytes.size() - begin < row * (rows - 1) + last_row)
    return false;
  bytes.resize(std::max(bytes.size(), begin + row * rows));
  return true;
}

// The same picture with 8 bits a pixel: header, four colours, rows in the same order.
result<byte_vector> widened(const byte_vector& bytes, const bitmap_header& header) {
  using made = result<byte_vector>;
  const std::size_t colour_bytes = header.size == core_header ? 3 : 4;
  const std::size_t colours = header.colours == 0 ? 4 : std::min<std::size_t>(4, header.colours);
  const std::size_t palette = file_header + header.size;
  const std::size_t pixels = number(bytes, 10, 4);
  const std::size_t from_row = bytes_a_row(header.width, 2), to_row = bytes_a_row(header.width, 8);
  const auto rows = static_cast<std::size_t>(std::abs(header.height));
  if (palette > bytes.size() || bytes.size() - palette < colours * colour_bytes)
    return made::fail(cut_off);
  const std::size_t begin = file_header + info_header + std::size_t{4} * 4;
  byte_vector wide(begin + to_row * rows);
  wide[0] = 'B';
  wide[1] = 'M';
  put(wide, 2, static_cast<std::uint32_t>(wide.size()));
  put(wide, 10, static_cast<std::uint32_t>(begin));
  put(wide, 14, info_header);
  put(wide, 18, static_cast<std::uint32_t>(header.width));
  put(wide, 22, static_cast<std::uint32_t>(header.height));
  put(wide, 26, 1u | 8u << 16);  // planes and bits
  put(wide, 46, 4);
  for (std::size_t colour = 0; colour < colours; ++colour)
    for (std::size_t part = 0; part < 3; ++part)
      wide[file_header + info_header + 4 * colour + part] =
          bytes[palette + colour_bytes * colour + part];
  for (std::size_t y = 0; y < rows; ++y)
    for (std::size_t x = 0; x < static_cast<std::size_t>(header.width); ++x)
      wide[begin + y * to_row + x] =
          static_cast<std::uint8_t>(bytes[pixels + y * from_row + x / 4] >> (6 - 2 * (x % 4)) & 3);
  return made::ok(std::move(wide));
}

}  // namespace

still_kind kind_of_still(const byte_vector& bytes) {
  if (bytes.size() >= 2 && bytes[0] == 'B' && bytes[1] == 'M')
    return still_kind::bitmap;
  if (bytes.size() >= 3 && bytes[0] == 0xFF && bytes[1] == 0xD8 && bytes[2] == 0xFF)
    return still_kind::jpeg;
  return still_kind::unknown;
}

failure prepare_bitmap(byte_vector& bytes) {
  const auto header = read_header(bytes);
  if (!header)
    return header.error;
  const bool run_length = header->compression == 1 || header->compression == 2;
  if (header->bits == 0 || header->bits > 32)
    return "the bitmap's header is damaged";
  if (!run_length && !complete_pixels(bytes, *header))
    return cut_off;
  if (header->bits != 2 || header->compression != 0)
    return std::nullopt;
  auto wide = widened(bytes, *header);
  if (!wide)
    return wide.error;
  bytes = std::move(*wide);
  return std::nullopt;
}

}  // namespace corvane
