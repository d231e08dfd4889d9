// The pieces of why_not_authorable (authoring/checks.h): each gives the message to the user, or
// nothing when all is well.
#pragma once

#include "disc/disc_description.h"
#include "platform/files/paths.h"
#include "project/plain_texts.h"

namespace corvane {

/// The titles: streams, delays, chapters, subtitles and their settings, how many there are.
refusal why_not_titles(const disc_description& d, path_style style);

/// The menus: streams, times, buttons with their edges, colours and bitmaps, how many there are.
refusal why_not_menus(const disc_description& d, path_style style);

/// What only generated navigation XML holds: chapter times, language tags, and the commands of
/// first play, titles and buttons with the titles and menus they lead to.
refusal why_not_navigation(const disc_description& d);

}  // namespace corvane
