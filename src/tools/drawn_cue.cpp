#include "tools/drawn_cue.h"

#include "formats/subpicture.h"

#include <algorithm>
#include <cstddef>
#include <span>

namespace corvane {
namespace {

using pixel = std::array<std::uint8_t, 4>;

pixel pixel_of(const disc_colour& c, unsigned opacity) {
  const rgb_colour seen =
      colour_of_entry(std::uint32_t{c[0]} << 16 | std::uint32_t{c[1]} << 8 | c[2]);
  return {seen.red, seen.green, seen.blue, static_cast<std::uint8_t>(opacity * 17)};
}

/// By code; a colour that the palette lacks is not seen.
std::array<pixel, 4> pixels_of(const code_looks& looks, const std::vector<disc_colour>& palette) {
  std::array<pixel, 4> pixels{};
  for (std::size_t code = 0; code < pixels.size(); ++code)
    if (looks.opacity[code] > 0 && looks.colour[code] < palette.size())
      pixels[code] = pixel_of(palette[looks.colour[code]], looks.opacity[code]);
  return pixels;
}

}  // namespace

failure paint_unit(std::string_view bytes, const std::vector<disc_colour>& palette,
                   drawn_cue& cue) {
  const std::span<const std::uint8_t> unit(reinterpret_cast<const std::uint8_t*>(bytes.data()),
                                           bytes.size());
  const auto picture = read_subpicture(unit, cue.width, cue.height);
  if (!picture)
    return "its subpicture " + picture.error;
  cue.rgba.assign(
      static_cast<std::size_t>(cue.width) * static_cast<unsigned>(cue.height) * sizeof(pixel), 0);
  const std::array<pixel, 4> pixels = pixels_of(picture->at_rest, palette);
  for (const subpicture_run& run : picture->runs) {
    const pixel& p = pixels[run.code];
    auto to = cue.rgba.begin() +
              (static_cast<std::ptrdiff_t>(run.y) * cue.width + run.x0) * std::ptrdiff_t{sizeof p};
    for (int x = run.x0; x <= run.x1; ++x)
      to = std::copy(p.begin(), p.end(), to);
  }
  return std::nullopt;
}

}  // namespace corvane
