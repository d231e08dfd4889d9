#include "drawing/design_pages.h"

#include "formats/numbers.h"
#include "project/menu_rows.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <cstddef>
#include <cstdint>
#include <map>
#include <memory>
#include <utility>

namespace corvane::drawing_test {
namespace {

disc_title film_named(const std::string& name, int chapters) {
  disc_title title;
  title.streams = {"\\films\\" + name + ".m2v", "\\films\\sound.ac3"};
  title.is_multiplexed_here = true;
  for (int i = 0; i < chapters; ++i)
    title.chapters.push_back(time_of(trimmed(std::int64_t{i} * 10)));
  return title;
}

disc_description disc_of_films(const std::vector<std::string>& names, int chapters) {
  disc_description disc;
  for (const std::string& name : names)
    disc.titles.push_back(film_named(name, chapters));
  return disc;
}

std::vector<std::string> usual_names(int count) {
  static const std::array<std::string, 8> names{"The old harbour",      "Through the Alps by train",
                                                "Grandmother's garden", "Birthday 2024",
                                                "Winter in Lapland",    "The school play",
                                                "Sea and dunes",        "A walk with the dog"};
  std::vector<std::string> all;
  for (int i = 0; i < count; ++i) {
    const auto at = static_cast<std::size_t>(i);
    all.push_back(names.at(at % names.size()));
    if (at >= names.size())
      all.back() += " " + std::to_string(1 + at / names.size());
  }
  return all;
}

std::vector<std::string> odd_film_names() {
  return {"The whole of our journey through the mountains and back home again by the slow train",
          "夏休みの思い出、海と山と祭りの夜の記録",
          "رحلتنا إلى البحر",
          "שלום עולם",
          "我们在北京的春节",
          std::string(120, 'W'),
          "Ħarsa lejn il-baħar – über Wälder",
          "الطريق الطويل عبر الجبال والوديان إلى البيت القديم بجانب النهر الكبير",
          "여름 휴가",
          "Донаудампфшиффахртсгезельшафт"};
}

struct scenery {
  std::array<double, 3> sky, horizon, sun, far, near;
};

constexpr std::array<scenery, 8> sceneries{{
    {{38, 84, 150}, {180, 214, 236}, {255, 246, 214}, {96, 134, 150}, {44, 92, 60}},
    {{64, 36, 92}, {250, 150, 84}, {255, 226, 150}, {122, 60, 92}, {44, 24, 52}},
    {{90, 150, 200}, {232, 240, 244}, {255, 255, 255}, {170, 190, 206}, {238, 244, 250}},
    {{20, 26, 62}, {86, 96, 152}, {240, 240, 220}, {44, 54, 98}, {16, 22, 44}},
    {{120, 190, 220}, {250, 236, 190}, {255, 238, 140}, {190, 160, 100}, {216, 184, 116}},
    {{150, 60, 50}, {252, 196, 120}, {255, 240, 190}, {160, 84, 60}, {84, 40, 34}},
    {{80, 140, 170}, {206, 230, 216}, {250, 250, 220}, {110, 160, 110}, {60, 120, 50}},
    {{190, 120, 150}, {252, 222, 206}, {255, 250, 240}, {150, 120, 160}, {86, 76, 120}},
}};

std::array<double, 3> mixed(const std::array<double, 3>& a, const std::array<double, 3>& b,
                            double part) {
  return {std::lerp(a[0], b[0], part), std::lerp(a[1], b[1], part), std::lerp(a[2], b[2], part)};
}

/// How high hills stand, in parts of the picture from its upper edge.
double ridge(double x, double phase, double at, double high) {
  return at - high * (0.6 * std::sin(x * 5 + phase) + 0.4 * std::sin(x * 13 + 2.3 * phase));
}

std::array<double, 3> colour_at(const scenery& s, double x, double y, double phase) {
  if (y > ridge(x, phase, 0.82, 0.07))
    return mixed(s.near, {0, 0, 0}, (y - 0.7) * 0.8);
  if (y > ridge(x, 1.7 * phase + 1, 0.66, 0.09))
    return mixed(s.far, s.near, std::clamp((y - 0.55) * 2, 0.0, 1.0));
  if (y > ridge(x, 2.9 * phase + 2, 0.56, 0.06))
    return mixed(s.horizon, s.far, 0.7);
  const double sun_x = 0.25 + 0.5 * std::abs(std::sin(phase * 3)), sun_y = 0.3;
  const double from_sun = std::hypot((x - sun_x) * 4 / 3, y - sun_y);
  const auto sky = mixed(s.sky, s.horizon, std::min(1.0, y / 0.6));
  if (from_sun < 0.075)
    return s.sun;
  return mixed(s.sun, sky, std::min(1.0, 0.55 + from_sun * 1.2));
}

}  // namespace

std::vector<disc_kind> kinds_of_discs() {
  return {{"1", disc_of_films(usual_names(1), 1)},
          {"7", disc_of_films(usual_names(7), 3)},
          {"40", disc_of_films(usual_names(40), 1)},
          {"chapters", disc_of_films(usual_names(1), 99)},
          {"names", disc_of_films(odd_film_names(), 2)}};
}

std::vector<designed_page> designed_pages(const menu_design& design, const page_form& form,
                                          const disc_description& disc,
                                          const text_measure& measure) {
  disc_description with_standard = disc;
  with_standard.standard = form.standard;
  menu_choices choices;
  choices.play_all = disc.title_count() > 1;
  choices.chapters_of = titles_with_chapters(disc);
  if (choices.chapters_of.size() > 1)
    choices.chapters_of.resize(1);
  std::vector<designed_page> pages;
  for (const planned_menu& menu :
       plan_menus(with_standard, choices, {design.most_entries(), 99}).menus) {
    if (menu.page > 2 && menu.page < menu.pages)
      continue;
    pages.push_back({(menu.title == 0 ? "titles " : "chapters ") + std::to_string(menu.page), menu,
                     lay_out(design, menu, form, measure)});
  }
  return pages;
}

overlay_button shown_button(const menu_design& design, const designed_page& page, int number,
                            button_state state) {
  const auto at = static_cast<std::size_t>(number) - 1;
  const menu_rectangle& place = page.laid_out.buttons.at(at);
  const design_look& look = at < page.menu.entries.size() ? design.entry_look : design.way_look;
  button_record record = button_with_edges(place.x0, place.y0, place.x1, place.y1);
  record.highlight = look.highlight;
  record.select = look.select;
  return overlay_button_of(button_text(record), state);
}

std::shared_ptr<const shaped_picture> landscape(unsigned number) {
  static std::map<unsigned, std::shared_ptr<const shaped_picture>> painted;
  std::shared_ptr<const shaped_picture>& known = painted[number];
  if (known)
    return known;
  constexpr int width = 320, height = 240;
  picture shown{width, height, std::vector<std::uint8_t>(std::size_t{3} * width * height)};
  const scenery& s = sceneries.at(number % sceneries.size());
  const double phase = 0.7 + 0.61 * number;
  for (int y = 0; y < height; ++y)
    for (int x = 0; x < width; ++x) {
      const auto colour = colour_at(s, (x + 0.5) / width, (y + 0.5) / height, phase);
      for (std::size_t i = 0; i < 3; ++i)
        shown.rgb[3 * static_cast<std::size_t>(y * width + x) + i] =
            static_cast<std::uint8_t>(std::clamp(std::lround(colour.at(i)), 0L, 255L));
    }
  known = std::make_shared<const shaped_picture>(shaped_picture{std::move(shown), 1});
  return known;
}

std::shared_ptr<const shaped_picture> landscape_of(const std::string& file, double seconds) {
  unsigned number = static_cast<unsigned>(seconds / 10);
  for (const char c : file)
    number = 31 * number + static_cast<unsigned char>(c);
  return landscape(number % 40);
}

}  // namespace corvane::drawing_test
