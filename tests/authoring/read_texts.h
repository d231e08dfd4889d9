// Reads the texts of a run back into the disc that they make, without any of the code that builds
// them.
#pragma once

#include "authoring/run_paths.h"
#include "disc/disc_description.h"

#include <map>
#include <string>

namespace corvane::testing_support {

/// The texts of a run by their file names: "process.bat", "config.xml", "menu1.xml", "sub1-2.xml".
using run_texts = std::map<std::string, std::string>;

/// The disc that these texts make. What no text says is not set: names of titles, a delay of a
/// ready file, tag rows, the thickness of frames that no button has.
disc_description read_texts(const run_texts& texts, const run_paths& where);

}  // namespace corvane::testing_support
