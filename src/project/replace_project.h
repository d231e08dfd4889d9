// A project file's contents into the project, with the check that its files are there.
#pragma once

#include "project/document.h"
#include "project/project_text.h"

namespace corvane {

/// Replaces the project with what a file holds (its language tags are added to those already
/// there). Each file it names that is missing gets a message; after one, titles, menus and subtitle
/// data are emptied again and the answer is false.
bool replace_project(document& doc, loaded_project loaded);

}  // namespace corvane
