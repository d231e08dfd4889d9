// The list of findings, each with picture, item and text, and below it all that is told of the
// selected one: what the window "findings" and the question before a run are made around.
//
// The owner gives the findings and is told what the user does with them.
#pragma once

#include "disc/finding.h"

#include <wx/panel.h>

#include <cstddef>
#include <functional>
#include <optional>
#include <vector>

class wxDataViewListCtrl;
class wxTextCtrl;

namespace corvane {

class findings_view : public wxPanel {
 public:
  /// What the user does here.
  struct handlers {
    std::function<void()> selects;  ///< a row, or none any more
    std::function<void()> opens;    ///< the selected row, with a double click
  };

  findings_view(wxWindow* owner, handlers on);

  /// Shows these, with that row (0-based) selected, and tells `selects`.
  void show_findings(std::vector<finding> findings, std::optional<std::size_t> selected);

  /// Null if no row is selected.
  const finding* selected() const;
  std::optional<std::size_t> selected_row() const;
  void select(std::size_t row);

  void focus_list();
  bool list_has_focus() const;
  bool details_have_focus() const;

 private:
  void make_list();
  void make_details();
  void show_selected();

  handlers on_;
  std::vector<finding> findings_;
  bool filling_ = false;
  wxDataViewListCtrl* list_ = nullptr;
  wxTextCtrl* details_ = nullptr;
};

/// The picture of a severity: name for icon_picture.
const char* picture_of(finding_severity severity);

}  // namespace corvane
