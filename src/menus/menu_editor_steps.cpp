// The editor's steps: what an event changed, undo and redo.
#include "formats/numbers.h"
#include "menus/menu_editor_event.h"

#include <utility>

namespace corvane {

menu_editor::event::event(menu_editor& editor, std::string what, std::string_view source)
    : editor_(editor), what_(std::move(what)), source_(source) {
  if (editor_.events_on_++ == 0)
    before_ = editor_.state();
}

menu_editor::event::~event() {
  if (--editor_.events_on_ == 0)
    editor_.end_event(what_, source_, std::move(before_));
}

/// A copy without the offered actions, which may be thousands.
menu_editor_state menu_editor::state() {
  std::vector<std::string> actions = std::exchange(c_.Combo1_items, {});
  std::vector<std::string> chooser = std::exchange(c_.Combo2, {});
  menu_editor_state now{c_, shown_, selected_};
  c_.Combo1_items = std::move(actions);
  c_.Combo2 = std::move(chooser);
  return now;
}

/// "move button 3", "move 4 buttons".
std::string menu_editor::step_name(std::string text) const {
  const auto at = text.find('#');
  if (at == std::string::npos)
    return text;
  const std::string about = selected_.size() > 1
                                ? trimmed(static_cast<int>(selected_.size())) + " buttons"
                                : "button " + trimmed(c_.Combo2_index + 1);
  return text.replace(at, 1, about);
}

void menu_editor::end_event(const std::string& what, std::string_view source,
                            menu_editor_state before) {
  const event_run now{source, c_.Combo2_index};
  const bool goes_on = drag_ || (!source.empty() && now == run_);
  run_has_step_ = run_has_step_ && goes_on;
  run_ = now;
  if (is_same_menu(before.controls, c_))
    return;
  if (run_has_step_)
    history_.rename_last(step_name(what));
  else
    history_.add({step_name(what), std::move(before)});
  run_has_step_ = true;
}

void menu_editor::end_run() {
  run_ = {};
  run_has_step_ = false;
}

void menu_editor::begin_drag() {
  end_drag();
  end_run();
  drag_ = drag_state{state(), {}, {}, {}, {}};
}

// What was dragged away and back again is no step.
void menu_editor::end_drag() {
  if (!drag_)
    return;
  if (run_has_step_ && is_same_menu(drag_->before.controls, c_))
    history_.drop_last();
  drag_.reset();
  end_run();
}

std::optional<std::string> menu_editor::undo_name() const {
  const menu_step* step = history_.undone_next();
  return step == nullptr ? std::nullopt : std::optional(step->name);
}

std::optional<std::string> menu_editor::redo_name() const {
  const menu_step* step = history_.redone_next();
  return step == nullptr ? std::nullopt : std::optional(step->name);
}

void menu_editor::undo() {
  end_drag();
  end_run();
  if (history_.undone_next() != nullptr)
    restore(history_.undo(state()));
}

void menu_editor::redo() {
  end_drag();
  end_run();
  if (history_.redone_next() != nullptr)
    restore(history_.redo(state()));
}

// What of the window is opened out ("advanced") stays as the user has it.
void menu_editor::restore(menu_editor_state to) {
  to.controls.Combo1_items = std::move(c_.Combo1_items);
  to.controls.Check2 = c_.Check2;
  c_ = std::move(to.controls);
  shown_ = to.shown;
  selected_ = std::move(to.selected);
  number_chooser();
}

bool menu_editor::is_changed() const {
  return !is_same_menu(opened_, c_);
}

}  // namespace corvane
