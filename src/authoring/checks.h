// What is looked at before a run writes anything: rows that would break a control file or make a
// tool do what the project did not ask for, and folders whose files authoring would destroy.
#pragma once

#include "authoring/run_paths.h"
#include "disc/disc_description.h"
#include "disc/finding.h"

#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace corvane {

/// Why the project cannot be authored as its rows stand, as a message to the user that names title
/// or menu; nullopt if it can. A project file may come from a stranger: no row may end a quoted
/// path, add an argument, or put markup into the XML.
std::optional<std::string> why_not_authorable(const disc_description& d, std::string_view customxml,
                                              path_style style);

/// The same as a finding, for whoever looks at a project without authoring it.
std::optional<finding> finding_of_refusal(const disc_description& d, std::string_view customxml,
                                          path_style style);

/// The part of it that holds whatever the navigation XML is: video standard, titles and menus.
std::optional<std::string> why_not_these_rows(const disc_description& d, path_style style);

/// Why a button's bitmap is refused: it cannot be read, is no bitmap file, or is of a kind that gm
/// does not read. gm takes a file for what its first bytes say: a PostScript text named .bmp would
/// be run by Ghostscript.
std::optional<std::string> why_not_these_bitmaps(const disc_description& d, path_style style);

/// Why a menu's video or audio is refused: it is gone, or the pictures are of the other video
/// standard, with which dvdauthor would fill the disc without an error.
std::optional<std::string> why_not_these_menu_streams(const disc_description& d, path_style style);

/// Why a title's text subtitle is refused: its file is gone, empty or no text, in no format that
/// spumux reads, or in other characters than its settings say.
std::optional<std::string> why_not_these_subtitles(const disc_description& d, path_style style);

/// Why hand-edited XML is refused: it is not well formed, it has a file name that dvdauthor would
/// run as a command (it ends in "|"), declarations or an encoding that could hide one, or its
/// output folder is not where the script expects it (second line, first attribute).
std::optional<std::string> why_not_safe_xml(std::string_view customxml);

/// Why the output folder is refused: it would lose the project's own files, or its path cannot be
/// written.
std::optional<std::string> why_not_this_folder(const disc_description& d, const run_paths& where);

/// Why it is refused for what lies in it: the script erases *.mpg there, and every such file is
/// somebody's, since what runs leave has been removed (authoring/earlier_disc.h), whatever its
/// name.
std::optional<std::string> why_not_what_lies_there(const run_paths& where);

/// Why it is refused for what the system says: nothing can be written there, or where it would be
/// made, or the disk is full. Tries it.
std::optional<std::string> why_nothing_is_written_there(const run_paths& where);

/// What of an earlier disc stands there: VIDEO_TS, AUDIO_TS and, when an image is made, the image
/// beside the folder (native paths).
std::vector<std::string> earlier_disc(const run_paths& where, bool image);

/// Names of the outside tools (platform/files/program_folder.h) that the project's run starts.
std::vector<std::string> needed_tools(const disc_description& d);

}  // namespace corvane
