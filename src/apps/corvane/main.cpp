// corvane: the windows.
#include "platform/files/program_folder.h"
#include "platform/processes/console.h"
#include "platform/processes/standard_files.h"
#include "project/project.h"
#include "ui/app.h"

#include <wx/init.h>

#include <algorithm>
#include <cstdio>
#include <string>
#include <vector>

#ifdef __WXGTK__
#include <pango/pangocairo.h>
#endif

namespace {

constexpr const char* help = R"(Usage: corvane [PROJECT.cvp]

Puts titles, chapters, menus and subtitles together and authors a DVD-Video
disc from them, in windows. A project that is named is opened at the start.

Options:
  --help      show this help
  --version   show the version

corvane-author does the same without windows; see "corvane-author --help".
)";

/// What is asked of a program that is to show no window; empty when it is.
std::string printed_instead(const std::vector<std::string>& arguments) {
  const auto asks_for = [&arguments](const char* option) {
    return std::find(arguments.begin(), arguments.end(), option) != arguments.end();
  };
  if (asks_for("--help"))
    return help;
  if (asks_for("--version"))
    return std::string("corvane (") + corvane::version_title + ")\n";
  return {};
}

}  // namespace

// The arguments are read here: the toolkit would lose what the user's locale cannot say.
int main(int argc, char** argv) {
  if (const std::string text = printed_instead(corvane::utf8_arguments(argc, argv));
      !text.empty()) {
    corvane::use_callers_console();
    return std::fputs(text.c_str(), stdout) < 0 || std::fflush(stdout) != 0 ? 1 : 0;
  }
  corvane::fill_standard_files();
#ifdef __WXGTK__
  // Pango reads the fonts in a thread of its own; begun here, it does so while GTK starts.
  pango_cairo_font_map_get_default();
#endif
  wxApp::SetInstance(new corvane::corvane_app(corvane::argument_text(argc, argv)));
  return wxEntry(argc, argv);
}
