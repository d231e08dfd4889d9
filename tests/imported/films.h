// What is expected of each film that make_films.sh makes.
#pragma once

#include <cstddef>
#include <ostream>
#include <string>
#include <vector>

namespace corvane::imported {

/// What is measured of the disc that a film becomes, besides that nothing is found about it.
enum : unsigned {
  in_step = 1,     ///< marks are seen and heard together, and when they should be
  marked = 2,      ///< marks are seen when they should be; there is no sound to hear
  is_round = 4,    ///< the circle is one, and as large as it was
  coloured = 8,    ///< the bars have their colours
  top_first = 16,  ///< fields come in the order in which they were taken
  bottom_first = 32,
};

struct film {
  std::string file;
  double seconds = 0;         ///< of the title; 0: it is refused
  unsigned measured = 0;      ///< what is measured
  const char* standard = "";  ///< of the disc
  double shape = 0;           ///< width over height of the picture as it is shown
  std::size_t sounds = 1;     ///< of the title
  std::string refusal = {};   ///< a part of what is said
  bool is_copied = false;     ///< the video comes out as it was
  std::string said = {};      ///< a part of what is said of a film that becomes a disc
  double held = 0;            ///< of the title's seconds, those of the last picture alone
  friend std::ostream& operator<<(std::ostream& out, const film& f) { return out << f.file; }
};

/// All, in the order of make_films.sh.
const std::vector<film>& films();

}  // namespace corvane::imported
