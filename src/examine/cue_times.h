// When the cues of a text subtitle come up and go on a disc: as spumux takes them from a file, and
// held against those of the disc.
//
// Times are seconds from the first picture on.
#pragma once

#include "formats/subtitle_cues.h"

#include <cstddef>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace corvane {

struct cue_time {
  double begins = 0;
  std::optional<double> ends;  ///< not set: not known
  bool operator==(const cue_time&) const = default;
};

/// What spumux makes of the cues: it sorts them, cuts each where the next one begins, and leaves
/// out one that begins when another does. Empty where that is not sure: of SSA whose cues overlap,
/// which it lays above each other; of SAMI whose cues are out of order or have no end; of MicroDVD
/// at a rate that no film has. `rate`: pictures a second.
std::vector<cue_time> cue_times_of(const subtitle_cues& all, double rate);

/// "1.5-3.25 4-".
std::string cue_times_text(const std::vector<cue_time>& times);

/// The first cue that is shown at another time than foreseen.
struct cues_apart {
  std::size_t number = 0;  ///< 1-based
  cue_time foreseen, found;
  std::size_t others = 0;  ///< that differ as well
};

/// Both are texts of `cue_times_text`. Nullopt if no cue differs by a tenth of a second, and if
/// there are not as many.
std::optional<cues_apart> first_cue_apart(std::string_view foreseen, std::string_view found);

/// "from 00:00:01.50 to 00:00:03.25".
std::string text_of(const cue_time& cue);

}  // namespace corvane
