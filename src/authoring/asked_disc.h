// The disc that a run is asked to make.
#pragma once

#include "authoring/run_paths.h"
#include "disc/disc_description.h"
#include "platform/result.h"
#include "project/project.h"

namespace corvane {

/// The disc of the project's rows; with hand-edited XML the one that the XML asks for. Files of
/// titles and menus there that the run makes have what the rows say of them: the streams, delay and
/// subtitles of a title; the streams and options of a menu, and the edges and looks of its buttons.
/// Fails if the XML cannot be read, with a clause for a message.
result<disc_description> asked_disc(const project& p, const run_paths& where);

}  // namespace corvane
