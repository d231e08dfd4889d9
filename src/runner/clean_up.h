// The removal of a run's files from the program folder.
#pragma once

#include "runner/run_listener.h"

#include <string>
#include <vector>

namespace corvane {

/// Removes every .xml, .bat and .png file of the program folder (native path), after making copies
/// of the script, so that there is one of each kind. Gives what could not be written or removed;
/// the rest is removed. A disk without room for the copies is no trouble.
std::vector<run_trouble> clean_up(const std::string& app);

}  // namespace corvane
