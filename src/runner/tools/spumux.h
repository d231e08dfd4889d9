// spumux: it puts the picture of a menu's buttons, or a text subtitle, into a stream, and its exit
// status does not tell whether it did.
#pragma once

#include "runner/run_files.h"
#include "runner/tools/tool_ways.h"

#include <optional>
#include <string>
#include <vector>

namespace corvane {

class spumux_ways : public tool_ways {
 public:
  std::vector<std::string> announce(const tool_call& call, tool_files& files) const override;
  std::vector<finding> judge(const tool_call& call, const tool_result& result,
                             tool_files& files) const override;
  std::vector<finding> explain(const tool_call& call, const tool_result& result,
                               tool_files& files) const override;
};

/// The number of the menu whose buttons this spumux puts into the menu's stream: its one argument
/// is the menu's control file. Nullopt when it does something else.
std::optional<std::string> menu_of_overlay(const script_words& spumux);

/// The text subtitle that this spumux puts into a title's stream: its last argument is the
/// subtitle's control file. Nullopt when it does something else.
std::optional<run_file::subtitle_name> subtitle_of(const script_words& spumux);

}  // namespace corvane
