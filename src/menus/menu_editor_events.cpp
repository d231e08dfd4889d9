// The editor's events of fields, lists and buttons.
#include "formats/numbers.h"
#include "formats/sanitized.h"
#include "formats/text.h"
#include "menus/menu_editor_event.h"
#include "project/menu_rows.h"
#include "project/messages.h"

#include <algorithm>

namespace corvane {
namespace {

/// The whole part of a typed number; nullopt if no number begins the text.
std::optional<int> typed_number(const std::string& text) {
  const auto first = text.find_first_not_of(" +-.");
  if (first == std::string::npos || text[first] < '0' || text[first] > '9')
    return std::nullopt;
  return leading_whole(text);
}

bool is_colour(const std::string& text) {
  return std::find(button_colours.begin(), button_colours.end(), text) != button_colours.end();
}

}  // namespace

// Each field has its own bound; the height's alone does not ask where the button stands, and that
// is wanted.

void menu_editor::type_leftpos(const std::string& text) {
  const event step(*this, "move #");
  const auto value = typed_number(text);
  if (value && *value < largest_x - c_.Slider1.value)
    scroll_x(*value);
}

void menu_editor::type_widthpos(const std::string& text) {
  const event step(*this, "size #");
  const auto value = typed_number(text);
  if (value && *value < largest_x - leading_whole(c_.leftpos))
    slide_width(*value);
}

void menu_editor::type_ypos(const std::string& text) {
  const event step(*this, "move #");
  const auto value = typed_number(text);
  if (value && *value < ymax_ - c_.Slider2.value)
    scroll_y(*value);
}

void menu_editor::type_heightpos(const std::string& text) {
  const event step(*this, "size #");
  constexpr int too_high = 300;
  const auto value = typed_number(text);
  if (value && *value < too_high)
    slide_height(*value);
}

void menu_editor::set_action(const std::string& text) {
  const event step(*this, "action of #");
  if (text == c_.Combo1 || !button_chosen() || refuse_field("action", text))
    return;
  c_.Combo1 = text;
  updatebutton();
}

bool menu_editor::refuse_field(const std::string& name, const std::string& text) {
  const auto why = why_not_a_field(text);
  if (!why)
    return false;
  ++refusals_;
  say(doc_, icon::exclamation,
      "The " + name + " \"" + sanitized_short(text) + "\" cannot be used: it " + *why + ".");
  return true;
}

void menu_editor::set_highlight(const std::string& colour) {
  const event step(*this, "highlight of #");
  if (colour == c_.Colorhighlight || !is_colour(colour) || !button_chosen())
    return;
  c_.Colorhighlight = colour;
  updatebutton();
}

void menu_editor::set_select(const std::string& colour) {
  const event step(*this, "select of #");
  if (colour == c_.ColorSelect || !is_colour(colour) || !button_chosen())
    return;
  c_.ColorSelect = colour;
  updatebutton();
}

void menu_editor::slide_thickness(int value) {
  const event step(*this, "box thickness", "thickness");
  if (c_.thickness.enabled)
    c_.thickness.value = std::clamp(value, c_.thickness.minimum, c_.thickness.maximum);
}

void menu_editor::set_loop(bool checked) {
  const event step(*this, "loop menu");
  c_.Check1 = checked;
}

void menu_editor::set_advanced(bool checked) {
  c_.Check2 = checked;
}

void menu_editor::set_spubegin(const std::string& text) {
  const event step(*this, "spu begin");
  if (text != c_.spubegin && !refuse_field("spu begin", text))
    c_.spubegin = text;
}

void menu_editor::set_spuend(const std::string& text) {
  const event step(*this, "spu end");
  if (text != c_.spuend && !refuse_field("spu end", text))
    c_.spuend = text;
}

void menu_editor::bmphighlight() {
  const event step(*this, "bitmap of #");
  const auto bitmap = pick_highlight_bitmap(doc_, pictures_);
  if (bitmap && c_.Combo2_index >= 0) {
    c_.Colorhighlight = c_.ColorSelect = bitmap->file;
    set_sizes(bitmap->size.width, bitmap->size.height);
  }
  updatebutton();
}

void menu_editor::bmpselect() {
  const event step(*this, "select bitmap of #");
  const picked_select picked = pick_select_bitmap(doc_, pictures_, c_.Colorhighlight);
  if (picked.of_another_size)
    c_.Image2 = c_.Image1;  // until the button is changed or picked again
  if (!picked.file)
    return;
  c_.ColorSelect = *picked.file;
  updatebutton();
}

void menu_editor::removebmp() {
  const event step(*this, "remove bitmap of #");
  if (!button_chosen())
    return;
  c_.Colorhighlight = c_.ColorSelect = "black";
  updatebutton();
}

}  // namespace corvane
