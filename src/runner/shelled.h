// The console command runner: starts the work script through bin/conspawn.exe, polls its output,
// feeds the log window, keeps the log file, tells the user the outcome. Never blocks.
#pragma once

#include "platform/processes/process.h"
#include "project/prompts.h"
#include "runner/run_screen.h"

#include <memory>
#include <string>
#include <string_view>
#include <vector>

namespace corvane {

class folder_lock;  // platform/files/folder_lock.h

enum class run_outcome { none, running, success, failed, stopped };

class shelled {
 public:
  /// `app` is the program folder (native, absolute), which is also the current folder. `lock` is
  /// held by whoever started a run; the runner releases it when the run has ended or did not start.
  shelled(run_screen& screen, prompts& ask, process_launcher& launcher, folder_lock& lock,
          std::string app);
  ~shelled();
  shelled(const shelled&) = delete;
  shelled& operator=(const shelled&) = delete;

  /// The stored command line: the native path of the script to run.
  std::string CommandLine;

  /// Starts the command; a non-empty argument replaces the stored one first. The command's
  /// environment is ours with `variables` in it.
  void ExecuteCommand(std::string_view command_line = {},
                      const std::vector<child_variable>& variables = {});

  /// One polling pass; the tick of Timer1 calls it.
  void update();

  /// Ends the watching without waiting: closes the handles, writes the log file, enables the main
  /// window. Neither ends the command nor says anything.
  void endprocess();

  /// Ends the script and every tool it started, then endprocess.
  void stop();

  bool running() const;
  run_outcome outcome() const;  ///< of the last run

 private:
  struct state;
  std::unique_ptr<state> s_;
};

}  // namespace corvane
