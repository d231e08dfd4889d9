// Work scripts of any bytes through the interpreter behind conspawn. The host touches nothing; it
// checks that what reaches it could be handed to the system.
#include "formats/aspect_code.h"
#include "formats/text.h"
#include "platform/text/utf8.h"
#include "runner/output_lines.h"
#include "runner/script_interpreter.h"

#include <cstddef>
#include <cstdint>
#include <cstdlib>
#include <optional>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

namespace {

void check(bool holds) {
  if (!holds)
    std::abort();
}

void check_name(const std::string& name) {
  check(!name.empty() && name.find('\0') == std::string::npos && corvane::is_utf8(name));
}

class checking_host : public corvane::script_host {
 public:
  std::size_t errors = 0;

  void print(std::string_view text) override {
    check(!text.empty() && text.back() == '\n');
    if (quiet_)
      errors += text.starts_with("\nERR:") ? 1 : 0;
    else
      passed_ += text;
  }
  corvane::failure make_folder(const std::string& path) override {
    check_name(path);
    return path.size() % 2 != 0 ? corvane::failure("odd") : std::nullopt;
  }
  std::vector<std::string> matching(const std::string& pattern) override {
    check_name(pattern);
    if (corvane::matches_wildcard(pattern, "title1.mpg"))
      return {"title1.mpg"};
    return {};
  }
  corvane::failure erase(const std::string& path) override {
    check_name(path);
    return std::nullopt;
  }
  corvane::failure rename(const std::string& path, const std::string& new_path) override {
    check_name(path);
    check_name(new_path);
    return std::nullopt;
  }
  std::string allowed_program(const std::string& path) override {
    check_name(path);
    return path.substr(0, 4) == "bin/" ? path : std::string();
  }
  corvane::pipeline_result run(const corvane::pipeline& p) override {
    corvane::pipeline_result r;
    std::string printed;
    check(!p.programs.empty());
    for (const auto& words : p.programs) {
      check(words.at(0).substr(0, 4) == "bin/");
      for (const std::string& word : words)
        check(word.find('\0') == std::string::npos && corvane::is_utf8(word));
      r.ends.push_back(
          {corvane::program_end::kind::exited, static_cast<std::uint32_t>(words.size() % 3), {}});
      printed += words.back() + "\n";
    }
    quiet_ = false;
    p.take_output(printed);
    quiet_ = true;
    for (const std::string& line : corvane::split(std::exchange(passed_, {}), "\n"))
      for (const std::string& part : corvane::split(line, "\r")) {
        check(corvane::step_in_line(part).empty() && !part.starts_with(corvane::end_marker));
        errors += corvane::is_error_line(part) ? 1 : 0;
      }
    return r;
  }
  int buttons_asked_for(const std::string& control_file) override {
    check_name(control_file);
    return static_cast<int>(control_file.size() % 3);
  }
  std::string control_text(const std::string& control_file) override {
    check_name(control_file);
    return "<textsub filename=\"" + control_file + "\"";
  }
  std::string why_no_buttons_seen(const std::string& menu_stream) override {
    return menu_stream.size() % 2 != 0 ? "odd" : "";
  }
  std::optional<std::uintmax_t> size_of(const std::string& file) override { return file.size(); }
  bool set_time_back(const std::string& file) override {
    check_name(file);
    return file.size() % 2 != 0;
  }
  bool was_left_alone(const std::string& file) override {
    check_name(file);
    return file.size() % 3 == 0;
  }
  std::string why_not_this_still(const std::string& m2v,
                                 const corvane::still_form& asked) override {
    return static_cast<int>(m2v.size()) < asked.pictures ? "odd" : "";
  }
  corvane::failure set_aspect_code(const std::string& m2v, int code) override {
    check(code == corvane::aspect_code::narrow || code == corvane::aspect_code::wide);
    return m2v.size() % 5 == 0 ? corvane::failure("odd") : std::nullopt;
  }
  void take(corvane::finding f) override { check(!f.rule.empty() && !f.found.empty()); }
  std::vector<std::string> font_names_in(const std::string& font_file) override {
    return {font_file};
  }

 private:
  bool quiet_ = true;   ///< no tool prints now
  std::string passed_;  ///< what the interpreter printed of a tool's output
};

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* bytes, std::size_t size) {
  checking_host host;
  const bool well =
      corvane::run_script(std::string_view(reinterpret_cast<const char*>(bytes), size), host);
  check(well == (host.errors == 0));
  return 0;
}
