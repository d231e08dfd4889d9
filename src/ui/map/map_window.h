// The window "map of the disc": the map itself, what is selected in words, a field that finds, and
// the buttons for its size and its pictures.
//
// It stands beside the main window, which stays in use, and shows the project as it is. It changes
// nothing itself. Owned by the main window; gone when it is closed.
#pragma once

#include "ui/map/map_canvas.h"

#include <wx/dialog.h>

#include <functional>
#include <string>
#include <vector>

class wxButton;
class wxSizer;
class wxStaticText;
class wxTextCtrl;

namespace corvane {

class map_window : public wxDialog {
 public:
  /// An item of the menu of a node.
  struct item {
    std::string caption;  ///< as it is shown, without mnemonics; empty: a separator
    std::function<void()> run;
  };
  /// `exit`: of its rows, 1-based; 0: the node itself.
  struct handlers {
    std::function<void(const map_place&, int exit)> open;
    std::function<std::vector<item>(const map_place&, int exit)> items;
    /// An arrow was dragged from a row to a node.
    std::function<void(const map_place& from, int exit, const map_place& to)> lead;
    std::function<void()> save_svg, save_png, closed;
  };

  map_window(wxWindow* main, handlers on);

  /// `trouble`: why there is no map; else empty.
  void show_map(drawn_map map, const std::string& trouble);
  const drawn_map& shown_map() const { return canvas_->shown_map(); }

  /// Whether commands can be run: not while an editor or a run has the project.
  void let_commands(bool enabled);

  /// Has the keyboard, on the map.
  /// As large as the map that it shows wants it at 100 %, and the screen allows; no smaller than it
  /// is. For a window that is not shown yet.
  void grow_to_map();

  void come_back();

  /// Lets the user pick one of these; -1: none.
  int pick(const std::string& caption, const std::vector<std::string>& entries, int selected);

 private:
  wxSizer* make_tools();
  void on_key(wxKeyEvent& event);
  void find(bool behind);
  void show_selected();
  void show_zoom();
  void show_items(const map_place& place, int exit, const wxPoint& at);

  handlers on_;
  bool commands_enabled_ = true;
  std::string trouble_;
  wxTextCtrl* words_ = nullptr;
  wxStaticText* zoom_ = nullptr;
  wxStaticText* selected_ = nullptr;
  map_canvas* canvas_ = nullptr;
  std::vector<wxButton*> savers_;
};

}  // namespace corvane
