// `Checkbuttons`: which buttons of a menu overlap.
#pragma once

#include "project/document.h"

#include <string>
#include <vector>

namespace corvane {

/// Two buttons, 1-based: a corner of `a` lies inside `b`, its edges included.
struct button_pair {
  int a = 0, b = 0;
  bool operator==(const button_pair&) const = default;
};

/// Each overlapping pair once, in the order in which it is met, at most `most` of them. Two
/// rectangles that cross without a corner of one inside the other are not found.
std::vector<button_pair> overlapping_buttons(const std::vector<std::string>& records,
                                             std::size_t most);

/// Shows a message for each overlapping pair. Returns what was told, one line each; empty when no
/// buttons overlap. After a hundred messages one more stands for the rest.
std::string Checkbuttons(document& doc, const std::vector<std::string>& records);

}  // namespace corvane
