// What a title or a menu of a project holds, in lines for a person: length, size, picture, sound,
// subtitles, chapters, what follows; of a menu its kind, sound and buttons.
//
// A summary is a pure function of the disc that is asked for and of what is known of its files.
// `summary_look` gathers that, no more than the beginning of a file at a time, so that a window
// lives on meanwhile; lengths are exact once somebody has read the files to their end (a check, a
// run), and an estimate before.
#pragma once

#include "disc/disc_description.h"
#include "disc/finding.h"
#include "examine/examination.h"
#include "examine/titleset_rules.h"
#include "platform/files/file_stamp.h"

#include <cstddef>
#include <deque>
#include <map>
#include <optional>
#include <set>
#include <string>
#include <vector>

namespace corvane {

/// What is known of the files of a title or menu, by native path.
struct known_material {
  facts_by_path files;  ///< one that is not there has not been looked at
  std::set<std::string> missing;
  /// How many texts a subtitle file holds, as it is read with its settings; not set: it cannot be
  /// read, or its format is one whose texts are not counted.
  std::map<std::string, std::optional<std::size_t>> texts;
};

struct summary_line {
  std::string name;  ///< "length", "audio 2"
  std::string text;  ///< "12:34 min"
  bool operator==(const summary_line&) const = default;
};

struct item_summary {
  std::string heading;  ///< "title 1", "menu 2"
  std::vector<summary_line> lines;
  std::string video;  ///< native path of the file whose first picture stands for it
  bool operator==(const item_summary&) const = default;
};

/// A title (1-based; it must exist). `hand_edited`: the disc will be that of edited navigation XML,
/// which has chapters, languages and commands of its own.
item_summary title_summary(const disc_description& d, int title, const known_material& known,
                           bool hand_edited);

/// A menu, likewise.
item_summary menu_summary(const disc_description& d, int menu, const known_material& known,
                          bool hand_edited);

/// How long a title (1-based; it must exist) is, as far as it is known: "24:10", "1:02:03", before
/// its files have been read to their end "about 24 min"; empty: nothing is known.
std::string title_length_text(const disc_description& d, int title, const known_material& known);

/// A menu (1-based) as a list shows it: "menu 1: intro.m2v, 3 buttons".
std::string menu_line(const disc_description& d, int menu);

/// Where a command leads, in words: "title 2, chapter 3", "the menu shown last"; a command that the
/// editors do not offer, as it stands.
std::string words_of_command(const disc_description& d, const disc_command& command);

/// How many texts subtitle files hold, kept as long as the files stay as they are.
class text_counts {
 public:
  /// Whether it has been counted; then `count` has what came of it.
  bool find(const disc_subtitle& subtitle, std::optional<std::size_t>& count) const;

  /// Reads the file and counts. Not set if it cannot be read, its format is none whose texts are
  /// counted, or it is larger than the texts of any film.
  std::optional<std::size_t> count(const disc_subtitle& subtitle);

 private:
  struct counted {
    std::optional<file_stamp> stamp;
    std::optional<std::size_t> count;
  };
  std::map<std::string, counted> counts_;  // by path and the settings that the file is read with
};

/// Gathers what is known of one title or menu and looks at what is not.
class summary_look {
 public:
  /// `item`: a title or menu of the disc; anything else has no files. Opens nothing yet; takes
  /// what is known already. `store` and `counts` must outlive it.
  summary_look(const disc_description& d, const finding_item& item, fact_store& store,
               text_counts& counts);

  /// Looks at the beginning of one file, or counts the texts of one subtitle file; false when there
  /// is nothing more to look at. What was found is kept in `store` and `counts`.
  bool step();
  bool is_done() const { return unseen_.empty() && uncounted_.empty(); }
  const known_material& known() const { return known_; }

 private:
  void take_file(const std::string& stored);
  void take_subtitle(const disc_subtitle& subtitle);
  void look_at_next_file();
  void count_next_subtitle();

  fact_store& store_;
  text_counts& counts_;
  known_material known_;
  std::deque<std::string> unseen_;  // native paths of streams
  std::deque<disc_subtitle> uncounted_;
};

}  // namespace corvane
