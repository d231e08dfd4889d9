// POSIX only: where the user's own folders are.
#pragma once

#include <string>

namespace corvane {

/// A variable of the environment; empty when it is not set.
std::string environment(const char* name);

/// $HOME when it is an absolute path, else what the system's user list says.
std::string home_folder();

}  // namespace corvane
