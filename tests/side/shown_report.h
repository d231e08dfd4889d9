// What a reader learns from a layout report.
#pragma once

#include "side/dom.h"

#include <iosfwd>
#include <optional>
#include <string>
#include <vector>

namespace corvane::side {

struct shown_row {
  std::string name;
  int count = 0;  ///< of chapters, of buttons
  bool operator==(const shown_row&) const = default;
};

struct shown_button {
  int x0 = 0, y0 = 0, x1 = 0, y1 = 0;
  std::string target;
  bool operator==(const shown_button&) const = default;
};

struct shown_report {
  std::vector<shown_row> titles, menus;
  std::string first;
  std::vector<std::vector<shown_button>> buttons;  ///< of each menu
  std::vector<std::string> post_commands;          ///< of each title
  bool operator==(const shown_report&) const = default;
};

/// So that a failed comparison can be read.
void PrintTo(const shown_report& report, std::ostream* out);

/// Reads a report from its page; nothing, with `why`, when the page is not built like one.
std::optional<shown_report> read_report(const element& page, std::string& why);

}  // namespace corvane::side
