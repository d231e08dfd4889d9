// The hand-edited navigation XML of a project, as far as there is any.
#pragma once

#include "project/project.h"

#include <string>

namespace corvane {

/// `customxml`, or an empty text where nothing but blanks and line ends stand in it: these stay in
/// the project and its file (a blank line at a file's end is such a text), but are no XML of the
/// user's.
const std::string& edited_xml(const project& p);

}  // namespace corvane
