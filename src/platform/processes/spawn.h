// Programs run in the foreground, as a script does: with redirections, as a pipeline, waited for.
//
// Standard input is empty unless a file or another program feeds it. What they print goes where
// ours goes, or to `take_output`; they inherit nothing else. They do not outlive this process,
// however it ends.
#pragma once

#include <cstdint>
#include <functional>
#include <string>
#include <string_view>
#include <vector>

namespace corvane {

/// Programs (native UTF-8 paths, then arguments), each reading what the one before writes.
struct pipeline {
  std::vector<std::vector<std::string>> programs;
  std::string input;   ///< file the first reads; empty: none
  std::string output;  ///< file the last writes, created or emptied; empty: none

  /// Takes what the programs print to standard error, and the last one to standard output unless a
  /// file takes that: all through one pipe, so in the order in which they print it, a piece as soon
  /// as it is there. Not set: they inherit ours.
  std::function<void(std::string_view piece)> take_output;
};

/// How a program of a pipeline ended.
struct program_end {
  enum class kind { exited, by_signal, by_exception, not_started };
  kind how = kind::exited;
  std::uint32_t number = 0;  ///< exit status; signal; exception code (Windows); system error
  std::string text;          ///< what the system says of the number; empty for exited
};

struct pipeline_result {
  std::string unusable_file;  ///< the redirection that could not be opened; then nothing ran
  std::string why_unusable;
  std::vector<program_end> ends;  ///< one for each program
};

/// Runs them and waits until all have ended. All that they printed has been taken then; of a
/// process that one of them left behind, only what it printed until then is.
pipeline_result run_pipeline(const pipeline& p);

/// Writes to standard output, past all buffers, in one call where the system takes it all at once.
void write_output(std::string_view text);

/// The path by which this process was started, and its arguments: UTF-8, whatever main was given.
/// Symbolic links stay as they are. The path is empty when the system does not tell.
struct invocation {
  std::string program;
  std::vector<std::string> arguments;
};
invocation own_invocation(int argc, char** argv);

/// To be called first by conspawn. Makes it and all it starts end when the program that started it
/// ends, if that was our runner; and lets it go on when nobody reads its output any more.
void begin_as_script_runner();

}  // namespace corvane
