// What ffmpeg prints when it cannot write. It ends with status 0 when only the last of a file could
// not be written, as on a disk that becomes full just then.
#pragma once

#include <string>
#include <string_view>

namespace corvane {

/// Why what it has made is not whole, a clause for a person ("the disk is full"), by what it
/// printed; empty if it has complained of nothing of the kind.
std::string writing_trouble_in(std::string_view output);

}  // namespace corvane
