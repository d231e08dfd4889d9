// The colours that buttons are offered in, in the order in which they are offered, as
// GraphicsMagick paints them for these names.
#pragma once

#include <array>
#include <cstdint>

namespace corvane {

struct offered_colour {
  const char* name;
  std::uint8_t red, green, blue;
};

inline constexpr std::array<offered_colour, 10> offered_colours = {{{"black", 0, 0, 0},
                                                                    {"brown", 165, 42, 42},
                                                                    {"orange", 255, 165, 0},
                                                                    {"yellow", 255, 255, 0},
                                                                    {"green", 0, 128, 0},
                                                                    {"blue", 0, 0, 255},
                                                                    {"white", 255, 255, 255},
                                                                    {"grey", 126, 126, 126},
                                                                    {"magenta", 255, 0, 255},
                                                                    {"cyan", 0, 255, 255}}};

}  // namespace corvane
