#include "formats/aspect_code.h"
#include "formats/font_names.h"
#include "formats/text.h"
#include "platform/files/files.h"
#include "platform/files/paths.h"
#include "runner/script_interpreter.h"
#include "runner/tools/spumux_buttons.h"

#include <chrono>
#include <cstdint>
#include <filesystem>
#include <system_error>

namespace corvane {

namespace fs = std::filesystem;

void system_script_host::print(std::string_view text) {
  write_output(text);
}

failure system_script_host::make_folder(const std::string& path) {
  if (folder_exists(path))
    return std::nullopt;
  return make_folders(path);
}

std::vector<std::string> system_script_host::matching(const std::string& pattern) {
  std::vector<std::string> found;
  const fs::path path = path_of(pattern);
  const std::string name = text_of(path.filename());
  if (name.find_first_of("*?") == std::string::npos) {
    std::error_code error;
    const fs::file_status there = fs::symlink_status(path, error);
    if (fs::exists(there) && !fs::is_directory(there))
      found.push_back(pattern);
    return found;
  }
  const fs::path folder = path.parent_path().empty() ? fs::path(".") : path.parent_path();
  for (const std::string& file : files_in(text_of(folder)))
    if (matches_wildcard(name, file))
      found.push_back(join_path(text_of(folder), file));
  return found;
}

failure system_script_host::erase(const std::string& path) {
  std::error_code error;
  fs::remove(path_of(path), error);
  if (error)
    return error.message();
  return std::nullopt;
}

failure system_script_host::rename(const std::string& path, const std::string& new_path) {
  std::error_code error;
  if (fs::exists(fs::symlink_status(path_of(new_path), error)))
    return "a file of the new name is there already";
  fs::rename(path_of(path), path_of(new_path), error);
  if (error)
    return error.message();
  return std::nullopt;
}

bool system_script_host::set_time_back(const std::string& file) {
  constexpr auto about_a_year = std::chrono::hours(24 * 370);
  std::error_code error;
  const fs::path path = path_of(file);
  if (!fs::is_regular_file(path, error))
    return false;
  const fs::file_time_type own = fs::last_write_time(path, error);
  if (error)
    return false;
  fs::last_write_time(path, own - about_a_year, error);
  if (error)
    return false;
  const fs::file_time_type kept = fs::last_write_time(path, error);
  if (error || kept == own)
    return false;
  times_[file] = {own, kept};
  return true;
}

bool system_script_host::was_left_alone(const std::string& file) {
  const auto times = times_.find(file);
  std::error_code error;
  if (times == times_.end() || fs::last_write_time(path_of(file), error) != times->second.kept ||
      error)
    return false;
  fs::last_write_time(path_of(file), times->second.own, error);
  return true;
}

std::string system_script_host::allowed_program(const std::string& path) {
  const fs::path program = path_of(path);
  if (program.parent_path().empty() || own_folder_.empty() ||
      !same_place(text_of(program.parent_path()), own_folder_))
    return {};
  const std::string name = text_of(program.filename());
  if (lower(name) == "conspawn.exe")
    return {};
  return join_path(own_folder_, name);
}

pipeline_result system_script_host::run(const pipeline& programs) {
  return run_pipeline(programs);
}

std::string system_script_host::why_no_buttons_seen(const std::string& menu_stream) {
  return corvane::why_no_buttons_seen(menu_stream);
}

int system_script_host::buttons_asked_for(const std::string& control_file) {
  return corvane::buttons_asked_for(control_file);
}

std::string system_script_host::control_text(const std::string& control_file) {
  const result<std::string> text = read_file(control_file, std::uintmax_t{1} << 20);
  return text ? *text : std::string();
}

std::optional<std::uintmax_t> system_script_host::size_of(const std::string& file) {
  return file_size(file);
}

std::string system_script_host::why_not_this_still(const std::string& m2v,
                                                   const still_form& asked) {
  return corvane::why_not_this_still(m2v, asked);
}

failure system_script_host::set_aspect_code(const std::string& m2v, int code) {
  return corvane::set_aspect_code(m2v, code);
}

std::vector<std::string> system_script_host::font_names_in(const std::string& font_file) {
  // The largest that systems come with, of Chinese letters, have half of that.
  const result<std::string> font = read_file(font_file, std::uintmax_t{64} << 20);
  return font ? font_names(*font) : std::vector<std::string>();
}

}  // namespace corvane
