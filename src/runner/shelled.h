// The console command runner: starts the work script through bin/conspawn.exe, polls its output,
// tells a listener what happens, keeps the log file, tells the user the outcome. Never blocks.
#pragma once

#include "platform/processes/process.h"
#include "project/prompts.h"
#include "runner/run_files.h"
#include "runner/run_listener.h"

#include <functional>
#include <memory>
#include <string>
#include <string_view>
#include <vector>

namespace corvane {

class folder_lock;  // platform/files/folder_lock.h

/// What is told when bin/conspawn.exe is missing or cannot be started.
inline constexpr const char* missing_script_runner =
    "Binaries not found, please reinstall the program.";

struct run_options {
  std::vector<child_variable> variables;  ///< of the command's environment, which is ours with them
  std::string first_lines;                ///< what the log begins with; empty: the program's name
  bool cleanup = false;                   ///< after a success the files of the run are removed

  /// Sets in order what the run has left, by its outcome (`none`: it could not be started), and
  /// gathers what it has found. Called once, when nothing of the run goes on any more and before
  /// the outcome is told; not by `endprocess`, which leaves the command to itself. It is called in
  /// a thread of its own, for which the runner waits.
  std::function<run_settled(run_outcome)> settle{};

  /// Files, and folders of files, that `settle` removes after a success (native paths).
  std::vector<std::string> removed{};

  /// Called in each pass, as long as the run goes on.
  std::function<void()> alive{};

  /// Whether `settle` will remove `removed` after this success and not put it back, for what is
  /// told meanwhile; asked before it is called. Without one: it will.
  std::function<bool()> gives_up_earlier{};

  std::string log = run_file::log;  ///< name of the log file, in the program folder

  /// Whether the user is told at the end how the run went. Whoever tells it himself learns it from
  /// `run_listener::finished`.
  bool tells_outcome = true;

  /// Whether the lock stays taken when the run has ended or did not start: whoever began it goes on
  /// in the folder, and releases it.
  bool keeps_lock = false;
};

class shelled {
 public:
  /// `app` is the program folder (native, absolute), which is also the current folder. `lock` is
  /// held by whoever started a run; the runner releases it when the run has ended or did not start,
  /// but for one that keeps it.
  shelled(run_listener& listener, prompts& ask, process_launcher& launcher, folder_lock& lock,
          std::string app);
  ~shelled();
  shelled(const shelled&) = delete;
  shelled& operator=(const shelled&) = delete;

  /// The stored command line: the native path of the script to run.
  std::string CommandLine;

  /// Starts the command; a non-empty argument replaces the stored one first. One that cannot be
  /// started is told with a message.
  void ExecuteCommand(std::string_view command_line = {}, const run_options& options = {});

  /// One polling pass. To be called every 100 ms while `watching`.
  void update();

  /// Ends the watching without waiting: closes the handles and writes the log file. Neither ends
  /// the command nor says anything.
  void endprocess();

  /// Ends the script and every tool it started; the outcome is `stopped`. A run that has come to
  /// its end by then has the outcome that it has, which is told.
  void stop();

  bool running() const;
  bool watching() const;        ///< running, and not broken off by an unexpected error
  run_outcome outcome() const;  ///< of the last run

 private:
  struct state;
  std::unique_ptr<state> s_;
};

}  // namespace corvane
