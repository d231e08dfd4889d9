// How much room what a project names leaves on the two sizes of disc, in words for the user.
#pragma once

#include <cstdint>
#include <string>

namespace corvane {

/// "3.17 gig free on a DVD-5, 6.75 on a DVD-9"; what does not fit on a disc is said to be too much
/// for it. Gigs are of 1,073,741,824 bytes, as in the statistics. Multiplexing adds a little to
/// `bytes`, which is not counted.
std::string space_text(std::uint64_t bytes);

}  // namespace corvane
