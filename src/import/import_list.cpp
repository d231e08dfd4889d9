#include "import/import_list.h"

#include "examine/measures.h"
#include "examine/space_rules.h"
#include "formats/numbers.h"
#include "formats/text.h"
#include "formats/time_text.h"
#include "import/codec_names.h"
#include "import/finish_import.h"
#include "import/language_codes.h"
#include "platform/files/files.h"
#include "platform/files/paths.h"
#include "project/disc_of.h"
#include "project/file_lookup.h"
#include "runner/run_meter.h"

#include <algorithm>
#include <cmath>
#include <map>
#include <utility>

namespace corvane {
namespace {

std::string bytes_text(std::uint64_t bytes) {
  constexpr double giga = 1e9, mega = 1e6;
  const auto count = static_cast<double>(bytes);
  return count < giga ? decimal_text(std::max(1.0, count / mega), 0) + " MB"
                      : decimal_text(count / giga, 1) + " GB";
}

const char* word_of_fate(stream_fate fate) {
  switch (fate) {
    case stream_fate::copied:
      return "copied";
    case stream_fate::encoded:
      return "encoded";
    case stream_fate::left_out:
      break;
  }
  return "left out";
}

const char* word_of_kind(source_kind kind) {
  switch (kind) {
    case source_kind::video:
      return "video";
    case source_kind::picture:
      return "picture";
    case source_kind::audio:
      return "audio";
    case source_kind::text:
    case source_kind::bitmap_text:
      return "subtitles";
    case source_kind::other:
      break;
  }
  return "data";
}

/// "German"; the name itself where it is not known.
std::string language_name(const std::string& named) {
  const std::string_view entry = language_entry(named);
  if (entry.empty())
    return named;
  const std::string_view name = name_in_entry(entry);
  return std::string(name.substr(0, 1)) + lower(name.substr(1));
}

std::string channels_text(const source_audio& audio) {
  if (audio.channels == 1)
    return "mono";
  if (audio.channels == 2)
    return "stereo";
  if (audio.layout.starts_with("5.1"))
    return "5.1";
  return audio.channels > 0 ? std::to_string(audio.channels) + " channels" : "";
}

void append(std::string& text, const std::string& piece) {
  if (!piece.empty())
    text += (text.empty() ? "" : ", ") + piece;
}

std::string video_text(const source_video& video, bool moves) {
  std::string text;
  if (video.width > 0)
    append(text, std::to_string(video.width) + "x" + std::to_string(video.height));
  if (moves && video.rate.over > 0)
    append(text, decimal_text(video.rate.value(), 2) + " a second");
  return text;
}

std::string text_of_stream(const source_stream& stream) {
  std::string text = stream.codec.empty() ? "" : codec_name(stream.codec);
  if (stream.kind == source_kind::video || stream.kind == source_kind::picture)
    append(text, video_text(stream.video, stream.kind == source_kind::video));
  if (stream.kind == source_kind::audio) {
    append(text, channels_text(stream.audio));
    if (stream.audio.sample_rate > 0)
      append(text, decimal_text(stream.audio.sample_rate / 1000.0, 1) + " kHz");
  }
  append(text, language_name(stream.language));
  return text;
}

/// Streams of a kind are counted where there are several.
class stream_names {
 public:
  explicit stream_names(const std::vector<source_stream>& streams) {
    for (const source_stream& stream : streams)
      ++all_[word_of_kind(stream.kind)];
  }
  std::string next(source_kind kind) {
    const std::string word = word_of_kind(kind);
    const int number = ++told_[word];
    return all_[word] > 1 ? word + " " + std::to_string(number) : word;
  }

 private:
  std::map<std::string, int> all_, told_;
};

std::string fate_text(const planned_stream& planned) {
  return std::string(word_of_fate(planned.fate)) +
         (planned.reason.empty() ? "" : ": " + planned.reason);
}

bool is_choosable(const source_stream& stream) {
  return stream.decodes && (stream.kind == source_kind::audio || stream.kind == source_kind::text);
}

void add_streams(item_summary& summary, const source_facts& facts, const import_plan* plan) {
  stream_names names(facts.streams);
  for (const source_stream& stream : facts.streams) {
    std::string text = text_of_stream(stream);
    if (plan != nullptr)
      for (const planned_stream& planned : plan->streams)
        if (planned.stream == stream.index)
          text += (text.empty() ? "" : " - ") + fate_text(planned);
    summary.lines.push_back({names.next(stream.kind), text});
  }
}

/// Code pages of Windows are known by their full name.
std::string charset_name(const std::string& charset) {
  return charset.starts_with("CP") ? "Windows-" + charset.substr(2) : charset;
}

/// What had nothing to say, and so was not added: "film.de.srt"; or empty.
std::string texts_left_out(const import_job& job) {
  std::string names;
  for (std::size_t i = 0; i < job.files.texts.size(); ++i)
    if (!has_text(job, i))
      append(names, native_file_name(job.files.texts[i]));
  return names;
}

std::string text_of_sidecar(const sidecar& text) {
  std::string shown = native_file_name(text.file);
  append(shown, language_name(text.language));
  append(shown, charset_name(text.charset));
  return shown;
}

const char* fate_of_sidecar(const probed_source& source, const sidecar& text) {
  if (!text.problem.empty())
    return "left out: ";
  return source.is_wanted(text) ? "becomes subtitles" : "left out: as you chose";
}

void add_made(item_summary& summary, const probed_source& source, const import_job& job) {
  const import_plan& plan = job.plan;
  for (const sidecar& text : source.beside)
    summary.lines.push_back({"beside it", text_of_sidecar(text) + " - " +
                                              fate_of_sidecar(source, text) + text.problem});
  const bool is_silent =
      std::ranges::any_of(plan.sound.streams, [](const sound_work& work) { return !work.stream; });
  const bool has_sound = std::ranges::any_of(source.facts.streams, [](const source_stream& s) {
    return s.kind == source_kind::audio && s.decodes;
  });
  if (is_silent)
    summary.lines.push_back({"silence", has_sound ? "made, since its sound was left out"
                                                  : "made, since it has no sound"});
  else if (plan.sound.streams.empty())
    summary.lines.push_back({"sound", "none"});
  if (const std::string end = end_text(plan); !end.empty())
    summary.lines.push_back({"end", end});
  if (!plan.chapters.empty())
    summary.lines.push_back(
        {"chapters", std::to_string(plan.chapters.size()) + ", which the title gets"});
  std::string names;
  for (const std::string& file : job.files.all())
    append(names, native_file_name(file));
  summary.lines.push_back({"becomes", names});
}

}  // namespace

void import_list::follow(const project& p) {
  demands_ = demands_of_project(p);
  preferred_ = p.globalregion == "PAL" ? video_standard::pal : video_standard::ntsc;
  file_lookup files;
  used_ = space_wanted_by(disc_of(p), [&files](const std::string& stored) {
            return files.size_of(stored);
          }).disc;
  plan();
}

bool import_list::add(const std::string& file) {
  const std::string whole = absolute_path(file);
  const auto is_same = [&](const entry& e) {
    return native_style() == path_style::windows ? lower(e.source.file) == lower(whole)
                                                 : e.source.file == whole;
  };
  if (std::ranges::any_of(entries_, is_same))
    return false;
  if (folder_.empty())
    folder_ = absolute_path(text_of(path_of(whole).parent_path()));
  entries_.emplace_back().source.file = whole;
  return true;
}

void import_list::remove(std::size_t row) {
  entries_.erase(entries_.begin() + static_cast<std::ptrdiff_t>(row));
  plan();
}

std::optional<std::string> import_list::next_unknown() const {
  for (const entry& e : entries_)
    if (e.now == stage::looking)
      return e.source.file;
  return std::nullopt;
}

void import_list::know(const probed_source& source) {
  for (entry& e : entries_)
    if (e.now == stage::looking && e.source.file == source.file) {
      e.source = source;
      e.now = stage::planned;
    }
  plan();
}

void import_list::choose(const import_choices& choices) {
  choices_ = choices;
  plan();
}

void import_list::put_in(std::string folder) {
  folder_ = std::move(folder);
  plan();
}

void import_list::plan() {
  std::vector<probed_source> sources;
  std::vector<entry*> planned;
  for (entry& e : entries_)
    if (e.now == stage::planned || e.now == stage::failed) {
      sources.push_back(e.source);
      planned.push_back(&e);
    }
  import_place place;
  place.folder = folder_;
  place.choices = choices_;
  place.preferred = preferred_;
  place.used = used_;
  place.is_taken = [](const std::string& file) { return entry_exists(file); };
  import_batch batch = plan_batch(sources, demands_, place);
  for (std::size_t i = 0; i < planned.size(); ++i)
    planned[i]->plan = std::move(batch.entries[i]);
  problem_ = batch.problem;
}

double import_list::seconds(std::size_t row) const {
  return entries_[row].source.facts.length.value_or(0);
}

bool import_list::has_picture(std::size_t row) const {
  const entry& e = entries_[row];
  return e.now != stage::looking && e.source.problem.empty() &&
         std::ranges::any_of(e.source.facts.streams, [](const source_stream& s) {
           return s.kind == source_kind::video || s.kind == source_kind::picture;
         });
}

import_list::shown_row import_list::shown(std::size_t row) const {
  const entry& e = entries_[row];
  import_list::shown_row text{native_file_name(e.source.file), "", ""};
  if (const double length = seconds(row); length > 0)
    text.length = clock_text(length);
  switch (e.now) {
    case stage::looking:
      text.what = "being looked at";
      break;
    case stage::planned:
      text.what = e.plan.problem.empty() ? word_of_fate(e.plan.job.plan.video.fate)
                                         : "left out: " + e.plan.problem;
      break;
    case stage::waiting:
      text.what = "waits";
      break;
    case stage::importing:
      text.what = "being imported";
      break;
    case stage::done:
      text.what = "done, the title is added";
      if (!e.note.empty())
        text.what += ", but " + e.note;
      if (!e.no_text_in.empty())
        text.what += "; there is no text for " + e.no_text_in;
      break;
    case stage::failed:
      text.what = "not imported: " + e.failed;
      break;
  }
  return text;
}

std::vector<import_list::choosable_stream> import_list::choosable_streams(std::size_t row) const {
  const probed_source& source = entries_[row].source;
  std::vector<choosable_stream> all;
  stream_names names(source.facts.streams);
  for (const source_stream& stream : source.facts.streams) {
    const std::string name = names.next(stream.kind);
    if (is_choosable(stream))
      all.push_back({name + ": " + text_of_stream(stream), source.is_wanted(stream)});
  }
  for (const sidecar& text : source.beside)
    if (text.problem.empty())
      all.push_back({"beside it: " + text_of_sidecar(text), source.is_wanted(text)});
  return all;
}

bool import_list::may_choose_streams(std::size_t row) const {
  const stage now = entries_[row].now;
  return (now == stage::planned || now == stage::failed) && !choosable_streams(row).empty();
}

void import_list::want(std::size_t row, const std::vector<bool>& wanted) {
  if (!may_choose_streams(row))
    return;
  entry& e = entries_[row];
  probed_source& source = e.source;
  source.unwanted_streams.clear();
  source.unwanted_beside.clear();
  std::size_t place = 0;
  for (const source_stream& stream : source.facts.streams)
    if (is_choosable(stream) && !wanted[place++])
      source.unwanted_streams.push_back(stream.index);
  for (const sidecar& text : source.beside)
    if (text.problem.empty() && !wanted[place++])
      source.unwanted_beside.push_back(text.file);
  plan();
}

item_summary import_list::summary(std::size_t row) const {
  const entry& e = entries_[row];
  item_summary summary;
  summary.heading = native_file_name(e.source.file);
  if (e.now == stage::looking) {
    summary.lines.push_back({"", "This file is being looked at."});
    return summary;
  }
  const bool is_planned = e.source.problem.empty() && e.plan.problem.empty();
  if (e.now == stage::failed)
    summary.lines.push_back({"not imported", e.failed});
  if (!is_planned)
    summary.lines.push_back({"left out", e.plan.problem});
  add_streams(summary, e.source.facts, is_planned ? &e.plan.job.plan : nullptr);
  if (!e.note.empty())
    summary.lines.push_back({"not complete", e.note});
  if (e.source.facts.cut_short)
    summary.lines.push_back({"", "The file ends before its own end: a part of it is missing."});
  if (is_planned)
    add_made(summary, e.source, e.plan.job);
  return summary;
}

std::size_t import_list::importable() const {
  return static_cast<std::size_t>(std::ranges::count_if(entries_, [](const entry& e) {
    return (e.now == stage::planned || e.now == stage::failed) && e.plan.problem.empty();
  }));
}

std::uint64_t import_list::bytes() const {
  std::uint64_t sum = 0;
  for (const entry& e : entries_)
    if (e.now == stage::planned || e.now == stage::failed)
      sum += e.plan.bytes;
  return sum;
}

std::optional<std::uint64_t> import_list::free_bytes() const {
  const auto room = folder_.empty() ? std::nullopt : room_at(folder_);
  return room ? std::optional<std::uint64_t>(room->free) : std::nullopt;
}

std::string import_list::estimate() const {
  const std::size_t count = importable();
  if (count == 0)
    return {};
  double seconds = 0, takes = 0;
  std::int64_t mean = 0;
  for (const entry& e : entries_) {
    if ((e.now != stage::planned && e.now != stage::failed) || !e.plan.problem.empty())
      continue;
    seconds += e.plan.job.plan.seconds;
    takes += expected_seconds(e.plan.job, speeds_);
    if (e.plan.job.plan.video.fate == stream_fate::encoded)
      mean = std::max(mean, e.plan.job.bits.mean);
  }
  std::string text = count_text(count, "file", "files") + ", " + clock_text(seconds) + " of film";
  if (choices_.quality == import_quality::constant && mean > 0)
    return text + ": " + duration_text(takes) +
           "; with constant quality the pictures decide how large it becomes";
  text += ": about " + bytes_text(bytes());
  if (const auto free = free_bytes())
    text += " of " + bytes_text(*free) + " that are free there";
  append(text, duration_text(takes));
  if (mean > 0)
    text += "; video of " + rate_text(static_cast<double>(mean));
  return text;
}

std::string import_list::trouble() const {
  if (importable() == 0)
    return !entries_.empty() &&
                   std::ranges::all_of(entries_,
                                       [](const entry& e) { return e.now == stage::planned; })
               ? "None of these files can be imported, for the reasons that stand with them."
               : "";
  if (!problem_.empty())
    return problem_;
  if (folder_.empty() || !path_of(folder_).is_absolute())
    return "Choose the folder that the files are to be made in.";
  const auto free = free_bytes();
  if (free && *free < bytes())
    return "That disk has " + bytes_text(*free) + " left, and about " + bytes_text(bytes()) +
           " are needed.  Choose another folder, or less quality.";
  return {};
}

std::vector<import_job> import_list::begin() {
  // Something may have been given one of the names since.
  plan();
  std::vector<import_job> jobs;
  running_.clear();
  for (std::size_t i = 0; i < entries_.size(); ++i) {
    entry& e = entries_[i];
    if ((e.now != stage::planned && e.now != stage::failed) || !e.plan.problem.empty())
      continue;
    e.now = stage::waiting;
    jobs.push_back(e.plan.job);
    running_.push_back(i);
  }
  return jobs;
}

void import_list::runs(std::size_t job) {
  entries_[running_[job]].now = stage::importing;
}

// What was stopped can be begun again, and so can what has not begun.
void import_list::ended(const import_end& end, bool stopped) {
  entry& e = entries_[running_[end.job]];
  e.failed = end.problem;
  e.note = end.note;
  e.now = end.problem.empty() ? stage::done : stopped ? stage::planned : stage::failed;
  if (e.now == stage::done)
    e.no_text_in = texts_left_out(e.plan.job);
  if (stopped)
    give_up();
}

void import_list::changed(std::size_t job, const import_job& now) {
  entries_[running_[job]].plan.job = now;
}

void import_list::give_up() {
  for (const std::size_t row : running_)
    if (entries_[row].now == stage::waiting)
      entries_[row].now = stage::planned;
}

bool import_list::all_done() const {
  return std::ranges::all_of(running_, [this](std::size_t row) {
    return entries_[row].now == stage::done && entries_[row].note.empty();
  });
}

std::string import_list::outcome() const {
  std::size_t done = 0, failed = 0, short_ones = 0;
  for (const std::size_t row : running_) {
    const bool is_done = entries_[row].now == stage::done;
    done += is_done ? 1 : 0;
    failed += is_done ? 0 : 1;
    short_ones += is_done && !entries_[row].note.empty() ? 1 : 0;
  }
  std::string text =
      done == 0 ? "No title was added" : count_text(done, "title", "titles") + " added";
  if (failed > 0)
    text += "; " + count_text(failed, "file was", "files were") + " not imported";
  if (short_ones > 0)
    text += "; the end of " + count_text(short_ones, "file is", "files are") + " missing";
  return text;
}

std::string progress_text(const import_progress& progress, const std::vector<import_job>& jobs) {
  const import_job& job = jobs[progress.job];
  std::string text = jobs.size() > 1 ? "file " + std::to_string(progress.job + 1) + " of " +
                                           std::to_string(jobs.size()) + ": "
                                     : "";
  text += native_file_name(job.source);
  if (progress.finishing)
    text += ", finishing";
  else if (has_two_passes(job))
    text += progress.first_pass ? ", first pass" : ", second pass";
  if (progress.pictures_a_second && !progress.finishing)
    text += ", " + decimal_text(*progress.pictures_a_second, 0) + " pictures a second";
  append(text, time_left_text(progress.seconds_left));
  return text;
}

}  // namespace corvane
