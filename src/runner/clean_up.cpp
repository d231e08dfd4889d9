#include "runner/clean_up.h"

#include "platform/files/files.h"
#include "platform/files/paths.h"
#include "runner/run_files.h"

#include <filesystem>
#include <system_error>

namespace corvane {
namespace {

/// Whether a copy of the script may not have had the room.
bool is_without_room(const std::string& app) {
  const auto room = room_at(app);
  const auto script = file_size(join_path(app, run_file::script));
  return room && script && room->free < 2 * *script;
}

}  // namespace

std::vector<run_trouble> clean_up(const std::string& app) {
  std::vector<run_trouble> troubles;
  for (const char* name : run_file::copies_of_script) {
    const std::string copy = join_path(app, name);
    // A link would have the copy written elsewhere.
    std::error_code error;
    std::filesystem::remove(path_of(copy), error);
    const failure why = copy_file(join_path(app, run_file::script), copy);
    // It is made to be removed: a disk without room for it need not be told of.
    if (why && !is_without_room(app))
      troubles.push_back({copy, "could not be written by the clean-up: " + *why});
  }
  for (const std::string& name : files_in(app)) {
    const std::string extension = lower_extension_of(name);
    if (extension != "xml" && extension != "bat" && extension != "png")
      continue;
    const std::string file = join_path(app, name);
    std::error_code error;
    std::filesystem::remove(path_of(file), error);
    if (error)
      troubles.push_back({file, "could not be removed by the clean-up: " + error.message()});
  }
  return troubles;
}

}  // namespace corvane
