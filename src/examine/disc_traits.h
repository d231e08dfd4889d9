// What can be said of a disc, item by item: how many titles, the size of title 2's picture, where
// button 3 of menu 1 leads. One form for what a disc should be, foreseen before a run
// (examine/foreseen_disc.h), and for what it is, read back (examine/found_disc.h), so that the two
// can be written down, shown side by side and held against each other (examine/disc_rules.h).
//
// What is not known is not said. Times are seconds, numbers 1-based.
#pragma once

#include "disc/finding.h"
#include "platform/result.h"

#include <array>
#include <cstddef>
#include <map>
#include <string>
#include <string_view>
#include <vector>

namespace corvane {

enum class disc_trait_kind {
  titles,         ///< of the disc: how many
  menus,          ///< of the disc: how many of its titlesets show something
  disc_menus,     ///< of the disc: how many of its own menus do
  first_play,     ///< of the disc: "menu 1", as examine/disc_walk.h says it
  standard,       ///< of a video stream: "NTSC", "PAL"
  size,           ///< "720x480"
  aspect,         ///< "4:3", "16:9"
  coding,         ///< "MPEG-2"
  length,         ///< of a title or menu: seconds
  chapters,       ///< of a title: how many
  begins,         ///< of a chapter: seconds
  audio_streams,  ///< of a title or menu: how many with sound in them
  format,         ///< of an audio stream: "AC-3", "MPEG audio"
  language,       ///< of an audio or subtitle stream: "en"; "none"
  sounds_until,   ///< of an audio stream: seconds
  shows_until,    ///< of a video stream: when its last picture goes, in seconds
  subtitles,      ///< of a title: how many streams with cues in them
  cues,           ///< of a subtitle: how many
  first_cue,      ///< of a subtitle: seconds
  last_cue,       ///< of a subtitle: when the last one begins
  before,         ///< of a title or menu: what its first commands lead to; "goes on"
  then,           ///< of a title, menu or command in a cell: what follows it
  stays,          ///< of a title or menu: "for ever", or how long after its end, "5 s"
  entries,        ///< of a menu: commands and keys that lead to it, "root, ptt"
  buttons,        ///< of a menu: how many
  edges,          ///< of a button: "10,20 to 109,59"
  leads_to,       ///< of a button; foreseen of a typed command: places with " or " between them
  does,           ///< of a button, a title's end or the disc's beginning: its commands, decoded
  // Of a button, as examine/button_looks.h says them.
  highlighted,  ///< its colours then: "yellow"
  selected,     ///< the same
  drawn,        ///< its dots while it is highlighted
  // Not shown to a person.
  breaks,  ///< of a title: how often the times of its streams break off
  shown,   ///< of a subtitle: when each cue comes up and goes (examine/cue_times.h)
  lands,   ///< of a chapter: where one begins on the disc, by the units of its video; seconds
  unit,    ///< of a title: how long its longest unit is
  bytes,   ///< of a stream: how many of its own; of a title or menu: all of them, with their packs
};

struct disc_trait {
  finding_item item;
  disc_trait_kind kind = disc_trait_kind::titles;
  std::string value;  ///< of a time its seconds, as decimal_text writes them
  bool operator==(const disc_trait&) const = default;
};

/// "length", "leads to".
std::string_view name_of(disc_trait_kind kind);

/// Places with "or" between them, and whether one is among them.
inline constexpr std::string_view either_place = " or ";
bool is_one_of(std::string_view place, std::string_view places);

/// How the value is shown: a time as "0:01:05.50".
std::string shown_value(const disc_trait& trait);

/// A disc, or what of one is foreseen.
class disc_traits {
 public:
  void say(finding_item item, disc_trait_kind kind, std::string value);
  void say_count(finding_item item, disc_trait_kind kind, std::size_t count);
  void say_seconds(finding_item item, disc_trait_kind kind, double seconds);

  /// Null if nothing is said of it.
  const disc_trait* find(const finding_item& item, disc_trait_kind kind) const;
  /// In the order in which it was said.
  const std::vector<disc_trait>& all() const { return traits_; }

  bool operator==(const disc_traits&) const = default;

 private:
  using key = std::array<int, 5>;
  static key key_of(const finding_item& item, disc_trait_kind kind);

  std::vector<disc_trait> traits_;
  std::map<key, std::size_t> places_;  // of what was said first
};

// For the look at a run's disc --------------------------------------------------------------------

inline constexpr const char* unknown_chapters = "unknown";
inline constexpr const char* chapters_of_next_file = "|";

/// That the user was told of an error in the material and wanted the disc all the same.
struct told_item {
  finding_item item;         ///< whose material it is, or shares a titleset with it
  bool of_titleset = false;  ///< the error is another title's (or menu's) of the same titleset
  bool operator==(const told_item&) const = default;
};

struct foreseen_run {
  std::string out;     ///< the output folder, native; the disc is in it
  bool image = false;  ///< its image is beside it, with ".iso"
  std::vector<told_item> told;
  disc_traits disc;
  /// The chapter times of each title as they were asked for, "," between them, and
  /// `chapters_of_next_file` between those of its files: where they are depends on the units of the
  /// disc. `unknown_chapters`: not foreseen.
  std::vector<std::string> chapters;

  bool operator==(const foreseen_run&) const = default;
};

/// As XML, in UTF-8.
std::string foreseen_text(const foreseen_run& run);

/// Fails, with a clause for a message, if the text is none of `foreseen_text`.
result<foreseen_run> parse_foreseen(std::string_view text);

}  // namespace corvane
