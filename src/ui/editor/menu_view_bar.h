// What is shown in the picture of the menu editor, below it: the select looks, the ways of the
// arrow keys, the safe area, the shape and the size of the picture.
#pragma once

#include "ui/editor/menu_picture.h"

#include <wx/panel.h>

#include <functional>
#include <vector>

class wxCheckBox;
class wxChoice;
class wxSizer;

namespace corvane {

/// Whole times of 100 % that the picture can be shown at.
inline constexpr int most_zoom = 4;

struct view_choice {
  picture_options picture;
  bool true_shape = false;  ///< in the proportions of a television
  int zoom = 0;             ///< times 100 %; 0: as large as there is room
};

class menu_view_bar : public wxPanel {
 public:
  menu_view_bar(wxWindow* parent, std::function<void()> changed);

  view_choice chosen() const;

  void choose_shape(bool true_shape);
  void choose_zoom(int zoom);

 private:
  wxCheckBox* make_check(const char* name, const char* label, const char* tip);
  wxChoice* make_choice(wxSizer* row, const char* name, const char* label, const char* tip,
                        const std::vector<wxString>& entries);

  std::function<void()> changed_;
  wxCheckBox* pressed_ = nullptr;
  wxCheckBox* safe_area_ = nullptr;
  wxCheckBox* true_shape_ = nullptr;
  wxChoice* ways_ = nullptr;
  wxChoice* zoom_ = nullptr;
};

}  // namespace corvane
