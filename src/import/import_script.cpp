#include "import/import_script.h"

#include "examine/measures.h"
#include "formats/text.h"
#include "platform/files/program_folder.h"
#include "runner/output_lines.h"

#include <initializer_list>
#include <string_view>
#include <utility>

namespace corvane {
namespace {

class arguments {
 public:
  void add(std::initializer_list<std::string> more) {
    list_.insert(list_.end(), more.begin(), more.end());
  }
  void add(const argument_list& more) { list_.insert(list_.end(), more.begin(), more.end()); }
  argument_list take() { return std::move(list_); }

 private:
  argument_list list_;
};

std::string stream_of_source(int index) {
  return "0:" + std::to_string(index);
}

// A file is opened as what it was found to be. Left to itself ffmpeg takes a list for the files
// that it names, and a name with "%d" for a row of pictures.
void add_input(arguments& a, const std::string& container, const std::string& file) {
  if (!container.empty())
    a.add({"-f", container});
  a.add({"-i", file});
}

// Warnings and a line of progress a second; nothing is read from the keyboard. Turning is up to the
// filters, which deinterlace first.
void add_source(arguments& a, const import_job& job) {
  a.add({"-nostdin", "-hide_banner", "-y", "-v", "warning", "-stats", "-stats_period", "1"});
  a.add({"-noautorotate"});
  // All times are then those of the picture.
  if (job.plan.begin != 0)
    a.add({"-itsoffset", decimal_text(-job.plan.begin, 6)});
  add_input(a, job.plan.container, job.source);
}

bool needs_silence(const import_plan& plan) {
  for (const sound_work& work : plan.sound.streams)
    if (!work.stream)
      return true;
  return false;
}

void add_video(arguments& a, const import_job& job, bool first_pass) {
  const video_plan& video = job.plan.video;
  a.add({"-map", stream_of_source(video.stream)});
  if (video.fate == stream_fate::copied) {
    a.add({"-c:v", "copy", "-copyinkf", "-f", "mpeg2video", temporary_name(job.files.video)});
    return;
  }
  a.add({"-vf", picture_filter(video.work)});
  a.add(video_encoder(video.work, job.bits, job.plan.chapters));
  if (has_two_passes(job))
    a.add({"-pass", first_pass ? "1" : "2", "-passlogfile", job.files.notes});
  if (first_pass)
    a.add({"-f", "null", "-"});
  else
    a.add({temporary_name(job.files.video)});
}

void add_sound(arguments& a, const import_job& job, std::size_t number) {
  const sound_work& work = job.plan.sound.streams[number];
  const std::string file = temporary_name(job.files.sounds[number]);
  if (!work.stream) {
    a.add({"-map", "1:0", "-af", sound_filter(work, {1, 1}, 0, job.plan.seconds, false)});
    a.add(sound_encoder(work));
  } else if (work.fate == stream_fate::copied) {
    a.add({"-map", stream_of_source(*work.stream), "-c:a", "copy"});
    if (job.plan.sound.left_out > 0)  // behind the last picture
      a.add({"-t", decimal_text(job.plan.seconds, 6)});
    a.add({"-f", work.kind == disc_sound::mp2 ? "mp2" : "ac3"});
  } else {
    a.add({"-map", stream_of_source(*work.stream), "-af",
           sound_filter(work, job.plan.video.work.speed, job.plan.sound.begin, job.plan.seconds,
                        job.even_loudness)});
    a.add(sound_encoder(work));
  }
  a.add({file});
}

// Markup would be drawn as letters: the texts alone are written.
void add_text(arguments& a, const std::string& stream, const std::string& file) {
  a.add({"-map", stream, "-c:s", "text", "-f", "srt", temporary_name(file)});
}

/// FFmpeg's name for what a subtitle file is by its ending (import/sidecars.h).
std::string container_of_text(const std::string& file) {
  const std::string ending = lower_extension_of(file);
  if (ending == "ssa")
    return "ass";
  if (ending == "vtt")
    return "webvtt";
  return ending == "smi" ? "sami" : ending;
}

/// A text that has a file of its own has a run of its own.
argument_list text_arguments(const import_job& job, std::size_t number) {
  const std::string& file = job.plan.texts[number].file.file;
  arguments a;
  a.add({"-nostdin", "-hide_banner", "-y", "-v", "warning"});
  if (const std::string& charset = job.plan.texts[number].file.charset; !charset.empty())
    a.add({"-sub_charenc", charset});
  add_input(a, container_of_text(file), file);
  add_text(a, stream_of_source(0), job.files.texts[number]);
  return a.take();
}

void put_line(std::string& text, const std::string& line) {
  text += line + "\r\n";
}

std::string word(const std::string& argument) {
  constexpr std::string_view plain =
      "ABCDEFGHIJKLMNOPQRSTUVWXYZabcdefghijklmnopqrstuvwxyz0123456789_.:+-";
  const bool is_plain = !argument.empty() && argument.find_first_not_of(plain) == std::string::npos;
  return is_plain ? argument : in_double_quotes(argument);
}

}  // namespace

std::optional<std::string> why_not_in_script(const import_job& job, path_style style) {
  if (auto why = why_not_storable(job.source, style))
    return why;
  for (const std::string& file : job.files.all())
    if (auto why = why_not_storable(file, style))
      return why;
  for (const text_plan& text : job.plan.texts)
    if (!text.stream)
      if (auto why = why_not_storable(text.file.file, style))
        return why;
  return std::nullopt;
}

bool has_two_passes(const import_job& job) {
  return job.plan.video.fate == stream_fate::encoded &&
         job.bits.quality != import_quality::constant;
}

std::string import_step(const import_job& job, bool first_pass, path_style style) {
  return "importing " + native_file_name(job.source, style) + (first_pass ? ", first pass" : "");
}

std::string ffmpeg_line(const std::string& app, const argument_list& arguments, path_style style) {
  std::string line = in_double_quotes(tool_path(app, "ffmpeg", style));
  for (const std::string& argument : arguments)
    line += " " + word(argument);
  return line;
}

argument_list import_arguments(const import_job& job, bool first_pass) {
  arguments a;
  add_source(a, job);
  if (!first_pass && needs_silence(job.plan))
    a.add({"-f", "lavfi", "-i", "anullsrc=r=48000:cl=stereo"});
  add_video(a, job, first_pass);
  if (first_pass)
    return a.take();
  for (std::size_t i = 0; i < job.plan.sound.streams.size(); ++i)
    add_sound(a, job, i);
  for (std::size_t i = 0; i < job.plan.texts.size(); ++i)
    if (job.plan.texts[i].stream)
      add_text(a, stream_of_source(*job.plan.texts[i].stream), job.files.texts[i]);
  return a.take();
}

std::string import_script(const std::vector<import_job>& jobs, const std::string& app,
                          path_style style) {
  std::string text;
  put_line(text, "@echo off");
  for (const import_job& job : jobs) {
    if (has_two_passes(job)) {
      put_line(text, "echo " + step_line(import_step(job, true, style)));
      put_line(text, ffmpeg_line(app, import_arguments(job, true), style));
    }
    put_line(text, "echo " + step_line(import_step(job, false, style)));
    put_line(text, ffmpeg_line(app, import_arguments(job, false), style));
    for (std::size_t i = 0; i < job.plan.texts.size(); ++i)
      if (!job.plan.texts[i].stream)
        put_line(text, ffmpeg_line(app, text_arguments(job, i), style));
    if (has_two_passes(job))
      put_line(text, "erase " + in_double_quotes(notes_file(job.files)));
  }
  put_line(text, "echo " + std::string(end_marker));
  return text;
}

}  // namespace corvane
