#include "project/title_commands.h"

#include "formats/numbers.h"
#include "formats/program_stream.h"
#include "formats/text.h"
#include "platform/files/files.h"
#include "platform/files/paths.h"
#include "project/messages.h"
#include "project/project_file.h"
#include "project/stream_dialogs.h"
#include "project/title_rows.h"

namespace corvane {
namespace {

constexpr std::size_t most_audio_streams = 8;

bool is_program_stream(const std::string& stored) {
  const std::string extension = lower_extension_of(file_name_of(stored));
  return extension == "vob" || extension == "mpg" || extension == "mpeg";
}

/// Whether a program stream can be a title as it stands; why not is told.
bool has_nav_packets(workbench& w, const std::string& stored) {
  const std::string native = native_from_stored(stored);
  const auto block = first_bytes(native, nav_search_bytes);
  if (!block) {
    say(w, icon::critical, "\"" + native + "\" cannot be read: " + block.error + ".");
    return false;
  }
  if (carries_nav_packets(*block))
    return true;
  say(w, icon::critical,
      "NAV packets are not detected in " + std::string(file_name_of(stored)) +
          ".  Please demultiplex.");
  return false;
}

void move_title(workbench& w, int by) {
  if (custom(w) != 1)
    return;
  const auto row = selected_title(w.p);
  if (!row)
    return;
  const int target = w.p.selected + by;
  if (target < 0 || target >= static_cast<int>(w.p.List1.size()))
    return;
  swap_titles(w.p, *row, static_cast<std::size_t>(target));
  w.p.selected = target;
  dvdsize(w);
}

}  // namespace

void open_command(workbench& w) {
  if (custom(w) != 1)
    return;
  const auto video = pick_file(w, video_dialog(true));
  if (!video)
    return;
  const bool muxed = is_program_stream(*video);
  std::string streams = *video;
  if (!muxed) {
    const auto audio = pick_file(w, audio_dialog());
    if (!audio)
      return;
    streams += "/" + *audio;
  }
  // A program stream that is refused next still leaves these two changed.
  w.p.Comboregion_enabled = false;
  w.p.postinfo.clear();
  if (muxed && !has_nav_packets(w, *video))
    return;
  add_title(w.p, streams);
  w.p.saved = 0;
  dvdsize(w);
}

void remove_title_command(workbench& w) {
  if (custom(w) != 1)
    return;
  w.p.saved = 0;
  const auto row = selected_title(w.p);
  if (!row) {
    say(w, icon::exclamation, "Please select a title first to remove.");
    return;
  }
  remove_title(w.p, *row);
  dvdsize(w);
}

void titleup_command(workbench& w) {
  move_title(w, -1);
}

void titledown_command(workbench& w) {
  move_title(w, 1);
}

void addaudiostream_command(workbench& w) {
  if (custom(w) != 1)
    return;
  w.p.saved = 0;
  const auto row = selected_title(w.p);
  if (!row) {
    say(w, icon::exclamation, "Please select a title to add an audio stream to.");
    return;
  }
  if (is_muxed(w.p.List1[*row])) {
    say(w, icon::exclamation,
        "Unable to add audio streams to already muxed files, please de-mux if you wish to add an "
        "audio stream.");
    return;
  }
  if (split(w.p.List1[*row], '/').size() > most_audio_streams) {  // the video is one of them
    say(w, icon::exclamation, "Only eight audio streams allowed.");
    return;
  }
  const auto audio = pick_file(w, audio_dialog());
  if (!audio)
    return;
  w.p.List1[*row] += "/" + std::string(file_name_of(*audio));
  w.p.List11[*row] += "/" + *audio;
  dvdsize(w);
}

void editdelay_command(workbench& w) {
  if (custom(w) != 1)
    return;
  w.p.saved = 0;
  const auto row = selected_title(w.p);
  if (!row) {
    say(w, icon::exclamation, "Please select a title to adjust delays.");
    return;
  }
  if (is_muxed(w.p.List1[*row])) {
    say(w, icon::exclamation, "Unable to adjust delays to already muxed files, please demultiplex");
    return;
  }
  input_box box;
  box.title = "A/V sync delay";
  box.prompt = "Set the A/V delay for this title.";
  box.preset = w.p.delay[*row] + " ms";
  const std::string text = w.ask.input(box);
  if (!text.empty())
    w.p.delay[*row] = leading_number_text(text);
}

void about_command(workbench& w) {
  say(w, icon::information,
      "This is a simple graphical front end written for the dvdauthor package.  The projects that "
      "it uses are:\r\n"
      "-dvdauthor https://dvdauthor.sourceforge.net\r\n"
      "-mjpegtools https://mjpeg.sourceforge.io\r\n"
      "-graphicsmagick http://www.graphicsmagick.org\r\n"
      "-mkisofs http://cdrtools.sourceforge.net");
}

bool close_command(workbench& w) {
  const bool holds_something = !w.p.List1.empty() || !w.p.menulist.empty();
  if (!holds_something || w.p.saved != 0)
    return true;
  message_box question;
  question.text = "Do you want to save project?";
  question.picture = icon::exclamation;
  question.choice = buttons::yes_no_cancel;
  switch (w.ask.message(question)) {
    case answer::yes:
      return save_project(w) != save_outcome::failed;
    case answer::no:
      return true;
    default:
      return false;
  }
}

}  // namespace corvane
