#include "tools/still_video.h"

#include "formats/jpeg_check.h"
#include "formats/numbers.h"
#include "formats/sanitized.h"
#include "formats/text.h"
#include "platform/files/files.h"
#include "platform/files/program_folder.h"
#include "project/messages.h"
#include "project/missing_tools.h"
#include "project/picked_file.h"
#include "runner/output_lines.h"
#include "runner/run_files.h"

#include <algorithm>
#include <cstdint>
#include <optional>
#include <utility>

namespace corvane {
namespace {

constexpr int ntsc_height = 480, pal_height = 576, dvd_width = 720;
constexpr const char* frames_preference = "framecount";
constexpr std::size_t most_digits = 5;  // of most_still_frames
constexpr std::uintmax_t largest_jpeg = 256u << 20;

file_dialog jpeg_dialog() {
  file_dialog dialog;
  dialog.title = "select a 720x480 or 720x576 jpeg image";
  dialog.filter = "jpg still(*.jpg, *.jpeg)|*.jpg;*.jpeg";
  return dialog;
}

still_result tell(document& doc, still_result end, icon picture, const std::string& text) {
  say(doc, picture, text);
  return end;
}

/// Of a picture that was refused, and told to be; it is whole.
void offer_to_make_right(const still_equipment& e, const std::string& picture) {
  if (e.make_right && is_picture_file(picture))
    e.make_right(picture);
}

/// Asks for the picture and checks it. Gives its path and height, or why the command ends.
std::optional<still_result> choose_jpeg(document& doc, const still_equipment& e,
                                        still_video& still) {
  const auto stored = pick_file(doc, jpeg_dialog(), file_use::jpeg);
  if (!stored)
    return still_result::cancelled;
  still.jpeg = native_from_stored(*stored);
  const auto refuse = [&](const std::string& why) {
    return tell(doc, still_result::refused, icon::exclamation,
                "\"" + sanitized(still.jpeg) + "\" cannot be used: " + why + ".");
  };
  const auto offer = [&](still_result told) {
    offer_to_make_right(e, still.jpeg);
    return told;
  };
  const auto size = e.pictures.size_of(still.jpeg);
  if (!size)
    return offer(refuse(sanitized(size.error)));
  if (size->width != dvd_width || (size->height != ntsc_height && size->height != pal_height))
    return offer(
        tell(doc, still_result::refused, icon::exclamation, "jpg is not 720x480 or 720x576"));
  still.height = size->height;
  const auto bytes = read_file(still.jpeg, largest_jpeg);
  if (!bytes)
    return refuse(bytes.error);
  if (const auto why = why_not_for_jpeg2yuv(*bytes))
    return offer(refuse("it " + *why +
                        ", which jpeg2yuv cannot take.  Please save it as a plain JPEG " +
                        "(YCbCr colours, 4:2:0)"));
  if (is_cut_off_jpeg(*bytes))
    return refuse("it is cut off; the rest of the picture is missing");
  return std::nullopt;
}

/// The number of a text that is one from 1 to 99999.
std::optional<int> frames_of(std::string_view text) {
  if (text.find_first_not_of("0123456789") != std::string_view::npos)
    return std::nullopt;
  const std::string number = leading_number_text(text);
  if (number == "0" || number.size() > most_digits)
    return std::nullopt;
  return leading_whole(number);
}

/// The answer without blanks at its ends; empty when there is none.
std::string ask_frames(document& doc) {
  input_box box;
  box.title = "m2v still framecount";
  box.prompt =
      "Set the number of frames encoded for the m2v still creation.\r\n"
      "See the readme for more information.\r\n"
      "default is: 1";
  box.preset = doc.prefs.get(frames_preference);
  return std::string(trim(doc.ask.input(box)));
}

/// Keeps an answer that is a number; what is none would become another argument of the tool.
std::optional<int> store_frames(document& doc, const std::string& text) {
  const auto frames = frames_of(text);
  if (frames)
    keep_still_frames(doc.prefs, *frames);
  else
    say(doc, icon::exclamation,
        "The frame count \"" + sanitized_short(text) + "\" is not a whole number from 1 to 99999.");
  return frames;
}

/// Asks until there is a number; nothing when the program ends meanwhile.
std::optional<int> choose_frames(document& doc) {
  while (doc.ask.can_ask()) {
    const std::string text = ask_frames(doc);
    if (text.empty())
      continue;
    if (const auto frames = store_frames(doc, text))
      return frames;
  }
  return std::nullopt;
}

}  // namespace

std::string still_line(const std::string& app, const still_video& still, path_style style) {
  const bool ntsc = still.height == ntsc_height;
  // jpeg2yuv takes the name for a pattern of numbered files.
  const std::string jpeg = replace_all(still.jpeg, "%", "%%");
  std::string line =
      in_double_quotes(tool_path(app, "jpeg2yuv", style)) + " -n " + trimmed(still.frames) +
      " -I p -f " + (ntsc ? "29.97" : "25") + " -j " + in_double_quotes(jpeg) + " | " +
      in_double_quotes(tool_path(app, "mpeg2enc", style)) + " -f 8 -n " + (ntsc ? "n" : "p");
  if (still.aspect)
    line += " -a " + trimmed(*still.aspect);
  return line + " -o " + in_double_quotes(still.m2v);
}

std::string still_script_of(const std::vector<std::string>& lines) {
  std::vector<std::string> all{"@echo off", "echo *creating m2v still"};
  all.insert(all.end(), lines.begin(), lines.end());
  all.push_back("echo " + std::string(end_marker));
  return join(all, crlf) + std::string(crlf);
}

std::string still_script(const std::string& app, const still_video& still, path_style style) {
  return still_script_of({still_line(app, still, style)});
}

file_dialog still_file_dialog() {
  file_dialog dialog;
  dialog.title = "save the mpeg2 still";
  dialog.filter = "mpeg2 still(*.m2v)|*.m2v";
  return dialog;
}

std::string choose_still_file(document& doc, const file_dialog& dialog,
                              const std::string& picture) {
  for (;;) {
    const std::string file = doc.ask.save_file(dialog);
    if (file.empty())
      return {};
    if (!stored_or_told(doc, file))
      continue;
    if (same_place(file, picture))
      say(doc, icon::exclamation, "The video cannot be written over the picture it is made of.");
    else if (!file_exists(file) || may_overwrite(doc))
      return file;
  }
}

still_result start_still(document& doc, still_equipment& e, const std::string& script,
                         std::function<run_settled(run_outcome)> settle) {
  if (!e.lock.take() && !e.lock.is_held_elsewhere())
    return tell(doc, still_result::not_written, icon::critical,
                "Nothing can be written into the program folder \"" + e.app +
                    "\", where the files of a run go: " + e.lock.trouble() +
                    ".  Please let it be written.");
  if (!e.lock.held())
    return tell(doc, still_result::folder_in_use, icon::critical,
                "Another run is using the program folder \"" + e.app +
                    "\".  Please wait until it has finished.");
  const std::string file = join_path(e.app, run_file::script);
  if (const failure why = replace_file(file, script)) {
    e.lock.release();
    return tell(doc, still_result::not_written, icon::critical,
                "The file \"" + file + "\" could not be written: " + *why + ".");
  }
  run_options options;
  options.cleanup = doc.p.cleanup;
  options.settle = std::move(settle);
  e.runner.ExecuteCommand(file, options);
  return e.runner.running() ? still_result::started : still_result::not_started;
}

still_result still_command(document& doc, still_equipment& e) {
  if (const std::string missing = missing_tools(e.app, {"jpeg2yuv", "mpeg2enc"}); !missing.empty())
    return tell(doc, still_result::tool_missing, icon::critical, missing);
  still_video still;
  if (const auto end = choose_jpeg(doc, e, still))
    return *end;
  say(doc, icon::information,
      "image appears to be compliant.  Please select where to save the m2v still");
  still.m2v = choose_still_file(doc, still_file_dialog(), still.jpeg);
  // Asked for and kept even when there is nowhere to save the video.
  const auto frames = choose_frames(doc);
  if (still.m2v.empty() || !frames)
    return still_result::cancelled;
  still.frames = *frames;
  return start_still(doc, e, still_script(e.app, still));
}

int stored_still_frames(const settings& prefs) {
  return std::clamp(leading_whole(prefs.get(frames_preference)), 1, most_still_frames);
}

void keep_still_frames(settings& prefs, int frames) {
  prefs.set(frames_preference, trimmed(frames));
}

void framecount_command(document& doc) {
  std::string text = ask_frames(doc);
  while (!text.empty() && !store_frames(doc, text))
    text = ask_frames(doc);
}

}  // namespace corvane
