// corvane-author --verify: whether a disc is what it must be, and what its project asks for.
#pragma once

#include "apps/corvane-author/report.h"
#include "project/project.h"

#include <string>

namespace corvane {

/// Reads all of a disc (native path of a folder or an image), with progress on a terminal, and
/// prints what is on it, beside what a loaded project asks for (null: none is given), and what is
/// wrong with it; as text, or as JSON (apps/corvane-author/json_report.h). Files of the project
/// that are missing are named on standard error, and what they would tell is not compared. Of a
/// folder, the image beside it is read as well if the project asks for one and it is there. Returns
/// `not_authorable` if there is an error or the project's hand-edited XML cannot be read, 128 + the
/// signal's number if it was interrupted, else 0.
int verify_disc(const project* p, const std::string& app, const std::string& disc, bool as_json,
                report& out);

}  // namespace corvane
