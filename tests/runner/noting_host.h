// A script host that does nothing and notes what it was asked for.
#pragma once

#include "formats/text.h"
#include "runner/script_interpreter.h"

#include <cstdint>
#include <map>
#include <optional>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

namespace corvane::testing_support {

/// Notes everything the script does and prints, with "\n" for every line end.
class noting_host : public script_host {
 public:
  std::string notes;
  std::map<std::string, std::string> failures;  ///< of a note, the reason
  std::vector<std::string> files;
  std::vector<program_end> ends;
  pipeline_result result_of_run;
  std::vector<std::string> printed;  ///< by the first programs that are run, in pieces
  pipeline last;
  std::string why_no_buttons;  ///< of the last menu looked at
  int buttons = 1;             ///< that a control file asks for
  std::string control;         ///< text of a control file
  std::map<std::string, std::uintmax_t> sizes;
  bool lies_there = false;         ///< the file that the next line makes is there before
  bool leaves_it = false;          ///< and the line does not write it
  std::string why_no_still;        ///< of the last still looked at
  still_form still;                ///< that it should have
  std::vector<std::string> fonts;  ///< the names of each font file
  std::vector<finding> findings;

  void print(std::string_view text) override {
    notes += replace_all(std::string(text), "\r\n", "\n");
  }
  failure make_folder(const std::string& path) override { return note("mkdir " + path); }
  std::vector<std::string> matching(const std::string& /*pattern*/) override { return files; }
  failure erase(const std::string& path) override { return note("erase " + path); }
  failure rename(const std::string& path, const std::string& new_path) override {
    return note("rename " + path + " " + new_path);
  }
  std::string allowed_program(const std::string& path) override {
    return path.substr(0, 4) == "bin/" ? "/own/" + path.substr(4) : std::string();
  }
  pipeline_result run(const pipeline& programs) override {
    last = programs;
    for (const auto& words : programs.programs)
      note("run " + join(words, ","));
    for (const std::string& piece : std::exchange(printed, {}))
      programs.take_output(piece);
    pipeline_result r = result_of_run;
    r.ends = ends;
    r.ends.resize(programs.programs.size());
    return r;
  }
  std::string why_no_buttons_seen(const std::string& menu_stream) override {
    note("look at " + menu_stream);
    return why_no_buttons;
  }
  int buttons_asked_for(const std::string& /*control_file*/) override { return buttons; }
  std::string control_text(const std::string& control_file) override {
    note("read " + control_file);
    return control;
  }
  std::optional<std::uintmax_t> size_of(const std::string& file) override {
    const auto found = sizes.find(file);
    return found == sizes.end() ? std::nullopt : std::optional(found->second);
  }
  bool set_time_back(const std::string& /*file*/) override { return lies_there; }
  bool was_left_alone(const std::string& /*file*/) override { return leaves_it; }
  std::string why_not_this_still(const std::string& m2v, const still_form& asked) override {
    note("look at " + m2v);
    still = asked;
    return why_no_still;
  }
  failure set_aspect_code(const std::string& m2v, int code) override {
    return note("set aspect " + std::to_string(code) + " in " + m2v);
  }
  void take(finding f) override { findings.push_back(std::move(f)); }
  std::vector<std::string> font_names_in(const std::string& /*font_file*/) override {
    return fonts;
  }

 private:
  failure note(const std::string& what) {
    notes += "[" + what + "]\n";
    const auto found = failures.find(what);
    return found == failures.end() ? failure() : failure(found->second);
  }
};

}  // namespace corvane::testing_support
