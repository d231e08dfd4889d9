#include "menus/menu_material.h"

#include "examine/file_facts.h"
#include "examine/measures.h"
#include "examine/stream_rules.h"
#include "formats/numbers.h"
#include "formats/sanitized.h"
#include "menus/menu_entries.h"
#include "platform/files/paths.h"
#include "project/disc_of.h"
#include "project/menu_order.h"
#include "project/menu_rows.h"
#include "project/messages.h"
#include "project/picked_file.h"
#include "project/stream_dialogs.h"

#include <algorithm>
#include <array>
#include <cstddef>
#include <cstdint>
#include <optional>
#include <string_view>
#include <vector>

namespace corvane {
namespace {

bool may_change_menu(document& doc, int menu) {
  return custom(doc) == 1 && menu >= 1 && menu <= menu_count(doc.p);
}

menu_streams streams_of_menu(const project& p, int menu) {
  return parse_menu_row(row_of(p.menulist, menu, {}));
}

std::string name_of_stream(const std::string& stored) {
  return sanitized_quoted(file_name_of(stored));
}

std::string menu_with_number(int number) {
  return "menu " + trimmed(number);
}

void ends_change(document& doc) {
  doc.p.saved = 0;
  dvdsize(doc);
}

// Moving -----------------------------------------------------------------------------------------

/// "a", "a and b", "a, b and c"
std::string in_words(const std::vector<std::string>& names) {
  std::string text;
  for (std::size_t i = 0; i < names.size(); ++i)
    text += (i == 0 ? "" : i + 1 == names.size() ? " and " : ", ") + names[i];
  return text;
}

/// "the end of title 3", "the ends of titles 1 and 3".
std::string ends_of(const std::vector<int>& titles) {
  std::vector<std::string> numbers;
  numbers.reserve(titles.size());
  for (const int title : titles)
    numbers.push_back(trimmed(title));
  return (titles.size() == 1 ? "the end of title " : "the ends of titles ") + in_words(numbers);
}

std::string what_went_along(const menu_renumbering& made) {
  std::vector<std::string> changed;
  if (made.buttons > 0)
    changed.push_back(count_text(static_cast<std::uint64_t>(made.buttons), "button", "buttons"));
  if (!made.titles.empty())
    changed.push_back(ends_of(made.titles));
  if (made.first_play)
    changed.emplace_back("first play");
  if (changed.empty())
    return made.too_long.empty() ? "; no command names either of them by its number." : ".";
  const bool is_one =
      made.buttons + static_cast<int>(made.titles.size()) + (made.first_play ? 1 : 0) == 1;
  return "; " + in_words(changed) + (is_one ? " goes" : " go") + " along.";
}

/// What leads to the first menu without naming it leads to another one now.
std::string about_first_menu(const project& p) {
  const disc_description d = disc_of(p);
  std::vector<std::string> leading = {"the menu key"};
  if (!d.first_play || d.first_play->form.what == verb::jump_titleset)
    leading.emplace_back("the beginning of the disc");
  std::vector<int> titles;
  for (int title = 1; title <= d.title_count(); ++title)
    if (const auto& post = d.title(title).post;
        post && post->form == command_form{verb::call_menu, {}, {}})
      titles.push_back(title);
  if (!titles.empty())
    leading.push_back(ends_of(titles));
  return "  The first menu is " + name_of_stream(streams_of_menu(p, 1).video) +
         " now: " + in_words(leading) + (leading.size() == 1 ? " leads" : " lead") + " to it.";
}

std::string about_what_stayed(const project& p, const menu_renumbering& made) {
  std::string text;
  if (!made.too_long.empty())
    text += "  There is no room for the new number in " + ends_of(made.too_long) +
            ": choose it anew in \"nav cmds\".";
  if (p.jumptable && made.uses_register)
    text += "  A typed command uses g1, which holds a menu's number: look whether it is right.";
  return text;
}

// Another video ----------------------------------------------------------------------------------

std::optional<video_facts> video_of(const std::string& stored) {
  return read_file_head(native_from_stored(stored)).video;
}

/// Only what a menu cannot do with; the rest is told by the check, as for any other file.
std::optional<std::string> why_not_of_this_project(const video_facts& video, const project& p) {
  constexpr std::array<std::string_view, 3> refused = {"video-standard", "video-size",
                                                       "video-aspect"};
  for (const finding& f :
       video_findings(video, standard_named(p.globalregion), {}, std::string(), false))
    if (std::find(refused.begin(), refused.end(), f.rule) != refused.end())
      return f.found + ".  A menu needs: " + f.wanted + ".";
  return std::nullopt;
}

bool is_wide_picture(const video_shape& shape) {
  constexpr int code_of_wide = 3;
  return shape.mpeg2 && shape.aspect_code == code_of_wide;
}

std::string picture_in_words(const video_shape& shape) {
  return size_text(shape) + (is_wide_picture(shape) ? ", 16:9" : ", 4:3") +
         (shape.mpeg2 ? "" : ", MPEG-1");
}

/// The pictures of all menus are of one size, proportions and coding.
std::optional<std::string> why_not_like_others(const video_shape& shape, const project& p,
                                               int menu) {
  for (int other = 1; other <= menu_count(p); ++other) {
    if (other == menu)
      continue;
    const std::optional<video_facts> video = video_of(streams_of_menu(p, other).video);
    if (video && video->shape && picture_in_words(*video->shape) != picture_in_words(shape))
      return "its picture is " + picture_in_words(shape) + ", that of " + menu_with_number(other) +
             " is " + picture_in_words(*video->shape) +
             ".  All menus of a disc must have pictures of one size and shape.";
  }
  return std::nullopt;
}

std::optional<std::string> why_not_video_of(const project& p, int menu, const std::string& stored) {
  const std::optional<video_facts> video = video_of(stored);
  if (!video || !video->shape)
    return std::nullopt;  // that it is no video was asked about
  if (const auto why = why_not_of_this_project(*video, p))
    return why;
  return why_not_like_others(*video->shape, p, menu);
}

// Another audio ----------------------------------------------------------------------------------

enum class wanted_audio { another, none, as_it_is };

wanted_audio ask_about_audio(document& doc, int menu, const std::string& audio) {
  if (audio.empty())
    return wanted_audio::another;
  message_box question;
  question.text = "Menu " + trimmed(menu) + " plays " + name_of_stream(audio) +
                  ".  Do you want to choose another audio stream?\n\n"
                  "Yes: choose one.\nNo: the menu plays without audio.\nCancel: it stays as it is.";
  question.choice = buttons::yes_no_cancel;
  switch (doc.ask.message(question)) {
    case answer::yes:
      return wanted_audio::another;
    case answer::no:
      return wanted_audio::none;
    default:
      return wanted_audio::as_it_is;
  }
}

}  // namespace

std::string move_menu_command(document& doc, int menu, int to) {
  if (!may_change_menu(doc, menu) || to < 1 || to > menu_count(doc.p) || to == menu)
    return {};
  const menu_renumbering made = move_menu(doc.p, menu, to);
  ends_change(doc);
  std::string note =
      "Menu " + trimmed(menu) + " is " + menu_with_number(to) + " now" + what_went_along(made);
  if (std::min(menu, to) == 1)
    note += about_first_menu(doc.p);
  return note + about_what_stayed(doc.p, made);
}

std::string copy_menu_command(document& doc, int menu) {
  if (!may_change_menu(doc, menu) || !has_room_for_menu(doc))
    return {};
  const int copy = copy_menu(doc.p, menu);
  ends_change(doc);
  return "Menu " + trimmed(copy) + " is a copy of " + menu_with_number(menu) +
         ", with the same video and audio and with buttons of its own.  Nothing leads to it yet.";
}

std::string menu_video_command(document& doc, int menu) {
  if (!may_change_menu(doc, menu))
    return {};
  file_dialog dialog = menu_video_dialog();
  dialog.title = "select video stream for " + menu_with_number(menu);
  const auto video = pick_file(doc, dialog, file_use::menu_video);
  if (!video || *video == streams_of_menu(doc.p, menu).video)
    return {};
  if (const auto why = why_not_video_of(doc.p, menu, *video)) {
    say(doc, icon::exclamation,
        name_of_stream(*video) + " cannot be the video of " + menu_with_number(menu) + ": " + *why +
            "  The menu keeps its video.");
    return {};
  }
  set_menu_video(doc.p, menu, *video);
  ends_change(doc);
  return "Menu " + trimmed(menu) + " shows " + name_of_stream(*video) +
         " now; its buttons are where they were.";
}

std::string menu_audio_command(document& doc, int menu) {
  if (!may_change_menu(doc, menu))
    return {};
  const std::string before = streams_of_menu(doc.p, menu).audio;
  const wanted_audio wanted = ask_about_audio(doc, menu, before);
  if (wanted == wanted_audio::as_it_is)
    return {};
  std::string audio;
  if (wanted == wanted_audio::another) {
    file_dialog dialog = audio_dialog();
    dialog.title = "select audio stream for " + menu_with_number(menu);
    const auto picked = pick_file(doc, dialog, file_use::sound);
    if (!picked || *picked == before)
      return {};
    audio = *picked;
  }
  set_menu_audio(doc.p, menu, audio);
  ends_change(doc);
  return "Menu " + trimmed(menu) +
         (audio.empty() ? " plays without audio now."
                        : " plays " + name_of_stream(audio) + " now.");
}

}  // namespace corvane
