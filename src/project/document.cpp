#include "project/document.h"

#include "formats/sanitized.h"
#include "platform/files/paths.h"
#include "project/messages.h"

namespace corvane {

const char* const start_up_dvdsizetext = "0 titles\r\n0 menus\r\n0 gig total";

int custom(document& doc) {
  if (doc.p.customxml.empty())
    return 1;
  message_box question;
  question.text = "You have edited the XML manually, do you want to discard these changes?";
  question.picture = icon::exclamation;
  question.choice = buttons::ok_cancel;
  if (doc.ask.message(question) != answer::ok)
    return 2;
  doc.p.customxml.clear();
  return 1;
}

std::optional<std::string> pick_file(document& doc, const file_dialog& dialog) {
  const std::string native = doc.ask.open_file(dialog);
  return native.empty() ? std::nullopt : stored_or_told(doc, native);
}

std::optional<std::string> stored_or_told(document& doc, const std::string& native) {
  if (const auto why = why_not_storable(native)) {
    say(doc, icon::exclamation,
        "\"" + sanitized(native) + "\" cannot be used: its name " + *why + ".  Please rename it.");
    return std::nullopt;
  }
  return stored_from_native(native);
}

}  // namespace corvane
