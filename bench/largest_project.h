// The largest project that a project file can hold, or a part of it, for measuring.
#pragma once

#include "project/project.h"

#include <string>

namespace corvane::bench {

inline constexpr int most_titles = 99;

/// A project of `titles` titles, each with a video, 8 audio streams and 99 chapters, and as many
/// menus of 36 buttons with two bitmaps each. Its files are said to lie in `folder` (native path).
project largest_project(const std::string& folder, int titles);

/// Makes every file that project names, empty, so that loading it misses none.
void make_files(const project& p);

}  // namespace corvane::bench
