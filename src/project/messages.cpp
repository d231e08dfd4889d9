#include "project/messages.h"

#include "platform/paths.h"
#include "platform/utf8.h"

#include <algorithm>
#include <utility>

namespace corvane {
namespace {

bool is_control(char c) {
  return static_cast<unsigned char>(c) < 0x20 || c == 0x7f;
}

bool continues_a_character(char c) {
  return (static_cast<unsigned char>(c) & 0xC0) == 0x80;
}

}  // namespace

void say(workbench& w, icon picture, std::string text) {
  message_box box;
  box.text = std::move(text);
  box.picture = picture;
  w.ask.message(box);
}

void say_missing(workbench& w, std::string_view part) {
  say(w, icon::critical, shown(native_from_stored(part)) + " appears to be missing");
}

bool may_overwrite(workbench& w) {
  message_box question;
  question.text = "File exists.  Overwrite?";
  question.picture = icon::exclamation;
  question.choice = buttons::yes_no;
  return w.ask.message(question) == answer::yes;
}

std::string shown(std::string_view text) {
  const bool readable = is_utf8(text);
  std::string clean(text);
  std::replace_if(
      clean.begin(), clean.end(),
      [readable](char c) {
        return is_control(c) || (!readable && static_cast<unsigned char>(c) >= 0x80);
      },
      '?');
  return clean;
}

std::string shown_short(std::string_view text, std::size_t most) {
  if (text.size() <= most)
    return shown(text);
  std::size_t end = most;
  while (end > 0 && continues_a_character(text[end]))
    --end;
  return shown(text.substr(0, end)) + "...";
}

}  // namespace corvane
