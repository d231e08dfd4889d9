#include "platform/files/durable_write.h"
#include "platform/files/files.h"
#include "platform/files/paths.h"
#include "platform/files/program_folder.h"
#include "platform/files/user_folders_posix.h"

#include <array>
#include <filesystem>
#include <optional>
#include <system_error>

namespace corvane {
namespace {

namespace fs = std::filesystem;

std::optional<std::string> installed(const outside_tool& tool) {
  for (const std::string& name : tool.installed)
    if (auto path = command_on_path(name))
      return path;
  return std::nullopt;
}

/// Our script runner: beside the program (a build, a portable copy) or where packages put programs
/// that only other programs start.
std::optional<std::string> own_conspawn() {
  const fs::path beside = path_of(own_executable()).parent_path();
  constexpr std::array places{"conspawn", "../libexec/corvane/conspawn", "../lib/corvane/conspawn"};
  for (const char* const place : places)
    if (const std::string path = text_of((beside / place).lexically_normal()); can_be_started(path))
      return path;
  return std::nullopt;
}

/// Puts a link to `target` there in one step, so that a run that is using the old one never finds
/// nothing.
failure make_link(const fs::path& link, const std::string& target) {
  const fs::path beside = unused_name_beside(link);
  std::error_code error;
  fs::remove(beside, error);
  fs::create_symlink(target, beside, error);
  if (!error)
    fs::rename(beside, link, error);
  if (!error)
    return std::nullopt;
  const std::string why = "the link \"" + text_of(link) + "\" cannot be made: " + error.message();
  fs::remove(beside, error);
  return why;
}

/// Brings one name of bin up to date. Without a target a link that leads nowhere is removed, so
/// that the tool counts as missing, and one that still leads somewhere is kept.
failure refresh_link(const fs::path& link, const std::optional<std::string>& target) {
  std::error_code error;
  const fs::file_status status = fs::symlink_status(link, error);
  const bool is_link = fs::is_symlink(status);
  if (fs::exists(status) && !is_link)
    return std::nullopt;
  if (!target) {
    if (is_link && !fs::exists(link, error))
      fs::remove(link, error);
    return std::nullopt;
  }
  if (is_link && fs::read_symlink(link, error) == fs::path(*target))
    return std::nullopt;
  return make_link(link, *target);
}

failure refresh_links(const std::string& folder) {
  std::vector<outside_tool> tools = outside_tools();
  tools.push_back(import_tool());
  for (const outside_tool& tool : tools)
    if (const failure why = refresh_link(path_of(tool_path(folder, tool.name)), installed(tool)))
      return why;
  return refresh_link(path_of(tool_path(folder, "conspawn")), own_conspawn());
}

}  // namespace

std::string program_folder() {
  if (const std::string own = environment("CORVANE_HOME"); !own.empty())
    return absolute_path(own);
  // A relative $XDG_DATA_HOME is to be ignored, says the XDG base directory text.
  if (const std::string data = environment("XDG_DATA_HOME"); is_absolute(data))
    return absolute_path(join_path(data, "corvane"));
  return absolute_path(join_path(home_folder(), ".local/share/corvane"));
}

failure enter_program_folder(const std::string& folder) {
  if (const auto why = why_not_storable(folder))
    return "\"" + folder + "\" cannot be the program folder: its name " + *why;
  const std::string bin = join_path(folder, "bin");
  if (const failure why = make_folders(bin))
    return "the program folder \"" + bin + "\" cannot be made: " + *why;
  remove_left_parts(folder);
  remove_left_parts(bin);
  if (const failure why = refresh_links(folder))
    return why;
  std::error_code error;
  fs::current_path(path_of(folder), error);
  if (error)
    return "the program folder \"" + folder + "\" cannot be entered: " + error.message();
  return std::nullopt;
}

bool tool_is_there(const std::string& folder, const std::string& name) {
  return can_be_started(tool_path(folder, name));
}

}  // namespace corvane
