// A drop-down list in which typing goes to the first entry that begins with what was typed, whether
// the list is open or not. For long lists: a language, a font.
//
// It can also show a text that is none of its entries, as a project file may hold one.
#pragma once

#include <wx/arrstr.h>
#include <wx/odcombo.h>
#include <wx/string.h>

#include <cstddef>
#include <functional>

namespace corvane {

class search_list : public wxOwnerDrawnComboBox {
 public:
  /// `picked` gets the number (0-based) of each entry that the user goes to.
  search_list(wxWindow* parent, const char* name, const wxArrayString& entries,
              std::function<void(int)> picked);

  ~search_list() override;

  /// From now on the list has these entries; the text that is shown stays.
  void offer(const wxArrayString& entries);

  /// Shows a text; when it is one of the entries, that one is selected.
  void show(const wxString& text);

  /// Shows an entry (0-based), or with wxNOT_FOUND nothing.
  void show_entry(int entry);

  /// A text that is shown in grey while there is no other.
  void set_hint(const wxString& hint);
  const wxString& hint() const { return hint_; }

  /// Leaves the keys of labels and menus alone, which the toolkit would search for.
  bool ProcessEvent(wxEvent& event) override;

 protected:
  void DoSetPopupControl(wxComboPopup* popup) override;
  wxCoord OnMeasureItem(std::size_t entry) const override;

 private:
  class entry_list;

  /// What is typed next is a new search.
  void end_search();

  void on_kill_focus(wxFocusEvent& event);
  void on_key(wxKeyEvent& event);
  void on_paint(wxPaintEvent& event);

  entry_list* list_ = nullptr;
  wxString hint_;
};

}  // namespace corvane
