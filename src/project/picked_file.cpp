#include "project/picked_file.h"

#include "formats/file_signature.h"
#include "formats/numbers.h"
#include "formats/sanitized.h"
#include "formats/text.h"
#include "platform/files/files.h"
#include "platform/files/paths.h"
#include "project/messages.h"
#include "project/title_rows.h"

#include <cstdint>
#include <span>
#include <string_view>

namespace corvane {
namespace {

std::optional<file_signature> signature_of_file(const std::string& native) {
  const auto head = first_bytes(native, signature_bytes);
  if (!head)
    return std::nullopt;
  return signature_of({reinterpret_cast<const std::uint8_t*>(head->data()), head->size()});
}

bool is_picture(file_family family) {
  return family == file_family::jpeg || family == file_family::bitmap ||
         family == file_family::picture;
}

/// Whether a file of the family, with that name (stored form), is what is asked for, or is judged
/// by whoever asked.
bool suits(file_family family, file_use use, const std::string& stored) {
  switch (use) {
    case file_use::title:
      return family ==
             (is_program_stream(stored) ? file_family::program_stream : file_family::dvd_video);
    case file_use::menu_video:
      return family == file_family::dvd_video;
    case file_use::sound:
      return family == file_family::dvd_sound;
    case file_use::jpeg:  // of another kind it is refused, and can be made right
    case file_use::bitmap:
      return is_picture(family);
    case file_use::subtitles:
      return family == file_family::text_subtitles;
    case file_use::project:
      return family == file_family::project;
  }
  return true;
}

std::string_view wanted_for(file_use use, const std::string& stored) {
  switch (use) {
    case file_use::title:
      return is_program_stream(stored)
                 ? "a program stream with NAV packets, as its name says"
                 : "an MPEG-2 video stream, which a title takes its picture from";
    case file_use::menu_video:
      return "an MPEG-2 video stream, which a menu takes its picture from";
    case file_use::sound:
      return "AC-3 or MPEG sound, which a disc has";
    case file_use::jpeg:
      return "a JPEG picture, which a still is made of";
    case file_use::bitmap:
      return "a Windows bitmap of 4 bits, which a button is drawn from";
    case file_use::subtitles:
      return "a file of text subtitles";
    case file_use::project:
      return "a project";
  }
  return "";
}

std::string_view remedy_for_film(file_use use) {
  if (use == file_use::jpeg || use == file_use::bitmap)
    return "Save one picture of it first.";
  if (use == file_use::subtitles)
    return "If it has subtitles, take them out first, as an *.srt file.";
  if (use == file_use::title)
    return "\"import...\" in the menu \"file\" makes it into what a disc takes, and adds it as a "
           "title; with Cancel its window opens.";
  return "It has to be made into an MPEG-2 video stream (*.m2v) and AC-3 or MPEG sound (*.ac3, "
         "*.mp2) first.  The user guide (F1) says how, under \"What Corvane takes\".";
}

std::string_view remedy_for_video(file_use use) {
  if (use == file_use::title)
    return "Give it a name that ends in .m2v, and choose it again.";
  return "With \"add title\" it becomes the picture of a title, with \"edit menus\" that of a "
         "menu.";
}

std::string_view remedy_for_program_stream(file_use use) {
  if (use == file_use::subtitles)
    return "If it came with an *.idx file, its subtitles are pictures.  Only texts can be drawn: "
           "convert it to an *.srt file first.";
  if (use == file_use::title)
    return "Give it a name that ends in .vob or .mpg, and choose it again.  It becomes a title if "
           "it has NAV packets; else \"import...\" in the menu \"file\" makes a title of it.";
  return "Take it apart into video and sound first, and add those.  The user guide (F1) says how, "
         "under \"What Corvane takes\".";
}

std::string_view remedy_for_picture(file_use use) {
  if (use != file_use::title && use != file_use::menu_video)
    return "Choose another file.";
  return "\"create m2v still\" in the menu \"menus\" makes a video of a picture; so does dropping "
         "it on the main window.";
}

std::string_view remedy_for_sound(file_family family, file_use use) {
  if (use == file_use::subtitles || use == file_use::bitmap || use == file_use::jpeg)
    return "Choose another file.";
  if (family == file_family::sound)
    return "It has to be made into AC-3 or MPEG sound (*.ac3, *.mp2) of 48 kHz first.  The user "
           "guide (F1) says how, under \"What Corvane takes\".";
  return "Choose the video first; its sound is asked for after that, and \"add audio stream\" adds "
         "more.";
}

/// What can be done with a file that does not suit; sentences.
std::string_view remedy_for(file_family family, file_use use) {
  switch (family) {
    case file_family::film:
      return remedy_for_film(use);
    case file_family::dvd_video:
      return remedy_for_video(use);
    case file_family::program_stream:
      return remedy_for_program_stream(use);
    case file_family::dvd_sound:
    case file_family::sound:
      return remedy_for_sound(family, use);
    case file_family::jpeg:
    case file_family::bitmap:
    case file_family::picture:
      return remedy_for_picture(use);
    case file_family::text_subtitles:
      return "\"subtitles\" adds it to the selected title.";
    case file_family::other_subtitles:
      return "Only texts can be drawn: convert it to an *.srt file first.";
    case file_family::project:
      return "\"load project...\" opens it.";
    case file_family::disc_table:
      return "What is shown stands in the files VTS_01_1.VOB and so on beside it; each of them "
             "becomes a title with \"add title\".  \"verify disc...\" looks at the disc as a "
             "whole.";
    case file_family::disc_image:
      return "Mount or unpack it, and add the files VTS_01_1.VOB and so on that are in it.  "
             "\"verify "
             "disc...\" looks at the disc as a whole.";
    case file_family::archive:
      return "If it is an archive, unpack it, and choose what was in it.";
    case file_family::document:
      break;
  }
  return "Choose another file.";
}

}  // namespace

std::optional<std::string> pick_file(document& doc, const file_dialog& dialog, file_use use) {
  const std::string native = doc.ask.open_file(dialog);
  if (native.empty())
    return std::nullopt;
  auto stored = stored_or_told(doc, native);
  return stored && may_be_taken(doc, native, use) ? std::move(stored) : std::nullopt;
}

std::optional<std::string> stored_or_told(document& doc, const std::string& native) {
  if (const auto why = why_not_storable(native)) {
    say(doc, icon::exclamation,
        "\"" + sanitized(native) + "\" cannot be used: its name " + *why + ".  Please rename it.");
    return std::nullopt;
  }
  return stored_from_native(native);
}

bool may_be_taken(document& doc, const std::string& native, file_use use) {
  const auto what = signature_of_file(native);
  const std::string stored = stored_from_native(native);
  if (!what || suits(what->family, use, stored))
    return true;
  message_box question;
  question.text = "\"" + sanitized(native) + "\" is " + std::string(what->name) + ", not " +
                  std::string(wanted_for(use, stored)) + ".\r\n\r\n" +
                  std::string(remedy_for(what->family, use)) +
                  "\r\n\r\nDo you want to take it nonetheless?  With Cancel nothing is " +
                  (use == file_use::project ? "loaded." : "added.");
  question.picture = icon::exclamation;
  question.choice = buttons::ok_cancel;
  question.enter_cancels = true;
  return doc.ask.message(question) == answer::ok;
}

bool is_for_import(const std::string& native) {
  const auto what = signature_of_file(native);
  return what && (what->family == file_family::film ||
                  (what->family == file_family::program_stream && is_program_stream(native)));
}

bool is_film(const std::string& native) {
  const auto what = signature_of_file(native);
  return what && (what->family == file_family::film || what->family == file_family::dvd_video ||
                  what->family == file_family::program_stream);
}

bool is_picture_file(const std::string& native) {
  const auto what = signature_of_file(native);
  return what && is_picture(what->family);
}

std::string kind_of_file(const std::string& native) {
  const auto what = signature_of_file(native);
  return what ? std::string(what->name) : std::string();
}

}  // namespace corvane
