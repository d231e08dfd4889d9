// How menus look: the design, the layout of their entries, and what is behind them. A page of the
// menu maker's window.
#pragma once

#include "ui/maker/maker_events.h"
#include "ui/widgets/scrolled_column.h"

#include <wx/image.h>

#include <cstddef>
#include <functional>
#include <string>

class wxCheckBox;
class wxChoice;
class wxColourPickerCtrl;
class wxDataViewListCtrl;
class wxSizer;
class wxSpinCtrl;
class wxSpinCtrlDouble;
class wxStaticText;
class wxTextCtrl;

namespace corvane {

class maker_look_panel : public scrolled_column {
 public:
  maker_look_panel(wxWindow* parent, menus_draft& draft, maker_events on);

  /// Shows what the draft says.
  void show_choices();

  /// A page in one of the designs, for the list of them.
  void show_sample(std::size_t design, const wxImage& page, bool is_wide);

 private:
  wxSizer* make_designs();
  wxSizer* make_layout();
  wxSizer* make_background();
  wxSizer* make_colours();
  wxSizer* make_picture();
  wxSizer* make_film();
  wxTextCtrl* make_path(const char* name, const char* tip);
  void choose_file(const file_dialog& dialog,
                   const std::function<void(const std::string& file)>& take);
  void choose_picture();
  void choose_film();
  void take_entries();
  void take_colours();
  void take_picture();
  void take_film();
  void show_background();

  menus_draft& draft_;
  maker_events on_;
  wxDataViewListCtrl* designs_ = nullptr;
  wxStaticText* about_ = nullptr;
  wxChoice* arrangement_ = nullptr;
  wxSpinCtrl* columns_ = nullptr;
  wxSpinCtrl* rows_ = nullptr;
  wxChoice* shape_ = nullptr;
  wxChoice* background_ = nullptr;
  wxSizer* colours_ = nullptr;
  wxSizer* picture_ = nullptr;
  wxSizer* film_ = nullptr;
  wxColourPickerCtrl* from_ = nullptr;
  wxColourPickerCtrl* to_ = nullptr;
  wxChoice* direction_ = nullptr;
  wxTextCtrl* picture_file_ = nullptr;
  wxChoice* fit_ = nullptr;
  wxSpinCtrl* shade_ = nullptr;
  wxTextCtrl* film_file_ = nullptr;
  wxSpinCtrlDouble* begin_ = nullptr;
  wxSpinCtrlDouble* length_ = nullptr;
  wxCheckBox* sound_ = nullptr;
};

}  // namespace corvane
