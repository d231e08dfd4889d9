// "corvane-author --import": files that people have become titles of a project.
#pragma once

#include "apps/corvane-author/arguments.h"
#include "apps/corvane-author/report.h"
#include "import/import_batch.h"

namespace corvane {

/// Plans and runs the imports and saves the project after each that is done. Returns the exit
/// status; everything there is to say goes to the report.
int import_into_project(const author_arguments& arguments, report& out, const source_prober& probe);

}  // namespace corvane
