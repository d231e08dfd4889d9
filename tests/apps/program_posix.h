// Starts a program under test as a process of its own and collects what it says.
#pragma once

#include <chrono>
#include <string>
#include <string_view>
#include <sys/types.h>
#include <utility>
#include <vector>

namespace corvane::testing_support {

/// What to start and how.
struct program_start {
  std::string program;                                           ///< native path
  std::vector<std::string> arguments;                            ///< without the program's name
  std::vector<std::pair<std::string, std::string>> environment;  ///< changes to this process's
  std::string folder;             ///< current folder; empty: this process's
  bool on_terminal = false;       ///< standard output is a pseudo terminal, 40 columns wide
  bool output_unread = false;     ///< standard output is a pipe that nobody reads
  std::vector<int> closed_files;  ///< of its standard ones: 1 is its output
  std::vector<int> ignored_signals;
};

class running_program {
 public:
  explicit running_program(const program_start& start);
  /// Ends it the hard way when it still runs.
  ~running_program();
  running_program(const running_program&) = delete;
  running_program& operator=(const running_program&) = delete;

  void send(int signal) const;

  /// Waits until it has ended, at most 60 s, and gives its exit status; -signal when one ended it.
  /// Fails the test when the time runs out.
  int wait();

  /// What it wrote; complete after wait().
  const std::string& out() const { return out_; }
  const std::string& err() const { return err_; }

 private:
  void collect(std::chrono::milliseconds time);
  bool has_ended();

  pid_t process_ = -1;
  int out_pipe_ = -1;
  int err_pipe_ = -1;
  int status_ = 0;
  bool reaped_ = false;
  std::string out_, err_;
};

/// Whether a process with this number runs (one that waits to be reaped does not).
bool process_runs(pid_t process);

/// Waits until a condition holds, at most 30 s.
template <typename Condition>
bool wait_until(Condition condition);

}  // namespace corvane::testing_support

#include <thread>

template <typename Condition>
bool corvane::testing_support::wait_until(Condition condition) {
  const auto end = std::chrono::steady_clock::now() + std::chrono::seconds(30);
  while (!condition()) {
    if (std::chrono::steady_clock::now() > end)
      return false;
    std::this_thread::sleep_for(std::chrono::milliseconds(5));
  }
  return true;
}
