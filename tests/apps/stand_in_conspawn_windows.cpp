// Runs a work script as conspawn does, but looks at no disc: that of tools that only stand in for
// the real ones would never be called complete.
#include "platform/files/files.h"
#include "platform/processes/spawn.h"
#include "runner/script_interpreter.h"

#include <string>

int main(int argc, char** argv) {
  corvane::begin_as_script_runner();
  const corvane::invocation own = corvane::own_invocation(argc, argv);
  if (own.arguments.size() != 1)
    return 1;
  const auto script = corvane::read_file(own.arguments[0], 1u << 20);
  const std::string folder = corvane::text_of(corvane::path_of(own.program).parent_path());
  corvane::system_script_host host(corvane::absolute_path(folder));
  return script && corvane::run_script(*script, host) ? 0 : 1;
}
