#include "ui/disc/log_window.h"

#include "runner/run_meter.h"
#include "ui/disc/log_colours.h"
#include "ui/disc/log_page.h"
#include "ui/widgets/control_name.h"
#include "ui/widgets/fixed_pitch.h"
#include "ui/widgets/icons.h"
#include "ui/widgets/layout.h"
#include "ui/widgets/wx_text.h"

#include <wx/button.h>
#include <wx/gauge.h>
#include <wx/notebook.h>
#include <wx/panel.h>
#include <wx/sizer.h>
#include <wx/stattext.h>
#include <wx/textctrl.h>

#include <algorithm>
#include <cmath>
#include <utility>

#ifdef __WXGTK__
#include <gtk/gtk.h>
#endif

namespace corvane {
namespace {

constexpr int run_page = 0, last_page = 1;

void set_share(wxGauge& bar, double percent) {
  const double inside = std::isnan(percent) ? 0 : std::clamp(percent, 0.0, 100.0);
  bar.SetValue(static_cast<int>(std::lround(inside * progress_steps / 100)));
}

// GTK lets a text glide to where it is to be. One that is put away meanwhile goes on gliding for
// nobody: GTK forgets the handler's number before it lets go of it. A value that is set ends it.
void end_gliding(wxWindow& window) {
#ifdef __WXGTK__
  if (GTK_IS_SCROLLED_WINDOW(window.GetHandle())) {
    auto* const text = GTK_SCROLLED_WINDOW(window.GetHandle());
    for (GtkAdjustment* const place :
         {gtk_scrolled_window_get_hadjustment(text), gtk_scrolled_window_get_vadjustment(text)})
      gtk_adjustment_set_value(place, gtk_adjustment_get_value(place));
  }
  for (wxWindow* const child : window.GetChildren())
    end_gliding(*child);
#else
  (void)window;
#endif
}

}  // namespace

log_window::log_window(std::function<void()> stop, std::string log_file)
    : wxFrame(nullptr, wxID_ANY, "Corvane log", wxDefaultPosition, wxDefaultSize,
              wxDEFAULT_FRAME_STYLE, "log") {
  auto* panel = new wxPanel(this);
  pages_ = new wxNotebook(panel, wxID_ANY);
  pages_->AddPage(make_run_page(), "run");
  last_ = new log_page(pages_, std::move(log_file));
  pages_->AddPage(last_, "log of the last run");
  name_control(*this, "log");
  name_control(*pages_, "pages");
  SetIcons(program_icon());

  stop_ = new wxButton(panel, wxID_ANY, "&stop");
  stop_->SetBitmap(icon_picture("stop", layout::button_icon));
  stop_->SetToolTip("stop authoring and end every tool that is running");
  stop_->Disable();
  name_control(*stop_, "stop");
  hide_ = new wxButton(panel, wxID_ANY, "&hide");
  hide_->SetToolTip("put the log window away (Esc); \"show log\" brings it back");
  name_control(*hide_, "hide");

  auto* whole = new wxBoxSizer(wxVERTICAL);
  whole->Add(pages_, wxSizerFlags(1).Expand());
  whole->Add(make_bars(), wxSizerFlags().Expand().Border(wxALL, FromDIP(layout::control_gap)));
  panel->SetSizer(whole);
  wxSize least = whole->CalcMin();
  least.IncTo(FromDIP(wxSize(layout::log_least_width, layout::log_least_height)));
  SetMinClientSize(least);
  SetClientSize(FromDIP(wxSize(layout::log_width, layout::log_height)));

  stop_->Bind(wxEVT_BUTTON, [stop = std::move(stop)](wxCommandEvent&) { stop(); });
  hide_->Bind(wxEVT_BUTTON, [this](wxCommandEvent&) { hide(); });
  pages_->Bind(wxEVT_NOTEBOOK_PAGE_CHANGED, [this](wxBookCtrlEvent& event) {
    event.Skip();
    if (on_last_log())
      last_->show_log();
  });
  bind_keys();
  // Only the program hides the log: while a run is on, it is what the user has of it.
  Bind(wxEVT_CLOSE_WINDOW, [](wxCloseEvent& event) {
    if (event.CanVeto())
      event.Veto();
  });
}

wxWindow* log_window::make_run_page() {
  auto* page = new wxPanel(pages_);
  Text1_ = new wxTextCtrl(page, wxID_ANY, wxString(), wxDefaultPosition, wxDefaultSize,
                          wxTE_MULTILINE | wxTE_READONLY | wxTE_DONTWRAP | wxTE_RICH2);
  Text1_->SetFont(fixed_pitch(Text1_->GetFont()));
  name_control(*Text1_, "Text1");
  auto* whole = new wxBoxSizer(wxVERTICAL);
  whole->Add(Text1_, wxSizerFlags(1).Expand());
  page->SetSizer(whole);
  return page;
}

wxGauge* log_window::make_bar(const char* name) {
  auto* bar = new wxGauge(stop_->GetParent(), wxID_ANY, progress_steps);
  name_control(*bar, name);
  return bar;
}

// That of the tool stands at the bottom.
wxSizer* log_window::make_bars() {
  wxWindow* panel = stop_->GetParent();
  const int gap = FromDIP(layout::control_gap);
  where_ = new wxStaticText(panel, wxID_ANY, wxString(), wxDefaultPosition, wxDefaultSize,
                            wxST_NO_AUTORESIZE | wxST_ELLIPSIZE_END);
  where_->SetMinSize(wxSize(1, -1));
  name_control(*where_, "where");
  auto* grid = new wxFlexGridSizer(3, gap, gap);
  grid->AddGrowableCol(1);
  const auto row = [&](const char* label, wxGauge*& bar, const char* name, wxButton* button) {
    grid->Add(new wxStaticText(panel, wxID_ANY, label), wxSizerFlags().CentreVertical());
    bar = make_bar(name);
    grid->Add(bar, wxSizerFlags().Expand().CentreVertical());
    grid->Add(button, wxSizerFlags().Expand());
  };
  row("whole run", whole_bar_, "wholerun", stop_);
  row("this step", ProgressBar1_, "ProgressBar1", hide_);
  auto* bars = new wxBoxSizer(wxVERTICAL);
  bars->Add(where_, wxSizerFlags().Expand().Border(wxBOTTOM, gap));
  bars->Add(grid, wxSizerFlags().Expand());
  return bars;
}

void log_window::bind_keys() {
  Bind(wxEVT_CHAR_HOOK, [this](wxKeyEvent& event) {
    const int key = event.GetKeyCode();
    if (key == WXK_ESCAPE && hide_->IsEnabled())
      hide();
    else if (on_last_log() && key == 'F' && event.GetModifiers() == wxMOD_CONTROL)
      last_->ask_what_to_find();
    else if (on_last_log() && key == WXK_F3)
      last_->find_again(event.ShiftDown());
    else
      event.Skip();
  });
}

void log_window::hide() {
  Hide();
}

bool log_window::Show(bool show) {
  if (!show && IsShown())
    end_gliding(*this);
  return wxFrame::Show(show);
}

bool log_window::on_last_log() const {
  return pages_->GetSelection() == last_page;
}

void log_window::show_text(const std::string& text) {
  const wxString lines = wx_lines(text);
  if (lines == Text1_->GetValue())
    return;
  Text1_->ChangeValue(lines);
  colour_lines();
  // The first column of the last line: its far end would scroll long lines out of sight.
  Text1_->ShowPosition(Text1_->XYToPosition(0, Text1_->GetNumberOfLines() - 1));
  repaint();
}

// A run's text is a few lines, so that all are coloured anew each time. A rich text of Windows
// gives new text the colour that the old one began with.
void log_window::colour_lines() {
  long from = 0;
  Text1_->SetStyle(0, Text1_->GetLastPosition(), wxTextAttr(Text1_->GetForegroundColour()));
  for (int line = 0; line < Text1_->GetNumberOfLines(); ++line) {
    const wxString text = Text1_->GetLineText(line);
    const long to = from + static_cast<long>(text.length());
    const log_line_kind kind = kind_of_log_line(utf8_of(text));
    if (kind != log_line_kind::plain)
      Text1_->SetStyle(from, to, look_of_log_line(kind));
    from = to + 1;
  }
}

void log_window::show_progress(double percent) {
  set_share(*ProgressBar1_, percent);
}

void log_window::show_whole(const run_whole& whole) {
  set_share(*whole_bar_, whole.percent);
  if (const wxString text = wx_text(whole_text(whole)); text != where_->GetLabelText())
    where_->SetLabelText(text);
}

void log_window::run_is_active(bool active) {
  stop_->Enable(active);
  hide_->Enable(!active);
}

void log_window::show_run() {
  pages_->ChangeSelection(run_page);
}

void log_window::show_last_log() {
  pages_->ChangeSelection(last_page);
  last_->show_log();
}

bool log_window::has_last_log() const {
  return last_->has_log();
}

void log_window::log_has_changed() {
  last_->has_changed();
  if (on_last_log() && IsShown())
    last_->show_log();
}

// The text is painted at once, and with it, on GTK, whatever else is to be painted: bars with the
// lengths that they had, for the new ones are worked out just before the next picture. For that
// they have to be painted again.
void log_window::repaint() {
  Text1_->Refresh();
  Text1_->Update();
  whole_bar_->Refresh();
  ProgressBar1_->Refresh();
}

}  // namespace corvane
