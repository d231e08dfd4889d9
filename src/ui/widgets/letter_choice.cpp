#include "ui/widgets/letter_choice.h"

#include <wx/choice.h>

namespace corvane {

#ifdef __WXGTK__
namespace {

/// wxNOT_FOUND: none begins with it.
int next_entry(const wxChoice& list, wxChar letter) {
  const int count = static_cast<int>(list.GetCount()), now = list.GetSelection();
  for (int i = 1; i <= count; ++i) {
    const int entry = (now + i + count) % count;
    const wxString text = list.GetString(static_cast<unsigned>(entry));
    if (!text.empty() && wxToupper(text[0]) == wxToupper(letter))
      return entry;
  }
  return wxNOT_FOUND;
}

bool choose_by(wxChoice& list, const wxKeyEvent& key) {
  const wxChar letter = key.GetUnicodeKey();
  if ((key.GetModifiers() & ~wxMOD_SHIFT) != 0 || letter <= ' ')
    return false;
  const int entry = next_entry(list, letter);
  if (entry == wxNOT_FOUND)
    return false;
  list.SetSelection(entry);
  wxCommandEvent chosen(wxEVT_CHOICE, list.GetId());
  chosen.SetEventObject(&list);
  chosen.SetInt(entry);
  chosen.SetString(list.GetString(static_cast<unsigned>(entry)));
  list.ProcessWindowEvent(chosen);
  return true;
}

}  // namespace
#endif

void let_letters_choose(wxChoice& list) {
#ifdef __WXGTK__
  list.Bind(wxEVT_CHAR_HOOK, [&list](wxKeyEvent& key) {
    if (!choose_by(list, key))
      key.Skip();
  });
#else
  static_cast<void>(list);
#endif
}

}  // namespace corvane
