#include "menus/maker/page_layout.h"

#include "formats/numbers.h"
#include "formats/sanitized.h"
#include "menus/maker/text_fit.h"

#include <algorithm>
#include <cmath>
#include <cstddef>
#include <optional>
#include <utility>

namespace corvane {
namespace {

bool touch(const menu_rectangle& a, const menu_rectangle& b) {
  return a.x0 <= b.x1 && b.x0 <= a.x1 && a.y0 <= b.y1 && b.y0 <= a.y1;
}

menu_rectangle edges_of_box(const page_box& box) {
  return {box.left, box.top, box.right(), box.bottom()};
}
page_box box_of_edges(const menu_rectangle& r) {
  return {r.x0, r.y0, r.x1 - r.x0, r.y1 - r.y0};
}

class page_builder {
 public:
  page_builder(const menu_design& design, const planned_menu& menu, const page_form& form,
               const text_measure& measure, path_style style)
      : design_(in_lines(design, form.height())),
        menu_(menu),
        form_(form),
        measure_(measure),
        style_(style),
        parts_(parts_of(design_, form)),
        caption_lines_(design.entry.most_lines) {
    made_.page.height = form.height();
    made_.page.is_wide = form.is_wide;
    made_.page.pixel_aspect = form.pixel_aspect();
    made_.page.background = design.background;
  }

  laid_out_menu build(const menu_moves& moves) {
    place_entries();
    place_ways();
    take_moves(moves);
    add_band(0, design_.upper_band);
    add_band(form_.height() - design_.lower_band.lines, design_.lower_band);
    add_panel(design_.sheet, parts_.sheet);
    add_heading();
    fit_entries();
    const std::size_t entries = menu_.entries.size();
    for (std::size_t i = 0; i < entries; ++i)
      add_entry(menu_.entries[i], box_of_edges(made_.buttons[i]));
    for (std::size_t i = 0; i < menu_.ways.size(); ++i)
      add_way(menu_.ways[i], box_of_edges(made_.buttons[entries + i]));
    return std::move(made_);
  }

 private:
  // Places --------------------------------------------------------------------------------------

  int across(int lines) const { return pixels_across(lines, form_.pixel_aspect()); }

  /// Entries beside and below each other, and how large each is.
  struct entry_grid {
    int columns = 1, rows = 1, width = 0, height = 0;
  };

  int count_of_entries() const { return static_cast<int>(menu_.entries.size()); }

  entry_grid grid_of_design() const {
    const int columns = std::clamp(count_of_entries(), 1, design_.columns);
    return {columns, (count_of_entries() + columns - 1) / columns, parts_.entry_width,
            parts_.entry_height};
  }

  /// So many columns, with entries as large as there is room for, but not more than half larger
  /// than a full page has them.
  entry_grid larger_grid(int columns) const {
    const int rows = (count_of_entries() + columns - 1) / columns;
    const int width = (parts_.entries.width - (columns - 1) * parts_.across) / columns;
    const int height = (parts_.entries.height - (rows - 1) * design_.gap) / rows;
    return {columns, rows, std::min(width, parts_.entry_width * 3 / 2),
            std::min(height, parts_.entry_height * 3 / 2) / 2 * 2};
  }

  /// Where a page has fewer entries than would fit, and no others follow, their pictures are
  /// larger.
  entry_grid chosen_grid() const {
    entry_grid best = grid_of_design();
    if (menu_.pages > 1 || design_.arrangement == menu_arrangement::list)
      return best;
    int widest = 0;
    for (int columns = design_.columns; columns > 0; --columns) {
      const entry_grid grid = larger_grid(columns);
      if (grid.rows > design_.rows || columns > count_of_entries())
        continue;
      if (const int width = parts_in({0, 0, grid.width, grid.height}).picture.width;
          width > widest) {
        best = grid;
        widest = width;
      }
    }
    return best;
  }

  void place_entries() {
    const entry_grid grid = chosen_grid();
    const int width = grid.columns * grid.width + (grid.columns - 1) * parts_.across;
    const int height = grid.rows * grid.height + (grid.rows - 1) * design_.gap;
    const page_box& area = parts_.entries;
    // A page that others follow begins where they do, and what stands on a sheet above.
    const bool is_above = menu_.pages > 1 || design_.sheet.is_seen();
    const int top_rest = is_above ? 0 : (area.height - height) / 4 * 2;
    const int left = design_.sheet.is_seen() ? area.left : area.left + (area.width - width) / 2;
    for (int i = 0; i < count_of_entries(); ++i) {
      const page_box box{left + i % grid.columns * (grid.width + parts_.across),
                         area.top + top_rest + i / grid.columns * (grid.height + design_.gap),
                         grid.width, grid.height};
      made_.buttons.push_back(edges_of_box(box));
    }
  }

  /// As wide as its text, but for very short and very long ones.
  int width_of_way(const planned_entry& way) const {
    const int most = (parts_.ways.width - (most_ways - 1) * across(8)) / most_ways;
    const text_extent extent = measure_(way.text, design_.way.style, 0, form_.pixel_aspect());
    const int beside = 2 * (design_.frame + across(design_.way_panel.is_seen() ? 12 : 6)) + 2;
    return std::clamp(extent.width + beside, std::min(across(72), most), most);
  }

  /// Beside each other, from one side to the other; a single one that leads on stands at the right.
  void place_ways() {
    const std::size_t count = menu_.ways.size();
    const page_box& area = parts_.ways;
    std::vector<int> widths;
    widths.reserve(count);
    int rest = area.width;
    for (const planned_entry& way : menu_.ways) {
      widths.push_back(width_of_way(way));
      rest -= widths.back();
    }
    const bool is_right = count == 1 && menu_.ways.front().key == "way next";
    int left = area.left + (is_right ? rest : 0);
    for (std::size_t i = 0; i < count; ++i) {
      made_.buttons.push_back(edges_of_box({left, area.top, widths[i], area.height}));
      const int gaps = static_cast<int>(count - 1 - i);
      const int gap = gaps > 0 ? rest / gaps : 0;
      left += widths[i] + gap;
      rest -= gap;
    }
  }

  const planned_entry& entry_of_button(std::size_t i) const {
    return i < menu_.entries.size() ? menu_.entries[i] : menu_.ways[i - menu_.entries.size()];
  }

  bool is_free(const menu_rectangle& place, std::size_t but) const {
    const bool is_inside = place.x0 >= 0 && place.y0 >= 0 && place.x1 <= largest_x &&
                           place.y1 < form_.height() && place.x1 - place.x0 >= 16 &&
                           place.y1 - place.y0 >= 8;
    if (!is_inside)
      return false;
    for (std::size_t i = 0; i < made_.buttons.size(); ++i)
      if (i != but && touch(place, made_.buttons[i]))
        return false;
    return true;
  }

  /// As often as one is kept others may find room, as when two have changed their places.
  void take_moves(const menu_moves& moves) {
    std::vector<std::size_t> waiting;
    std::vector<menu_rectangle> wanted(made_.buttons.size());
    for (std::size_t i = 0; i < made_.buttons.size(); ++i)
      if (const auto move = moves.find(move_key(menu_, i)); move != moves.end()) {
        wanted[i] = move->second;
        waiting.push_back(i);
      }
    if (all_free(waiting, wanted)) {
      for (const std::size_t i : waiting)
        made_.buttons[i] = wanted[i];
      return;
    }
    for (const std::size_t i : waiting) {
      if (is_free(wanted[i], i))
        made_.buttons[i] = wanted[i];
      else
        made_.notes.push_back("The place that was given to " +
                              sanitized_quoted(entry_of_button(i).text) +
                              " is not kept: something else is there now.");
    }
  }

  bool all_free(const std::vector<std::size_t>& moved, const std::vector<menu_rectangle>& wanted) {
    std::vector<menu_rectangle> before = made_.buttons;
    for (const std::size_t i : moved)
      made_.buttons[i] = wanted[i];
    const bool free =
        std::ranges::all_of(moved, [&](std::size_t i) { return is_free(made_.buttons[i], i); });
    made_.buttons = std::move(before);
    return free;
  }

  // Shapes --------------------------------------------------------------------------------------

  void add_panel(const design_panel& panel, const page_box& box) {
    if (panel.is_seen())
      made_.page.shapes.emplace_back(
          page_rectangle{box, panel.radius, panel.colour, panel.border, panel.border_colour});
  }

  void add_band(int top, const design_edge& band) {
    if (band.lines > 0)
      made_.page.shapes.emplace_back(
          page_rectangle{{0, top, made_.page.width, band.lines}, 0, band.colour, 0, {}});
  }

  /// The panel of a button is what the button's frame covers: the run draws it a pixel less wide
  /// than its edges say.
  void add_button_panel(const design_panel& panel, page_box box) {
    --box.width;
    add_panel(panel, box);
  }

  void add_text(const std::string& text, const design_text& how, const page_box& box,
                page_align down = page_align::middle) {
    const fitted_text fitted = fit_text(text, how, box, form_.pixel_aspect(), measure_);
    if (fitted.is_shortened)
      made_.notes.push_back(sanitized_quoted(text) +
                            " is too long for its place and was shortened.");
    if (fitted.text.empty())
      return;
    page_text shape;
    shape.text = fitted.text;
    shape.box = box;
    shape.across = how.align;
    shape.down = down;
    shape.style = how.style;
    shape.style.size = fitted.size;
    shape.least_size = std::min(fitted.size, how.least_size);
    shape.most_lines = 1 + static_cast<int>(std::ranges::count(fitted.text, '\n'));
    made_.page.shapes.emplace_back(std::move(shape));
  }

  void add_heading() {
    if (menu_.heading.empty())
      return;
    page_box box = parts_.heading;
    add_panel(design_.heading_panel, box);
    const design_edge& rule = design_.heading_rule;
    if (rule.lines > 0)
      made_.page.shapes.emplace_back(page_rectangle{parts_.rule, 0, rule.colour, 0, {}});
    if (design_.heading_panel.is_seen())
      box = within(box, across(10), 0);
    else if (rule.lines == 0 && !design_.entry_panel.is_seen() && !design_.sheet.is_seen())
      // Above the texts of the entries, which stand within their frames.
      box = within(box, inside(box).left - box.left, 0);
    add_text(menu_.heading, design_.heading, box);
  }

  static page_box within(const page_box& box, int across, int down) {
    const int x = std::clamp(across, 0, box.width / 4), y = std::clamp(down, 0, box.height / 4);
    return {box.left + x, box.top + y, box.width - 2 * x, box.height - 2 * y};
  }

  /// What a frame, and a little room, leave of a button.
  page_box inside(const page_box& box) const {
    const int down = design_.frame + 3;
    return within(box, design_.frame + across(6), down);
  }

  void add_thumbnail(const planned_entry& entry, const page_box& box) {
    page_thumbnail shape;
    shape.file = native_from_stored(entry.film, style_);
    shape.seconds = entry.seconds;
    shape.title = entry.title;
    shape.chapter = entry.chapter;
    shape.box = box;
    shape.border = design_.thumbnail_border;
    shape.border_colour = design_.thumbnail_border_colour;
    if (const design_edge& shadow = design_.thumbnail_shadow; shadow.lines > 0) {
      const page_box below{box.left + across(shadow.lines), box.top + shadow.lines, box.width,
                           box.height};
      made_.page.shapes.emplace_back(page_rectangle{below, 0, shadow.colour, 0, {}});
    }
    made_.page.shapes.emplace_back(std::move(shape));
  }

  /// The width of a picture so many lines high, in pixels.
  int picture_width(int height) const {
    const double shape = form_.is_wide ? 16.0 / 9 : 4.0 / 3;
    return static_cast<int>(std::lround(height * shape / form_.pixel_aspect()));
  }
  int picture_height(int width) const {
    const double shape = form_.is_wide ? 16.0 / 9 : 4.0 / 3;
    const int height = static_cast<int>(std::floor(width * form_.pixel_aspect() / shape));
    return height - height % 2;
  }

  /// Where picture and text of an entry stand; without a picture its box is empty.
  struct entry_parts {
    page_box picture, text;
  };

  entry_parts parts_in(const page_box& box) const {
    const page_box room = inside(box);
    switch (design_.arrangement) {
      case menu_arrangement::list:
        break;
      case menu_arrangement::thumbnails_list:
        return parts_beside(room);
      case menu_arrangement::grid:
        return parts_below(room);
    }
    return {{}, room};
  }

  entry_parts parts_of_entry(const planned_entry& entry, const page_box& box) const {
    return entry.film.empty() ? entry_parts{{}, inside(box)} : parts_in(box);
  }

  entry_parts parts_beside(const page_box& room) const {
    const int shadow = design_.thumbnail_shadow.lines;
    const int high = room.height - shadow, most = room.width * 2 / 5;
    const int width = std::min(picture_width(high), most);
    const int height = width == most ? std::min(picture_height(most), high) : high;
    const int text_left = width + across(12 + shadow);
    return {{room.left, room.top + (high - height) / 2, width, height},
            {room.left + text_left, room.top, room.width - text_left, room.height}};
  }

  entry_parts parts_below(const page_box& room) const {
    const design_text& how = design_.entry;
    const int between = 2 + design_.thumbnail_shadow.lines;
    const int wanted = caption_lines_ * how.style.size * 13 / 10 + 2 * how.style.outline +
                       how.style.shadow + between;
    const int caption = std::min(wanted, room.height / 2);
    const int wide = room.width - across(design_.thumbnail_shadow.lines);
    int height = room.height - caption;
    int width = picture_width(height);
    if (width > wide) {
      width = wide;
      height = std::min(height, picture_height(width));
    }
    const int text_top = height + between;
    return {{room.left + (wide - width) / 2, room.top, width, height},
            {room.left, room.top + text_top, room.width, room.height - text_top}};
  }

  /// Finds out how all entries of the page have their texts: as large as the one that is least so,
  /// but no smaller than three quarters because of others. What captions leave is for pictures.
  void fit_entries() {
    design_text how = design_.entry;
    int lines = 1;
    const int lowest = std::max(how.least_size, (3 * how.style.size + 3) / 4);
    int size = how.style.size;
    for (std::size_t i = 0; i < menu_.entries.size(); ++i) {
      const page_box box = parts_of_entry(menu_.entries[i], box_of_edges(made_.buttons[i])).text;
      const fitted_text fitted =
          fit_text(menu_.entries[i].text, design_.entry, box, form_.pixel_aspect(), measure_);
      size = std::min(size, std::max(fitted.size, lowest));
      lines = std::max(lines, 1 + static_cast<int>(std::ranges::count(fitted.text, '\n')));
    }
    how.style.size = size;
    entry_text_ = std::move(how);
    caption_lines_ = lines;
  }

  void add_entry(const planned_entry& entry, const page_box& box) {
    add_button_panel(design_.entry_panel, box);
    const entry_parts parts = parts_of_entry(entry, box);
    if (parts.picture.width > 0)
      add_thumbnail(entry, parts.picture);
    const bool is_caption =
        design_.arrangement == menu_arrangement::grid && parts.picture.width > 0;
    add_text(entry.text, entry_text_, parts.text,
             is_caption ? page_align::begin : page_align::middle);
  }

  void add_way(const planned_entry& way, const page_box& box) {
    add_button_panel(design_.way_panel, box);
    add_text(way.text, design_.way, inside(box));
  }

  menu_design design_;
  const planned_menu& menu_;
  page_form form_;
  const text_measure& measure_;
  path_style style_;
  page_parts parts_;
  design_text entry_text_;
  int caption_lines_;  ///< of the longest caption of the page
  laid_out_menu made_;
};

}  // namespace

std::string move_key(const planned_menu& menu, std::size_t button) {
  const std::size_t entries = menu.entries.size();
  return button < entries ? menu.entries[button].key
                          : menu.key + ": " + menu.ways[button - entries].key;
}

laid_out_menu lay_out(const menu_design& design, const planned_menu& menu, const page_form& form,
                      const text_measure& measure, const menu_moves& moves, path_style style) {
  return page_builder(design, menu, form, measure, style).build(moves);
}

}  // namespace corvane
