// Where the chapters of a title will really be, and rules about it. A player can enter a title only
// where a unit (VOBU) begins, and a unit begins with an I picture: dvdauthor moves each chapter to
// the unit whose beginning is nearest, the earlier one half way between two.
#pragma once

#include "disc/disc_description.h"
#include "examine/rules.h"

#include <optional>
#include <span>
#include <string>
#include <vector>

namespace corvane {

/// What is known of the video of a title's file. Times are seconds from its beginning.
struct title_length {
  std::optional<double> seconds;
  std::vector<double> units;          ///< where its units begin; empty: not known
  std::vector<title_length> further;  ///< of a title's first file: those of the further ones
};

/// The entries of a file's chapter times as dvdauthor takes and reads them: blank ones are none.
std::vector<text_time> chapters_read(const title_file& file);

/// What becomes of one of these entries.
struct chapter_fate {
  enum class kind {
    is_chapter,
    merged,        ///< it falls to the same unit as the one before it
    out_of_order,  ///< a later one stands before it: dvdauthor leaves it out
    after_end,     ///< likewise
    no_time,       ///< the entry is not a time
  };
  std::string text;  ///< as it stands in the list
  kind what = kind::no_time;
  int number = 0;        ///< of the chapter that it is, or is merged with, 1-based; 0: none
  std::size_t file = 0;  ///< of the title, 0-based, in whose list it stands
  double asked = 0;      ///< seconds from the beginning of the file
  double begins = 0;     ///< where that chapter begins; `asked` if the units are not known
};

struct landed_chapters {
  bool added = false;               ///< a chapter at the beginning that was not asked for
  std::vector<chapter_fate> fates;  ///< of each entry that is read
  std::vector<double> begins;       ///< of each chapter on the disc, in seconds
};

/// Those of one file, by its own times. A title's first one has a chapter at its beginning,
/// whatever was asked for; a further one only where it has no list.
landed_chapters chapters_in_file(const title_file& file, const title_length& length, bool is_first);

/// Those of all files. `begins` is where they are in the title; behind a file of unknown length,
/// from the beginning of the last one whose place is known.
landed_chapters chapters_on_disc(const disc_title& title, const title_length& length);

std::span<const rule> chapter_rules();

/// `lengths`: by title, 0-based; missing ones are not known.
std::vector<finding> chapter_findings(const disc_description& d,
                                      std::span<const title_length> lengths);

}  // namespace corvane
