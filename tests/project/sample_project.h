// Projects that use every section of the project file, and their exact texts.
#pragma once

#include "project/project.h"
#include "project/project_text.h"

#include <cstdint>
#include <string>

namespace corvane::testing_support {

/// Two titles, a menu with two buttons, one without any and one never edited, tags, subtitles, post
/// commands, hand-edited XML. Paths stand below `root` (stored form: "C:\dvd", "\home\u\dvd").
project sample_project(const std::string& root);

/// The text of its file, written down line by line.
std::string sample_project_text(const std::string& root);

/// A project of random rows in the shapes that the program writes; the same for the same seed.
project random_project(std::uint32_t seed);

/// What a file of the project holds.
loaded_project contents_of(const project& p);

}  // namespace corvane::testing_support
