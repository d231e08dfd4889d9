#include "import/unfinished_imports.h"

#include "formats/text.h"
#include "platform/files/files.h"
#include "platform/files/paths.h"
#include "runner/run_files.h"

#include <string_view>

namespace corvane {
namespace {

/// Lists are much smaller.
constexpr std::uintmax_t largest_list = std::uintmax_t{1} << 20;

bool is_temporary(std::string_view file) {
  const auto ends_like = [file](const std::string& name) { return file.ends_with(name); };
  for (const char* const ending : {".m2v", ".ac3", ".mp2", ".srt"})
    if (ends_like(temporary_name(ending)))
      return true;
  import_files files;
  files.notes = ".pass";
  return ends_like(notes_file(files));
}

/// Nothing of it may be there, or nobody can tell.
bool may_be_left(const std::string& file) {
  return file_exists(file) || !entry_exists(text_of(path_of(file).parent_path()));
}

std::string list_of(const std::string& app) {
  return join_path(app, run_file::unfinished_import);
}

}  // namespace

failure note_unfinished(const std::string& app, const import_job& job) {
  const result<std::string> left = read_file(list_of(app), largest_list);
  std::string list = left ? *left : std::string();
  for (const std::string& file : job.files.all())
    list += temporary_name(file) + "\n";
  list += notes_file(job.files) + "\n";
  return replace_file(list_of(app), list);
}

void remove_left_imports(const std::string& app) {
  const std::string list = list_of(app);
  const result<std::string> text = read_file(list, largest_list);
  if (!text)
    return;
  std::string left;
  for (const std::string& file : split(*text, "\n")) {
    if (!is_temporary(file))
      continue;
    if (file_exists(file))
      remove_all(file);
    if (may_be_left(file))
      left += file + "\n";
  }
  if (left.empty())
    remove_all(list);
  else if (left != *text)
    replace_file(list, left);
}

}  // namespace corvane
