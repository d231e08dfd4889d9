// The whole of corvane-author after its arguments are read.
#pragma once

#include "apps/corvane-author/arguments.h"
#include "apps/corvane-author/report.h"

namespace corvane {

/// The program's exit statuses; one that was interrupted gives 128 + interrupt_number().
enum author_status {
  disc_authored = 0,
  tool_reported_error = 1,
  not_authorable = 2,
  tool_not_installed = 3,
};

/// Loads the project, prepares the run and, unless only that is wanted, runs and watches it.
/// Returns the exit status; everything there is to say goes to the report.
int author_project(const author_arguments& arguments, report& out);

}  // namespace corvane
