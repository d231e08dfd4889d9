// The colours of buttons, as the drawing tool knows them by name.
#pragma once

namespace corvane::disc {

struct named_colour {
  const char* name;
  int red, green, blue;
};

inline constexpr named_colour drawn_colours[] = {{"black", 0, 0, 0},       {"brown", 165, 42, 42},
                                                 {"orange", 255, 165, 0},  {"yellow", 255, 255, 0},
                                                 {"green", 0, 128, 0},     {"blue", 0, 0, 255},
                                                 {"white", 255, 255, 255}, {"grey", 126, 126, 126},
                                                 {"magenta", 255, 0, 255}, {"cyan", 0, 255, 255}};

}  // namespace corvane::disc
