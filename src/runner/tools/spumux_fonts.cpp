#include "runner/tools/spumux_fonts.h"

#include "formats/font_names.h"
#include "formats/text.h"
#include "runner/tools/known_messages.h"
#include "runner/tools/spumux_subtitles.h"
#include "runner/tools/tool_outcomes.h"

#include <algorithm>
#include <array>
#include <string>
#include <vector>

namespace corvane {
namespace {

bool is_file_name(const std::string& name) {
  constexpr std::array<std::string_view, 4> ends = {".ttf", ".otf", ".ttc", ".pfb"};
  return std::any_of(ends.begin(), ends.end(),
                     [&name](std::string_view end) { return lower(name).ends_with(end); });
}

/// Names that stand for no font in particular.
bool is_any_font(const std::string& family) {
  constexpr std::array<std::string_view, 5> any = {"sans", "serif", "mono", "monospace", ""};
  return std::find(any.begin(), any.end(), lower(family)) != any.end();
}

/// Whether the font in the file is the one of this name, or nobody can say: a family, or several
/// with "," between, perhaps with "-" and a size and with ":" and a style.
bool is_asked_for(const std::string& name, const std::string& file, tool_files& files) {
  if (is_file_name(name))
    return lower(name_in_path(name)) == lower(name_in_path(file));
  const std::vector<std::string> names = files.font_names_in(file);
  if (names.empty())
    return true;
  for (const std::string& one : families_asked_for(name)) {
    const std::string family(trim(one.substr(0, one.find('-'))));
    if (is_any_font(family) || is_font_name(family, names) || is_font_name(one, names))
      return true;
  }
  return false;
}

}  // namespace

std::optional<finding> font_that_stands_in(std::string_view printed, finding_item item,
                                           tool_files& files) {
  std::vector<std::string_view> parts;
  while (!printed.empty()) {
    if (!is_message(take_printed_line(printed), "%INFO: font name \"~\" matches font file ~",
                    parts))
      continue;
    const std::string name(parts[0]);
    const std::string file(parts[1]);
    if (is_asked_for(name, file, files))
      continue;
    return outcome_finding("spumux-font", item,
                           "the font \"" + name + "\" is not installed, so " + name_in_path(file) +
                               " stands in for it");
  }
  return std::nullopt;
}

}  // namespace corvane
