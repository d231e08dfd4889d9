#include "runner/script_interpreter.h"

#include "formats/sanitized.h"
#include "platform/files/paths.h"
#include "runner/line_guard.h"
#include "runner/output_lines.h"
#include "runner/tools/known_messages.h"
#include "runner/tools/tool_outcomes.h"
#include "runner/tools/tool_output.h"

#include <algorithm>
#include <iterator>
#include <utility>

namespace corvane {
namespace {

#ifdef _WIN32
constexpr std::string_view line_end = "\r\n";
#else
constexpr std::string_view line_end = "\n";
#endif

std::string folder_with_separator(const std::string& path) {
  const auto last = path.find_last_of(path_separators);
  return last == std::string::npos ? std::string() : path.substr(0, last + 1);
}

class interpreter {
 public:
  explicit interpreter(script_host& host) : host_(host) {}

  void line(std::string_view text) {
    ++line_number_;
    const result<script_command> command = parse_script_line(text);
    if (!command)
      complain("line " + std::to_string(line_number_) +
               " of the work script is not understood: " + command.error);
    else
      execute(*command);
  }

  /// All lines have been run. True when nothing has gone wrong.
  bool end(const last_look& look) {
    if (!marker_.empty() && look)
      look(all_well_, {[this](std::string_view text) {
                         all_well_ = all_well_ && !is_error_line(text);
                         say(text);
                       },
                       [this](std::string_view name) { print_line(step_line(sanitized(name))); }});
    if (!marker_.empty())
      print_line(marker_);
    return all_well_;
  }

 private:
  /// A line of our own; a tool may have left its last one open.
  void print_line(std::string_view text) {
    std::string line(guard_.at_line_start() ? "" : line_end);
    guard_.end_line();
    host_.print(line.append(text).append(line_end));
  }

  /// A line that may hold names and other texts of strangers.
  void say(std::string_view text) {
    const std::string line = sanitized(text);
    line_guard guard;
    std::string guarded(guard(line));
    print_line(guarded.append(guard.rest()));
  }

  void print_error(const std::string& what) {
    all_well_ = false;
    host_.print(std::string(line_end).append(error_mark).append(sanitized(what)).append(line_end));
    guard_.end_line();
  }

  /// Of a step that is no tool's.
  void complain(const std::string& what) {
    print_error(what);
    host_.take(outcome_finding("step-failed", {}, what));
  }

  void complain_if(const std::string& about, const failure& why) {
    if (why)
      complain(about + ": " + *why);
  }

  void execute(const script_command& c) {
    switch (c.verb) {
      case script_verb::nothing:
        break;
      case script_verb::echo:
        echo(c.text);
        break;
      case script_verb::make_folder:
        complain_if("mkdir " + c.operands[0], host_.make_folder(c.operands[0]));
        break;
      case script_verb::erase:
        erase(c.operands[0]);
        break;
      case script_verb::rename:
        rename(c.operands[0], c.operands[1]);
        break;
      case script_verb::run:
        run(c);
        break;
    }
  }

  void echo(const std::string& text) {
    if (!text.starts_with(end_marker))
      print_line(text);
    else if (marker_.empty())
      marker_ = text;
  }

  void erase(const std::string& pattern) {
    const std::vector<std::string> files = host_.matching(pattern);
    if (files.empty())
      say("Could not find " + pattern);
    for (const std::string& file : files)
      complain_if("erase " + file, host_.erase(file));
  }

  void rename(const std::string& path, const std::string& name) {
    if (name.find_first_of(path_separators) != std::string::npos || name == "." || name == "..")
      complain("rename " + path + ": the new name is not one of the same folder");
    else
      complain_if("rename " + path, host_.rename(path, folder_with_separator(path) + name));
  }

  void run(const script_command& c) {
    pipeline p;
    p.input = c.input;
    p.output = c.output;
    for (const script_words& words : c.pipeline) {
      p.programs.push_back(words);
      p.programs.back()[0] = host_.allowed_program(words[0]);
      if (p.programs.back()[0].empty()) {
        complain(name_in_path(words[0]) + " is not started: it is not one of the program's tools");
        return;
      }
    }
    const tool_call call{c.pipeline[0], c.output, c.pipeline};
    const tool_ways& ways = ways_of(name_in_path(call.words[0]));
    if (const std::string why = ways.why_not_after_errors(); !all_well_ && !why.empty()) {
      say("INFO: " + why);
      return;
    }
    for (const std::string& line : ways.announce(call, host_))
      say(line);
    const std::string made = ways.makes(call);
    const bool was_there = !made.empty() && host_.set_time_back(made);
    call_findings found{item_of_call(call.words, call.output)};
    tool_result result = run(p, c, found);
    result.left_alone = was_there && host_.was_left_alone(made);
    for (const finding& f : ways.explain(call, result, host_))
      tell(f, found);
    std::vector<finding> judged = ways.judge(call, result, host_);
    for (const finding& f : judged)
      print_error(f.found);
    hand_on(found, std::move(judged));
  }

  /// What is found of one line of the script by what its tools say.
  struct call_findings {
    finding_item item;               ///< what the tool works on
    std::vector<finding> told{};     ///< by known messages
    std::vector<finding> unknown{};  ///< errors in words of the tool's own
    std::vector<finding> ends{};     ///< that a program ended as it should not
  };

  /// A judgement says better what a tool's own words say, and how it ended matters when nothing
  /// says why.
  void hand_on(call_findings& found, std::vector<finding> judged) {
    const auto add = [&found](std::vector<finding>& more) {
      std::move(more.begin(), more.end(), std::back_inserter(found.told));
    };
    add(judged.empty() ? found.unknown : judged);
    if (count_of(found.told, finding_severity::error) == 0)
      add(found.ends);
    for (finding& f : found.told)
      host_.take(std::move(f));
  }

  /// Runs them, prints what they print, and tells how they ended.
  tool_result run(pipeline& p, const script_command& c, call_findings& found) {
    const std::string name = name_in_path(c.pipeline[0][0]);
    tool_output output(name, found.item);
    p.take_output = [&](std::string_view piece) {
      output.feed(piece);
      print(guard_(piece));
    };
    const pipeline_result r = host_.run(p);
    print(guard_.rest());
    output.end();
    all_well_ = all_well_ && !output.holds_error();
    for (const message_reader::told& message : output.messages())
      if (message.known)
        tell(counted(message.what, message.times), found);
      else
        found.unknown.push_back(counted(message.what, message.times));
    tool_result result{r.ends, output.text()};
    if (!r.unusable_file.empty())
      tell_end(name + " could not be started: " + r.unusable_file + ": " + r.why_unusable, found);
    else
      tell_ends(c, result, found);
    return result;
  }

  void tell(const finding& f, call_findings& found) {
    const std::string line = log_line(f);
    if (f.severity == finding_severity::error)
      print_error(line.substr(error_mark.size()));
    else
      say(line);
    found.told.push_back(f);
  }

  void tell_end(const std::string& what, call_findings& found) {
    print_error(what);
    found.ends.push_back(outcome_finding("tool-failed", found.item, what));
  }

  void print(std::string_view text) {
    if (!text.empty())
      host_.print(text);
  }

  void tell_ends(const script_command& c, const tool_result& result, call_findings& found) {
    for (std::size_t i = 0; i < result.ends.size() && i < c.pipeline.size(); ++i) {
      const std::string name = name_in_path(c.pipeline[i][0]);
      const std::string what = complaint_about(name, result.ends[i]);
      if (!what.empty() && !ways_of(name).forgives(result.ends[i], result.printed))
        tell_end(what, found);
    }
  }

  script_host& host_;
  std::size_t line_number_ = 0;
  bool all_well_ = true;
  std::string marker_;  ///< the script's last line, held back
  line_guard guard_;
};

}  // namespace

bool run_script(std::string_view script, script_host& host, const last_look& look) {
  interpreter run(host);
  while (!script.empty()) {
    const std::string_view line = script.substr(0, script.find('\n'));
    run.line(line);
    script.remove_prefix(std::min(script.size(), line.size() + 1));
  }
  return run.end(look);
}

}  // namespace corvane
