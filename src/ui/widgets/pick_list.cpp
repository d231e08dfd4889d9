#include "ui/widgets/pick_list.h"

#include "ui/widgets/wheel.h"

#include <wx/choice.h>
#include <wx/combobox.h>

#include <utility>

#ifdef __WXGTK__
#include <gtk/gtk.h>
#endif

namespace corvane {
namespace {

#ifdef __WXGTK__
/// A wxChoice tells of changes only; that its list was closed is known to GTK.
class choice_with_picks : public wxChoice {
 public:
  choice_with_picks(wxWindow* parent, std::function<void()> picked)
      : wxChoice(parent, wxID_ANY), picked_(std::move(picked)) {
    Bind(wxEVT_CHOICE, [this](wxCommandEvent&) { picked_(); });
    g_signal_connect(GetHandle(), "notify::popup-shown", G_CALLBACK(popup_changed), this);
  }

 private:
  static void popup_changed(GtkComboBox* box, GParamSpec* /*property*/, gpointer data) {
    gboolean shown = FALSE;
    g_object_get(box, "popup-shown", &shown, nullptr);
    auto* list = static_cast<choice_with_picks*>(data);
    if (shown == FALSE && !list->IsBeingDeleted())
      list->CallAfter(list->picked_);  // the selection changes after the list is closed
  }

  std::function<void()> picked_;
};
#endif

}  // namespace

wxControlWithItems* make_pick_list(wxWindow* parent, std::function<void()> picked) {
#ifdef __WXGTK__
  auto* list = new choice_with_picks(parent, std::move(picked));
#else
  auto* list = new wxComboBox(parent, wxID_ANY, wxString(), wxDefaultPosition, wxDefaultSize, 0,
                              nullptr, wxCB_READONLY);
  for (const auto& type : {wxEVT_COMBOBOX, wxEVT_COMBOBOX_CLOSEUP})
    list->Bind(type, [picked](wxCommandEvent&) { picked(); });
#endif
  let_wheel_pass(*list);
  return list;
}

}  // namespace corvane
