#include "media/module_function_posix.h"

#include "platform/files/files.h"
#include "platform/files/paths.h"
#include "platform/files/program_folder.h"

#include <dlfcn.h>
#include <filesystem>
#include <string>

namespace corvane {

namespace {

/// Beside the program (a build, a portable copy), or in the folder of an installed one. Where none
/// is: where a build has it.
std::string module_path(const char* module_name) {
  const std::filesystem::path folder = path_of(own_executable()).parent_path();
  const std::string beside = text_of(folder / module_name);
  const std::string installed =
      text_of((folder / ".." / CORVANE_LIBRARY_FOLDER / "corvane/modules" / module_name)
                  .lexically_normal());
  return !file_exists(beside) && file_exists(installed) ? installed : beside;
}

/// Why the last call of the dynamic loader failed.
std::string loader_error() {
  const char* const why = ::dlerror();
  return why == nullptr ? "there is no reason known" : why;
}

}  // namespace

result<void*> module_function(const char* module_name, const char* function) {
  using loaded = result<void*>;
  const std::string path = module_path(module_name);
  if (!file_exists(path))
    return loaded::fail("a file of the program is missing, \"" + std::string(module_name) + "\"");
  // The loader knows a module that is loaded by its path.
  void* const module = ::dlopen(path.c_str(), RTLD_NOW | RTLD_LOCAL | RTLD_NODELETE);
  void* const found = module == nullptr ? nullptr : ::dlsym(module, function);
  if (found == nullptr)
    return loaded::fail("a file of the program cannot be loaded: " + loader_error());
  return loaded::ok(found);
}

}  // namespace corvane
