#include "runner/script_interpreter.h"

#include "platform/files/paths.h"
#include "runner/tools/dvdauthor.h"
#include "runner/tools/spumux_subtitles.h"

#include <algorithm>
#include <array>
#include <cstdio>

namespace corvane {
namespace {

#ifdef _WIN32
constexpr std::string_view line_end = "\r\n";
constexpr std::string_view separators = "\\/";
#else
constexpr std::string_view line_end = "\n";
constexpr std::string_view separators = "/";
#endif

std::string name_of(const std::string& path) {
  const auto last = path.find_last_of(separators);
  return last == std::string::npos ? path : path.substr(last + 1);
}

std::string folder_with_separator(const std::string& path) {
  const auto last = path.find_last_of(separators);
  return last == std::string::npos ? std::string() : path.substr(0, last + 1);
}

std::string hexadecimal(std::uint32_t number) {
  std::array<char, 16> text{};
  std::snprintf(text.data(), text.size(), "0x%08X", static_cast<unsigned>(number));
  return text.data();
}

/// Whether a program is dvdauthor with a navigation XML.
bool is_authoring(const script_words& program) {
  return name_of(program[0]) == "dvdauthor.exe" && program.size() == 3 && program[1] == "-x" &&
         !program[2].empty();
}

/// From here on a menu can take spumux more than a second.
constexpr int many_buttons = 19;

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
    host_.print(std::string(line_end) + "ERR:  " + what + std::string(line_end));
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
        complain(name_of(words[0]) + " is not started: it is not one of the program's tools");
        return;
      }
    }
    const auto subtitle = subtitle_of(c.pipeline[0]);
    p.watch_errors = p.programs.size() == 1 && (subtitle || name_of(p.programs[0][0]) == "gm.exe");
    const menu_overlay overlay = overlay_of(c);
    announce(overlay);
    if (is_authoring(c.pipeline[0]))
      announce_left_out(c.pipeline[0].back());
    const pipeline_result r = host_.run(p);
    tell(c, r);
    look_at(overlay, c.output);
    if (subtitle)
      judge(*subtitle, c.pipeline[0], r);
  }

  void tell(const script_command& c, const pipeline_result& r) {
    if (!r.unusable_file.empty()) {
      complain(name_of(c.pipeline[0][0]) + " could not be started: " + r.unusable_file + ": " +
               r.why_unusable);
      return;
    }
    for (std::size_t i = 0; i < r.ends.size() && i < c.pipeline.size(); ++i) {
      const std::string name = name_of(c.pipeline[i][0]);
      const std::string what = complaint_about(name, r.ends[i]);
      if (!what.empty() && !is_harmless_refusal(name, r.ends[i], r.errors))
        complain(what);
    }
  }

  /// The menu, if it is one whose buttons the program puts on, and how many.
  struct menu_overlay {
    std::string menu;
    int buttons = 0;
  };
  menu_overlay overlay_of(const script_command& c) {
    const std::string menu = menu_of_overlay(c.pipeline[0]);
    return {menu, menu.empty() ? 0 : host_.buttons_asked_for(c.pipeline[0][1])};
  }

  /// For many buttons of many colours spumux works silently for minutes.
  void announce(const menu_overlay& overlay) {
    if (overlay.buttons >= many_buttons)
      host_.print("INFO: menu " + overlay.menu + " has " + std::to_string(overlay.buttons) +
                  " buttons; when their colours are many too, this takes some minutes" +
                  std::string(line_end));
  }

  /// dvdauthor leaves them out without a word. It is what the user asked for, so no error.
  void announce_left_out(const std::string& navigation) {
    for (const left_out_chapter& chapter : chapters_left_out(host_.control_text(navigation)))
      host_.print("INFO: the chapter " + chapter.time + " of title " +
                  std::to_string(chapter.title) +
                  " is not on the disc, since it stands behind the later one " + chapter.after +
                  std::string(line_end));
  }

  /// That it put none on, spumux tells in its output only, if at all.
  void look_at(const menu_overlay& overlay, const std::string& stream) {
    const std::string why = overlay.buttons > 0 ? host_.why_no_buttons_seen(stream) : "";
    if (!why.empty())
      complain("the buttons of menu " + overlay.menu + " will not be seen: " + why);
  }

  /// The lines among spumux's output that matter do not say whose subtitle it was.
  void judge(const run_file::subtitle_name& subtitle, const script_words& words,
             const pipeline_result& r) {
    if (r.ends.empty())
      return;  // it has been told why it did not run
    const std::string control = host_.control_text(words.back());
    const std::string about = "subtitle " + subtitle.number + " of title " + subtitle.title + " (" +
                              subtitle_file_in(control) + ")";
    const std::string end = complaint_about(name_of(words[0]), r.ends[0]);
    const std::string why = why_not_subtitled(r.errors + (end.empty() ? "" : "\nERR:  " + end));
    const std::string missing = what_is_missing(r.errors, control);
    if (!why.empty())
      complain(about + " is not on the disc: " + why);
    else if (!missing.empty())
      complain(about + " is not as it should be: " + missing);
  }

  script_host& host_;
  std::size_t line_number_ = 0;
  bool all_well_ = true;
};

}  // namespace

std::string complaint_about(const std::string& name, const program_end& end) {
  switch (end.how) {
    case program_end::kind::exited:
      if (end.number == 0)
        return {};
      return name + " ended with status " + std::to_string(end.number);
    case program_end::kind::by_signal:
      return name + " was ended by signal " + std::to_string(end.number) + " (" + end.text + ")";
    case program_end::kind::by_exception:
      return name + " was ended by exception " + hexadecimal(end.number) + " (" + end.text + ")";
    case program_end::kind::not_started:
      break;
  }
  return name + " could not be started: " + end.text;
}

bool is_harmless_refusal(const std::string& name, const program_end& end, std::string_view errors) {
  if (name != "gm.exe" || end.how != program_end::kind::exited || end.number != 1)
    return false;
  bool said = false;
  while (!errors.empty()) {
    const std::string_view line = errors.substr(0, errors.find('\n'));
    errors.remove_prefix(std::min(errors.size(), line.size() + 1));
    if (line.find_first_not_of(" \r") == std::string_view::npos)
      continue;
    if (line.find("Non-conforming drawing primitive definition") == std::string_view::npos)
      return false;
    said = true;
  }
  return said;
}

std::string menu_of_overlay(const script_words& program) {
  if (program.size() != 2 || name_of(program[0]) != "spumux.exe")
    return {};
  return run_file::menu_of_control(name_of(program[1])).value_or("");
}

std::optional<run_file::subtitle_name> subtitle_of(const script_words& program) {
  if (name_of(program[0]) != "spumux.exe")
    return std::nullopt;
  return run_file::subtitle_of_control(name_of(program.back()));
}

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
