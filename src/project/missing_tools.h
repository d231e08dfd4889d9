// What is said of outside tools that are not there: of all of them once, when the program starts,
// and of those that a command needs before it does anything.
//
// Windows: the tool's file, its project and that one's web address; the full installer has them
// all. Linux: the Debian package; the program looks for tools on PATH when it starts.
#pragma once

#include "platform/files/paths.h"
#include "project/document.h"

#include <string>
#include <vector>

namespace corvane {

/// A message that names the tools of `names` (`outside_tools` or `import_tool`) that cannot be
/// started and where they come from, a line each; empty when all are there. `app`: the program
/// folder, native.
std::string missing_tools(const std::string& app, const std::vector<std::string>& names,
                          path_style style = native_style());

/// What the user is told at the start: all tools that are not there, by where they come from, and
/// how to get them; empty when none is missing.
std::string missing_tools_notice(const std::string& app, path_style style = native_style());

/// Tells it in one box. Nothing is said when all tools are there.
void tell_missing_tools(document& doc, const std::string& app, path_style style = native_style());

}  // namespace corvane
