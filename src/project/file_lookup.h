// The sizes of the files that a project names, each asked of the file system once.
#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <unordered_map>

namespace corvane {

/// Lives for one command: a file that comes or goes meanwhile is not noticed.
class file_lookup {
 public:
  /// Size in bytes of a file (stored path); nullopt if there is no such file.
  std::optional<std::uintmax_t> size_of(const std::string& stored);

  /// What an empty path finds: any file in the current folder, which is the program's own and holds
  /// its lock. Where nothing can be written, there cannot be any, which says nothing of the path.
  bool current_folder_has_any();

 private:
  std::unordered_map<std::string, std::optional<std::uintmax_t>> sizes_;
  std::optional<bool> any_here_;
};

}  // namespace corvane
