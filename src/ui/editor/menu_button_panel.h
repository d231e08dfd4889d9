// The controls of the menu editor that concern its buttons: choosing, adding and deleting them, and
// the chosen one's place, size, action, colours or bitmaps.
//
// They show what the editor's model says and tell it what the user did.
#pragma once

#include "menus/action_choices.h"
#include "ui/widgets/typed_field.h"

#include <wx/bitmap.h>
#include <wx/panel.h>

#include <functional>
#include <string>
#include <vector>

class wxButton;
class wxChoice;
class wxControlWithItems;
class wxGridBagSizer;
class wxSizer;
class wxSlider;
class wxStaticBitmap;
class wxStaticBox;
class wxStaticText;

namespace corvane {

class verdict_line;

/// What helps with the action of a button.
struct action_help {
  menu_event pick;  ///< lets the user pick one by its name
  std::function<action_verdict(const std::string& typed)> verdict;
};

class menu_button_panel : public wxPanel {
 public:
  menu_button_panel(wxWindow* parent, tell_event tell, action_help help);

  /// `of_chosen`: the values are the chosen button's; else nothing is shown of them and nothing can
  /// be changed. True when other controls are shown than before, which need another room.
  bool show(const menu_editor_controls& c, bool of_chosen);

  /// Hands what was typed to the model.
  void apply(menu_editor& editor) const;

  /// The highlight bitmap in its own size; null: none.
  const wxBitmap& highlight() const { return highlight_.bitmap; }

 private:
  /// A bitmap file as it was read last.
  struct read_bitmap {
    std::string file;
    wxBitmap bitmap;
    void read(const std::string& stored_path);
  };
  using text_setter = void (menu_editor::*)(const std::string&);

  wxSizer* make_chooser();
  wxSizer* make_selected();
  wxSizer* make_advanced();
  void add_position(wxGridBagSizer* grid);
  void add_size(wxGridBagSizer* grid, int row, const char* label, wxSlider* slides,
                wxTextCtrl* field);
  void add_action(wxGridBagSizer* grid);
  void add_colours(wxGridBagSizer* grid);
  void add_bitmaps(wxGridBagSizer* grid);
  wxTextCtrl* make_field(const char* name, typed_field::value shows, typed_field::setter sets);
  wxChoice* make_colour_list(const char* name, text_setter pick);
  wxStaticBitmap* make_image(const char* name, const char* tip);
  wxButton* make_button(wxWindow* parent, const char* name, const char* label, menu_event event);
  void show_chooser(const menu_editor_controls& c);
  void show_places(const menu_editor_controls& c);
  void show_values(const menu_editor_controls& c, bool of_chosen);
  void show_verdict();
  bool show_mode(const menu_editor_controls& c);
  bool show_bitmaps(const menu_editor_controls& c);

  tell_event tell_;
  action_help help_;
  std::vector<typed_field> fields_;
  wxControlWithItems* Combo2_ = nullptr;
  wxStaticText* button_ = nullptr;
  wxStaticBox* selected_ = nullptr;  ///< around all that concerns the chosen button
  wxTextCtrl* widthpos_ = nullptr;
  wxTextCtrl* heightpos_ = nullptr;
  wxSlider* Slider1_ = nullptr;
  wxSlider* Slider2_ = nullptr;
  wxComboBox* Combo1_ = nullptr;
  verdict_line* verdict_ = nullptr;  ///< what the action does, or what is wrong with it
  wxChoice* Colorhighlight_ = nullptr;
  wxChoice* ColorSelect_ = nullptr;
  wxStaticBitmap* Image1_ = nullptr;
  wxStaticBitmap* Image2_ = nullptr;
  std::vector<wxWindow*> primitive_;  ///< shown for a button in colours,
  std::vector<wxWindow*> bitmap_;     ///< for one of bitmaps
  wxStaticBox* advanced_ = nullptr;
  read_bitmap highlight_, select_;
};

}  // namespace corvane
