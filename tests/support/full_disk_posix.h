// A small disk of a test's own, which can be full.
#pragma once

#include "support/temporary_folder.h"

#include <string>
#include <sys/mount.h>

namespace corvane::testing_support {

/// In memory, in the place of a folder that is there. Only root can have one: a test looks at
/// `is_there` and skips itself without.
class disk_of_its_own {
 public:
  disk_of_its_own(const temporary_folder& folder, unsigned kilobytes)
      : folder_(folder),
        is_there_(::mount("none", folder.path().c_str(), "tmpfs", 0,
                          ("size=" + std::to_string(kilobytes) + "k").c_str()) == 0) {}
  ~disk_of_its_own() {
    if (is_there_)
      ::umount2(folder_.path().c_str(), MNT_DETACH);
  }
  disk_of_its_own(const disk_of_its_own&) = delete;
  disk_of_its_own& operator=(const disk_of_its_own&) = delete;

  bool is_there() const { return is_there_; }

  /// Fills it with one file, but for `left` kilobytes.
  void fill(unsigned left = 0) const {
    const std::string keep = folder_.add("kept free", std::string(left * 1024, 'x'));
    folder_.add("fills the disk", std::string(1u << 22, 'x'));
    remove_all(keep);
  }

 private:
  const temporary_folder& folder_;
  bool is_there_;
};

}  // namespace corvane::testing_support
