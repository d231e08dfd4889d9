// The check of the project that is open: the rules that files' beginnings tell of after each
// change, all rules when the user asks for them, and the window with what was found. The same
// window shows what the last run has found of its disc.
//
// Belongs to the main window, which tells it of changes and lends it moments in which nothing else
// is on. What is known of files is kept as long as the program runs, so that only those that have
// changed are read again.
#pragma once

#include "authoring/material_check.h"
#include "examine/examination.h"
#include "platform/result.h"
#include "project/font_list.h"
#include "tools/finding_list.h"
#include "ui/disc/findings_window.h"

#include <wx/stopwatch.h>
#include <wx/weakref.h>

#include <memory>
#include <optional>
#include <string>
#include <vector>

namespace corvane {

class main_window;

class project_check {
 public:
  explicit project_check(main_window& main);
  ~project_check();
  project_check(const project_check&) = delete;
  project_check& operator=(const project_check&) = delete;

  /// "check project...": shows the findings window and reads every file that is not known yet.
  void check();

  /// Shows the findings window with those of the project as things are.
  void show();

  /// What a run has found of its disc. An error or a warning among it is shown once whatever is on
  /// has ended, which is after the run's outcome was told.
  void take_run(std::vector<finding> findings);

  /// "what the last run found...": shows the findings window with it, or says that there was no
  /// run.
  void show_run();

  /// The project or its files may have changed: what was found is looked for again, soon.
  void look();

  /// Works for a moment; true when there is more to do.
  bool work();

  /// Whether the main window runs commands: not while an editor or a run has the project.
  void let_commands(bool enabled);

  /// For a look at the material before a run: what is known of files, and a progress box with
  /// "skip" once it takes longer than a moment.
  material_equipment material();

  /// Whether the project has a place for a finding of the disc that it asks for; opens it, with the
  /// findings window, in which the others stand.
  bool has_place(const finding& f) const;
  void repair(const finding& f);

  /// What is known of files.
  fact_store& facts() { return facts_; }

  /// The editor that a finding led to was closed: back to the window.
  void come_back();

 private:
  findings_window& window();
  void fill_window();
  const finding_list& shown() const { return shows_run_ ? run_findings_ : findings_; }
  const disc_description& shown_disc() const { return shows_run_ ? run_disc_ : disc_; }
  std::string named_output() const;
  std::string output() const;
  result<disc_description> asked() const;
  std::unique_ptr<examination> examine(examination::depth how_deep);
  void begin_look();
  void step_look();
  void step_check();
  look_end read_before_run(examination& e);
  void take(std::vector<finding> findings, files_read read);
  void take_with_refusal(std::vector<finding> findings, files_read read);
  void show_progress();
  void end_check();
  void stop();
  void go_to(const finding& f);
  bool can_clean(const finding& f) const;
  void clean(const finding& f);
  bool leads_somewhere(const finding& f) const;
  finding_target place_of(const finding& f, const disc_description& examined) const;
  void list_fonts(const disc_description& disc);
  void save();

  main_window& main_;
  fact_store facts_;
  std::optional<font_list> fonts_;      // listed once, when subtitles are checked first
  disc_description disc_;               // that is or was examined
  bool looks_ = false;                  // what was found is to be looked for again
  std::unique_ptr<examination> look_;   // at beginnings, that is on
  std::unique_ptr<examination> check_;  // that is on
  wxStopWatch checking_for_;
  finding_list findings_;
  disc_description run_disc_;  // that the last run was to make
  finding_list run_findings_;
  bool had_run_ = false;
  bool run_is_new_ = false;  // it is to be shown
  bool shows_run_ = false;   // not the project's
  bool comes_back_ = false;
  wxWeakRef<findings_window> window_;
};

}  // namespace corvane
