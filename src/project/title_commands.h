// The commands on titles. Each is a whole conversation with the user through `prompts`; a refused
// command leaves the project as its text says. Selection: project::selected.
#pragma once

#include "project/workbench.h"

#include <string>
#include <string_view>

namespace corvane {

/// Adds a title: asks for the video and, for an elementary stream, the audio.
void open_command(workbench& w);

void remove_title_command(workbench& w);
void titleup_command(workbench& w);
void titledown_command(workbench& w);

/// Adds an audio stream to the selected title.
void addaudiostream_command(workbench& w);

/// Sets the selected title's A/V delay.
void editdelay_command(workbench& w);

void about_command(workbench& w);

/// Whether the program may end: asks "Do you want to save project?" when there is something to
/// save; Yes saves first (and ends also when the save dialog was cancelled).
bool close_command(workbench& w);

/// How many bytes of a program stream are searched for navigation packets.
inline constexpr std::size_t nav_search_bytes = 16384;

}  // namespace corvane
