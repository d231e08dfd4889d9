#include "import/unfinished_imports.h"

#include "formats/text.h"
#include "platform/files/files.h"
#include "platform/files/paths.h"

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

}  // namespace

failure note_unfinished(const std::string& app, const import_job& job) {
  std::string list;
  for (const std::string& file : job.files.all())
    list += temporary_name(file) + "\n";
  list += notes_file(job.files) + "\n";
  return replace_file(join_path(app, run_file::unfinished_import), list);
}

void remove_left_imports(const std::string& app) {
  const std::string list = join_path(app, run_file::unfinished_import);
  const result<std::string> text = read_file(list, largest_list);
  bool all_gone = true;
  for (const std::string& file : split(text ? *text : std::string(), "\n"))
    if (is_temporary(file) && file_exists(file) && remove_all(file))
      all_gone = false;
  if (all_gone && entry_exists(list))
    remove_all(list);
}

}  // namespace corvane
