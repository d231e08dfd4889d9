#include "ui/editor/menuselect.h"

#include "menus/menu_picker.h"
#include "ui/widgets/control_name.h"
#include "ui/widgets/dialog_buttons.h"
#include "ui/widgets/icons.h"
#include "ui/widgets/layout.h"
#include "ui/widgets/wx_text.h"

#include <wx/button.h>
#include <wx/dialog.h>
#include <wx/listbox.h>
#include <wx/sizer.h>

namespace corvane {
namespace {

class menuselect : public wxDialog {
 public:
  menuselect(wxWindow* main, const menu_picker& picker);

  /// The entry the user took, 0-based; wxNOT_FOUND when he took none.
  int ask();

 private:
  wxSizer* make_buttons(bool erases);
  void confirm();

  wxListBox* List1_;
};

wxArrayString wx_rows(const std::vector<std::string>& rows) {
  wxArrayString all;
  for (const std::string& row : rows)
    all.push_back(wx_text(row));
  return all;
}

menuselect::menuselect(wxWindow* main, const menu_picker& picker)
    : wxDialog(main, wxID_ANY, wx_text(picker.caption()), wxDefaultPosition, wxDefaultSize,
               wxDEFAULT_DIALOG_STYLE | wxRESIZE_BORDER, "menuselect"),
      List1_(new wxListBox(this, wxID_ANY, wxDefaultPosition,
                           FromDIP(wxSize(layout::picker_width, layout::picker_height)),
                           wx_rows(picker.entries()),
                           wxLB_SINGLE | wxLB_HSCROLL | wxLB_NEEDED_SB)) {
  name_control(*this, "menuselect");
  SetIcons(program_icon());
  name_control(*List1_, "List1");
  if (!List1_->IsEmpty())
    List1_->SetSelection(0);
  List1_->Bind(wxEVT_LISTBOX_DCLICK, [this](wxCommandEvent&) { confirm(); });
  Bind(
      wxEVT_BUTTON, [this](wxCommandEvent&) { confirm(); }, wxID_OK);

  auto* whole = new wxBoxSizer(wxVERTICAL);
  const int border = FromDIP(layout::window_border);
  whole->Add(List1_, wxSizerFlags(1).Expand().Border(wxALL, border));
  whole->Add(make_buttons(picker.caption() == picker_erase_caption),
             wxSizerFlags().Right().Border(wxLEFT | wxRIGHT | wxBOTTOM, border));
  SetSizerAndFit(whole);
  List1_->SetFocus();
  CentreOnParent();
}

/// The button says what confirming does, since erasing is not asked about again.
wxSizer* menuselect::make_buttons(bool erases) {
  auto* accept = new wxButton(this, wxID_OK, erases ? "&erase" : "&edit");
  accept->SetDefault();
  return dialog_buttons(accept, new wxButton(this, wxID_CANCEL, "&cancel"));
}

// GTK takes Enter on an entry for a double click and for the default button, too.
void menuselect::confirm() {
  if (IsModal() && List1_->GetSelection() != wxNOT_FOUND)
    EndModal(wxID_OK);
}

int menuselect::ask() {
  return ShowModal() == wxID_OK ? List1_->GetSelection() : wxNOT_FOUND;
}

}  // namespace

// What confirming has to tell, it tells over the main window: the picker is gone by then.
bool show_menuselect(wxWindow* main, menu_picker& picker) {
  const int entry = menuselect(main, picker).ask();
  return entry != wxNOT_FOUND && picker.confirm(entry);
}

}  // namespace corvane
