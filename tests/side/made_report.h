// A random project, and what a reader of its layout report must find there.
#pragma once

#include "project/project.h"
#include "side/shown_report.h"

#include <random>
#include <string>
#include <vector>

namespace corvane::side {

class made_report {
 public:
  explicit made_report(unsigned seed);

  project p;
  shown_report expected;

 private:
  void add_title();
  void add_menu();
  std::string add_button(std::vector<shown_button>& shown);

  int number(int below) { return std::uniform_int_distribution<int>(0, below - 1)(dice_); }
  const std::string& one_of(const std::vector<std::string>& texts) {
    return texts[static_cast<std::size_t>(number(static_cast<int>(texts.size())))];
  }
  /// What breaks pages, without what ends a name in a row.
  std::string name();
  /// The same and with closing tags: no "/" ends it.
  std::string text();

  std::mt19937 dice_;
};

/// A text as a page can show it: control characters become U+FFFD.
std::string as_shown(std::string text);

}  // namespace corvane::side
