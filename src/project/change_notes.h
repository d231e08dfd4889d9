// What a command has changed beside what it was chosen for, as the status bar tells it.
#pragma once

#include "project/project.h"

#include <string>

namespace corvane {

/// A sentence; empty if there is nothing to tell.
std::string change_note(const project& before, const project& after);

}  // namespace corvane
