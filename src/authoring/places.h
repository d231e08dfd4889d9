// The folders and fonts of one authoring run and how their paths are written.
#pragma once

#include "platform/paths.h"
#include "project/font_list.h"

#include <string>

namespace corvane {

/// What the text builders need besides the project. The texts are pure functions of both.
struct places {
  std::string app;  ///< program folder, native in `style`, no separator last
  std::string out;  ///< output folder, likewise
  path_style style = native_style();
  font_list fonts{};  ///< needed only where text subtitles are drawn

  std::string in_app(const std::string& name) const { return join_path(app, name, style); }
  std::string in_out(const std::string& name) const { return join_path(out, name, style); }
  std::string tool(const std::string& name) const {
    return join_path(join_path(app, "bin", style), name + ".exe", style);
  }
};

}  // namespace corvane
