#include "formats/bmp_header.h"

namespace corvane {
namespace {

/// A number of `count` bytes, the lowest first; the bytes must be there.
std::uint32_t little_endian(std::string_view bytes, std::size_t at, std::size_t count) {
  std::uint32_t n = 0;
  for (std::size_t i = count; i-- > 0;)
    n = n << 8 | static_cast<unsigned char>(bytes[at + i]);
  return n;
}

constexpr std::size_t bits_at = 28;

}  // namespace

bool begins_bitmap(std::string_view bytes) {
  return bytes.starts_with("BM");
}

std::optional<bmp_header> read_bmp_header(std::string_view bytes) {
  if (bytes.size() < bmp_header::file + bmp_header::core)
    return std::nullopt;
  bmp_header header;
  header.pixels = little_endian(bytes, 10, 4);
  header.header_size = little_endian(bytes, 14, 4);
  if (header.is_core()) {
    header.width = little_endian(bytes, 18, 2);
    header.height = little_endian(bytes, 20, 2);
    header.bits = little_endian(bytes, 24, 2);
    return header;
  }
  if (header.header_size < bmp_header::info || bytes.size() < bmp_header::file + bmp_header::info)
    return std::nullopt;
  header.width = static_cast<std::int32_t>(little_endian(bytes, 18, 4));
  header.height = static_cast<std::int32_t>(little_endian(bytes, 22, 4));
  header.bits = little_endian(bytes, bits_at, 2);
  header.compression = little_endian(bytes, 30, 4);
  header.colours = little_endian(bytes, 46, 4);
  return header;
}

std::optional<int> windows_bmp_bits(std::string_view bytes) {
  if (bytes.size() <= bits_at)
    return std::nullopt;
  return static_cast<unsigned char>(bytes[bits_at]);
}

}  // namespace corvane
