// The commands on titles. Each is a whole conversation with the user through `prompts`; a refused
// command leaves the project as its text says. Selection: project::selected.
#pragma once

#include "project/document.h"

#include <string>
#include <string_view>

namespace corvane {

/// Adds a title: asks for the video and, for an elementary stream, the audio.
void open_command(document& doc);

/// Does so. Gives the film (native path) that was chosen and is no title, but can be made into one
/// by an import; empty if there is none.
std::string open_or_refuse(document& doc);

void remove_title_command(document& doc);
void titleup_command(document& doc);
void titledown_command(document& doc);

/// Moves the selected title to a row (0-based), as often up or down as it takes. A row that is not
/// there is no change.
void movetitle_command(document& doc, int row);

/// Adds an audio stream to the selected title.
void addaudiostream_command(document& doc);

/// Sets the selected title's A/V delay. Told afterwards: a text that was read as another number
/// than it seems, and a delay that mplex does not bear.
void editdelay_command(document& doc);

void about_command(document& doc);

/// Whether the program may end: asks "Do you want to save project?" when there is something to
/// save; Yes saves first (and ends also when the save dialog was cancelled).
bool close_command(document& doc);

/// How it ended: `given_up` when the user does not want what is not saved.
enum class close_end { stays, ends, given_up };
close_end close_project(document& doc);

/// How many bytes of a program stream are searched for navigation packets.
inline constexpr std::size_t nav_search_bytes = 16384;

}  // namespace corvane
