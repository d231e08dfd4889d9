// The disc that a navigation XML asks for: what dvdauthor would make of it, as far as the text
// says.
#pragma once

#include "disc/disc_description.h"
#include "platform/files/paths.h"
#include "platform/result.h"

#include <string_view>

namespace corvane {

/// Reads a whole navigation XML, generated or written by hand; paths in it are native in `style`.
/// Fails if it is not well formed or its document is not a <dvdauthor>, with a clause for a
/// message.
///
/// Of titles and menus the text names ready files, so that streams, delay, subtitles, edges and
/// looks of buttons are not set. A command stands without the ";" behind it; what the jump table
/// has put before it is taken off again, so that the command is the one that was asked for.
/// Elements and attributes that the description has no place for are passed over.
result<disc_description> read_navigation(std::string_view xml, path_style style = native_style());

}  // namespace corvane
