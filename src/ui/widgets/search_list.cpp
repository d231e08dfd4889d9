#include "ui/widgets/search_list.h"

#include "ui/widgets/control_name.h"
#include "ui/widgets/layout.h"
#include "ui/widgets/wheel.h"

#include <wx/dcclient.h>
#include <wx/renderer.h>
#include <wx/settings.h>

#include <utility>

namespace corvane {

class search_list::entry_list : public wxVListBoxComboPopup {
 public:
  void end_search() { StopPartialCompletion(); }
};

// The toolkit's own drop-down lists do not search with GTK; the one that it draws itself does. Made
// in two steps, since the first would make its list itself.
search_list::search_list(wxWindow* parent, const char* name, const wxArrayString& entries,
                         std::function<void(int)> picked) {
  Create(parent, wxID_ANY, wxString(), wxDefaultPosition, wxDefaultSize, entries, wxCB_READONLY);
  name_drawn_control(*this, name, control_role::list);
  let_wheel_pass(*this);
#ifdef __WXGTK__
  Bind(wxEVT_PAINT, &search_list::on_paint, this);
#endif
  Bind(wxEVT_KILL_FOCUS, &search_list::on_kill_focus, this);
  Bind(wxEVT_CHAR_HOOK, &search_list::on_key, this);
  Bind(wxEVT_COMBOBOX, [this, picked = std::move(picked)](wxCommandEvent&) {
    if (const int entry = GetSelection(); entry != wxNOT_FOUND)
      picked(entry);
  });
}

// The list is gone before the window, which may still lose the focus then.
search_list::~search_list() {
  Unbind(wxEVT_KILL_FOCUS, &search_list::on_kill_focus, this);
}

void search_list::on_kill_focus(wxFocusEvent& event) {
  end_search();
  event.Skip();
}

// Before a dialog around takes it for its cancel button.
void search_list::on_key(wxKeyEvent& event) {
  if (event.GetKeyCode() == WXK_ESCAPE && IsPopupShown())
    HidePopup();
  else
    event.Skip();
}

void search_list::DoSetPopupControl(wxComboPopup* popup) {
  if (popup == nullptr)
    popup = list_ = new entry_list;
  wxOwnerDrawnComboBox::DoSetPopupControl(popup);
}

// As GTK draws its own drop-down lists; the toolkit would draw a field with an arrow beside it.
void search_list::on_paint(wxPaintEvent&) {
  wxPaintDC dc(this);
  const int state = !IsEnabled() ? wxCONTROL_DISABLED
                    : HasFocus() ? wxCONTROL_FOCUSED
                                 : wxCONTROL_NONE;
  wxRendererNative& draw = wxRendererNative::Get();
  wxRect rest = GetClientRect();
  draw.DrawPushButton(this, dc, rest, state);
  rest.Deflate(FromDIP(layout::box_border), 0);
  const int arrow = FromDIP(layout::button_icon);
  rest.width -= arrow;
  draw.DrawDropArrow(this, dc, wxRect(rest.GetRight() + 1, rest.y, arrow, rest.height), state);
  dc.SetFont(GetFont());
  const bool faint = !IsEnabled() || GetValue().empty();
  dc.SetTextForeground(
      wxSystemSettings::GetColour(faint ? wxSYS_COLOUR_GRAYTEXT : wxSYS_COLOUR_BTNTEXT));
  const wxString text = GetValue().empty() ? hint_ : GetValue();
  dc.DrawLabel(Ellipsize(text, dc, wxELLIPSIZE_END, rest.width), rest, wxALIGN_CENTRE_VERTICAL);
}

void search_list::end_search() {
  if (list_ != nullptr)
    list_->end_search();
}

void search_list::offer(const wxArrayString& entries) {
  if (entries == GetStrings())
    return;
  end_search();
  const wxString shown = GetValue();
  Set(entries);
  SetText(shown);
}

void search_list::show(const wxString& text) {
  if (GetValue() == text)
    return;
  end_search();
  const int entry = FindString(text, true);
  SetSelection(entry);
  if (entry == wxNOT_FOUND)
    SetText(text);
}

wxCoord search_list::OnMeasureItem(std::size_t) const {
  return GetCharHeight() + FromDIP(layout::control_gap);
}

void search_list::set_hint(const wxString& hint) {
  if (hint_ == hint)
    return;
  hint_ = hint;
  Refresh();
}

void search_list::show_entry(int entry) {
  if (GetSelection() == entry)
    return;
  end_search();
  SetSelection(entry);
}

bool search_list::ProcessEvent(wxEvent& event) {
  const auto* key = dynamic_cast<const wxKeyEvent*>(&event);
  const bool meant_for_window = key != nullptr && (key->AltDown() || key->ControlDown()) &&
                                key->GetKeyCode() != WXK_DOWN && key->GetKeyCode() != WXK_UP;
  return !meant_for_window && wxOwnerDrawnComboBox::ProcessEvent(event);
}

}  // namespace corvane
