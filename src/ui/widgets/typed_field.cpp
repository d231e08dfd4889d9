#include "ui/widgets/typed_field.h"

#include "ui/widgets/wx_text.h"

namespace corvane {

typed_field::typed_field(wxTextCtrl* field, value shows, setter sets, const tell_event& tell)
    : window_(field), entry_(field), value_(shows), set_(sets) {
  bind(tell);
}

typed_field::typed_field(wxComboBox* field, value shows, setter sets, const tell_event& tell)
    : window_(field), entry_(field), value_(shows), set_(sets) {
  bind(tell);
  field->Bind(wxEVT_COMBOBOX, [tell](wxCommandEvent&) { tell(nullptr); });
}

// A value may be refused with a message, and no dialog can open in the middle of a change of the
// focus; hence later.
void typed_field::bind(const tell_event& tell) {
  window_->Bind(wxEVT_KILL_FOCUS, [window = window_, tell](wxFocusEvent& event) {
    window->CallAfter([tell] { tell(nullptr); });
    event.Skip();
  });
  window_->Bind(wxEVT_TEXT_ENTER, [entry = entry_, tell](wxCommandEvent&) {
    tell(nullptr);
    entry->SelectAll();
  });
}

void typed_field::show(const menu_editor_controls& c) {
  shown_ = wx_text(c.*value_);
  if (entry_->GetValue() != shown_)
    entry_->ChangeValue(shown_);
}

void typed_field::show_nothing() {
  shown_.clear();
  if (!entry_->IsEmpty())
    entry_->ChangeValue(shown_);
}

bool typed_field::apply(menu_editor& editor) const {
  const wxString typed = entry_->GetValue();
  if (typed == shown_)
    return false;
  (editor.*set_)(utf8_of(typed));
  return true;
}

}  // namespace corvane
