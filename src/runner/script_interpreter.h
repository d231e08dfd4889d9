// Runs a work script, line by line: what conspawn does.
//
// What it touches of the system it reaches through a `script_host`, so that the order of things and
// every message can be tested without files and programs.
#pragma once

#include "platform/processes/spawn.h"
#include "platform/result.h"
#include "runner/script_line.h"
#include "runner/tools/tool_ways.h"

#include <cstdint>
#include <filesystem>
#include <functional>
#include <map>
#include <optional>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

namespace corvane {

class script_host : public tool_files {
 public:
  /// Prints a text to standard output, in one write.
  virtual void print(std::string_view text) = 0;

  virtual failure make_folder(const std::string& path) = 0;

  /// Names of the files in the folder of `pattern` that match its last component, as paths.
  virtual std::vector<std::string> matching(const std::string& pattern) = 0;
  virtual failure erase(const std::string& path) = 0;

  /// Fails when there is no such file or the new path names something already.
  virtual failure rename(const std::string& path, const std::string& new_path) = 0;

  /// Gives a file that is there a time of change at which nobody wrote it, so that it can be told
  /// whether it is written from now on: disks keep times to two seconds, and the same bytes have
  /// the same size. False when there is none, or its time cannot be set.
  virtual bool set_time_back(const std::string& file) = 0;

  /// Whether nobody has written it since; then its time is what it was before.
  virtual bool was_left_alone(const std::string& file) = 0;

  /// The path under which a program named in the script is started; empty when it is none that
  /// scripts may start.
  virtual std::string allowed_program(const std::string& path) = 0;

  /// Runs them, as run_pipeline does. What they print is for `take_output` of the pipeline.
  virtual pipeline_result run(const pipeline& programs) = 0;

  /// What was found by what a tool said or left, or by a step that failed. The output tells of it
  /// too. Each line of the script that went wrong has one.
  virtual void take(finding f) = 0;
};

/// Prints texts of conspawn's own into the output of a run.
struct look_output {
  /// A line. One that begins "ERR:" makes the run a failure.
  std::function<void(std::string_view text)> line;
  /// That a step begins, in the form of the script's own ("*making the ISO image.....").
  std::function<void(std::string_view name)> step;
};

/// A last look at what the script has made. `all_well`: nothing has gone wrong so far.
using last_look = std::function<void(bool all_well, const look_output& out)>;

/// Runs the whole script. Each thing that goes wrong is printed as a line that begins "ERR:", after
/// a line break of its own, since a tool may have left its last line open; then the next line is
/// run, as scripts do, unless it is a tool that takes what came before for good (mkisofs). True
/// when nothing went wrong.
///
/// The script's last line, the end marker (runner/output_lines.h), is printed when everything else
/// is done, `look` at last; without that line nobody looks. Nothing that a tool prints can be taken
/// for it, nor for a step (runner/line_guard.h).
bool run_script(std::string_view script, script_host& host, const last_look& look = {});

/// The system's host. `own_folder` is the folder conspawn was started from: programs there, other
/// than conspawn itself, are the ones that scripts may start.
class system_script_host : public script_host {
 public:
  explicit system_script_host(std::string own_folder) : own_folder_(std::move(own_folder)) {}
  void print(std::string_view text) override;
  failure make_folder(const std::string& path) override;
  std::vector<std::string> matching(const std::string& pattern) override;
  failure erase(const std::string& path) override;
  failure rename(const std::string& path, const std::string& new_path) override;
  bool set_time_back(const std::string& file) override;
  bool was_left_alone(const std::string& file) override;
  std::string allowed_program(const std::string& path) override;
  pipeline_result run(const pipeline& programs) override;
  std::string why_no_buttons_seen(const std::string& menu_stream) override;
  int buttons_asked_for(const std::string& control_file) override;
  std::string control_text(const std::string& control_file) override;
  std::optional<std::uintmax_t> size_of(const std::string& file) override;
  std::string why_not_this_still(const std::string& m2v, const still_form& asked) override;
  failure set_aspect_code(const std::string& m2v, int code) override;
  std::vector<std::string> font_names_in(const std::string& font_file) override;
  void take(finding f) override { findings_.push_back(std::move(f)); }

  /// What was taken, in that order.
  const std::vector<finding>& findings() const { return findings_; }

 private:
  std::string own_folder_;
  std::vector<finding> findings_;
  struct set_back {
    std::filesystem::file_time_type own, kept;  ///< `kept`: what the disk made of the one set
  };
  std::map<std::string, set_back> times_;
};

}  // namespace corvane
