#include "ui/disc/log_page.h"

#include "formats/numbers.h"
#include "platform/files/files.h"
#include "runner/last_log.h"
#include "ui/disc/log_colours.h"
#include "ui/widgets/control_name.h"
#include "ui/widgets/find_bar.h"
#include "ui/widgets/fixed_pitch.h"
#include "ui/widgets/layout.h"
#include "ui/widgets/wx_text.h"

#include <wx/button.h>
#include <wx/sizer.h>
#include <wx/stattext.h>
#include <wx/textctrl.h>

#include <cstddef>
#include <utility>
#include <vector>

namespace corvane {
namespace {

/// A log of nothing but errors is red enough with these, and comes up at once.
constexpr int most_coloured = 2000;

/// "3 lines are errors, 1 is a warning".
std::string counted(const std::vector<line_of_log>& lines) {
  int errors = 0;
  int warnings = 0;
  for (const line_of_log& line : lines) {
    errors += line.kind == log_line_kind::error ? 1 : 0;
    warnings += line.kind == log_line_kind::warning ? 1 : 0;
  }
  const auto count = [](int number, const char* what) {
    return trimmed(number) + " " + what + (number == 1 ? "" : "s");
  };
  return count(errors, "error") + ", " + count(warnings, "warning");
}

}  // namespace

log_page::log_page(wxWindow* parent, std::string file) : wxPanel(parent), file_(std::move(file)) {
  text_ =
      new wxTextCtrl(this, wxID_ANY, wxString(), wxDefaultPosition, wxDefaultSize,
                     wxTE_MULTILINE | wxTE_READONLY | wxTE_DONTWRAP | wxTE_RICH2 | wxTE_NOHIDESEL);
  text_->SetFont(fixed_pitch(text_->GetFont()));
  name_control(*text_, "lastlog");
  find_ = new find_bar(
      this, [this](const std::string& words, bool backwards) { return find(words, backwards); },
      [this] { text_->SetFocus(); });
  about_ = new wxStaticText(this, wxID_ANY, wxString(), wxDefaultPosition, wxDefaultSize,
                            wxST_NO_AUTORESIZE | wxST_ELLIPSIZE_MIDDLE);
  about_->SetMinSize(wxSize(1, -1));
  name_control(*about_, "about");
  auto* look_for = new wxButton(this, wxID_ANY, "&find...");
  name_control(*look_for, "findlog");
  look_for->SetToolTip("look for words in the log (Ctrl+F, again: F3)");
  look_for->Bind(wxEVT_BUTTON, [this](wxCommandEvent&) { ask_what_to_find(); });
  auto* copies = new wxButton(this, wxID_ANY, "&copy");
  name_control(*copies, "copylog");
  copies->SetToolTip("copy what is selected, or the whole log");
  copies->Bind(wxEVT_BUTTON, [this](wxCommandEvent&) { copy(); });

  const wxSizerFlags gap =
      wxSizerFlags().CentreVertical().Border(wxALL, FromDIP(layout::control_gap));
  auto* row = new wxBoxSizer(wxHORIZONTAL);
  row->Add(about_, wxSizerFlags(gap).Proportion(1));
  row->Add(look_for, gap);
  row->Add(copies, gap);
  auto* whole = new wxBoxSizer(wxVERTICAL);
  whole->Add(text_, wxSizerFlags(1).Expand());
  whole->Add(find_, wxSizerFlags().Expand());
  whole->Add(row, wxSizerFlags().Expand());
  SetSizer(whole);
}

bool log_page::has_log() const {
  return file_exists(file_);
}

void log_page::show_log() {
  if (std::exchange(shown_, true))
    return;
  fill();
}

void log_page::fill() {
  const std::vector<line_of_log> lines = last_log(file_);
  wxString text;
  struct coloured {
    long from, to;
    log_line_kind kind;
  };
  std::vector<coloured> marks;
  for (const line_of_log& line : lines) {
    const wxString shown = wx_text(line.text);
    const long from = static_cast<long>(text.length());
    if (line.kind != log_line_kind::plain && marks.size() < most_coloured)
      marks.push_back({from, from + static_cast<long>(shown.length()), line.kind});
    text += shown + "\n";
  }
  text_->ChangeValue(text);
  for (const coloured& mark : marks)
    text_->SetStyle(mark.from, mark.to, look_of_log_line(mark.kind));
  text_->ShowPosition(text_->XYToPosition(0, text_->GetNumberOfLines() - 1));
  about_->SetLabelText(lines.empty() ? wxString("There is no log of a run.")
                                     : wx_text(counted(lines) + ": " + file_));
}

void log_page::ask_what_to_find() {
  find_->ask();
}

void log_page::find_again(bool backwards) {
  find_->find(backwards);
}

/// From the selection on, and then from the other end.
bool log_page::find(const std::string& words, bool backwards) {
  const wxString text = text_->GetValue().Lower();
  const wxString sought = wx_text(words).Lower();
  long from = 0;
  long to = 0;
  text_->GetSelection(&from, &to);
  std::size_t at = wxString::npos;
  if (backwards) {
    if (from > 0)
      at = text.rfind(sought, static_cast<std::size_t>(from) - 1);
    if (at == wxString::npos)
      at = text.rfind(sought);
  } else {
    at = text.find(sought, static_cast<std::size_t>(to));
    if (at == wxString::npos)
      at = text.find(sought);
  }
  if (at == wxString::npos)
    return false;
  const long begin = static_cast<long>(at);
  text_->SetSelection(begin, begin + static_cast<long>(sought.length()));
  text_->ShowPosition(begin);
  return true;
}

void log_page::copy() {
  const wxString selected = text_->GetStringSelection();
  copy_to_clipboard(selected.empty() ? text_->GetValue() : selected);
}

}  // namespace corvane
