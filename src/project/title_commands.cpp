#include "project/title_commands.h"

#include "disc/av_delay.h"
#include "formats/numbers.h"
#include "formats/program_stream.h"
#include "formats/sanitized.h"
#include "formats/text.h"
#include "platform/files/files.h"
#include "platform/files/paths.h"
#include "project/messages.h"
#include "project/picked_file.h"
#include "project/project_file.h"
#include "project/stream_dialogs.h"
#include "project/title_rows.h"

#include <algorithm>

namespace corvane {
namespace {

constexpr std::size_t most_audio_streams = 8;

/// Whether a program stream can be a title as it stands; why not is told.
bool has_nav_packets(document& doc, const std::string& stored) {
  const std::string native = native_from_stored(stored);
  const auto block = first_bytes(native, nav_search_bytes);
  if (!block) {
    say(doc, icon::critical, "\"" + native + "\" cannot be read: " + block.error + ".");
    return false;
  }
  if (carries_nav_packets(*block))
    return true;
  say(doc, icon::critical,
      "NAV packets are not detected in " + std::string(file_name_of(stored)) +
          ".  Please demultiplex.");
  return false;
}

}  // namespace

void open_command(document& doc) {
  open_or_refuse(doc);
}

std::string open_or_refuse(document& doc) {
  if (custom(doc) != 1)
    return {};
  const std::string native = doc.ask.open_file(video_dialog(true));
  if (native.empty())
    return {};
  const auto video = stored_or_told(doc, native);
  if (!video)
    return {};
  if (!may_be_taken(doc, native, file_use::title))
    return is_for_import(native) ? native : std::string();
  const bool muxed = is_program_stream(*video);
  std::string streams = *video;
  if (!muxed) {
    const auto audio = pick_file(doc, audio_dialog(), file_use::sound);
    if (!audio)
      return {};
    streams = with_stream(streams, *audio);
  }
  // A program stream that is refused next still leaves these two changed.
  doc.p.Comboregion_enabled = false;
  doc.p.postinfo.clear();
  if (muxed && !has_nav_packets(doc, *video))
    return is_for_import(native) ? native : std::string();
  add_title(doc.p, streams);
  doc.p.saved = 0;
  dvdsize(doc);
  return {};
}

void remove_title_command(document& doc) {
  if (custom(doc) != 1)
    return;
  doc.p.saved = 0;
  const auto row = selected_title(doc.p);
  if (!row) {
    say(doc, icon::exclamation, "Please select a title first to remove.");
    return;
  }
  remove_title(doc.p, *row);
  // The next one, so that several can be removed one after the other.
  doc.p.selected = std::min(static_cast<int>(*row), title_count(doc.p) - 1);
  dvdsize(doc);
}

void titleup_command(document& doc) {
  movetitle_command(doc, doc.p.selected - 1);
}

void titledown_command(document& doc) {
  movetitle_command(doc, doc.p.selected + 1);
}

void movetitle_command(document& doc, int row) {
  if (custom(doc) != 1)
    return;
  const auto selected = selected_title(doc.p);
  if (!selected || row < 0 || row >= static_cast<int>(doc.p.List1.size()))
    return;
  const auto target = static_cast<std::size_t>(row);
  for (std::size_t at = *selected; at != target;) {
    const std::size_t next = at < target ? at + 1 : at - 1;
    swap_titles(doc.p, at, next);
    at = next;
  }
  doc.p.selected = row;
  dvdsize(doc);
}

void addaudiostream_command(document& doc) {
  if (custom(doc) != 1)
    return;
  doc.p.saved = 0;
  const auto row = selected_title(doc.p);
  if (!row) {
    say(doc, icon::exclamation, "Please select a title to add an audio stream to.");
    return;
  }
  if (is_muxed(doc.p.List1[*row])) {
    say(doc, icon::exclamation,
        "Unable to add audio streams to already muxed files, please de-mux if you wish to add an "
        "audio stream.");
    return;
  }
  if (streams_of(doc.p.List1[*row]).size() > most_audio_streams) {  // the video is one of them
    say(doc, icon::exclamation, "Only eight audio streams allowed.");
    return;
  }
  const auto audio = pick_file(doc, audio_dialog(), file_use::sound);
  if (!audio)
    return;
  doc.p.List1[*row] = with_stream(doc.p.List1[*row], file_name_of(*audio));
  doc.p.List11[*row] = with_stream(doc.p.List11[*row], *audio);
  dvdsize(doc);
}

namespace {

/// Whether a typed delay says nothing but its number, with or without the unit.
bool is_read_as_typed(std::string_view typed) {
  std::string compact = lower(typed);
  std::erase(compact, ' ');
  if (compact.ends_with("ms"))
    compact.resize(compact.size() - 2);
  return is_decimal(compact);
}

/// What the user should know of a delay (milliseconds) that was typed and stored; or nothing.
std::string note_about_delay(const std::string& typed, const std::string& stored) {
  std::string note;
  if (!is_read_as_typed(typed))
    note = sanitized_quoted(typed) + " was taken as " + sanitized_short(stored) +
           " ms.  A delay is a number of milliseconds with a point before its fraction, such as "
           "200, -40 or 12.5.";
  if (leading_number(stored) >= too_long_a_delay)
    note += std::string(note.empty() ? "" : "\r\n\r\n") + "With a delay of " +
            sanitized_short(stored) +
            " ms the title cannot be multiplexed: the video can be delayed by less than " +
            trimmed(static_cast<std::int64_t>(too_long_a_delay)) +
            " ms.  Set a smaller delay, or cut the beginning off the sound.";
  return note;
}

}  // namespace

void editdelay_command(document& doc) {
  if (custom(doc) != 1)
    return;
  doc.p.saved = 0;
  const auto row = selected_title(doc.p);
  if (!row) {
    say(doc, icon::exclamation, "Please select a title to adjust delays.");
    return;
  }
  if (is_muxed(doc.p.List1[*row])) {
    say(doc, icon::exclamation,
        "Unable to adjust delays to already muxed files, please demultiplex");
    return;
  }
  input_box box;
  box.title = "A/V sync delay";
  box.prompt = "Set the A/V delay for this title.";
  box.preset = doc.p.delay[*row] + " ms";
  const std::string text = doc.ask.input(box);
  if (text.empty())
    return;
  doc.p.delay[*row] = leading_number_text(text);
  if (const std::string note = note_about_delay(text, doc.p.delay[*row]); !note.empty())
    say(doc, icon::information, note);
}

void about_command(document& doc) {
  say(doc, icon::information,
      "This is a simple graphical front end written for the dvdauthor package.  The projects that "
      "it uses are:\r\n"
      "-dvdauthor https://dvdauthor.sourceforge.net\r\n"
      "-mjpegtools https://mjpeg.sourceforge.io\r\n"
      "-graphicsmagick http://www.graphicsmagick.org\r\n"
      "-mkisofs http://cdrtools.sourceforge.net");
}

close_end close_project(document& doc) {
  const bool holds_something = !doc.p.List1.empty() || !doc.p.menulist.empty();
  if (!holds_something)
    return close_end::given_up;
  if (doc.p.saved != 0)
    return close_end::ends;
  message_box question;
  question.text = "Do you want to save project?";
  question.picture = icon::exclamation;
  question.choice = buttons::yes_no_cancel;
  switch (doc.ask.message(question)) {
    case answer::yes:
      return save_project(doc) == save_outcome::failed ? close_end::stays : close_end::ends;
    case answer::no:
      return close_end::given_up;
    default:
      return close_end::stays;
  }
}

bool close_command(document& doc) {
  return close_project(doc) != close_end::stays;
}

}  // namespace corvane
