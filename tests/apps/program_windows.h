// Starts a program under test as a process of its own and collects what it says.
#pragma once

#include "support/temporary_folder.h"

#include <string>
#include <windows.h>

namespace corvane::testing_support {

/// What to start and how.
struct program_start {
  std::string program;    ///< native path
  std::string arguments;  ///< the command line behind the program's name, as it stands
  std::string folder;     ///< current folder
};

class running_program {
 public:
  explicit running_program(const program_start& start);
  /// Ends it the hard way when it still runs.
  ~running_program();
  running_program(const running_program&) = delete;
  running_program& operator=(const running_program&) = delete;

  /// Ends it with this exit status, without asking it.
  void kill(DWORD status) const { ::TerminateProcess(info_.hProcess, status); }

  /// Waits until it has ended, at most two minutes, and gives its exit status. Fails the test when
  /// the time runs out.
  DWORD wait();

  /// What it wrote, with bare line feeds; complete after wait().
  const std::string& out() const { return out_; }
  const std::string& err() const { return err_; }

 private:
  temporary_folder said_;
  PROCESS_INFORMATION info_{};
  std::string out_, err_;
};

/// Starts it and waits; its exit status, and what it said where that is wanted.
DWORD run_program(const program_start& start, std::string* out = nullptr,
                  std::string* err = nullptr);

/// Makes `folder` a program folder: corvane-author.exe, and in bin conspawn.exe and, under the name
/// of each outside tool, the stand-in, a program that was built with the tests. What stand-ins make
/// is no disc that conspawn would call complete: the `runner` in its place looks at none.
void install_author(const std::string& folder, const std::string& stand_in,
                    const std::string& runner = "stand_in_conspawn.exe");

}  // namespace corvane::testing_support
