// The editor's picture: what is drawn over it, and changes of the place of a button, whether they
// come from there, from scroll bars, sliders or fields.
#include "formats/text.h"
#include "menus/menu_editor_event.h"

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <limits>

namespace corvane {
namespace {

/// A sum that a hasty caller cannot make too large.
int sum(int a, int b) {
  const std::int64_t exact = static_cast<std::int64_t>(a) + b;
  return static_cast<int>(std::clamp<std::int64_t>(exact, std::numeric_limits<int>::min(),
                                                   std::numeric_limits<int>::max()));
}

/// Position and size along one direction after one of its edges was moved to `to`.
void drag(bool first_edge, bool second_edge, int to, int most, int least_size, int& position,
          int& size) {
  const int end = position + size;
  if (first_edge) {
    position = std::clamp(to, 0, end - least_size);
    size = end - position;
  } else if (second_edge) {
    size = std::clamp(to, position + least_size, most) - position;
  }
}

}  // namespace

struct menu_editor::place {
  int x0, y0, width, height;
  bool operator==(const place&) const = default;
};

menu_editor::place menu_editor::shown_place() const {
  return {c_.HScroll1.value, c_.VScroll1.value, c_.Slider1.value, c_.Slider2.value};
}

void menu_editor::set_place(const place& p) {
  if (p == shown_place() || !button_chosen())
    return;
  c_.Slider1.value = p.width;
  c_.Slider2.value = p.height;
  c_.HScroll1.value = p.x0;
  c_.VScroll1.value = p.y0;
  updatebutton();
}

void menu_editor::scroll_x(int value) {
  const event step(*this, "move #", "HScroll1");
  place p = shown_place();
  p.x0 = std::clamp(value, 0, c_.HScroll1.maximum);
  set_place(p);
}

void menu_editor::scroll_y(int value) {
  const event step(*this, "move #", "VScroll1");
  place p = shown_place();
  p.y0 = std::clamp(value, 0, c_.VScroll1.maximum);
  set_place(p);
}

/// In the picture the user takes hold of what is outlined, also where another button was added
/// since.
void menu_editor::choose_outlined() {
  if (shown_ >= 0 && shown_ != c_.Combo2_index)
    choose(shown_);
}

void menu_editor::move_to(int x0, int y0) {
  const event step(*this, "move #", "move");
  choose_outlined();
  if (c_.Combo2_index >= 0 && (drag_ || selected_.size() > 1)) {
    move_selected_to(x0, y0);
    return;
  }
  place p = shown_place();
  p.x0 = std::clamp(x0, 0, c_.HScroll1.maximum);
  p.y0 = std::clamp(y0, 0, c_.VScroll1.maximum);
  set_place(p);
}

void menu_editor::move_by(int dx, int dy) {
  const event step(*this, "move #", "move");
  move_to(sum(c_.HScroll1.value, dx), sum(c_.VScroll1.value, dy));
}

void menu_editor::slide_width(int value) {
  const event step(*this, "size #", "Slider1");
  if (!c_.Slider1.enabled)
    return;
  place p = shown_place();
  p.width = std::clamp(value, c_.Slider1.minimum, c_.Slider1.maximum);
  set_place(p);
}

void menu_editor::slide_height(int value) {
  const event step(*this, "size #", "Slider2");
  if (!c_.Slider2.enabled)
    return;
  place p = shown_place();
  p.height = std::clamp(value, c_.Slider2.minimum, c_.Slider2.maximum);
  set_place(p);
}

void menu_editor::size_by(int dw, int dh) {
  const event step(*this, "size #", "size");
  const place p = shown_place();
  dragged_edges corner;
  corner.right = corner.bottom = true;
  drag_edges(corner, sum(p.x0 + p.width, dw), sum(p.y0 + p.height, dh));
}

void menu_editor::drag_edges(dragged_edges which, int x, int y) {
  const event step(*this, "size #", "size");
  choose_outlined();
  if (c_.bitmap_mode)
    return;
  place p = shown_place();
  if (drag_) {
    const snapped_parts parts{which.left, false, which.right, which.top, false, which.bottom};
    const menu_rectangle to{which.left ? x : p.x0, which.top ? y : p.y0,
                            which.right ? x : p.x0 + p.width, which.bottom ? y : p.y0 + p.height};
    const menu_point by = draw_to_lines(to, parts);
    x = sum(x, by.x);
    y = sum(y, by.y);
  }
  drag(which.left, which.right, x, largest_x, c_.Slider1.minimum, p.x0, p.width);
  drag(which.top, which.bottom, y, ymax_, c_.Slider2.minimum, p.y0, p.height);
  set_place(p);
}

std::optional<menu_rectangle> menu_editor::outline() const {
  if (shown_ < 0)
    return std::nullopt;
  const place p = shown_place();
  return menu_rectangle{p.x0, p.y0, p.x0 + p.width, p.y0 + p.height};
}

std::vector<faint_button> menu_editor::others() const {
  std::vector<faint_button> buttons;
  for (int i = 0; i <= UUBound(c_.List1); ++i) {
    const std::string& record = c_.List1[static_cast<std::size_t>(i)];
    if (i != shown_ && !trim(record).empty())
      buttons.push_back({i, edges_of(record)});
  }
  return buttons;
}

int menu_editor::button_at(int x, int y) const {
  if (const auto shape = outline(); shape && shape->contains(x, y))
    return shown_;
  const std::vector<faint_button> faint = others();
  const auto hit = std::find_if(faint.rbegin(), faint.rend(), [x, y](const faint_button& button) {
    return button.edges.contains(x, y);
  });
  return hit == faint.rend() ? -1 : hit->index;
}

}  // namespace corvane
