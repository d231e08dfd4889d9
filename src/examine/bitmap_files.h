// The bitmaps that buttons are drawn with, which no stream of the disc names.
#pragma once

#include "disc/disc_description.h"
#include "disc/finding.h"

#include <vector>

namespace corvane {

/// Each bitmap of a button that is not there, under the rule for missing files.
/// Looks at the disk.
std::vector<finding> bitmap_file_findings(const disc_description& d);

}  // namespace corvane
