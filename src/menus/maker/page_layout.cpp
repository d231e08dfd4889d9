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
      : design_(design),
        menu_(menu),
        form_(form),
        measure_(measure),
        style_(style),
        parts_(parts_of(design, form)) {
    made_.page.height = form.height();
    made_.page.is_wide = form.is_wide;
    made_.page.pixel_aspect = form.pixel_aspect();
    made_.page.background = design.background;
  }

  laid_out_menu build(const menu_moves& moves) {
    place_entries();
    place_ways();
    take_moves(moves);
    add_panel(design_.sheet, sheet_box());
    add_heading();
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

  void place_entries() {
    const int count = static_cast<int>(menu_.entries.size());
    const int columns = std::clamp(count, 1, design_.columns);
    const int rows = (count + columns - 1) / columns;
    const int width = columns * parts_.entry_width + (columns - 1) * parts_.across;
    const int height = rows * parts_.entry_height + (rows - 1) * design_.gap;
    const page_box& area = parts_.entries;
    // A page that others follow begins where they do.
    const int top_rest = menu_.pages > 1 ? 0 : (area.height - height) / 4 * 2;
    const int left = area.left + (area.width - width) / 2;
    for (int i = 0; i < count; ++i) {
      const page_box box{left + i % columns * (parts_.entry_width + parts_.across),
                         area.top + top_rest + i / columns * (parts_.entry_height + design_.gap),
                         parts_.entry_width, parts_.entry_height};
      made_.buttons.push_back(edges_of_box(box));
    }
  }

  /// Beside each other, from one side to the other; a single one that leads on stands at the right.
  void place_ways() {
    const int count = static_cast<int>(menu_.ways.size());
    const page_box& area = parts_.ways;
    const int gap = across(8);
    const int width = std::min((area.width - 3 * gap) / 4, across(150));
    for (int i = 0; i < count; ++i) {
      const bool is_right = count == 1 && menu_.ways.front().key == "way next";
      const int left =
          count > 1 ? (area.width - width) * i / (count - 1) : (is_right ? area.width - width : 0);
      made_.buttons.push_back(edges_of_box({area.left + left, area.top, width, area.height}));
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

  page_box sheet_box() const {
    const page_box& area = parts_.entries;
    return {area.left, area.top - 4, area.width, area.height + 8};
  }

  // Shapes --------------------------------------------------------------------------------------

  void add_panel(const design_panel& panel, const page_box& box) {
    if (panel.is_seen())
      made_.page.shapes.emplace_back(
          page_rectangle{box, panel.radius, panel.colour, panel.border, panel.border_colour});
  }

  void add_text(const std::string& text, const design_text& how, const page_box& box,
                page_align across_box) {
    const fitted_text fitted = fit_text(text, how, box, form_.pixel_aspect(), measure_);
    if (fitted.is_shortened)
      made_.notes.push_back(sanitized_quoted(text) +
                            " is too long for its place and was shortened.");
    if (fitted.text.empty())
      return;
    page_text shape;
    shape.text = fitted.text;
    shape.box = box;
    shape.across = across_box;
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
    if (design_.heading_panel.is_seen())
      box = within(box, across(10), 0);
    add_text(menu_.heading, design_.heading, box, design_.heading.align);
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

  void add_entry(const planned_entry& entry, const page_box& box) {
    add_panel(design_.entry_panel, box);
    const page_box room = inside(box);
    if (design_.arrangement == menu_arrangement::list || entry.film.empty())
      add_text(entry.text, design_.entry, room, design_.entry.align);
    else if (design_.arrangement == menu_arrangement::thumbnails_list)
      add_listed(entry, room);
    else
      add_in_grid(entry, room);
  }

  void add_listed(const planned_entry& entry, const page_box& room) {
    const int most = room.width * 2 / 5;
    const int width = std::min(picture_width(room.height), most);
    const int height = width == most ? std::min(picture_height(most), room.height) : room.height;
    add_thumbnail(entry, {room.left, room.top + (room.height - height) / 2, width, height});
    const int text_left = width + across(12);
    add_text(entry.text, design_.entry,
             {room.left + text_left, room.top, room.width - text_left, room.height},
             design_.entry.align);
  }

  void add_in_grid(const planned_entry& entry, const page_box& room) {
    const design_text& how = design_.entry;
    const int wanted =
        how.most_lines * how.style.size * 13 / 10 + 2 * how.style.outline + how.style.shadow + 4;
    const int caption = std::min(wanted, room.height / 2);
    int height = room.height - caption;
    int width = picture_width(height);
    if (width > room.width) {
      width = room.width;
      height = std::min(height, picture_height(width));
    }
    add_thumbnail(entry, {room.left + (room.width - width) / 2, room.top, width, height});
    add_text(entry.text, how, {room.left, room.top + height, room.width, room.height - height},
             how.align);
  }

  void add_way(const planned_entry& way, const page_box& box) {
    add_panel(design_.way_panel, box);
    add_text(way.text, design_.way, inside(box), design_.way.align);
  }

  const menu_design& design_;
  const planned_menu& menu_;
  page_form form_;
  const text_measure& measure_;
  path_style style_;
  page_parts parts_;
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
