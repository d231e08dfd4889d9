// A folder whose path is as long as the system takes, nearly. POSIX: a file in it can have a path
// that is too long, by which nobody removes it, whatever their rights.
#pragma once

#include "support/temporary_folder.h"

#include <algorithm>
#include <climits>
#include <cstddef>
#include <filesystem>
#include <fstream>
#include <string>
#include <vector>

namespace corvane::testing_support {

class long_folder {
 public:
  /// The path of something in it fits when its name has less than `room` characters.
  explicit long_folder(std::size_t room) {
    while (path_.size() + room + 1 < PATH_MAX) {
      const std::size_t left = PATH_MAX - room - 1 - path_.size();
      path_ += "/" + std::string(left > 100 ? 60 : std::max<std::size_t>(left, 2) - 1, 'd');
    }
    EXPECT_FALSE(make_folders(path_));
  }
  ~long_folder() {
    from_inside([this] {
      for (const std::string& name : names_)
        std::filesystem::remove(name);
    });
  }
  long_folder(const long_folder&) = delete;
  long_folder& operator=(const long_folder&) = delete;

  const std::string& path() const { return path_; }

  /// Makes a file, however long its path, and gives that.
  std::string add(const std::string& name) {
    from_inside([&name] { std::ofstream(name) << "x"; });
    names_.push_back(name);
    return path_ + "/" + name;
  }

 private:
  template <typename Action>
  void from_inside(const Action& act) const {
    const std::filesystem::path before = std::filesystem::current_path();
    std::filesystem::current_path(path_);
    act();
    std::filesystem::current_path(before);
  }

  temporary_folder folder_;
  std::string path_ = folder_.path();
  std::vector<std::string> names_;
};

}  // namespace corvane::testing_support
