// The project, lent to a window that works on it: while it is lent no command runs, and what the
// window does to it is one step.
#pragma once

#include "project/document.h"
#include "ui/wx_prompts.h"

#include <functional>
#include <memory>
#include <string>
#include <utility>

namespace corvane {

class lent_project {
 public:
  /// What stands in the window and was not accepted: `keep` puts it into a copy of the project that
  /// is kept in case the program dies. `caption`: of the window.
  struct draft {
    std::string caption;
    std::function<void(project& copy)> keep;
  };

  /// `name`: of the step. `kept_draft` is the owner's, empty until the window fills it.
  /// `given_back` is called when the window gives the project back, not when
  /// the window goes with the program.
  lent_project(document& doc, wx_prompts& ask, const std::string& name, draft& kept_draft,
               std::function<void()> given_back)
      : doc_(&doc),
        ask_(&ask),
        draft_(&kept_draft),
        step_(std::make_unique<document::step>(doc, name)),
        given_back_(std::move(given_back)) {}

  document& doc() const { return *doc_; }

  /// Whose boxes and dialogs belong to the window.
  wx_prompts& ask() const { return *ask_; }

  /// From now on.
  void keeps(draft d) { *draft_ = std::move(d); }

  /// To be called once, by a window that has gone or is about to go.
  void give_back() {
    *draft_ = {};
    step_.reset();
    if (const auto given_back = std::exchange(given_back_, {}))
      given_back();
  }

 private:
  document* doc_;
  wx_prompts* ask_;
  draft* draft_;
  std::unique_ptr<document::step> step_;
  std::function<void()> given_back_;
};

}  // namespace corvane
