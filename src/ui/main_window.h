// The window "main": owns the project and everything that works on it, shows it, and reaches every
// command. It has no rules of its own: a click calls a command of the core, and what the command
// left in the project is shown.
#pragma once

#include "authoring/last_disc.h"
#include "platform/files/folder_lock.h"
#include "platform/processes/desktop.h"
#include "platform/processes/process.h"
#include "platform/result.h"
#include "platform/settings/settings.h"
#include "project/document.h"
#include "project/project.h"
#include "project/recovery.h"
#include "runner/shelled.h"
#include "ui/disc/run_display.h"
#include "ui/guide.h"
#include "ui/lent_project.h"
#include "ui/wx_prompts.h"

#include <wx/frame.h>
#include <wx/timer.h>
#include <wx/weakref.h>

#include <functional>
#include <memory>
#include <optional>
#include <string>
#include <vector>

namespace corvane {

class command_bars;
class finding_list;
class item_details;
struct material_equipment;
struct picture_still;
struct prepared_run;
class project_check;
class project_map;
class project_view;

class main_window : public wxFrame {
 public:
  /// `app`: the program folder, already the current one. File dialogs open in `media_folder` first.
  /// Both native and absolute.
  main_window(std::string app, const std::string& media_folder);
  ~main_window() override;

  // What the items of the tables do. None does anything while a run or another command is on, or
  // another window has the project. `name`: of the step, as "undo" names it.
  void run(const char* name, const std::function<void(document&)>& command);
  void undo();
  void redo();
  void add_title();
  void author();
  void still();
  void make_still(const picture_still& still);
  void show_log();
  void clear_log();
  void drop_down(const std::string& tool_caption);
  void check_project();
  void show_run_findings();
  void show_disc_map();
  /// Opens a page of the user guide, during a run too.
  void show_guide(const char* page);
  /// What is known of the project's files, for commands that look at all of them.
  material_equipment material();

  /// Lends the project to a window that `open` makes and shows, and runs no command until that
  /// window gives it back: then it is gone, or about to go. The window keeps this one disabled.
  void open_editor(const char* name, const std::function<wxTopLevelWindow*(lent_project)>& open);

  /// What follows once the window is shown: why the program folder cannot be used, or what came of
  /// a run that was interrupted and which outside tools are missing; then the project named on the
  /// command line (native, absolute; or empty).
  void begin(const failure& unusable, const std::string& project);

  /// Loads a project (native, absolute).
  void load(const std::string& path);

  /// Files dropped on the window (native paths).
  void drop(const std::vector<std::string>& paths);

  /// Whether a command would be run now.
  bool may_command() const;

  // For findings, whose window stands beside this one.
  void select_title(int row);  ///< 0-based; this window comes to the front
  /// The selected menu (1-based) of the list of menus; 0: none.
  int selected_menu() const;
  bool has_editor() const { return editor_is_open_; }
  bool raise_editor();  ///< the window that has the project; false: none has it
  void show_findings(const finding_list& findings);

  const project& shown_project() const { return document_.p; }
  const std::string& app() const { return app_; }                  ///< the program folder
  const std::string& last_output() const { return last_output_; }  ///< of a run, or empty; native
  const command_bars& bars() const { return *bars_; }
  desktop& user_desktop() { return *user_desktop_; }

  // For windows that run something themselves.
  process_launcher& launcher() { return *launcher_; }
  folder_lock& lock() { return lock_; }
  wx_prompts& user_prompts() { return ask_; }

  // For the display of a run.
  void let_commands(bool enabled);
  void let_timer(bool enabled);
  void run_has_ended(const run_end& end);

 private:
  void make_controls();
  void bind_keys();
  void refresh();
  void show_steps();
  void show_recent();
  void show_moved_commands();
  void show_status();
  void tell_restored();
  void tell_if(const failure& why);
  void tell(const std::string& text);  ///< says something that needs no answer
  void show_details();
  void focus_titles();
  void focus_list();
  void on_close(wxCloseEvent& event);
  bool stop_run();
  void end();
  void on_idle(wxIdleEvent& event);
  void keep_draft();
  void edit_xml(const prepared_run& prepared);
  void start(const prepared_run& prepared);
  void repair_what_was_asked_about();

  std::string app_;
  std::unique_ptr<settings> prefs_;
  wx_prompts ask_;
  recovery recovery_;
  document document_;
  std::string last_output_;
  last_disc last_disc_;
  bool authors_ = false;  ///< the run that is on makes a disc
  folder_lock lock_;
  run_display display_;
  std::unique_ptr<process_launcher> launcher_;
  std::unique_ptr<desktop> user_desktop_;
  shelled runner_;
  const char* stop_question_ = "";  ///< what is asked before the run that is on is stopped
  std::string left_by_run_;  ///< what became of things when the last run failed or was stopped, for
                             ///< the status bar until the next command
  std::string note_;         ///< what the last command has changed beside, for the status bar
  std::string restored_;     ///< said once the outcome of a run that failed was told; or empty
  std::optional<finding> to_repair_;  ///< asked for instead of the run
  wxTimer Timer1_;
  guide_key guide_key_;

  std::unique_ptr<command_bars> bars_;
  project_view* view_ = nullptr;
  std::unique_ptr<project_check> check_;
  std::unique_ptr<project_map> map_;
  std::unique_ptr<item_details> details_;
  std::vector<std::string> shown_recent_;
  bool in_command_ = false;
  bool editor_is_open_ = false;
  lent_project::draft draft_;  ///< of the window that has the project
  wxTimer draft_timer_;
  bool ending_ = false;
  wxTimer end_timer_;
  wxWeakRef<wxTopLevelWindow> editor_;
};

}  // namespace corvane
