// The pieces of why_not_authorable (authoring/checks.h): each gives the message to the user, or
// nothing when all is well.
#pragma once

#include "platform/paths.h"
#include "project/project.h"

#include <optional>
#include <string>
#include <string_view>

namespace corvane {

using refusal = std::optional<std::string>;

/// The titles: streams, delays, chapters, subtitles and their settings, how many there are.
refusal why_not_titles(const project& p, path_style style);

/// The menus: streams, times, buttons with their edges, colours and bitmaps, how many there are.
refusal why_not_menus(const project& p, path_style style);

/// What only generated navigation XML holds: chapter times, language tags, and the commands of
/// first play, titles and buttons with the titles and menus they lead to.
refusal why_not_navigation(const project& p);

// What a text may hold -------------------------------------------------------------------------

/// Any text as a message can show it, in double quotes: what cannot be shown as "?", long ones cut.
std::string shown_quoted(std::string_view text);

/// Why a native path cannot go into script and XML, as a clause ("is not a full path").
refusal why_not_usable_path(std::string_view native, path_style style);

/// Why a text cannot stand in the XML, as a clause: control characters, quotes, "<", not UTF-8.
refusal why_not_plain_text(std::string_view text);

/// Optional sign, digits, optional fraction; blanks around it are fine.
bool is_decimal(std::string_view text);

}  // namespace corvane
