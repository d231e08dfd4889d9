// The project file *.cvp: a text file, one value a line, CR LF, sections closed by "***".
//
// In order: version line; List11, chapters, delay, languagetags, menulist, moremenuoptions, button
// lines ("menu01:" + record), postinfo, subtitledata, subtitleoptions, each closed by "***";
// firstplay; region; "True"/"False" for isocreate and jumptable; hand-edited XML to the end.
#pragma once

#include "platform/result.h"
#include "project/document.h"
#include "project/recovery.h"

#include <cstdint>
#include <string>
#include <string_view>

namespace corvane {

/// A larger file is refused unread; the largest project the format holds has a few megabytes.
inline constexpr std::uintmax_t largest_project_file = 64u << 20;

/// Largest number of menus a project file can hold (their numbers have two digits in it).
inline constexpr int most_menus = 99;

/// The whole file text for a project.
std::string project_text(const project& p);

/// "save project...": asks for the file, asks before overwriting, writes it all or nothing.
void saveproject_command(document& doc);

/// What came of a save: `given_up` when the user chose no file or kept the one that is there.
enum class save_outcome { saved, given_up, failed };

/// The same command for callers that must know how it ended.
save_outcome save_project(document& doc);

/// Saves into the project's file, without asking; "save project..." where it has none.
void savefile_command(document& doc);

/// "new project": asks whether to save the one that is open, if it is not saved, and begins with
/// an empty one.
void newproject_command(document& doc);

/// Loads a project that was open before (native path), after the question of "load project...".
void load_recent_command(document& doc, const std::string& path);

/// "load project...": asks before replacing titles, asks for the file, loads it.
void loadproject_command(document& doc);

/// The same for callers that must know whether a project was loaded.
bool load_asked(document& doc);

/// Loads a project file (native path). Whatever is wrong with it is shown in a message. Returns
/// whether a project is now loaded: false when the file was refused (the project is as it was) or
/// when files it names are missing (the load was rolled back).
bool loadprojectf(document& doc, const std::string& path);

/// Loads a project for a look at it, which tells of its files: those that are missing are not,
/// here, and the project stays as its file says. Returns false if the file was refused (a message
/// was shown).
bool load_to_look(document& doc, const std::string& path);

/// Brings back a project that a program has kept: asks about each that was left, the last one
/// first, until one is taken. With No it is gone; closed without an answer, the question comes
/// again at the next start. What is missing of its files empties nothing. Returns whether a project
/// was brought back.
bool recover_command(document& doc, recovery& kept);

/// What a command line names: every double quote removed.
std::string path_from_command_line(std::string_view command_line);

}  // namespace corvane
