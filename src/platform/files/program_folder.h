// The program folder <app>: bin/ with the tools, the work script, the XML and PNG of a run, the
// log.
//
// Windows: the folder of the executable. Linux: $CORVANE_HOME, else $XDG_DATA_HOME/corvane, else
// ~/.local/share/corvane, made at start with bin/<tool>.exe as links to the tools found on PATH and
// bin/conspawn.exe as a link to the conspawn that stands beside the program.
#pragma once

#include "platform/files/paths.h"
#include "platform/result.h"

#include <string>
#include <string_view>
#include <vector>

namespace corvane {

struct outside_tool {
  std::string name;                    ///< "mplex": bin holds it as name + ".exe"
  std::vector<std::string> installed;  ///< names under which systems have it, best first
  std::string package;                 ///< Debian package that has it
  std::string page;                    ///< web address of its project
};

/// mplex, mpeg2enc, jpeg2yuv (mjpegtools), gm (graphicsmagick), spumux, dvdauthor (dvdauthor),
/// mkisofs (genisoimage).
const std::vector<outside_tool>& outside_tools();

/// ffmpeg, which makes streams of what people have. Only that needs it, and nobody is told at the
/// start that it is missing.
const outside_tool& import_tool();

/// Where the program folder is (native, absolute), without making it.
std::string program_folder();

/// Makes the folder, its bin with the links (Linux), and makes it the current folder. A link in bin
/// that leads elsewhere or nowhere is set anew; a real file there is left alone. What programs that
/// are gone have left of files that they were writing there goes. Fails also where nothing can be
/// written into it (on Linux: where a link would have to be). Paths from the command line must have
/// been made absolute before.
failure enter_program_folder(const std::string& folder);

/// Path of a tool in the folder's bin: join of folder, "bin", name + ".exe".
std::string tool_path(const std::string& folder, const std::string& name,
                      path_style style = native_style());

/// Whether the tool can be started: the file (links followed) exists and may be executed.
bool tool_is_there(const std::string& folder, const std::string& name);

/// Full path of the running executable.
std::string own_executable();

/// The process's arguments as UTF-8, without the program's name. On Windows read from the system,
/// whatever main was given.
std::vector<std::string> utf8_arguments(int argc, char** argv);

/// The same as one text: on Windows as it was written, all blanks and double quotes included (the
/// association's command has no quotes around the path), elsewhere with one blank between two.
std::string argument_text(int argc, char** argv);

/// What stands after the program's name in a command line of Windows.
std::string_view after_program(std::string_view command_line);

}  // namespace corvane
