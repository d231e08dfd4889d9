// What a work script has to do, step by step, measured before it is done: bytes that its tools will
// write, cues, pictures that will be drawn. Works out nothing about time (runner/run_meter.h).
#pragma once

#include "runner/script_line.h"

#include <cstddef>
#include <functional>
#include <map>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace corvane {

/// Works of one kind take a time that grows with their amount.
enum class work_kind {
  draw,       ///< pictures of gm: calls
  multiplex,  ///< mplex: bytes written
  overlay,    ///< spumux: bytes written
  cues,       ///< spumux: cues of text subtitles
  collect,    ///< dvdauthor: bytes written
  fix,        ///< dvdauthor's second pass: bytes whose navigation is set right
  image,      ///< mkisofs: bytes written
  read_back,  ///< conspawn: bytes read
  other,      ///< calls of other programs
  remove,     ///< the runner, once the script has ended: bytes of files that go
};
inline constexpr std::size_t work_kinds = 10;

/// The step in which files go that the run has made useless; no line of the script names it.
inline constexpr std::string_view removal_step = "removing the earlier disc";

/// What is done instead where the run has not made what was to replace it.
inline constexpr std::string_view return_step = "putting the earlier disc back";

struct planned_work {
  work_kind kind = work_kind::other;
  double amount = 0;        ///< in the kind's unit
  std::string grows{};      ///< the file, or the folder of files, that grows with it; empty: none
  double grows_to = 0;      ///< bytes
  std::size_t command = 0;  ///< works of one line of the script have the same number
};

struct planned_step {
  std::string line;  ///< as it is printed: "*multiplexing title: 1....."
  std::vector<planned_work> works;
};

/// What the plan asks of the disk.
struct plan_files {
  /// Bytes of a file, or of the files in a folder; nullopt when there is neither.
  std::function<std::optional<double>(const std::string& path)> size_of;
  /// A text file; empty when it cannot be read.
  std::function<std::string(const std::string& path)> text_of;
};

/// The system's.
plan_files files_on_disk();

class run_plan {
 public:
  run_plan() = default;

  /// `reads_back`: conspawn looks at the disc once all lines are done. `removed`: files and folders
  /// of files that go after that.
  run_plan(std::string_view script, bool reads_back, plan_files files,
           const std::vector<std::string>& removed = {});

  /// The steps that have anything to do, in order. What follows from the size of something that a
  /// tool has yet to make is guessed from what it is made of.
  const std::vector<planned_step>& steps() const { return steps_; }

  /// Has the size that a line of the script (`planned_work::command`) really made taken for what
  /// was guessed.
  void was_made(std::size_t command, double bytes);

 private:
  struct command_of_step {
    std::string step;
    script_command command;
  };
  class walk;
  void work_out();
  double input_size(const std::string& path);
  double cues_of(const std::string& control);
  void read_navigation(const std::string& control);

  std::vector<command_of_step> commands_;
  bool reads_back_ = false;
  double removed_ = 0;  ///< bytes
  plan_files files_;
  std::map<std::string, double> inputs_;
  std::map<std::string, double> cues_;
  std::map<std::size_t, double> made_;
  std::vector<std::string> vobs_;  ///< that dvdauthor reads
  std::string video_ts_;
  bool navigation_is_read_ = false;
  std::vector<planned_step> steps_;
};

/// About how many cues a text subtitle file holds, whatever its format.
double cues_in(std::string_view text);

}  // namespace corvane
