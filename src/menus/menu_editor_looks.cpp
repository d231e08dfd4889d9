// What the editor does with the looks of buttons: ordering by them, making them fewer.
#include "examine/colour_groups.h"
#include "formats/text.h"
#include "menus/menu_editor_event.h"
#include "project/menu_rows.h"

#include <algorithm>
#include <cstddef>
#include <utility>

namespace corvane {
namespace {

/// The looks of the records that are buttons.
struct record_looks {
  std::vector<int> buttons;  ///< their indices
  std::vector<int> looks;
  std::vector<bool> are_colours;
};

record_looks looks_of_records(const std::vector<std::string>& records) {
  record_looks all;
  std::vector<disc_button> buttons;
  for (std::size_t i = 0; i < records.size(); ++i) {
    if (trim(records[i]).empty())
      continue;
    const button_record r = parse_button(records[i]);
    disc_button b;
    b.highlight.text = r.highlight;
    b.select.text = r.select;
    buttons.push_back(std::move(b));
    all.buttons.push_back(static_cast<int>(i));
    all.are_colours.push_back(!is_bitmap(r.highlight) && !is_bitmap(r.select));
  }
  all.looks = looks_of(buttons);
  return all;
}

}  // namespace

bool menu_editor::are_looks_good() const {
  return are_looks_sorted_out(looks_of_records(c_.List1).looks);
}

look_cures menu_editor::cures_for_looks() const {
  const record_looks all = looks_of_records(c_.List1);
  look_cures cures = cures_of(all.looks, all.are_colours);
  if (cures.fewer) {
    for (int& button : cures.fewer->buttons)
      button = all.buttons[static_cast<std::size_t>(button)];
    cures.fewer->as = all.buttons[static_cast<std::size_t>(cures.fewer->as)];
  }
  return cures;
}

// A blank record is no button; it goes behind them.
void menu_editor::order_by_look() {
  const event step(*this, "order by look");
  const record_looks all = looks_of_records(c_.List1);
  std::vector<int> order;
  order.reserve(c_.List1.size());
  for (const int i : corvane::order_by_look(all.looks))
    order.push_back(all.buttons[static_cast<std::size_t>(i)]);
  for (int i = 0; i <= UUBound(c_.List1); ++i)
    if (!std::binary_search(all.buttons.begin(), all.buttons.end(), i))
      order.push_back(i);
  reorder(order);
}

void menu_editor::use_fewer_looks() {
  const event step(*this, "fewer looks");
  const look_cures cures = cures_for_looks();
  if (!cures.fewer)
    return;
  give_look(cures.fewer->buttons, cures.fewer->as);
  if (cures.fewer->order)
    order_by_look();
}

void menu_editor::make_same_look() {
  const event step(*this, "same look of #");
  if (selected_.size() < 2)
    return;
  if (shown_ != c_.Combo2_index)
    select(selected_, c_.Combo2_index);
  give_look(selected_, c_.Combo2_index);
}

/// A bitmap brings its size with it.
void menu_editor::give_look(const std::vector<int>& buttons, int as) {
  const std::string source = c_.List1[static_cast<std::size_t>(as)];
  const button_record look = parse_button(source);
  const menu_rectangle size = edges_of(source);
  for (const int i : buttons) {
    std::string& record = c_.List1[static_cast<std::size_t>(i)];
    button_record b = parse_button(record);
    if (is_bitmap(look.highlight)) {
      const menu_rectangle at = edges_of(record);
      button_record sized =
          button_with_edges(at.x0, at.y0, at.x0 + size.x1 - size.x0, at.y0 + size.y1 - size.y0);
      sized.action = b.action;
      b = std::move(sized);
    }
    b.highlight = look.highlight;
    b.select = look.select;
    record = is_bitmap(look.highlight) ? brought_in(button_text(b)) : button_text(b);
  }
  if (c_.Combo2_index < 0 || shown_ != c_.Combo2_index)
    return;
  show_record(c_.Combo2_index);
  updatebutton();
}

}  // namespace corvane
