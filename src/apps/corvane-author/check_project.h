// corvane-author --check: what is wrong with a project and its files.
#pragma once

#include "apps/corvane-author/report.h"
#include "examine/examination.h"
#include "project/project.h"

#include <string>

namespace corvane {

/// Has an examination done, with progress on a terminal unless `quiet`. False when it was
/// interrupted.
bool read_all_files(examination& e, report& out, bool quiet);

/// Examines all files of a loaded project, with progress on a terminal, and prints the findings on
/// standard output, with why a run would refuse it, if it would: as text with a closing line that
/// counts them, or as JSON with what is known of the disc (apps/corvane-author/json_report.h). The
/// project need not have all of its files. What a run needs is held against the room in the program
/// folder `app` and in `output`, or the folder that hand-edited XML names (native, absolute; empty:
/// it is not known). Returns `not_authorable` if an error is among them or hand-edited XML cannot
/// be read, 128 + the signal's number if it was interrupted, else 0.
int check_project(const project& p, const std::string& app, const std::string& output, bool as_json,
                  report& out);

}  // namespace corvane
