// The main window's inner part: the title list, the statistics, the region. Shows a project; what
// the user does there is handed on.
#pragma once

#include "project/project.h"

#include <wx/panel.h>

#include <functional>
#include <string>

class wxBitmapButton;
class wxButton;
class wxChoice;
class wxKeyEvent;
class wxMenu;
class wxMouseEvent;
class wxListBox;
class wxSizer;
class wxStaticBitmap;
class wxStaticBox;
class wxStaticText;

namespace corvane {

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
    std::function<void(const std::string&)> region;
    std::function<void()> findings;                     ///< the line of what was found
    std::function<void()> open_folder, play, show_log;  ///< the line of the last disc
  };

  project_view(wxWindow* parent, handlers on);

  /// Brings every control up to date.
  void show_project(const project& p);

  /// Gives the list the keys.
  void focus_titles();

  /// The line under the titles: there only when there is something to say.
  void show_findings(const finding_list& findings);

  /// A line above the titles with what can be done about it; it stays until that was done, the user
  /// has put it away, or another text takes its place. An empty text takes it away.
  void show_notice(const std::string& text, const wxString& action, std::function<void()> act);

  /// The line of what the last run has left, below the titles.
  void show_last_disc(const last_disc& disc);

  /// The least size, with that line.
  wxSize least_size() const { return least_; }

 private:
  wxSizer* make_titles();
  wxSizer* make_notice();
  void let_notice_stand(bool stands);
  wxSizer* make_findings();
  wxSizer* make_last_disc();
  wxSizer* make_statistics();
  wxSizer* make_region();
  wxBitmapButton* make_mover(wxWindow* parent, const char* name, const char* picture,
                             const char* tip, const std::function<void()>& move);
  void show_titles(const project& p);
  void show_statistics(const project& p);
  void on_key(wxKeyEvent& event);
  void on_dragged(const wxMouseEvent& event);
  void show_context_menu();

  handlers on_;
  wxSizer* notice_ = nullptr;
  wxStaticText* notice_text_ = nullptr;
  wxButton* notice_action_ = nullptr;
  std::function<void()> notice_act_;
  wxStaticBox* Frame1_ = nullptr;
  wxListBox* List1_ = nullptr;
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
