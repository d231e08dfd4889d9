#include "platform/files/files.h"

#include <algorithm>
#include <system_error>

namespace corvane {

namespace fs = std::filesystem;

bool current_folder_holds_a_file() {
  std::error_code error;
  for (fs::directory_iterator entry(fs::path("."), error), end; !error && entry != end;
       entry.increment(error)) {
    std::error_code ignored;
    if (entry->is_regular_file(ignored))
      return true;
  }
  return false;
}

std::vector<std::string> files_in(std::string_view native_folder) {
  std::vector<std::string> names;
  std::error_code error;
  for (fs::directory_iterator entry(path_of(native_folder), error), end; !error && entry != end;
       entry.increment(error)) {
    std::error_code ignored;
    if (!entry->is_directory(ignored))
      names.push_back(text_of(entry->path().filename()));
  }
  std::sort(names.begin(), names.end());
  return names;
}

failure remove_all(std::string_view native) {
  std::error_code error;
  fs::remove_all(path_of(native), error);
  if (error)
    return error.message();
  return std::nullopt;
}

failure move_entry(std::string_view from, std::string_view to) {
  if (entry_exists(to))
    return "something of that name is there already";
  std::error_code error;
  fs::rename(path_of(from), path_of(to), error);
  if (error)
    return error.message();
  return std::nullopt;
}

failure copy_file(std::string_view from, std::string_view to) {
  std::error_code error;
  fs::copy_file(path_of(from), path_of(to), fs::copy_options::overwrite_existing, error);
  if (error)
    return error.message();
  return std::nullopt;
}

std::string absolute_path(std::string_view native) {
  std::error_code error;
  fs::path path = fs::absolute(path_of(native), error);
  if (error)
    return std::string(native);
  path = path.lexically_normal();
  if (!path.has_filename() && path != path.root_path())
    path = path.parent_path();
  return text_of(path);
}

}  // namespace corvane
