// The folders and fonts of one authoring run and how their paths are written.
#pragma once

#include "platform/files/paths.h"
#include "platform/files/program_folder.h"
#include "project/font_list.h"

#include <string>
#include <string_view>

namespace corvane {

/// What the text builders need besides the project. The texts are pure functions of both.
struct run_paths {
  std::string app;  ///< program folder, native in `style`, no separator last
  std::string out;  ///< output folder, likewise
  path_style style = native_style();
  font_list fonts{};  ///< needed only where text subtitles are drawn

  std::string in_app(const std::string& name) const { return join_path(app, name, style); }
  std::string in_out(const std::string& name) const { return join_path(out, name, style); }
  std::string tool(const std::string& name) const { return tool_path(app, name, style); }
};

/// The output folder as a run has it, from one as the user or hand-edited XML names it: no
/// separator last. Empty for the top folder of a disk that has no letter.
inline std::string output_folder(std::string_view named) {
  const char* const separators = native_style() == path_style::windows ? "\\/" : "/";
  return std::string(named.substr(0, named.find_last_not_of(separators) + 1));
}

}  // namespace corvane
