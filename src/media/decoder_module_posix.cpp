// The decoders are in a shared object, which is found where the program's other parts are.
#include "media/decoder_module.h"
#include "platform/files/files.h"
#include "platform/files/paths.h"
#include "platform/files/program_folder.h"

#include <dlfcn.h>
#include <filesystem>
#include <string>
#include <utility>

namespace corvane {

namespace {

constexpr const char* module_name = "corvane-decoders.so";

/// Beside the program (a build, a portable copy), or in the folder of an installed one. Where none
/// is: where a build has it.
std::string module_path() {
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

/// Looked for each time, so that a module that was put back is found; the loader knows one that is
/// loaded by its path. Never unloaded.
result<corvane_decoder_maker*> load_maker() {
  using loaded = result<corvane_decoder_maker*>;
  const std::string path = module_path();
  if (!file_exists(path))
    return loaded::fail("a file of the program is missing, \"" + std::string(module_name) + "\"");
  void* const module = ::dlopen(path.c_str(), RTLD_NOW | RTLD_LOCAL | RTLD_NODELETE);
  void* const maker = module == nullptr ? nullptr : ::dlsym(module, "corvane_make_decoder");
  if (maker == nullptr)
    return loaded::fail("a file of the program cannot be loaded: " + loader_error());
  return loaded::ok(reinterpret_cast<corvane_decoder_maker*>(maker));
}

}  // namespace

result<std::unique_ptr<picture_decoder>> make_picture_decoder(picture_coding coding) {
  using made = result<std::unique_ptr<picture_decoder>>;
  const auto maker = load_maker();
  if (!maker)
    return made::fail(maker.error);
  std::unique_ptr<picture_decoder> decoder((*maker)(coding));
  return decoder ? made::ok(std::move(decoder)) : made::fail("there is no decoder for it");
}

}  // namespace corvane
