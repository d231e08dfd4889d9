#include "formats/still_header.h"

#include "formats/bmp_header.h"

#include <algorithm>
#include <cstddef>
#include <cstdlib>
#include <string_view>

namespace corvane {

namespace {

using byte_vector = std::vector<std::uint8_t>;

constexpr const char* damaged = "the bitmap's header is damaged";
constexpr const char* cut_off = "the bitmap is cut off";

std::string_view text_of(const byte_vector& bytes) {
  return {reinterpret_cast<const char*>(bytes.data()), bytes.size()};
}

void put(byte_vector& bytes, std::size_t at, std::uint32_t n) {
  for (std::size_t i = 0; i < 4; ++i)
    bytes.at(at + i) = static_cast<std::uint8_t>(n >> 8 * i);
}

result<bmp_header> usable_header(const byte_vector& bytes) {
  using read = result<bmp_header>;
  const auto header = read_bmp_header(text_of(bytes));
  if (!header || header->width <= 0 || header->height == 0)
    return read::fail(damaged);
  if (header->width > largest_side || std::abs(header->height) > largest_side ||
      header->width * std::abs(header->height) > most_pixels)
    return read::fail("the picture is too large");
  return read::ok(*header);
}

std::size_t bytes_a_row(std::int64_t width, std::uint32_t bits) {
  return (static_cast<std::size_t>(width) * bits + 31) / 32 * 4;
}

// Whether all pixels are there. What fills up the last row is added where a program left it out.
bool complete_pixels(byte_vector& bytes, const bmp_header& header) {
  const std::size_t begin = header.pixels;
  const auto rows = static_cast<std::size_t>(std::abs(header.height));
  const std::size_t row = bytes_a_row(header.width, header.bits);
  const std::size_t last_row = (static_cast<std::size_t>(header.width) * header.bits + 7) / 8;
  if (begin > bytes.size() || bytes.size() - begin < row * (rows - 1) + last_row)
    return false;
  bytes.resize(std::max(bytes.size(), begin + row * rows));
  return true;
}

// The same picture with 8 bits a pixel: header, four colours, rows in the same order.
result<byte_vector> widened(const byte_vector& bytes, const bmp_header& header) {
  using made = result<byte_vector>;
  const std::size_t colour_bytes = header.is_core() ? 3 : 4;
  const std::size_t colours = header.colours == 0 ? 4 : std::min<std::size_t>(4, header.colours);
  const std::size_t palette = bmp_header::file + header.header_size;
  const std::size_t pixels = header.pixels;
  const std::size_t from_row = bytes_a_row(header.width, 2), to_row = bytes_a_row(header.width, 8);
  const auto rows = static_cast<std::size_t>(std::abs(header.height));
  if (palette > bytes.size() || bytes.size() - palette < colours * colour_bytes)
    return made::fail(cut_off);
  const std::size_t begin = bmp_header::file + bmp_header::info + std::size_t{4} * 4;
  byte_vector wide(begin + to_row * rows);
  wide[0] = 'B';
  wide[1] = 'M';
  put(wide, 2, static_cast<std::uint32_t>(wide.size()));
  put(wide, 10, static_cast<std::uint32_t>(begin));
  put(wide, 14, bmp_header::info);
  put(wide, 18, static_cast<std::uint32_t>(header.width));
  put(wide, 22, static_cast<std::uint32_t>(header.height));
  put(wide, 26, 1u | 8u << 16);  // planes and bits
  put(wide, 46, 4);
  for (std::size_t colour = 0; colour < colours; ++colour)
    for (std::size_t part = 0; part < 3; ++part)
      wide[bmp_header::file + bmp_header::info + 4 * colour + part] =
          bytes[palette + colour_bytes * colour + part];
  for (std::size_t y = 0; y < rows; ++y)
    for (std::size_t x = 0; x < static_cast<std::size_t>(header.width); ++x)
      wide[begin + y * to_row + x] =
          static_cast<std::uint8_t>(bytes[pixels + y * from_row + x / 4] >> (6 - 2 * (x % 4)) & 3);
  return made::ok(std::move(wide));
}

}  // namespace

still_kind kind_of_still(const byte_vector& bytes) {
  if (begins_bitmap(text_of(bytes)))
    return still_kind::bitmap;
  if (bytes.size() >= 3 && bytes[0] == 0xFF && bytes[1] == 0xD8 && bytes[2] == 0xFF)
    return still_kind::jpeg;
  return still_kind::unknown;
}

failure prepare_bitmap(byte_vector& bytes) {
  const auto header = usable_header(bytes);
  if (!header)
    return header.error;
  const bool run_length = header->compression == 1 || header->compression == 2;
  if (header->bits == 0 || header->bits > 32)
    return damaged;
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
