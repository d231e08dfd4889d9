// The work script process.bat.
#pragma once

#include "authoring/places.h"
#include "project/project.h"

#include <string>

namespace corvane {

/// The whole text, every line ended by CR LF. An honest batch file: conspawn and cmd.exe run it.
std::string work_script(const project& p, const places& where);

/// A path as mplex's -o takes it: that option is a printf pattern, so "%" is doubled.
std::string mplex_pattern(const std::string& path);

}  // namespace corvane
