#include "project/prompts.h"

namespace corvane {
namespace {

// As many as a message box holds on a small screen.
constexpr std::size_t most_listed = 8;

std::string listed(const std::vector<finding>& findings, finding_severity severity) {
  std::string text;
  std::size_t left = count_of(findings, severity);
  std::size_t shown = 0;
  for (const finding& f : findings) {
    if (f.severity != severity || shown == most_listed)
      continue;
    text += "\n" + place_text(f) + ": " + f.found + ".";
    ++shown;
    --left;
  }
  if (left > 0)
    text += "\n... and " + std::to_string(left) + " more.";
  return text;
}

}  // namespace

message_box question_about(const std::vector<finding>& findings) {
  message_box box;
  box.picture = icon::exclamation;
  box.choice = buttons::yes_no;
  if (count_of(findings, finding_severity::error) > 0)
    box.text = "The disc would be wrong, or the run would fail:\n" +
               listed(findings, finding_severity::error) + "\n\nAuthor anyway?";
  else
    box.text = "The disc may not be what is wanted:\n" +
               listed(findings, finding_severity::warning) + "\n\nAuthor it?";
  return box;
}

bool prompts::go_on_despite(const std::vector<finding>& findings) {
  return message(question_about(findings)) == answer::yes;
}

}  // namespace corvane
