#include "import/finish_import.h"

#include "import/import_bits.h"
#include "import/subrip_times.h"
#include "platform/files/file_slices.h"
#include "platform/files/files.h"
#include "tools/cleaned_subtitles.h"

#include <algorithm>
#include <cstddef>
#include <fstream>
#include <ios>

namespace corvane {
namespace {

failure write_changes(std::fstream& file, const std::vector<byte_change>& changes) {
  for (const byte_change& change : changes) {
    file.seekp(static_cast<std::streamoff>(change.position));
    file.put(static_cast<char>(change.value));
  }
  return file ? std::nullopt : failure("it cannot be written into");
}

failure change_file(const std::string& path, const video_finish& what) {
  result<file_slices> slices = file_slices::open(path);
  if (!slices)
    return slices.error;
  std::fstream file(path_of(path), std::ios::in | std::ios::out | std::ios::binary);
  if (!file)
    return failure("it cannot be written into");
  video_finisher finisher(what);
  for (;;) {
    const auto slice = slices->next();
    if (!slice)
      return slice.error;
    if (slice->empty())
      break;
    finisher.feed(slice->data(), slice->size());
    if (finisher.why_not())
      return finisher.why_not();
    if (failure why = write_changes(file, finisher.take_changes()))
      return why;
  }
  finisher.finish();
  if (finisher.why_not())
    return finisher.why_not();
  if (failure why = write_changes(file, finisher.take_changes()))
    return why;
  file.seekp(0, std::ios::end);
  file << finisher.ending();
  file.close();
  return file ? std::nullopt : failure("it cannot be written into");
}

/// Where only the end counts, only that is looked at: a copied film may be of many gigabytes.
failure end_file(const std::string& path) {
  constexpr std::streamoff most = 1 << 16;
  std::fstream file(path_of(path), std::ios::in | std::ios::out | std::ios::binary);
  file.seekg(0, std::ios::end);
  const std::streamoff size = file.tellg();
  std::string tail(static_cast<std::size_t>(std::clamp<std::streamoff>(size, 0, most)), '\0');
  file.seekg(size - static_cast<std::streamoff>(tail.size()));
  file.read(tail.data(), static_cast<std::streamsize>(tail.size()));
  if (!file)
    return failure("it cannot be read");
  video_finish what;
  what.end_code = true;
  const std::size_t before = tail.size();
  if (failure why = finish_video(tail, what))
    return why;
  file.seekp(0, std::ios::end);
  file << tail.substr(before);
  file.close();
  return file ? std::nullopt : failure("it cannot be written into");
}

failure give_names(const std::vector<std::string>& files) {
  for (std::size_t i = 0; i < files.size(); ++i) {
    const failure why = move_entry(temporary_name(files[i]), files[i]);
    if (!why)
      continue;
    for (std::size_t before = 0; before < i; ++before)
      remove_all(files[before]);
    return files[i] + ": " + *why;
  }
  return std::nullopt;
}

failure why_not_whole(const std::string& file, bool may_be_empty) {
  const auto size = file_size(temporary_name(file));
  if (!size)
    return file + " was not made";
  if (*size == 0 && !may_be_empty)
    return file + " is empty";
  return std::nullopt;
}

/// ffmpeg can move the times of a text, but has no way to make them shorter; and entities and signs
/// that hide text stand in files of any kind. Of the lines of a cue it ends some with CR and LF.
std::string finished_text(std::string text, source_ratio speed) {
  std::erase(text, '\r');
  const subtitle_file made("text.srt",
                           speed == source_ratio{1, 1} ? text : subrip_at_speed(text, speed));
  subtitle_settings settings = default_subtitle_settings("PAL");
  settings[subtitle_field::character_set] = "UTF-8";
  const result<cleaned_subtitles> clean = clean_subtitles(made, settings);
  if (!clean || clean->changes.empty())
    return made.bytes();
  return clean->text;
}

/// Sound that is made lasts as long as the film, but for a frame or two.
failure why_not_long_enough(const import_job& job, std::size_t number) {
  constexpr double tolerance = 0.1;
  const import_plan& plan = job.plan;
  const sound_work& work = plan.sound.streams[number];
  if (work.fate != stream_fate::encoded || plan.seconds <= 0)
    return std::nullopt;
  const std::string& file = job.files.sounds[number];
  const double seconds = plan.seconds - std::max(0.0, plan.sound.begin) - tolerance;
  const auto size = file_size(temporary_name(file));
  if (size && static_cast<double>(*size) < static_cast<double>(bytes_of_sound(work, seconds)))
    return file + " is not whole";
  return std::nullopt;
}

failure finish_text(const std::string& file, source_ratio speed) {
  constexpr std::uintmax_t most = std::uintmax_t{64} << 20;
  const result<std::string> text = read_file(file, most);
  if (!text)
    return text.error;
  const std::string made = finished_text(*text, speed);
  return made == *text ? std::nullopt : write_file(file, made);
}

failure finish_texts(const import_job& job) {
  for (const std::string& text : job.files.texts)
    if (failure why = finish_text(temporary_name(text), job.plan.video.work.speed))
      return text + ": " + *why;
  return std::nullopt;
}

/// The files that get their names; a text that is empty is removed.
std::vector<std::string> whole_files(const import_job& job) {
  std::vector<std::string> files = job.files.all();
  std::erase_if(files, [](const std::string& file) {
    const bool is_empty = file_size(temporary_name(file)).value_or(0) == 0;
    if (is_empty)
      remove_all(temporary_name(file));
    return is_empty;
  });
  return files;
}

failure finish_streams(const import_job& job) {
  if (failure why = why_not_whole(job.files.video, false))
    return why;
  for (std::size_t i = 0; i < job.files.sounds.size(); ++i) {
    if (failure why = why_not_whole(job.files.sounds[i], false))
      return why;
    if (failure why = why_not_long_enough(job, i))
      return why;
  }
  // Subtitles may have nothing to say.
  for (const std::string& text : job.files.texts)
    if (failure why = why_not_whole(text, true))
      return why;
  if (failure why = finish_video_file(temporary_name(job.files.video), finish_of(job.plan)))
    return job.files.video + ": " + *why;
  if (failure why = finish_texts(job))
    return why;
  return give_names(whole_files(job));
}

}  // namespace

failure finish_video_file(const std::string& file, const video_finish& what) {
  if (what == video_finish{})
    return std::nullopt;
  return what.pulldown ? change_file(file, what) : end_file(file);
}

video_finish finish_of(const import_plan& plan) {
  video_finish what;
  what.end_code = true;
  what.pulldown = plan.video.fate == stream_fate::copied
                      ? plan.video.may_need_pulldown
                      : plan.video.work.motion == picture_motion::film;
  return what;
}

failure finish_import(const import_job& job) {
  failure why = finish_streams(job);
  if (why)
    remove_unfinished(job);
  return why;
}

bool has_text(const import_job& job, std::size_t number) {
  return file_exists(job.files.texts[number]);
}

failure prepare_import_folder(const std::string& folder) {
  constexpr std::size_t some_bytes = 4096;
  const std::string advice = ".  Choose another folder.";
  if (const failure why = make_folders(folder))
    return "The folder \"" + folder + "\" cannot be made: " + *why + advice;
  if (const failure why = try_writing_in(folder, some_bytes))
    return "Nothing can be written into the folder \"" + folder + "\": " + *why + advice;
  return std::nullopt;
}

void remove_unfinished(const import_job& job) {
  for (const std::string& file : temporary_files(job.files))
    remove_all(file);
}

}  // namespace corvane
