// POSIX only: where the user's own folders are, and the commands that the user can start.
#pragma once

#include <optional>
#include <string>

namespace corvane {

/// A variable of the environment; empty when it is not set.
std::string environment(const char* name);

/// $HOME when it is an absolute path, else what the system's user list says.
std::string home_folder();

/// Whether the file (links followed) exists and may be executed.
bool can_be_started(const std::string& path);

/// The path of the command that a shell would start for `name`.
std::optional<std::string> command_on_path(const std::string& name);

}  // namespace corvane
