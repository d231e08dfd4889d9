// What the editor does with several buttons: selecting, ordering, placing, repeating them.
#include "formats/numbers.h"
#include "formats/text.h"
#include "menus/menu_editor_event.h"
#include "project/menu_rows.h"

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <numeric>

namespace corvane {
namespace {

constexpr int least_button_width = 6, least_button_height = 2;  // as of the sliders
constexpr int copy_gap = 10;

/// One direction of a place as picking its button brings it into the picture.
void bring_span_in(int& from, int& to, int least, int most) {
  const std::int64_t distance = static_cast<std::int64_t>(to) - from;
  const int size = static_cast<int>(std::clamp<std::int64_t>(distance, 0, most));
  const int kept = std::max(size, std::clamp(size, 1, least));
  from = std::clamp(from, 0, most - kept);
  to = from + kept;
}

std::string with_edges(const std::string& record, const menu_rectangle& place) {
  const button_record old = parse_button(record);
  button_record b = button_with_edges(place.x0, place.y0, place.x1, place.y1);
  b.action = old.action;
  b.highlight = old.highlight;
  b.select = old.select;
  return button_text(b);
}

/// Where copies stand from what they are copies of: below, beside, or a little aside.
menu_point way_to_copies(const std::vector<menu_rectangle>& places, int ymax) {
  int x1 = 0, y1 = 0, x0 = largest_x, y0 = ymax;
  for (const menu_rectangle& r : places) {
    x0 = std::min(x0, r.x0);
    y0 = std::min(y0, r.y0);
    x1 = std::max(x1, r.x1);
    y1 = std::max(y1, r.y1);
  }
  int down = y1 - y0 + copy_gap;
  down += down % 2;
  if (y1 + down <= ymax)
    return {0, down};
  const int across = x1 - x0 + copy_gap;
  if (x1 + across <= largest_x)
    return {across, 0};
  return {x1 + copy_gap <= largest_x ? copy_gap : -copy_gap,
          y1 + copy_gap <= ymax ? copy_gap : -copy_gap};
}

}  // namespace

bool menu_editor::is_selected(int index) const {
  return std::binary_search(selected_.begin(), selected_.end(), index);
}

std::string menu_editor::brought_in(const std::string& record) const {
  menu_rectangle r = edges_of(record);
  bring_span_in(r.x0, r.x1, least_button_width, largest_x);
  bring_span_in(r.y0, r.y1, least_button_height, ymax_);
  return with_edges(record, r);
}

void menu_editor::select(std::vector<int> buttons, int chosen) {
  const event step(*this, "bring # into the picture");
  std::sort(buttons.begin(), buttons.end());
  buttons.erase(std::unique(buttons.begin(), buttons.end()), buttons.end());
  std::erase_if(buttons, [this](int i) {
    return i < 0 || i > UUBound(c_.List1) || trim(c_.List1[static_cast<std::size_t>(i)]).empty();
  });
  if (buttons.empty()) {
    show_no_button();
    return;
  }
  if (!std::binary_search(buttons.begin(), buttons.end(), chosen))
    chosen = buttons.back();
  if (chosen != c_.Combo2_index || chosen != shown_)
    choose(chosen);
  for (const int i : buttons)
    if (i != chosen)
      c_.List1[static_cast<std::size_t>(i)] = brought_in(c_.List1[static_cast<std::size_t>(i)]);
  selected_ = std::move(buttons);
}

void menu_editor::select_all() {
  std::vector<int> all(c_.List1.size());
  std::iota(all.begin(), all.end(), 0);
  select(std::move(all), c_.Combo2_index);
}

void menu_editor::press(int index, bool more) {
  if (index < 0 || index > UUBound(c_.List1))
    return;
  std::vector<int> buttons = selected_;
  if (!more) {
    if (is_selected(index))
      select(std::move(buttons), index);
    else
      choose(index);
  } else if (!is_selected(index)) {
    buttons.push_back(index);
    select(std::move(buttons), index);
  } else if (buttons.size() > 1) {
    std::erase(buttons, index);
    select(std::move(buttons), c_.Combo2_index);
  }
}

void menu_editor::press_next(bool back, bool more) {
  const int step = back ? -1 : 1, count = UUBound(c_.List1) + 1;
  int next = c_.Combo2_index >= 0 ? c_.Combo2_index + step : back ? count - 1 : 0;
  while (next >= 0 && next < count && trim(c_.List1[static_cast<std::size_t>(next)]).empty())
    next += step;
  if (next < 0 || next >= count)
    return;
  if (more)
    press(next, true);
  else
    choose(next);
}

std::vector<menu_rectangle> menu_editor::places_of(const std::vector<int>& buttons) const {
  std::vector<menu_rectangle> places;
  places.reserve(buttons.size());
  for (const int i : buttons)
    places.push_back(edges_of(c_.List1[static_cast<std::size_t>(i)]));
  return places;
}

/// A bitmap keeps its size wherever it is put.
void menu_editor::put(const std::vector<int>& buttons, const std::vector<menu_rectangle>& places) {
  for (std::size_t i = 0; i < buttons.size(); ++i) {
    std::string& record = c_.List1[static_cast<std::size_t>(buttons[i])];
    menu_rectangle to = places[i];
    if (is_bitmap(parse_button(record).highlight)) {
      const menu_rectangle own = edges_of(record);
      to.x1 = to.x0 + own.x1 - own.x0;
      to.y1 = to.y0 + own.y1 - own.y0;
    }
    record = brought_in(with_edges(record, to));
  }
  if (c_.Combo2_index < 0 || shown_ != c_.Combo2_index)
    return;
  show_record(c_.Combo2_index);
  updatebutton();
}

template <typename F>
void menu_editor::arrange(const char* name, std::size_t least, F f) {
  const event step(*this, name);
  if (selected_.size() < least)
    return;
  if (shown_ != c_.Combo2_index)
    select(selected_, c_.Combo2_index);
  put(selected_, f(places_of(selected_)));
}

void menu_editor::align(alignment to) {
  arrange("align #", 2, [to](std::vector<menu_rectangle> p) { return aligned(std::move(p), to); });
}

void menu_editor::distribute(direction along) {
  arrange("distribute #", 2,
          [along](std::vector<menu_rectangle> p) { return distributed(std::move(p), along); });
}

void menu_editor::make_gaps_equal(direction along) {
  arrange("same gap of #", 2,
          [along](std::vector<menu_rectangle> p) { return with_same_gap(std::move(p), along); });
}

void menu_editor::make_same_width() {
  arrange("same width of #", 2, [this](std::vector<menu_rectangle> p) {
    const auto as = std::lower_bound(selected_.begin(), selected_.end(), c_.Combo2_index);
    return with_same_width(std::move(p), static_cast<std::size_t>(as - selected_.begin()));
  });
}

void menu_editor::make_same_height() {
  arrange("same height of #", 2, [this](std::vector<menu_rectangle> p) {
    const auto as = std::lower_bound(selected_.begin(), selected_.end(), c_.Combo2_index);
    return with_same_height(std::move(p), static_cast<std::size_t>(as - selected_.begin()), ymax_);
  });
}

void menu_editor::put_on_even_lines() {
  arrange("even lines of #", 1, [this](std::vector<menu_rectangle> p) {
    for (menu_rectangle& r : p)
      r = on_even_lines(r, ymax_);
    return p;
  });
}

// The order --------------------------------------------------------------------------------------

/// `order`: the old numbers (0-based) in their new order.
void menu_editor::reorder(const std::vector<int>& order) {
  std::vector<std::string> records;
  std::vector<int> now_at(order.size());
  for (const int old : order) {
    now_at[static_cast<std::size_t>(old)] = static_cast<int>(records.size());
    records.push_back(std::move(c_.List1[static_cast<std::size_t>(old)]));
  }
  c_.List1 = std::move(records);
  for (int& i : selected_)
    i = now_at[static_cast<std::size_t>(i)];
  std::sort(selected_.begin(), selected_.end());
  if (shown_ >= 0)
    shown_ = now_at[static_cast<std::size_t>(shown_)];
  if (c_.Combo2_index >= 0)
    show_chosen(now_at[static_cast<std::size_t>(c_.Combo2_index)]);
}

void menu_editor::move_up() {
  const event step(*this, "# up in the list");
  std::vector<int> order(c_.List1.size());
  std::iota(order.begin(), order.end(), 0);
  for (std::size_t i = 1; i < order.size(); ++i)
    if (is_selected(order[i]) && !is_selected(order[i - 1]))
      std::swap(order[i], order[i - 1]);
  reorder(order);
}

void menu_editor::move_down() {
  const event step(*this, "# down in the list");
  std::vector<int> order(c_.List1.size());
  std::iota(order.begin(), order.end(), 0);
  for (std::size_t i = order.size(); i-- > 1;)
    if (is_selected(order[i - 1]) && !is_selected(order[i]))
      std::swap(order[i], order[i - 1]);
  reorder(order);
}

void menu_editor::move_before(int index) {
  const event step(*this, "order of #");
  std::vector<int> order;
  for (int i = 0; i < index && i <= UUBound(c_.List1); ++i)
    if (!is_selected(i))
      order.push_back(i);
  order.insert(order.end(), selected_.begin(), selected_.end());
  for (int i = std::max(index, 0); i <= UUBound(c_.List1); ++i)
    if (!is_selected(i))
      order.push_back(i);
  reorder(order);
}

void menu_editor::delete_selected() {
  if (selected_.size() < 2) {
    delete_button();
    return;
  }
  const event step(*this, step_name("delete #"));
  const std::vector<int> gone = selected_;
  for (auto i = gone.rbegin(); i != gone.rend(); ++i)
    c_.List1.erase(c_.List1.begin() + *i);
  number_chooser();
  show_no_button();
  choose(std::min(gone.front(), UUBound(c_.List1)));
}

// More of them -----------------------------------------------------------------------------------

/// The new ones are selected, the last of them chosen.
void menu_editor::append(const std::vector<std::string>& records) {
  std::vector<int> added;
  for (const std::string& record : records) {
    added.push_back(static_cast<int>(c_.List1.size()));
    c_.List1.push_back(record);
  }
  number_chooser();
  select(std::move(added), UUBound(c_.List1));
}

void menu_editor::duplicate() {
  const event step(*this, step_name("duplicate #"));
  if (selected_.empty())
    return;
  select(selected_, c_.Combo2_index);
  const std::vector<menu_rectangle> places = places_of(selected_);
  const menu_point by = way_to_copies(places, ymax_);
  std::vector<std::string> copies;
  for (std::size_t i = 0; i < places.size(); ++i) {
    const menu_rectangle& r = places[i];
    copies.push_back(brought_in(with_edges(c_.List1[static_cast<std::size_t>(selected_[i])],
                                           {r.x0 + by.x, r.y0 + by.y, r.x1 + by.x, r.y1 + by.y})));
  }
  append(copies);
}

menu_editor::repeat_outlook menu_editor::outlook(const repetition& how) const {
  repeat_outlook o;
  o.wanted = std::max(1, how.across) * std::max(1, how.down);
  if (c_.Combo2_index < 0)
    return o;
  const std::string& record = c_.List1[static_cast<std::size_t>(c_.Combo2_index)];
  const std::size_t fit = repeated_places(edges_of(brought_in(record)), how, ymax_).size();
  const std::size_t actions = repeated_actions(parse_button(record).action, how.actions,
                                               chapter_counts(), static_cast<std::size_t>(o.wanted))
                                  .size();
  o.made = static_cast<int>(std::min(fit, actions));
  o.picture_is_full = static_cast<int>(fit) < o.wanted;
  o.no_more_actions = static_cast<int>(actions) < o.wanted;
  return o;
}

action_count menu_editor::usual_repetition() const {
  if (c_.Combo2_index < 0)
    return action_count::chapters;
  const std::string& record = c_.List1[static_cast<std::size_t>(c_.Combo2_index)];
  return usual_count(parse_button(record).action, chapter_counts());
}

void menu_editor::repeat(const repetition& how) {
  const event step(*this, step_name("repeat #"));
  if (c_.Combo2_index < 0 || trim(c_.List1[static_cast<std::size_t>(c_.Combo2_index)]).empty())
    return;
  choose(c_.Combo2_index);
  const int first = c_.Combo2_index;
  const std::string record = c_.List1[static_cast<std::size_t>(first)];
  const std::vector<menu_rectangle> places = repeated_places(edges_of(record), how, ymax_);
  const std::vector<std::string> actions =
      repeated_actions(parse_button(record).action, how.actions, chapter_counts(), places.size());
  std::vector<std::string> records;
  for (std::size_t i = 1; i < std::min(places.size(), actions.size()); ++i) {
    button_record b = parse_button(with_edges(record, places[i]));
    b.action = actions[i];
    records.push_back(button_text(b));
  }
  if (records.empty())
    return;
  append(records);
  std::vector<int> all = selected_;
  all.push_back(first);
  select(std::move(all), first);
}

}  // namespace corvane
