// Making menus of a project's titles, all of it: plans and lays them out, has their pages painted,
// makes the backgrounds of them with the outside tools, and puts the menus into the project in one
// step that can be undone.
//
// Backgrounds are made under temporary names and get their own when all of them are whole. Until
// then the project is as it was; where making is stopped or fails, it stays so and nothing is left.
// The tools run as an import's do, with a log of their own. Never blocks; polled like the runner.
#pragma once

#include "formats/painted_page.h"
#include "import/import_batch.h"
#include "menus/maker/design_folder.h"
#include "menus/maker/made_menus.h"
#include "platform/files/folder_lock.h"
#include "platform/processes/process.h"
#include "platform/result.h"
#include "project/document.h"

#include <functional>
#include <memory>
#include <optional>
#include <string>
#include <vector>

namespace corvane {

/// A film behind the menus.
struct menu_motion {
  std::string film;    ///< native path of a video that an import could take
  double begin = 0;    ///< seconds of the film at which it begins
  double length = 30;  ///< seconds that it lasts at most; the menu begins again then
  bool with_sound = true;
};

/// The longest film behind a menu, seconds.
inline constexpr double longest_menu_motion = 600;

struct making_wishes {
  menu_wishes menus;
  /// Instead of the design's background. A design whose background is a video needs one.
  std::optional<menu_motion> motion;
};

/// What somebody would choose for a project: what was chosen when its menus were made before, else
/// menus of all titles with chapters, in the proportions of the user's own menus, else of the first
/// title (their files' beginnings are read). `folder` is the project file's, or that of the first
/// title's video.
making_wishes preset_wishes(const document& doc, const found_design& design);

/// How far it is.
struct making_progress {
  double percent = 0;  ///< of all; never goes back
  std::string step;    ///< "drawing menu 2 of 5", "making the background of menu 2 of 5"
  std::optional<double> seconds_left;  ///< not set as long as nothing can be said
};

/// What came of it.
struct making_end {
  bool stopped = false;
  std::string problem;  ///< why there are no menus, sentences; empty: there are, or it was stopped
  int menus = 0;        ///< that were made
  std::vector<std::string> files;  ///< their backgrounds and sound, native paths
  std::vector<std::string> notes;  ///< what is left out, shortened, or otherwise; sentences
};

struct making_events {
  std::function<void(const making_progress&)> progress;
  /// Nothing goes on any more.
  std::function<void(const making_end&)> ended;
};

/// What it needs of the program around it. All must outlive it.
struct making_equipment {
  page_painter painter;
  source_prober probe;  ///< of the film behind the menus
  process_launcher& launcher;
  folder_lock& lock;  ///< of the program folder
  std::string app;    ///< program folder, native and absolute
};

class menu_making {
 public:
  menu_making(document& doc, making_wishes wishes, making_equipment equipment,
              making_events events);
  /// Stops it, without a word.
  ~menu_making();
  menu_making(const menu_making&) = delete;
  menu_making& operator=(const menu_making&) = delete;

  /// Asks about hand-edited XML, plans, and begins. Fails with sentences, empty if the user wants
  /// to keep the XML; `ended` is not called then. The project must not be changed by others until
  /// it has ended.
  failure start();

  /// One pass; to be called some times a second while `running`. Draws a page in one, or looks
  /// after the tools.
  void update();

  /// Ends what goes on.
  void stop();

  bool running() const;

 private:
  struct state;
  std::unique_ptr<state> s_;
};

}  // namespace corvane
