#include "drawing/png_file.h"

#include <algorithm>
#include <array>
#include <cstddef>
#include <cstdint>
#include <string_view>

namespace corvane {
namespace {

void append_number(std::string& text, std::uint32_t number) {
  for (int shift = 24; shift >= 0; shift -= 8)
    text += static_cast<char>(number >> shift & 0xFF);
}

constexpr std::array<std::uint32_t, 256> check_table() {
  std::array<std::uint32_t, 256> table{};
  for (std::uint32_t i = 0; i < table.size(); ++i) {
    std::uint32_t value = i;
    for (int bit = 0; bit < 8; ++bit)
      value = (value & 1) != 0 ? 0xEDB88320u ^ value >> 1 : value >> 1;
    table[i] = value;
  }
  return table;
}

/// CRC-32, as PNG has it.
std::uint32_t check_of(std::string_view bytes) {
  static constexpr auto table = check_table();
  std::uint32_t value = 0xFFFFFFFF;
  for (const char byte : bytes)
    value = table[(value ^ static_cast<unsigned char>(byte)) & 0xFF] ^ value >> 8;
  return ~value;
}

/// Adler-32, as zlib has it.
std::uint32_t sum_of(std::string_view bytes) {
  constexpr std::uint32_t modulus = 65521;
  std::uint32_t a = 1, b = 0;
  for (const char byte : bytes) {
    a = (a + static_cast<unsigned char>(byte)) % modulus;
    b = (b + a) % modulus;
  }
  return b << 16 | a;
}

/// A zlib stream of blocks that are stored as they are.
std::string stored(std::string_view bytes) {
  constexpr std::size_t most = 65535;
  std::string stream("\x78\x01", 2);
  std::string_view rest = bytes;
  do {
    const std::string_view block = rest.substr(0, most);
    rest.remove_prefix(block.size());
    const auto length = static_cast<std::uint32_t>(block.size());
    stream += rest.empty() ? '\1' : '\0';
    for (const std::uint32_t half : {length, ~length}) {
      stream += static_cast<char>(half & 0xFF);
      stream += static_cast<char>(half >> 8 & 0xFF);
    }
    stream += block;
  } while (!rest.empty());
  append_number(stream, sum_of(bytes));
  return stream;
}

void append_chunk(std::string& png, std::string_view kind, std::string_view content) {
  append_number(png, static_cast<std::uint32_t>(content.size()));
  const std::size_t begin = png.size();
  png += kind;
  png += content;
  append_number(png, check_of(std::string_view(png).substr(begin)));
}

std::string png_of_rows(int width, int height, std::size_t bytes_a_pixel, char colour_type,
                        const std::vector<std::uint8_t>& bytes) {
  std::string header;
  append_number(header, static_cast<std::uint32_t>(width));
  append_number(header, static_cast<std::uint32_t>(height));
  header += '\x08';
  header += colour_type;
  header.append(3, '\0');
  const std::size_t line = static_cast<std::size_t>(width) * bytes_a_pixel;
  std::string rows;
  rows.reserve((line + 1) * static_cast<std::size_t>(height));
  for (std::size_t begin = 0; line != 0 && begin + line <= bytes.size(); begin += line) {
    rows += '\0';  // the row as it is
    rows.append(reinterpret_cast<const char*>(&bytes[begin]), line);
  }
  std::string png("\x89PNG\r\n\x1A\n", 8);
  append_chunk(png, "IHDR", header);
  append_chunk(png, "IDAT", stored(rows));
  append_chunk(png, "IEND", "");
  return png;
}

}  // namespace

std::string png_of(const picture& shown) {
  return png_of_rows(shown.width, shown.height, 3, '\2', shown.rgb);
}

std::string png_of(const page_canvas& canvas) {
  return png_of_rows(canvas.width, canvas.height, 4, '\6', canvas.rgba);
}

}  // namespace corvane
