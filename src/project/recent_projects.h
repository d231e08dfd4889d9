// The projects that were saved or loaded last, kept with the preferences.
#pragma once

#include "platform/settings/settings.h"

#include <string>
#include <vector>

namespace corvane {

inline constexpr int most_recent_projects = 9;

/// Native paths, the last one first; not all need to be there any more.
std::vector<std::string> recent_projects(const settings& prefs);

/// A project (native path) was saved or loaded.
void note_recent_project(settings& prefs, const std::string& path);

}  // namespace corvane
