// The map of the project that is open: its window, which follows the project, and what can be done
// there.
//
// Belongs to the main window, which tells it of changes and lends it moments in which nothing else
// is on. Lengths and pictures come in one after the other once the map stands.
#pragma once

#include "disc/disc_description.h"
#include "examine/disc_map.h"
#include "examine/examination.h"
#include "examine/item_summary.h"
#include "menus/lead_commands.h"
#include "platform/files/file_stamp.h"
#include "platform/result.h"
#include "ui/first_pictures.h"
#include "ui/map/map_window.h"

#include <wx/weakref.h>

#include <deque>
#include <functional>
#include <map>
#include <optional>
#include <string>
#include <vector>

namespace corvane {

class main_window;

class project_map {
 public:
  /// `facts`: what is known of files; must outlive it.
  project_map(main_window& main, fact_store& facts);
  ~project_map();
  project_map(const project_map&) = delete;
  project_map& operator=(const project_map&) = delete;

  /// "disc map...": shows the window.
  void show();

  /// The project or its files may have changed: the map is made anew, soon.
  void look() { looks_ = true; }

  /// Works for a moment; true when there is more to do.
  bool work();

  /// Whether the main window runs commands: not while an editor or a run has the project.
  void let_commands(bool enabled);

  /// The editor that was opened here was closed: back to the map.
  void come_back();

 private:
  struct thumbnail {
    std::optional<file_stamp> stamp;
    wxImage image;  // not OK: there is none
  };
  void make_map();
  summary_look& measuring();
  void take_known_lengths();
  bool gather_lengths();
  void take_length();
  void gather_pictures();
  void fill_window();
  drawn_map drawn() const;
  bool may_change();
  void open(const map_place& place, int exit);
  std::vector<map_window::item> items_of(const map_place& place, int exit);
  void add_leads(std::vector<map_window::item>& items, const map_place& place, int exit);
  void drag_lead(const map_place& from, int exit, const map_place& to);
  void choose_lead(const lead_source& from);
  void lead(const std::function<void(document&)>& command);
  int led_to_now(const lead_source& from, const std::vector<lead_target>& targets) const;
  void save_svg();
  void save_png();
  void save(const char* title, const char* filter, const char* name,
            const std::function<result<std::string>()>& picture);

  main_window& main_;
  fact_store& facts_;
  text_counts counts_;
  bool looks_ = true;
  bool comes_back_ = false;
  disc_description disc_;
  bool hand_edited_ = false;
  std::string trouble_;
  disc_map map_;
  map_layout layout_;
  std::map<map_place, std::string> lengths_;
  std::deque<map_place> unmeasured_;
  std::optional<summary_look> measuring_;        // of the first of them
  std::map<std::string, thumbnail> thumbnails_;  // by native path
  first_pictures pictures_;
  wxWeakRef<map_window> window_;
};

}  // namespace corvane
