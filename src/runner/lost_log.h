// The log of a run whose program was gone before the run ended, which is still beside the log's
// place.
#pragma once

#include <string>

namespace corvane {

/// Whether there is a log to keep, or what is left of one to remove, in the program folder
/// (native).
bool has_lost_log(const std::string& app);

/// Makes it the log, with a last line that tells what became of it. One in which nothing stands is
/// removed; one that only could not be put in its place is put there. To be called with the
/// folder's lock taken, and not while a run of this program goes on. Whether there is a log of a
/// run that was lost with its program now.
bool keep_lost_log(const std::string& app);

}  // namespace corvane
