#include "ui/disc/xmleditor_window.h"

#include "ui/disc/xml_text.h"
#include "ui/widgets/control_name.h"
#include "ui/widgets/find_bar.h"
#include "ui/widgets/icons.h"
#include "ui/widgets/layout.h"
#include "ui/widgets/screen_fit.h"
#include "ui/widgets/telling_status_bar.h"
#include "ui/widgets/wx_text.h"

#include <wx/menu.h>
#include <wx/sizer.h>
#include <wx/statusbr.h>
#include <wx/stc/stc.h>

#include <utility>

namespace corvane {
namespace {

constexpr int rest_milliseconds = 400;
constexpr int place_pane = 0, fault_pane = 1;

wxString place(int line, int column) {
  return wxString::Format("line %d, column %d", line, column);
}

}  // namespace

xmleditor_window::xmleditor_window(wxWindow* main, lent_project lent, xmleditor model,
                                   std::function<void(bool)> closed)
    : wxFrame(main, wxID_ANY, "navigation XML editor", wxDefaultPosition, wxDefaultSize,
              wxDEFAULT_FRAME_STYLE, "xmleditor"),
      lent_(std::move(lent)),
      model_(std::move(model)),
      life_(*this, *main, lent_.ask(),
            {{},
             [this] { return may_close(); },
             [this, closed = std::move(closed)] {
               lent_.give_back();
               closed(proceed_);
             }}) {
  name_control(*this, "xmleditor");
  SetIcons(program_icon());
  Text1_ = make_xml_text(this);
  fill_xml_text(*Text1_, model_.Text1());
  find_ = new find_bar(
      this,
      [this](const std::string& words, bool backwards) {
        return find_in(*Text1_, words, backwards);
      },
      [this] { Text1_->SetFocus(); });
  make_menus();
  SetStatusBar(new telling_status_bar(this, {FromDIP(layout::place_width), -1}));

  auto* whole = new wxBoxSizer(wxVERTICAL);
  whole->Add(Text1_, wxSizerFlags(1).Expand());
  whole->Add(find_, wxSizerFlags().Expand());
  SetSizer(whole);
  set_size_on_screen(*this, FromDIP(wxSize(layout::xml_width, layout::xml_height)));
  bind_controls();
  CentreOnParent();
  life_.begin();
  lent_.keeps({"navigation XML editor", [this](project& copy) {
                 take_text();
                 model_.keep_in(copy);
               }});
  show_status();
  Text1_->SetFocus();
}

void xmleditor_window::make_menus() {
  auto* edit = new wxMenu;
  const auto add = [this, edit](int id, const char* caption, std::function<void()> run) {
    edit->Append(id, caption);
    Bind(
        wxEVT_MENU, [run = std::move(run)](wxCommandEvent&) { run(); }, id);
  };
  add(wxID_UNDO, "&undo\tCtrl+Z", [this] { Text1_->Undo(); });
  add(wxID_REDO, "&redo\tCtrl+Y", [this] { Text1_->Redo(); });
  edit->AppendSeparator();
  add(wxID_FIND, "&find...\tCtrl+F", [this] { find_->ask(); });
  add(wxWindow::NewControlId(), "find &next\tF3", [this] { find_->find(false); });
  add(wxWindow::NewControlId(), "find &previous\tShift+F3", [this] { find_->find(true); });
  edit->AppendSeparator();
  add(wxWindow::NewControlId(), "&go to first fault\tF8", [this] { go_to_fault(); });
  edit->AppendSeparator();
  add(wxID_CLOSE, "&close\tCtrl+W", [this] { Close(); });
  auto* bar = new wxMenuBar;
  bar->Append(edit, "&edit");
  SetMenuBar(bar);
}

void xmleditor_window::bind_controls() {
  Text1_->Bind(wxEVT_STC_UPDATEUI, [this](wxStyledTextEvent& event) {
    const int at = Text1_->GetCurrentPos();
    SetStatusText(
        place(Text1_->LineFromPosition(at) + 1,
              Text1_->CountCharacters(Text1_->PositionFromLine(Text1_->LineFromPosition(at)), at) +
                  1),
        place_pane);
    event.Skip();
  });
  Text1_->Bind(wxEVT_STC_CHANGE, [this](wxStyledTextEvent& event) {
    rested_.StartOnce(rest_milliseconds);
    event.Skip();
  });
  rested_.Bind(wxEVT_TIMER, [this](wxTimerEvent&) { show_status(); });
}

void xmleditor_window::take_text() {
  if (Text1_->GetModify())
    model_.set_Text1(text_of(*Text1_));
  else
    model_.restore();
}

void xmleditor_window::show_status() {
  take_text();
  const auto fault = model_.fault();
  SetStatusText(fault ? place(fault->line, fault->column) + ": " + wx_text(fault->what)
                      : wxString("well formed"),
                fault_pane);
}

void xmleditor_window::go_to_fault() {
  take_text();
  const auto fault = model_.fault();
  if (!fault)
    return;
  const int begin = Text1_->PositionFromLine(fault->line - 1);
  Text1_->GotoPos(Text1_->PositionRelative(begin, fault->column - 1));
  Text1_->SetFocus();
}

bool xmleditor_window::may_close() {
  take_text();
  const xmleditor_end end = model_.close();
  proceed_ = end == xmleditor_end::proceed;
  if (end == xmleditor_end::stays_open)
    go_to_fault();
  return end != xmleditor_end::stays_open;
}

}  // namespace corvane
