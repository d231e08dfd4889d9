// dvdauthor: it takes a title's chapters in the order of time only and leaves out the others
// without a word; the project keeps them in the order in which they were typed.
#pragma once

#include "runner/tools/tool_ways.h"

#include <string>
#include <string_view>
#include <vector>

namespace corvane {

class dvdauthor_ways : public tool_ways {
 public:
  /// The chapters that it will leave out. It is what the user asked for, so no error.
  std::vector<std::string> announce(const tool_call& call, tool_files& files) const override;
};

struct left_out_chapter {
  int title = 0;      ///< from 1, in the order of the navigation XML
  std::string time;   ///< as it stands there
  std::string after;  ///< the later one that stands before it
};

/// In a navigation XML's text, those that stand behind a later one of their title. What is no time
/// (up to three numbers between ":") is passed over.
std::vector<left_out_chapter> chapters_left_out(std::string_view navigation_xml);

}  // namespace corvane
