// The headers of a bitmap file (.bmp): the file's, and behind it that of Windows or of OS/2.
#pragma once

#include <cstddef>
#include <cstdint>
#include <optional>
#include <string_view>

namespace corvane {

/// Whether a file that begins with these bytes calls itself a bitmap.
bool begins_bitmap(std::string_view bytes);

struct bmp_header {
  std::uint32_t pixels = 0;       ///< where they begin in the file
  std::uint32_t header_size = 0;  ///< of the second header; the colours follow it
  std::int64_t width = 0;
  std::int64_t height = 0;  ///< negative: rows from the top
  std::uint32_t bits = 0;   ///< of a pixel
  std::uint32_t compression = 0;
  std::uint32_t colours = 0;  ///< 0: as many as a pixel has values

  bool is_core() const { return header_size == core; }  ///< OS/2's: colours have three bytes

  static constexpr std::uint32_t file = 14;  ///< size of the file's header
  static constexpr std::uint32_t core = 12;  ///< size of OS/2's
  static constexpr std::uint32_t info = 40;  ///< of Windows'; later ones begin with the same fields
};

/// The headers of a file that begins with these bytes. Returns nullopt if they are not all there,
/// or the second is of no size that is known.
std::optional<bmp_header> read_bmp_header(std::string_view bytes);

/// The low byte of a pixel's bits where Windows' header has it, whatever else the file is; nullopt
/// when the bytes do not reach there.
std::optional<int> windows_bmp_bits(std::string_view bytes);

/// How many bytes of a file are enough for windows_bmp_bits.
inline constexpr std::size_t enough_for_bmp_bits = 29;

}  // namespace corvane
