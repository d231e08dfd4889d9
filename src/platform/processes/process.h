// The command that the runner watches: started hidden, its standard output and standard error in
// one pipe that is read without ever waiting.
//
// A child, and whatever it starts, does not outlive this program, however this one ends.
#pragma once

#include <cstddef>
#include <cstdint>
#include <memory>
#include <optional>
#include <string>
#include <vector>

namespace corvane {

/// How a process ended.
struct exit_status {
  bool by_signal = false;    ///< POSIX: ended by the signal `number`; never on Windows
  std::uint32_t number = 0;  ///< exit status, or the signal
};

/// A started command. Destroying it closes the handles and leaves the command running.
class child_process {
 public:
  virtual ~child_process() = default;

  /// How many bytes wait in the pipe; nullopt if it is broken, which is when the command and
  /// all that it started have ended and everything has been read.
  virtual std::optional<std::size_t> waiting() = 0;

  /// Reads `count` bytes, no more than `waiting` told, so that it returns at once; it may give
  /// fewer. Returns nullopt if the pipe is broken.
  virtual std::optional<std::string> read(std::size_t count) = 0;

  /// Ends the command and everything it started.
  virtual void kill_all() = 0;

  /// How the command ended; nothing while it runs. After the pipe broke it waits, for two
  /// milliseconds at most, until the system knows.
  virtual std::optional<exit_status> ended() = 0;
};

/// What came of starting a command: the child, or which step failed with which system error.
struct start_result {
  enum class step { none, pipe, process };
  std::unique_ptr<child_process> child;
  step failed = step::none;
  std::uint32_t error = 0;
};

/// A variable of a command's environment (UTF-8). The name is not empty and holds no "=".
struct child_variable {
  std::string name, value;
  bool operator==(const child_variable&) const = default;
};

class process_launcher {
 public:
  virtual ~process_launcher() = default;

  /// Starts a command line (UTF-8): the program's path, which may be relative to the current
  /// folder, then arguments; blanks separate them, double quotes hold them together. Its standard
  /// input is empty. Its environment is ours with `variables` in it, in place of those of the same
  /// names; ours stays as it is.
  virtual start_result start(const std::string& command_line,
                             const std::vector<child_variable>& variables) = 0;
};

/// The system's launcher. Commands that still run when it is destroyed go on until this program
/// ends.
std::unique_ptr<process_launcher> make_process_launcher();

/// POSIX: the environment variable that tells a started command this program's process number.
inline constexpr const char* parent_variable = "CORVANE_PARENT";

}  // namespace corvane
