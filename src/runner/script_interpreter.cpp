#include "runner/script_interpreter.h"

#include "platform/files/paths.h"
#include "runner/output_lines.h"

#include <algorithm>

namespace corvane {
namespace {

#ifdef _WIN32
constexpr std::string_view line_end = "\r\n";
constexpr std::string_view separators = "\\/";
#else
constexpr std::string_view line_end = "\n";
constexpr std::string_view separators = "/";
#endif

std::string folder_with_separator(const std::string& path) {
  const auto last = path.find_last_of(separators);
  return last == std::string::npos ? std::string() : path.substr(0, last + 1);
}

// What a tool prints as an error makes the run a failure, whatever status it ends with.
bool has_error_line(std::string_view printed) {
  while (!printed.empty()) {
    const std::string_view line = printed.substr(0, printed.find_first_of("\r\n"));
    if (is_error_line(line))
      return true;
    printed.remove_prefix(std::min(printed.size(), line.size() + 1));
  }
  return false;
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
  bool all_well() const { return all_well_; }

 private:
  void complain(const std::string& what) {
    all_well_ = false;
    host_.print(std::string(line_end) + std::string(error_mark) + what + std::string(line_end));
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
        host_.print(c.text + std::string(line_end));
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

  void erase(const std::string& pattern) {
    const std::vector<std::string> files = host_.matching(pattern);
    if (files.empty())
      host_.print("Could not find " + pattern + std::string(line_end));
    for (const std::string& file : files)
      complain_if("erase " + file, host_.erase(file));
  }

  void rename(const std::string& path, const std::string& name) {
    if (name.find_first_of(separators) != std::string::npos || name == "." || name == "..")
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
    const tool_call call{c.pipeline[0], c.output};
    const tool_ways& ways = ways_of(name_in_path(call.words[0]));
    if (const std::string why = ways.why_not_after_errors(); !all_well_ && !why.empty()) {
      host_.print("INFO: " + why + std::string(line_end));
      return;
    }
    p.watch_errors = p.programs.size() == 1 && ways.reads_errors(call);
    for (const std::string& line : ways.announce(call, host_))
      host_.print(line + std::string(line_end));
    const pipeline_result r = host_.run(p);
    tell(c, r);
    for (const std::string& what : ways.judge(call, r, host_))
      complain(what);
    all_well_ = all_well_ && !has_error_line(r.errors);
  }

  void tell(const script_command& c, const pipeline_result& r) {
    if (!r.unusable_file.empty()) {
      complain(name_in_path(c.pipeline[0][0]) + " could not be started: " + r.unusable_file + ": " +
               r.why_unusable);
      return;
    }
    for (std::size_t i = 0; i < r.ends.size() && i < c.pipeline.size(); ++i) {
      const std::string name = name_in_path(c.pipeline[i][0]);
      const std::string what = complaint_about(name, r.ends[i]);
      if (!what.empty() && !ways_of(name).forgives(r.ends[i], r.errors))
        complain(what);
    }
  }

  script_host& host_;
  std::size_t line_number_ = 0;
  bool all_well_ = true;
};

}  // namespace

bool run_script(std::string_view script, script_host& host) {
  interpreter run(host);
  while (!script.empty()) {
    const std::string_view line = script.substr(0, script.find('\n'));
    run.line(line);
    script.remove_prefix(std::min(script.size(), line.size() + 1));
  }
  return run.all_well();
}

}  // namespace corvane
