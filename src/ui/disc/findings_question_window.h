// The question whether to author although errors or warnings were found: all of them in a list,
// what follows from the selected one and what to do, and no way on but the one button that says so,
// which is missing where nothing can be authored.
//
// Modal. Enter and Escape cancel; a double click or "go to" cancels too, and says which finding is
// to be repaired.
#pragma once

#include "project/prompts.h"

#include <wx/dialog.h>

#include <functional>
#include <optional>

class wxButton;
class wxSizer;
class wxStaticText;

namespace corvane {

class findings_view;

class findings_question_window : public wxDialog {
 public:
  /// `leads_somewhere`: whether there is a place in the project for a finding.
  findings_question_window(wxWindow* owner, const findings_question& question,
                           std::function<bool(const finding&)> leads_somewhere);

  /// The finding whose place the user wants to see instead of a run. ShowModal gives wxID_OK if he
  /// wants the run.
  const std::optional<finding>& to_repair() const { return to_repair_; }

 private:
  wxSizer* make_heading(const findings_question& question);
  wxSizer* make_buttons(bool may_go_on);
  void fit_screen(const wxWindow& owner);
  void on_key(wxKeyEvent& event);
  void go_to_selected();

  std::function<bool(const finding&)> leads_somewhere_;
  std::optional<finding> to_repair_;
  findings_view* view_ = nullptr;
  wxButton* go_to_ = nullptr;
};

}  // namespace corvane
