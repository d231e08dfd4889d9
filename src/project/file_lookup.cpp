#include "project/file_lookup.h"

#include "platform/files/files.h"
#include "platform/files/paths.h"

namespace corvane {

std::optional<std::uintmax_t> file_lookup::size_of(const std::string& stored) {
  const auto [found, is_new] = sizes_.try_emplace(stored);
  if (is_new)
    found->second = file_size(native_from_stored(stored));
  return found->second;
}

bool file_lookup::current_folder_has_any() {
  if (!any_here_)
    any_here_ = current_folder_holds_a_file() || try_writing_in(".", 0).has_value();
  return *any_here_;
}

}  // namespace corvane
