// conspawn: runs a work script, its tools' output going where its own goes.
//
//   conspawn.exe SCRIPT
//
// Only programs that stand in the folder conspawn itself is called from are started. Ends with
// status 0 when everything went well, 1 when something did not (each such thing has had its line
// beginning "ERR:").
//
// Where the environment says that the script makes a disc (run_file::makes_disc_variable), the disc
// is read back before the script's end is told, and nothing is run when what is foreseen of it does
// not stand beside the script. What was found is written there, too.

#include "apps/conspawn/look_at_disc.h"
#include "disc/finding_file.h"
#include "platform/files/files.h"
#include "platform/processes/spawn.h"
#include "platform/processes/standard_files.h"
#include "runner/output_lines.h"
#include "runner/run_files.h"
#include "runner/script_interpreter.h"

#include <cstdint>
#include <cstdlib>
#include <exception>
#include <string>
#include <vector>

namespace {

namespace run_file = corvane::run_file;

constexpr std::uintmax_t largest_script = 64u << 20;

void complain(const std::string& what) {
  corvane::write_output("\n" + std::string(corvane::error_mark) + what + "\n");
}

bool makes_disc() {
  const char* const told = std::getenv(run_file::makes_disc_variable);
  return told != nullptr && *told != '\0';
}

/// The file of that name in the script's folder.
std::string beside(const std::string& script, const char* name) {
  return corvane::text_of(corvane::path_of(corvane::absolute_path(script)).parent_path() / name);
}

bool run(const corvane::invocation& own) {
  // Started through PATH the folder would be unknown; the runner always gives a path.
  const std::filesystem::path program = corvane::path_of(own.program);
  if (program.parent_path().empty() || own.arguments.size() != 1) {
    complain("conspawn needs its own path and one script");
    return false;
  }
  const std::string folder = corvane::absolute_path(corvane::text_of(program.parent_path()));
  const corvane::result<std::string> script = corvane::read_file(own.arguments[0], largest_script);
  if (!script) {
    complain("the work script cannot be read: " + script.error);
    return false;
  }
  corvane::system_script_host host(folder);
  if (!makes_disc())
    return corvane::run_script(*script, host);
  const auto foreseen = corvane::read_foreseen(beside(own.arguments[0], run_file::foreseen));
  if (!foreseen) {
    complain("the disc could not be looked at, so nothing is run: " + foreseen.error);
    return false;
  }
  return corvane::run_script(*script, host, [&](bool all_well, const corvane::look_output& out) {
    std::vector<corvane::finding> found = host.findings();
    const auto on_disc = corvane::look_at_disc(*foreseen, all_well, out);
    found.insert(found.end(), on_disc.begin(), on_disc.end());
    const std::string file = beside(own.arguments[0], run_file::findings);
    if (const corvane::failure why = corvane::replace_file(file, corvane::findings_text(found)))
      out.line("INFO: what was found stands here alone: \"" + file +
               "\" could not be written: " + *why);
  });
}

}  // namespace

int main(int argc, char** argv) {
  try {
    corvane::fill_standard_files();
    corvane::begin_as_script_runner();
    return run(corvane::own_invocation(argc, argv)) ? 0 : 1;
  } catch (const std::exception& error) {
    complain(std::string("conspawn failed: ") + error.what());
    return 1;
  }
}
