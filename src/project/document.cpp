#include "project/document.h"

#include "formats/sanitized.h"
#include "platform/files/paths.h"
#include "project/edited_xml.h"
#include "project/messages.h"
#include "project/project_file.h"
#include "project/recovery.h"

#include <utility>

namespace corvane {

const char* const start_up_dvdsizetext = "0 titles\r\n0 menus\r\n0 gig total";

document::step::step(document& doc, std::string name) : doc_(&doc) {
  doc.begin_step(std::move(name));
}

document::step::~step() {
  if (doc_ != nullptr)
    doc_->end_step();
}

void document::begin_step(std::string name) {
  if (steps_on_++ > 0)
    return;
  step_name_ = std::move(name);
  const project_step* const last = history_.undone_next();
  before_.emplace(p, last == nullptr ? nullptr : &last->after);
  origin_before_ = origin_;
}

void document::end_step() {
  if (--steps_on_ > 0)
    return;
  project_state after(p, &*before_);
  if (!after.is_same_project(*before_))
    history_.add({std::move(step_name_), std::move(*before_), std::move(after),
                  std::move(origin_before_), origin_});
  before_.reset();
  keep();
}

std::optional<std::string> document::undo_name() const {
  const project_step* const next = steps_on_ > 0 ? nullptr : history_.undone_next();
  return next == nullptr ? std::nullopt : std::optional(next->name);
}

std::optional<std::string> document::redo_name() const {
  const project_step* const next = steps_on_ > 0 ? nullptr : history_.redone_next();
  return next == nullptr ? std::nullopt : std::optional(next->name);
}

void document::undo() {
  if (!undo_name())
    return;
  const project_step& last = *history_.undone_next();
  restore(last.before, last.origin_before == last.origin_after ? origin_ : last.origin_before);
  history_.undo();
}

void document::redo() {
  if (!redo_name())
    return;
  const project_step& next = *history_.redone_next();
  restore(next.after, next.origin_before == next.origin_after ? origin_ : next.origin_after);
  history_.redo();
}

void document::restore(const project_state& state,
                       const std::shared_ptr<const project_origin>& origin) {
  state.restore(p);
  origin_ = origin;
  p.saved = is_unsaved() ? 0 : 1;
  keep();
}

bool document::is_unsaved() const {
  return project_text(p) != origin_->text;
}

void document::saved_to(const std::string& file) {
  const auto before = origin_;
  set_file(file, project_text(p));
  history_.was_saved(before, origin_);
  if (origin_before_ == before)
    origin_before_ = origin_;
}

void document::set_file(const std::string& file, std::string text) {
  origin_ = std::make_shared<const project_origin>(project_origin{file, std::move(text)});
}

void document::forget_file() {
  set_file({}, project_text(p));
}

void document::keep() {
  keep_draft(p, {});
}

void document::keep_draft(const project& draft, const std::string& editor) {
  if (keeper_ == nullptr)
    return;
  std::string text = project_text(draft);
  if (text == origin_->text)
    text.clear();
  if (text == kept_ && !keeper_->trouble())
    return;
  kept_ = text;
  if (text.empty())
    keeper_->forget();
  else
    keeper_->keep({origin_->file, editor, std::move(text), mark_of_text(origin_->text)});
}

void document::end(bool given_up) {
  if (keeper_ == nullptr)
    return;
  if (given_up)
    keeper_->forget();
  else if (steps_on_ == 0)
    keep();  // it may have been saved just now
  keeper_->flush();
  keeper_ = nullptr;
}

int custom(document& doc) {
  if (edited_xml(doc.p).empty())
    return 1;
  message_box question;
  question.text = "You have edited the XML manually, do you want to discard these changes?";
  question.picture = icon::exclamation;
  question.choice = buttons::ok_cancel;
  question.enter_cancels = true;
  if (doc.ask.message(question) != answer::ok)
    return 2;
  doc.p.customxml.clear();
  return 1;
}

}  // namespace corvane
