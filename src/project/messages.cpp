#include "project/messages.h"

#include "formats/sanitized.h"
#include "platform/files/paths.h"

#include <utility>

namespace corvane {

void say(document& doc, icon picture, std::string text) {
  message_box box;
  box.text = std::move(text);
  box.picture = picture;
  doc.ask.message(box);
}

void say_missing(document& doc, std::string_view part) {
  say(doc, icon::critical, sanitized(native_from_stored(part)) + " appears to be missing");
}

bool may_overwrite(document& doc) {
  message_box question;
  question.text = "File exists.  Overwrite?";
  question.picture = icon::exclamation;
  question.choice = buttons::yes_no;
  return doc.ask.message(question) == answer::yes;
}

}  // namespace corvane
