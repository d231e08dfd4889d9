#include "menus/menu_history.h"

#include "menus/menu_geometry.h"
#include "project/menu_rows.h"

#include <algorithm>
#include <utility>

namespace corvane {
namespace {

// A menu holds 36 buttons; one that a file gives thousands must not fill the memory.
constexpr std::size_t most_kept_records = 500000;

bool is_same_record(const std::string& a, const std::string& b) {
  if (a == b)
    return true;
  const button_record x = parse_button(a), y = parse_button(b);
  return edges_of(a) == edges_of(b) && x.action == y.action && x.highlight == y.highlight &&
         x.select == y.select;
}

std::size_t records_of(const menu_step& step) {
  return step.state.controls.List1.size() + 1;
}

}  // namespace

bool is_same_menu(const menu_editor_controls& a, const menu_editor_controls& b) {
  return a.Check1 == b.Check1 && a.spubegin == b.spubegin && a.spuend == b.spuend &&
         a.thickness.value == b.thickness.value &&
         std::equal(a.List1.begin(), a.List1.end(), b.List1.begin(), b.List1.end(), is_same_record);
}

void menu_history::add(menu_step step) {
  undone_.clear();
  records_ += records_of(step);
  done_.push_back(std::move(step));
  while (records_ > most_kept_records && done_.size() > 1) {
    records_ -= records_of(done_.front());
    done_.pop_front();
  }
}

void menu_history::rename_last(std::string name) {
  undone_.clear();
  if (!done_.empty())
    done_.back().name = std::move(name);
}

void menu_history::drop_last() {
  if (done_.empty())
    return;
  records_ -= records_of(done_.back());
  done_.pop_back();
}

menu_editor_state menu_history::step_over(std::deque<menu_step>& from, std::deque<menu_step>& to,
                                          menu_editor_state now) {
  menu_step step = std::move(from.back());
  from.pop_back();
  std::swap(step.state, now);
  to.push_back(std::move(step));
  return now;
}

menu_editor_state menu_history::undo(menu_editor_state now) {
  records_ -= records_of(done_.back());
  return step_over(done_, undone_, std::move(now));
}

menu_editor_state menu_history::redo(menu_editor_state now) {
  menu_editor_state next = step_over(undone_, done_, std::move(now));
  records_ += records_of(done_.back());
  return next;
}

}  // namespace corvane
