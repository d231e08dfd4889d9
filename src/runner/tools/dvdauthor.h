// Which chapters dvdauthor leaves out without a word: it takes a title's chapters in the order of
// time only, and the project keeps them in the order in which they were typed.
#pragma once

#include <string>
#include <string_view>
#include <vector>

namespace corvane {

struct left_out_chapter {
  int title = 0;      ///< from 1, in the order of the navigation XML
  std::string time;   ///< as it stands there
  std::string after;  ///< the later one that stands before it
};

/// In a navigation XML's text, those that stand behind a later one of their title. What is no time
/// (up to three numbers between ":") is passed over.
std::vector<left_out_chapter> chapters_left_out(std::string_view navigation_xml);

}  // namespace corvane
