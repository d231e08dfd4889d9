// Runs a program for a test and keeps what it said. (The disc tests run where the real tools are
// installed, on Linux, so this one is POSIX only.)
#pragma once

#include <map>
#include <string>
#include <vector>

namespace corvane::disc {

struct finished {
  int status = -1;  ///< exit status; 128 + signal when it was killed; -1: not started
  std::string out;  ///< standard output and standard error, as they came
};

/// Variables are set on top of the test's own environment. With `output_file`, standard output goes
/// there instead.
struct command {
  std::vector<std::string> words;
  std::map<std::string, std::string> environment = {};
  std::string folder = {};  ///< current folder; empty: the test's
  std::string input_file = {}, output_file = {};
};

finished run(const command& c);

}  // namespace corvane::disc
