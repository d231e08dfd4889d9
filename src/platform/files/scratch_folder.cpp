#include "platform/files/scratch_folder.h"

#include "platform/files/files.h"
#include "platform/files/paths.h"

#include <filesystem>
#include <random>
#include <system_error>

namespace corvane {

namespace fs = std::filesystem;

result<std::unique_ptr<scratch_folder>> scratch_folder::make(const std::string& parent_folder) {
  using made = result<std::unique_ptr<scratch_folder>>;
  std::error_code error;
  const fs::path parent =
      parent_folder.empty() ? fs::temp_directory_path(error) : path_of(parent_folder);
  if (error)
    return made::fail("there is no temporary folder: " + error.message());
  std::random_device random;
  for (int tries = 0; tries < 100; ++tries) {
    const fs::path folder =
        parent / ("corvane-" + std::to_string(random()) + std::to_string(random()));
    if (fs::create_directory(folder, error)) {
      fs::permissions(folder, fs::perms::owner_all, error);
      return made::ok(std::unique_ptr<scratch_folder>(new scratch_folder(text_of(folder))));
    }
    if (error)
      break;
  }
  return made::fail("no folder can be made in \"" + text_of(parent) + "\": " + error.message());
}

scratch_folder::~scratch_folder() {
  if (!kept_)
    remove_all(path_);
}

std::string scratch_folder::path(const std::string& name) const {
  return join_path(path_, name);
}

}  // namespace corvane
