// What the text builders share: native paths of a disc's files, and the ways in which texts are put
// together.
#pragma once

#include "disc/disc_description.h"
#include "platform/files/paths.h"

#include <string>
#include <string_view>
#include <vector>

namespace corvane {

/// Native paths of a title's streams, video first; one path for a ready file.
std::vector<std::string> native_streams(const disc_title& title, path_style style);

/// The text with CR LF after it.
void add_line(std::string& text, std::string_view line);

}  // namespace corvane
