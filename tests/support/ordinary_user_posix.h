// What holds for a user who is not the system's administrator.
#pragma once

#include "support/temporary_folder.h"

#include <filesystem>
#include <sys/stat.h>
#include <unistd.h>

namespace corvane::testing_support {

/// While this lives the process may do what any user may: files of others and write-protected ones
/// are out of reach, whoever runs the tests. `folder`, with what is in it, is that user's.
class ordinary_user {
 public:
  explicit ordinary_user(const temporary_folder& folder) {
    if (::geteuid() != 0)
      return;
    give(folder.path());
    for (const auto& entry : std::filesystem::recursive_directory_iterator(folder.path()))
      give(entry.path().string());
    was_root_ = ::seteuid(nobody) == 0;
  }
  ~ordinary_user() {
    if (was_root_ && ::seteuid(0) != 0)
      ::abort();
  }
  ordinary_user(const ordinary_user&) = delete;
  ordinary_user& operator=(const ordinary_user&) = delete;

 private:
  static constexpr uid_t nobody = 65534;
  static void give(const std::string& path) {
    if (::lchown(path.c_str(), nobody, static_cast<gid_t>(-1)) != 0)
      ::abort();
  }
  bool was_root_ = false;
};

}  // namespace corvane::testing_support
