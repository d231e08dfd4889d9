#include "menus/maker/design_folder.h"

#include "formats/sanitized.h"
#include "formats/text.h"
#include "platform/files/files.h"
#include "platform/files/paths.h"
#include "platform/files/program_folder.h"

#include <algorithm>
#include <array>
#include <filesystem>
#include <string_view>
#include <utility>

namespace corvane {
namespace {

constexpr std::string_view design_ending = ".design";

bool is_design_file(std::string_view name) {
  return name.size() > design_ending.size() && lower(name).ends_with(design_ending);
}

void add_designs_of(const std::string& folder, bool is_own, std::vector<found_design>& designs) {
  if (folder.empty())
    return;
  for (const std::string& name : files_in(folder)) {
    if (!is_design_file(name))
      continue;
    found_design found = design_at(join_path(folder, name));
    found.is_own = is_own;
    std::erase_if(designs, [&](const found_design& d) { return d.id == found.id; });
    designs.push_back(std::move(found));
  }
}

std::string shown_name(const found_design& d) {
  return d.design ? d.design->name : d.id;
}

}  // namespace

std::string program_designs_folder() {
  const std::filesystem::path beside = path_of(own_executable()).parent_path();
  constexpr std::array places{"designs", "../share/corvane/designs"};
  for (const char* const place : places) {
    const std::string folder = text_of((beside / place).lexically_normal());
    if (folder_exists(folder))
      return folder;
  }
  return {};
}

std::string own_designs_folder(const std::string& app) {
  return join_path(app, "my designs");
}

found_design design_at(const std::string& file) {
  found_design found;
  const std::string name = native_file_name(file);
  found.id = is_design_file(name) ? name.substr(0, name.size() - design_ending.size()) : name;
  found.file = file;
  const result<std::string> text = read_file(file, largest_design);
  if (!text) {
    found.design = result<menu_design>::fail(text.error);
    return found;
  }
  found.design = read_design(*text, text_of(path_of(file).parent_path()));
  return found;
}

std::vector<found_design> designs_in(const std::string& of_program, const std::string& own) {
  std::vector<found_design> designs;
  add_designs_of(of_program, false, designs);
  add_designs_of(own, true, designs);
  std::ranges::stable_sort(designs, {}, [](const found_design& d) { return lower(shown_name(d)); });
  return designs;
}

result<found_design> design_named(const std::vector<found_design>& designs,
                                  const std::string& name) {
  for (const found_design& d : designs)
    if (lower(d.id) == lower(name) || lower(shown_name(d)) == lower(name)) {
      if (d.design)
        return result<found_design>::ok(d);
      return result<found_design>::fail("The design " + sanitized_quoted(d.file) +
                                        " cannot be used: " + d.design.error);
    }
  if (is_design_file(name) && file_exists(name)) {
    found_design found = design_at(name);
    if (found.design)
      return result<found_design>::ok(std::move(found));
    return result<found_design>::fail("The design " + sanitized_quoted(name) +
                                      " cannot be used: " + found.design.error);
  }
  std::vector<std::string> names;
  for (const found_design& d : designs)
    if (d.design)
      names.push_back(d.id);
  return result<found_design>::fail(
      "There is no design " + sanitized_quoted(name) +
      (names.empty() ? std::string("; none is installed") : "; there are " + join(names, ", ")));
}

}  // namespace corvane
