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
  /// `name`: of the step. `given_back` is called when the window gives the project back, not when
  /// the window goes with the program.
  lent_project(document& doc, wx_prompts& ask, const std::string& name,
               std::function<void()> given_back)
      : doc_(&doc),
        ask_(&ask),
        step_(std::make_unique<document::step>(doc, name)),
        given_back_(std::move(given_back)) {}

  document& doc() const { return *doc_; }

  /// Whose boxes and dialogs belong to the window.
  wx_prompts& ask() const { return *ask_; }

  /// To be called once, by a window that has gone or is about to go.
  void give_back() {
    step_.reset();
    if (const auto given_back = std::exchange(given_back_, {}))
      given_back();
  }

 private:
  document* doc_;
  wx_prompts* ask_;
  std::unique_ptr<document::step> step_;
  std::function<void()> given_back_;
};

}  // namespace corvane
