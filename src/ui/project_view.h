// The main window's inner part: the lists of titles and menus, what the selected one holds, the
// statistics, the region. Shows a project; what the user does there is handed on.
#pragma once

#include "disc/finding.h"
#include "project/project.h"

#include <wx/longlong.h>
#include <wx/panel.h>

#include <functional>
#include <string>

class wxBitmapButton;
class wxButton;
class wxChoice;
class wxKeyEvent;
class wxMenu;
class wxMouseEvent;
class wxPaintEvent;
class wxListBox;
class wxSizer;
class wxSizerItem;
class wxStaticBitmap;
class wxStaticBox;
class wxStaticText;

namespace corvane {

class details_panel;
class finding_list;
class space_bar;
struct last_disc;

class project_view : public wxPanel {
 public:
  /// What the user can do here.
  struct handlers {
    std::function<void(int)> select;  ///< a row of the list, 0-based; -1: none
    std::function<void()> titleup, titledown;
    std::function<void()> insert, remove;  ///< the keys Insert and Delete on the list
    std::function<void()> open;            ///< a double click on a title, or Enter
    std::function<void(int)> move;         ///< the selected title was dragged to a row, 0-based
    std::function<wxMenu*()> context;      ///< the menu of the selected title, to be deleted
    std::function<void()> add_menu, edit_menu, remove_menu;  ///< the last two: the selected one
    std::function<void()> no_menus;         ///< the list of menus had the keys and has gone
    std::function<wxMenu*()> menu_context;  ///< the menu of the selected menu, to be deleted
    std::function<void()> show_details;     ///< another item is shown, or its place has come up
    std::function<void(const std::string&)> region;
    std::function<void()> findings;                     ///< the line of what was found
    std::function<void()> open_folder, play, show_log;  ///< the line of the last disc
  };

  project_view(wxWindow* parent, handlers on);

  /// Brings every control up to date.
  void show_project(const project& p);

  /// Gives the list of titles the keys; what is shown is the selected one.
  void focus_titles();
  /// Gives the keys back to the list that had them last.
  void focus_list();

  /// The title or menu whose details are shown: the selected one of the list that had the keys
  /// last; the whole disc when none is selected.
  finding_item shown_item() const;
  /// Where they are shown; null until the window has been painted.
  details_panel* details() const { return details_; }

  /// The line under the titles: there only when there is something to say.
  void show_findings(const finding_list& findings);

  /// A line above the titles with what can be done about it; it stays until that was done, the user
  /// has put it away, or another text takes its place. An empty text takes it away.
  void show_notice(const std::string& text, const wxString& action, std::function<void()> act);

  /// The line of what the last run has left, below the titles.
  void show_last_disc(const last_disc& disc);

  /// Shares the room between the lists and the details.
  bool Layout() override;

  /// The least size, with all lines.
  wxSize least_size() const { return least_; }

 private:
  wxSizer* make_titles();
  wxSizer* make_lists();
  void make_menus();
  void make_details();
  void on_first_paint(wxPaintEvent& event);
  wxStaticText* make_line_text(const char* name, long cut);
  void order_lines();
  void make_notice();
  void let_notice_stand(bool stands);
  void make_findings();
  void make_last_disc();
  wxSizer* make_statistics();
  wxSizer* make_region();
  wxBitmapButton* make_mover(wxWindow* parent, const char* name, const char* picture,
                             const char* tip, const std::function<void()>& move);
  void show_titles(const project& p);
  void show_menus(const project& p);
  void show_title_details();
  void show_menu_details();
  void show_statistics(const project& p);
  void on_key(wxKeyEvent& event);
  void on_menu_key(wxKeyEvent& event);
  bool delete_was_held();
  bool enter_list(int key);
  void on_dragged(const wxMouseEvent& event);
  static void show_context_menu(wxWindow& list, const std::function<wxMenu*()>& context);

  handlers on_;
  wxSizer* notice_ = nullptr;
  wxStaticText* notice_text_ = nullptr;
  wxButton* notice_action_ = nullptr;
  std::function<void()> notice_act_;
  wxStaticBox* Frame1_ = nullptr;
  wxListBox* List1_ = nullptr;
  wxListBox* menus_ = nullptr;
  bool shows_menu_ = false;       ///< the list of menus had the keys last
  wxLongLong menus_went_at_ = 0;  ///< when the last one was removed by its list
  wxSizer* lists_ = nullptr;
  wxSizer* titles_ = nullptr;
  wxSizer* lists_and_details_ = nullptr;
  wxSizerItem* details_place_ = nullptr;
  details_panel* details_ = nullptr;
  wxSizer* findings_ = nullptr;
  wxStaticBitmap* findings_picture_ = nullptr;
  wxStaticText* findings_text_ = nullptr;
  wxSizer* last_disc_ = nullptr;
  wxStaticText* last_disc_text_ = nullptr;
  wxButton* play_ = nullptr;
  wxStaticText* dvdsizetext_ = nullptr;
  space_bar* space_ = nullptr;
  wxStaticText* space_text_ = nullptr;
  wxStaticText* globalregion_ = nullptr;
  wxChoice* Comboregion_ = nullptr;
  int dragged_ = wxNOT_FOUND;  ///< the row that the button went down on
  wxSize least_;
};

}  // namespace corvane
