#include "platform/files/files.h"
#include "platform/files/held_folder.h"
#include "platform/files/paths.h"

#include <utility>

namespace corvane {

struct held_folder::state {
  std::string path;
};

// A folder with open files in it cannot be renamed here, and one that is held open would keep its
// disk from being taken out.
held_folder::held_folder(std::string native)
    : s_(std::make_unique<state>(state{std::move(native)})) {}

held_folder::~held_folder() = default;

bool held_folder::is_elsewhere() const {
  return !folder_exists(s_->path);
}

void held_folder::remove(std::string_view name) const {
  remove_all(join_path(s_->path, name));
}

}  // namespace corvane
