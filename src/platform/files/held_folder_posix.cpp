#include "platform/files/held_folder.h"

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>
#include <utility>

namespace corvane {

struct held_folder::state {
  std::string path;
  int folder = -1;
};

// As long as it is open nobody else gets its number, and what is in it can be reached: by whatever
// name, and also after "umount -l".
held_folder::held_folder(std::string native)
    : s_(std::make_unique<state>(state{std::move(native)})) {
  s_->folder = ::open(s_->path.c_str(), O_RDONLY | O_DIRECTORY | O_CLOEXEC);
}

held_folder::~held_folder() {
  if (s_->folder >= 0)
    ::close(s_->folder);
}

bool held_folder::is_elsewhere() const {
  struct stat held {
  }, there{};
  return s_->folder < 0 || ::fstat(s_->folder, &held) != 0 ||
         ::stat(s_->path.c_str(), &there) != 0 || held.st_dev != there.st_dev ||
         held.st_ino != there.st_ino;
}

void held_folder::remove(std::string_view name) const {
  if (s_->folder >= 0)
    ::unlinkat(s_->folder, std::string(name).c_str(), 0);
}

}  // namespace corvane
