#include "menus/menu_editor.h"

#include "formats/numbers.h"
#include "formats/text.h"
#include "menus/button_overlaps.h"
#include "menus/menu_editor_event.h"
#include "platform/files/paths.h"
#include "project/button_data.h"
#include "project/chapter_rows.h"
#include "project/menu_rows.h"
#include "project/messages.h"

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <limits>

namespace corvane {
namespace {

constexpr int first_width = 100, first_height = 3;  // of first_button
constexpr int least_width = 6, least_height = 2;    // gm draws every shape of this size
constexpr int least_box_height = 4;                 // lower ones are underlines
constexpr int usual_most_thickness = 20;

std::string chooser_entry(std::int64_t number) {
  return "button" + trimmed(number);
}

/// The distance of two edges, which can be any numbers, as a size that a slider can be set to.
int extent(int from, int to) {
  const std::int64_t distance = static_cast<std::int64_t>(to) - from;
  return static_cast<int>(std::clamp<std::int64_t>(distance, 0, std::numeric_limits<int>::max()));
}

void set_value(slider& s, int value) {
  s.value = std::clamp(value, s.minimum, s.maximum);
}

/// The least size of a button, or the one it has when that is less.
void set_least(slider& s, int least, int size) {
  s.minimum = std::clamp(size, 1, least);
}

void set_range(scroll_bar& bar, int maximum, int large_step) {
  bar.maximum = maximum;
  bar.large_step = large_step;
  bar.value = std::clamp(bar.value, 0, maximum);
}

}  // namespace

menu_editor::menu_editor(document& doc, const picture_loader& pictures)
    : doc_(doc), pictures_(pictures), ymax_(largest_y(doc.p.globalregion)) {
  c_.indexer = doc.p.indexer;
  load_options();
  load_actions();
  show_no_button();
  begin_history();
}

void menu_editor::load_options() {
  const menu_options options =
      parse_menu_options(row_of(doc_.p.moremenuoptions, c_.indexer, new_menu_options));
  c_.Check1 = options.loop;
  c_.spubegin = options.spu_begin;
  c_.spuend = options.spu_end;
  // Wide enough for what the row holds, so that looking at a menu does not change it.
  const int stored = std::clamp(options.thickness, 0, largest_x);
  c_.thickness.minimum = std::min(1, stored);
  c_.thickness.maximum = std::max(usual_most_thickness, stored);
  c_.thickness.value = stored;
}

void menu_editor::load_actions() {
  int title = 0;
  for (const int chapters : chapter_counts()) {
    ++title;
    for (int chapter = 1; chapter <= chapters; ++chapter)
      c_.Combo1_items.push_back("jump title" + leading_blank(title) + " chapter " +
                                leading_blank(chapter));
  }
  c_.Combo1_items.emplace_back("exit");
  for (int menu = 1; menu <= UUBound(doc_.p.menulist) + 1; ++menu)
    c_.Combo1_items.push_back("jump menu" + leading_blank(menu));
}

/// Of each title.
std::vector<int> menu_editor::chapter_counts() const {
  std::vector<int> counts;
  const int titles = UUBound(doc_.p.List1) + 1;
  for (int title = 1; title <= titles; ++title)
    counts.push_back(static_cast<int>(chapter_times(row_of(doc_.p.chapters, title, {})).size()));
  return counts;
}

/// The controls as they are without a button: as the first one will be.
void menu_editor::show_no_button() {
  c_.Combo2_index = -1;
  c_.Combo2_text.clear();
  c_.button.clear();
  shown_ = -1;
  selected_.clear();
  c_.HScroll1.value = c_.VScroll1.value = 0;
  set_sizes(first_width, first_height);
  const button_record first = parse_button(first_button);
  c_.Combo1 = first.action;
  c_.Colorhighlight = first.highlight;
  c_.ColorSelect = first.select;
  show_display_mode();
  keep_in_picture();
  show_fields();
}

std::string menu_editor::video() const {
  return native_from_stored(parse_menu_row(row_of(doc_.p.menulist, c_.indexer, {})).video);
}

std::string menu_editor::audio() const {
  return native_from_stored(parse_menu_row(row_of(doc_.p.menulist, c_.indexer, {})).audio);
}

void menu_editor::playback_check(int width, int height) {
  constexpr int hardly_a_picture = 100, between_the_regions = 550;
  const std::string& region = doc_.p.globalregion;
  if (width <= hardly_a_picture)
    say(doc_, icon::exclamation,
        "It appears you do not have a mpeg2 directshow filter installed.  Please install one to "
        "accurately use the menu editor.");
  else if (region == "PAL" && height < between_the_regions)
    say(doc_, icon::exclamation,
        "selected menu appears to not be PAL (720x576), but continuing anyway.");
  else if (region == "NTSC" && height > between_the_regions)
    say(doc_, icon::exclamation,
        "selected menu appears to not be NTSC (720x480), but continuing anyway.");
}

void menu_editor::recallbuttondata() {
  c_.List1 = corvane::recallbuttondata(doc_.p, static_cast<std::int16_t>(c_.indexer));
  number_chooser();
  show_no_button();
  begin_history();
}

/// The menu as it is now is the one that the user opened.
void menu_editor::begin_history() {
  opened_ = state().controls;
  history_ = {};
  end_run();
}

void menu_editor::number_chooser() {
  c_.Combo2.clear();
  for (std::size_t i = 0; i < c_.List1.size(); ++i)
    c_.Combo2.push_back(chooser_entry(static_cast<std::int64_t>(i) + 1));
}

void menu_editor::add_button() {
  const event step(*this, "add button");
  c_.List1.push_back(c_.List1.empty() ? std::string(first_button) : c_.List1.back());
  c_.Combo2_index = UUBound(c_.List1);
  c_.button = trimmed(c_.Combo2_index + 1);
  c_.Combo2_text = chooser_entry(c_.Combo2_index + 1);
  c_.Combo2.push_back(c_.Combo2_text);
  selected_ = {c_.Combo2_index};
}

void menu_editor::choose(int index) {
  if (index < 0 || index > UUBound(c_.List1))
    return;
  const event step(*this, "bring # into the picture");
  show_chosen(index);
  selected_ = {index};
  if (trim(c_.List1[static_cast<std::size_t>(index)]).empty())
    return;
  show_record(index);
  updatebutton();
}

void menu_editor::show_chosen(int index) {
  c_.Combo2_index = index;
  c_.Combo2_text = c_.Combo2[static_cast<std::size_t>(index)];
  c_.button = c_.Combo2_text.substr(std::string_view("button").size());
}

void menu_editor::show_record(int index) {
  const std::string& record = c_.List1[static_cast<std::size_t>(index)];
  const button_record b = parse_button(record);
  const menu_rectangle edges = edges_of(record);
  c_.Combo1 = b.action;
  c_.Colorhighlight = b.highlight;
  c_.ColorSelect = b.select;
  show_display_mode();
  set_sizes(extent(edges.x0, edges.x1), extent(edges.y0, edges.y1));
  c_.HScroll1.value = edges.x0;
  c_.VScroll1.value = edges.y0;
}

// A size that is smaller than what the user can set stays as it is until the user changes it; the
// run's check tells when it cannot be drawn.
void menu_editor::set_sizes(int width, int height) {
  c_.Slider1.maximum = largest_x;
  c_.Slider2.maximum = ymax_;
  set_least(c_.Slider1, least_width, width);
  set_least(c_.Slider2, least_height, height);
  set_value(c_.Slider1, width);
  set_value(c_.Slider2, height);
}

void menu_editor::delete_button() {
  if (c_.List1.empty() || !button_chosen())
    return;
  const event step(*this, step_name("delete #"));
  const int next = c_.Combo2_index;
  c_.List1.erase(c_.List1.begin() + next);
  number_chooser();  // the others move up and take their numbers
  show_no_button();
  choose(std::min(next, UUBound(c_.List1)));
}

bool menu_editor::button_chosen() {
  if (c_.Combo2_index >= 0)
    return true;
  ++refusals_;
  say(doc_, icon::information, "Please add/select a button first");
  return false;
}

void menu_editor::updatebutton() {
  if (!button_chosen())
    return;
  show_display_mode();
  keep_in_picture();
  write_record();
  show_fields();
  shown_ = c_.Combo2_index;
}

void menu_editor::show_display_mode() {
  c_.bitmap_mode = is_bitmap(c_.Colorhighlight);
  c_.Image1 = c_.bitmap_mode ? c_.Colorhighlight : std::string();
  c_.Image2 = c_.bitmap_mode && is_bitmap(c_.ColorSelect) ? c_.ColorSelect : std::string();
  c_.sizes_enabled = c_.Slider1.enabled = c_.Slider2.enabled = !c_.bitmap_mode;
}

/// Sizes within their sliders; positions within what the size leaves of the picture.
void menu_editor::keep_in_picture() {
  set_value(c_.Slider1, c_.Slider1.value);
  set_value(c_.Slider2, c_.Slider2.value);
  set_range(c_.HScroll1, largest_x - c_.Slider1.value, c_.Slider1.value);
  set_range(c_.VScroll1, ymax_ - c_.Slider2.value, c_.Slider2.value);
  c_.thickness.enabled = c_.Slider2.value >= least_box_height;
}

void menu_editor::write_record() {
  const int x0 = c_.HScroll1.value, y0 = c_.VScroll1.value;
  button_record b = button_with_edges(x0, y0, x0 + c_.Slider1.value, y0 + c_.Slider2.value);
  b.action = c_.Combo1;
  b.highlight = c_.Colorhighlight;
  b.select = c_.ColorSelect;
  c_.List1[static_cast<std::size_t>(c_.Combo2_index)] = button_text(b);
}

void menu_editor::show_fields() {
  c_.leftpos = leading_blank(c_.HScroll1.value);
  c_.widthpos = leading_blank(c_.Slider1.value);
  c_.ypos = leading_blank(c_.VScroll1.value);
  c_.heightpos = leading_blank(c_.Slider2.value);
}

bool menu_editor::accept() {
  if (!Checkbuttons(doc_, c_.List1).empty())
    return false;
  keep_in(doc_.p);
  doc_.p.saved = 0;
  dvdsize(doc_);
  return true;
}

bool menu_editor::may_close() {
  if (!is_changed())
    return true;
  message_box question;
  question.text =
      "The menu has been changed.  Do you want to keep what was changed?\n\n"
      "Yes: it is kept, as with \"accept\".\nNo: it is discarded.\nCancel: back to the menu.";
  question.picture = icon::exclamation;
  question.choice = buttons::yes_no_cancel;
  switch (doc_.ask.message(question)) {
    case answer::yes:
      return accept();
    case answer::no:
      return true;
    default:
      return false;
  }
}

void menu_editor::keep_in(project& copy) const {
  const std::string options =
      menu_options_text({c_.Check1, c_.spubegin, c_.spuend, c_.thickness.value});
  store_edited_menu(copy, static_cast<std::int16_t>(c_.indexer), c_.List1, options);
}

}  // namespace corvane
