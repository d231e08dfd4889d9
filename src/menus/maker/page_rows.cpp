#include "menus/maker/page_rows.h"

#include "examine/menu_facts.h"
#include "formats/numbers.h"
#include "menus/maker/menu_design.h"

#include <algorithm>
#include <cmath>

namespace corvane {
namespace {

constexpr int picture_width = 720;
constexpr int between_parts = 8, around_entries = 8, above_rule = 4;

int even_down(int lines) {
  return lines - lines % 2;
}
int even_up(int lines) {
  return lines + lines % 2;
}

/// Lines that texts of this kind take, with room for what letters have above and below.
int lines_of(const design_text& text) {
  return even_up(text.most_lines * (text.style.size * 13 + 9) / 10 + 2 * text.style.outline +
                 text.style.shadow);
}

/// The least that an entry needs to be of use.
int least_entry_height(const menu_design& design) {
  const int frames = 2 * (design.frame + 4);
  const int text = design.entry.least_size * 13 / 10 + frames;
  constexpr int least_picture = 36;
  switch (design.arrangement) {
    case menu_arrangement::list:
      return text;
    case menu_arrangement::thumbnails_list:
      return std::max(text, least_picture + frames);
    case menu_arrangement::grid:
      break;
  }
  return text + least_picture;
}

int least_entry_width(const menu_design& design) {
  return design.arrangement == menu_arrangement::thumbnails_list ? 200 : 80;
}

}  // namespace

page_box title_safe_area(int height) {
  const int top = even_up((height + 9) / 10);
  return {picture_width / 10, top, picture_width - 2 * (picture_width / 10),
          even_down(height - top) - top};
}

int pixels_across(int lines, double pixel_aspect) {
  return static_cast<int>(std::lround(lines / pixel_aspect));
}

menu_design in_lines(menu_design design, int height) {
  constexpr int stated = 480;
  const auto scale = [height](int& lines) { lines = (lines * height + stated / 2) / stated; };
  for (design_text* const text : {&design.heading, &design.entry, &design.way}) {
    scale(text->style.size);
    scale(text->least_size);
  }
  for (design_panel* const panel :
       {&design.heading_panel, &design.entry_panel, &design.way_panel, &design.sheet})
    scale(panel->radius);
  scale(design.upper_band.lines);
  scale(design.lower_band.lines);
  scale(design.gap);
  design.gap = even_up(design.gap);
  return design;
}

menu_design design_for(menu_design design, const page_form& form) {
  while (form.is_wide && design.most_entries() > most_wide_buttons - most_ways)
    --(design.rows > 1 ? design.rows : design.columns);
  return design;
}

page_parts parts_of(const menu_design& design, const page_form& form) {
  const page_box safe = title_safe_area(form.height());
  const int gap = even_up(design.gap);
  page_parts parts;
  const int rule = design.heading_rule.lines;
  parts.heading = {safe.left, safe.top, safe.width, lines_of(design.heading)};
  parts.rule = {safe.left, parts.heading.bottom() + above_rule, safe.width, rule};
  const int ways = lines_of(design.way) + 2 * (design.frame + 2);
  parts.ways = {safe.left, safe.bottom() - even_up(ways), safe.width, even_up(ways)};
  const int top = even_up(rule > 0 ? parts.rule.bottom() : parts.heading.bottom()) + between_parts;
  parts.sheet = {safe.left, top, safe.width, parts.ways.top - between_parts - top};
  parts.entries = parts.sheet;
  if (design.sheet.is_seen()) {
    const int aside = pixels_across(around_entries, form.pixel_aspect());
    parts.entries = {parts.sheet.left + aside, top + around_entries, parts.sheet.width - 2 * aside,
                     parts.sheet.height - 2 * around_entries};
  }
  parts.across = std::max(4, pixels_across(gap, form.pixel_aspect()));
  parts.entry_height = even_down((parts.entries.height - (design.rows - 1) * gap) / design.rows);
  parts.entry_width = (parts.entries.width - (design.columns - 1) * parts.across) / design.columns;
  return parts;
}

failure why_no_room(const menu_design& design) {
  const page_parts parts = parts_of(design, {});
  const int high = least_entry_height(design), wide = least_entry_width(design);
  if (parts.entry_height < high)
    return "each of the " + trimmed(design.rows) + " rows gets " +
           trimmed(std::max(parts.entry_height, 0)) + " lines, and needs " + trimmed(high) +
           ": take fewer rows, a smaller gap, or smaller texts";
  if (parts.entry_width < wide)
    return "each of the " + trimmed(design.columns) + " columns gets " +
           trimmed(std::max(parts.entry_width, 0)) + " pixels, and needs " + trimmed(wide) +
           ": take fewer columns or a smaller gap";
  return std::nullopt;
}

}  // namespace corvane
