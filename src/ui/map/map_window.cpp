#include "ui/map/map_window.h"

#include "formats/numbers.h"
#include "ui/widgets/control_name.h"
#include "ui/widgets/controls.h"
#include "ui/widgets/icons.h"
#include "ui/widgets/layout.h"
#include "ui/widgets/screen_fit.h"
#include "ui/widgets/wx_text.h"

#include <wx/button.h>
#include <wx/choicdlg.h>
#include <wx/menu.h>
#include <wx/sizer.h>
#include <wx/stattext.h>
#include <wx/textctrl.h>

#include <cmath>
#include <cstdint>
#include <utility>

namespace corvane {
namespace {

constexpr double button_zoom = 1.25;

}  // namespace

map_window::map_window(wxWindow* main, handlers on)
    : wxDialog(main, wxID_ANY, "map of the disc", wxDefaultPosition, wxDefaultSize,
               wxDEFAULT_DIALOG_STYLE | wxRESIZE_BORDER | wxMAXIMIZE_BOX, "discmap"),
      on_(std::move(on)) {
  name_control(*this, "discmap");
  SetIcons(program_icon());
  const int border = FromDIP(layout::window_border), gap = FromDIP(layout::group_gap);
  auto* whole = new wxBoxSizer(wxVERTICAL);
  whole->Add(make_tools(), wxSizerFlags().Expand().Border(wxALL, border));
  map_canvas::handlers on_canvas;
  // Once the key or the pointer has been dealt with: windows open, and questions.
  on_canvas.open = [this](const map_place& place, int exit) {
    CallAfter([this, place, exit] { on_.open(place, exit); });
  };
  on_canvas.context = [this](const map_place& place, int exit, const wxPoint& at) {
    CallAfter([this, place, exit, at] { show_items(place, exit, at); });
  };
  on_canvas.lead = [this](const map_place& from, int exit, const map_place& to) {
    CallAfter([this, from, exit, to] { on_.lead(from, exit, to); });
  };
  on_canvas.selected = [this] { show_selected(); };
  on_canvas.zoomed = [this] { show_zoom(); };
  canvas_ = new map_canvas(this, std::move(on_canvas));
  canvas_->SetMinSize(FromDIP(wxSize(layout::map_least_width, layout::map_least_height)));
  whole->Add(canvas_, wxSizerFlags(1).Expand().Border(wxLEFT | wxRIGHT, border));
  selected_ = new wxStaticText(this, wxID_ANY, wxString(), wxDefaultPosition, wxDefaultSize,
                               wxST_NO_AUTORESIZE | wxST_ELLIPSIZE_END);
  name_control(*selected_, "selected");
  whole->AddSpacer(gap);
  whole->Add(selected_, wxSizerFlags().Expand().Border(wxLEFT | wxRIGHT, border));
  whole->AddSpacer(border);
  SetSizer(whole);
  SetMinClientSize(whole->CalcMin());
  set_size_on_screen(*this, FromDIP(wxSize(layout::map_width, layout::map_height)));
  CentreOnParent();
  SetEscapeId(wxID_CLOSE);
  Bind(wxEVT_CHAR_HOOK, &map_window::on_key, this);
  Bind(
      wxEVT_BUTTON, [this](wxCommandEvent&) { Close(); }, wxID_CLOSE);
  Bind(wxEVT_CLOSE_WINDOW, [this](wxCloseEvent&) {
    on_.closed();
    Destroy();
  });
  canvas_->SetFocus();
}

wxSizer* map_window::make_tools() {
  words_ = new wxTextCtrl(this, wxID_ANY, wxString(), wxDefaultPosition,
                          FromDIP(wxSize(layout::map_find_width, -1)), wxTE_PROCESS_ENTER);
  name_control(*words_, "words");
  words_->SetHint("find");
  words_->SetToolTip("find a title, menu or command (Ctrl+F); Enter goes to the next one");
  words_->Bind(wxEVT_TEXT, [this](wxCommandEvent&) { find(false); });
  words_->Bind(wxEVT_TEXT_ENTER, [this](wxCommandEvent&) { find(true); });
  zoom_ = new wxStaticText(this, wxID_ANY, "100 %", wxDefaultPosition, wxDefaultSize,
                           wxST_NO_AUTORESIZE | wxALIGN_CENTRE_HORIZONTAL);
  zoom_->SetMinSize(wxSize(GetTextExtent("0000 %").x, -1));
  name_control(*zoom_, "zoom");
  const wxSizerFlags gap =
      wxSizerFlags().CentreVertical().Border(wxLEFT, FromDIP(layout::control_gap));
  auto* row = new wxBoxSizer(wxHORIZONTAL);
  row->Add(words_, wxSizerFlags().CentreVertical());
  row->Add(make_button(this, "smaller", "s&maller", "show more of the map (-, Ctrl and the wheel)",
                       [this] { canvas_->zoom_by(1 / button_zoom); }),
           gap);
  row->Add(zoom_, gap);
  row->Add(make_button(this, "larger", "&larger", "show it larger (+, Ctrl and the wheel)",
                       [this] { canvas_->zoom_by(button_zoom); }),
           gap);
  row->Add(make_button(this, "fit", "&fit", "show all of it (0)", [this] { canvas_->fit(); }), gap);
  row->AddStretchSpacer();
  savers_ = {make_button(this, "svg", "save as &SVG...", "write the map into a picture of lines",
                         [this] { on_.save_svg(); }),
             make_button(this, "png", "save as &PNG...", "write the map into a picture of dots",
                         [this] { on_.save_png(); })};
  for (wxButton* const saver : savers_)
    row->Add(saver, gap);
  savers_.back()->Show(makes_png());
  row->Add(new wxButton(this, wxID_CLOSE, "&close"), gap);
  return row;
}

// The dialog takes Tab and Enter for itself otherwise.
void map_window::on_key(wxKeyEvent& event) {
  const int key = event.GetKeyCode();
  const bool of_map =
      canvas_->HasFocus() && (key == WXK_TAB || key == WXK_RETURN || key == WXK_NUMPAD_ENTER);
  if (event.GetModifiers() == wxMOD_CONTROL && key == 'F') {
    words_->SetFocus();
    words_->SelectAll();
  } else if (key == WXK_ESCAPE && words_->HasFocus() && !words_->IsEmpty()) {
    words_->Clear();
    canvas_->SetFocus();
  } else if (key == WXK_ESCAPE && canvas_->cancel_drag()) {
    canvas_->SetFocus();
  } else if (of_map) {
    event.DoAllowNextEvent();
    event.Skip();
  } else {
    event.Skip();
  }
}

void map_window::find(bool behind) {
  const bool found = canvas_->find(utf8_of(words_->GetValue()), behind);
  words_->SetForegroundColour(found ? wxNullColour : wxColour(196, 43, 28));
  words_->Refresh();
}

void map_window::show_map(drawn_map map, const std::string& trouble) {
  trouble_ = trouble;
  const bool is_empty = map.cards.empty();
  canvas_->show_map(std::move(map));
  for (wxButton* const saver : savers_)
    saver->Enable(commands_enabled_ && !is_empty);
  show_selected();
}

void map_window::show_selected() {
  if (canvas_ == nullptr || selected_ == nullptr)
    return;
  const map_card* const card = canvas_->selected_card();
  const auto exit = static_cast<std::size_t>(canvas_->selected_exit());
  std::string text = trouble_;
  if (text.empty() && card != nullptr)
    text = exit > 0 && exit <= card->rows.size() ? card->heading + ": " + card->rows[exit - 1].text
                                                 : words_of(*card);
  selected_->SetLabelText(wx_text(text));
  selected_->SetToolTip(wx_text(text));
}

void map_window::show_zoom() {
  if (canvas_ != nullptr && zoom_ != nullptr)
    zoom_->SetLabelText(
        wx_text(trimmed(static_cast<std::int64_t>(std::lround(canvas_->zoom() * 100))) + " %"));
}

void map_window::let_commands(bool enabled) {
  commands_enabled_ = enabled;
  canvas_->let_commands(enabled);
  for (wxButton* const saver : savers_)
    saver->Enable(enabled && !canvas_->shown_map().cards.empty());
}

void map_window::grow_to_map() {
  const map_layout& map = canvas_->shown_map().layout;
  constexpr int border = 2;  // of the canvas
  wxSize wanted = FromDIP(wxSize(static_cast<int>(std::ceil(map.width)) + 2 * border,
                                 static_cast<int>(std::ceil(map.height)) + 2 * border));
  Layout();
  wanted += GetClientSize() - canvas_->GetSize();
  wanted.IncTo(GetClientSize());
  set_size_on_screen(*this, wanted);
  CentreOnParent();
}

void map_window::come_back() {
  Raise();
  canvas_->SetFocus();
}

// What is chosen is done once the menu has gone: it may open a window.
void map_window::show_items(const map_place& place, int exit, const wxPoint& at) {
  const std::vector<item> items = on_.items(place, exit);
  wxMenu menu;
  std::vector<std::pair<int, std::function<void()>>> runs;
  for (const item& one : items) {
    if (one.caption.empty()) {
      menu.AppendSeparator();
      continue;
    }
    wxMenuItem* const entry =
        menu.Append(wxID_ANY, wxControl::EscapeMnemonics(wx_text(one.caption)));
    entry->Enable(commands_enabled_);
    runs.emplace_back(entry->GetId(), one.run);
  }
  const int chosen = canvas_->GetPopupMenuSelectionFromUser(menu, at);
  for (const auto& [id, run] : runs)
    if (id == chosen)
      CallAfter(run);
}

int map_window::pick(const std::string& caption, const std::vector<std::string>& entries,
                     int selected) {
  wxSingleChoiceDialog dialog(this, wx_text(caption), "map of the disc", wx_rows(entries));
  name_control(dialog, "leadto");
  dialog.SetSelection(selected);
  return dialog.ShowModal() == wxID_OK ? dialog.GetSelection() : wxNOT_FOUND;
}

}  // namespace corvane
