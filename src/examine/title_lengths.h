// How long the titles of a disc are, for a list of them: looked up in what is known of their files,
// and where nothing is known in the files' beginnings, a file at a time, so that a window lives on.
#pragma once

#include "disc/disc_description.h"
#include "examine/examination.h"
#include "examine/item_summary.h"

#include <deque>
#include <string>

namespace corvane {

class title_lengths {
 public:
  /// Touches no file yet. `store` must outlive it.
  title_lengths(disc_description d, fact_store& store);

  /// Looks at one file; false when there is none left.
  bool step();
  bool is_done() const { return waiting_.empty(); }

  /// "24:10", "about 24 min"; empty: not known (yet). `title`: 1-based, must exist.
  std::string text(int title) const { return title_length_text(disc_, title, known_); }

 private:
  disc_description disc_;
  fact_store& store_;
  known_material known_;
  std::deque<std::string> waiting_;  // native paths
};

}  // namespace corvane
