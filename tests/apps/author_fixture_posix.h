// A project, a program folder and stand-in tools for corvane-author.
#pragma once

#include "apps/program_posix.h"
#include "project/project.h"
#include "support/temporary_folder.h"

#include <gtest/gtest.h>

#include <string>
#include <vector>

namespace corvane::testing_support {

/// Starts the real program with stand-ins for the outside tools on its PATH. Each stand-in notes
/// its call and process number; a test gives it more to do.
class AuthorProgram : public testing::Test {
 protected:
  AuthorProgram();

  /// A project of one title with separate streams, saved as "film.cvp" in the folder.
  static project one_title(const temporary_folder& folder);
  std::string save(const project& p, const std::string& name = "film.cvp") const;

  /// Makes a stand-in whose shell commands are `body` (full paths: PATH holds stand-ins only).
  void add_tool(const std::string& name, const std::string& body) const;
  void remove_tool(const std::string& name) const;
  /// The command that hands a stand-in's arguments on to the real tool.
  static std::string real(const std::string& tool);
  /// A disc stands in the output folder.
  void expect_a_disc() const;

  program_start start(const std::vector<std::string>& arguments) const;
  /// Starts it, waits and keeps what it said.
  int run(const std::vector<std::string>& arguments);
  int run_as(const program_start& how);

  std::string app(const std::string& name) const { return folder_.path("app/" + name); }
  std::string out() const { return folder_.path("disc"); }
  /// "mplex", "dvdauthor": the stand-ins called so far.
  std::vector<std::string> calls() const;
  /// The process number of a tool that is running.
  pid_t tool_process(const std::string& name) const;
  /// Waits until a tool has been started.
  bool started(const std::string& name) const;

  temporary_folder folder_;
  std::string project_;  ///< path of film.cvp
  std::string stdout_, stderr_;
};

/// A tool that does not end by itself.
inline constexpr const char* endless = "exec /bin/sleep 1000\n";

}  // namespace corvane::testing_support
