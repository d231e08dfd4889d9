// corvane-author: authors a project's disc from the command line.
#include "apps/corvane-author/arguments.h"
#include "apps/corvane-author/author_project.h"
#include "apps/corvane-author/import_files.h"
#include "apps/corvane-author/menus_of_project.h"
#include "apps/corvane-author/report.h"
#include "drawing/page_painting.h"
#include "media/source_probe.h"
#include "platform/files/program_folder.h"
#include "platform/processes/console.h"
#include "platform/processes/interrupt.h"
#include "platform/processes/standard_files.h"
#include "platform/system_version.h"

#include <cstdio>
#include <exception>
#include <string>

int main(int argc, char** argv) {
  corvane::fill_standard_files();
  corvane::use_utf8_console();
  corvane::report report(stdout, stderr, corvane::output_is_terminal(), corvane::terminal_width);
  const auto arguments = corvane::read_author_arguments(corvane::utf8_arguments(argc, argv));
  if (!arguments) {
    report.message(arguments.error + ".\nTry \"corvane-author --help\".");
    return corvane::not_authorable;
  }
  if (arguments->help || arguments->version) {
    std::fputs((arguments->help ? corvane::author_help() : corvane::author_version()).c_str(),
               stdout);
    return 0;
  }
  if (const corvane::failure why = corvane::why_system_is_too_old()) {
    report.message(*why);
    return corvane::not_authorable;
  }
  corvane::catch_interrupts();
  try {
    if (arguments->import)
      return corvane::import_into_project(*arguments, report, corvane::probe_source);
    if (!arguments->design.empty())
      return corvane::make_menus_of_project(*arguments, report, corvane::probe_source,
                                            corvane::make_page_painter);
    return corvane::author_project(*arguments, report);
  } catch (const std::exception& error) {
    // Only what nothing can be done about, as memory that has run out. The tools end with us.
    report.message(std::string("unexpected error: ") + error.what());
    return corvane::tool_reported_error;
  }
}
