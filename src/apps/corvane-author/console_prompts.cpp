#include "apps/corvane-author/console_prompts.h"

#include <utility>

namespace corvane {

console_prompts::console_prompts(report& out, std::string output, bool force)
    : report_(out), output_(std::move(output)), force_(force) {}

answer console_prompts::message(const message_box& box) {
  switch (box.choice) {
    case buttons::ok:
      report_.message(box.text);
      return answer::ok;
    case buttons::ok_cancel:
      // That a run went well is what the program is there to say, and no trouble.
      if (box.picture == icon::information)
        report_.line(printable(box.text));
      else
        report_.message(box.text);
      return answer::cancel;
    case buttons::yes_no:
      report_.message(box.text + "  (answered: no)");
      return answer::no;
    case buttons::yes_no_cancel:
      report_.message(box.text + "  (answered: cancel)");
      return answer::cancel;
  }
  return answer::cancel;
}

std::string console_prompts::open_file(const file_dialog&) {
  return {};
}

std::string console_prompts::save_file(const file_dialog&) {
  return output_;
}

std::string console_prompts::input(const input_box&) {
  return {};
}

bool console_prompts::go_on_despite(const findings_question& question) {
  for (const finding& f : question.findings)
    report_.message(text_of(f));
  if (!question.may_go_on) {
    report_.message(question.text + (force_ ? "  --force does not change that." : ""));
    return false;
  }
  if (force_ || count_of(question.findings, finding_severity::error) == 0)
    return true;
  report_.message(
      "the disc would be wrong, or the run would fail; nothing was written.  Give --force to "
      "author anyway.");
  return false;
}

}  // namespace corvane
