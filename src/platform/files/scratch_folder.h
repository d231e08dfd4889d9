// A folder for files that nobody needs later, in the system's temporary folder.
#pragma once

#include "platform/result.h"

#include <memory>
#include <string>
#include <utility>

namespace corvane {

/// Removed, with what is in it, when the object goes.
class scratch_folder {
 public:
  /// Makes a new folder that no other program knows and, on POSIX, no other user can look into.
  /// `parent` (native) is where; empty: the system's temporary folder.
  static result<std::unique_ptr<scratch_folder>> make(const std::string& parent = {});

  /// From now on it stays when the object goes.
  void keep() { kept_ = true; }

  ~scratch_folder();
  scratch_folder(const scratch_folder&) = delete;
  scratch_folder& operator=(const scratch_folder&) = delete;

  const std::string& path() const { return path_; }  ///< native
  std::string path(const std::string& name) const;   ///< of something in it

 private:
  explicit scratch_folder(std::string path) : path_(std::move(path)) {}
  std::string path_;
  bool kept_ = false;
};

}  // namespace corvane
