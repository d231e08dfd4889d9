#include "project/messages.h"

#include "formats/sanitized.h"
#include "platform/files/paths.h"

#include <utility>

namespace corvane {

void say(workbench& w, icon picture, std::string text) {
  message_box box;
  box.text = std::move(text);
  box.picture = picture;
  w.ask.message(box);
}

void say_missing(workbench& w, std::string_view part) {
  say(w, icon::critical, sanitized(native_from_stored(part)) + " appears to be missing");
}

bool may_overwrite(workbench& w) {
  message_box question;
  question.text = "File exists.  Overwrite?";
  question.picture = icon::exclamation;
  question.choice = buttons::yes_no;
  return w.ask.message(question) == answer::yes;
}

}  // namespace corvane
