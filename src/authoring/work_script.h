// The work script process.bat.
#pragma once

#include "authoring/run_paths.h"
#include "disc/disc_description.h"

#include <string>
#include <vector>

namespace corvane {

/// The whole text, every line ended by CR LF. An honest batch file: conspawn and cmd.exe run it. It
/// is UTF-8, and cmd.exe reads it in its console's code page: when names hold other letters than
/// ASCII's, "chcp 65001" has to be said there first. Names with "%" and lines of more than 8191
/// characters are for conspawn alone.
std::string work_script(const disc_description& d, const run_paths& where);

/// Names of the files that the script makes in the output folder and erases again.
std::vector<std::string> streams_of_run(const disc_description& d);

/// A path as mplex's -o takes it: that option is a printf pattern, so "%" is doubled.
std::string mplex_pattern(const std::string& path);

}  // namespace corvane
