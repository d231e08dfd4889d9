#include "examine/item_summary.h"

#include "examine/chapter_rules.h"
#include "examine/measures.h"
#include "examine/subtitle_text_rules.h"
#include "formats/numbers.h"
#include "formats/sanitized.h"
#include "formats/text.h"
#include "formats/time_text.h"
#include "platform/files/file_stamp.h"
#include "platform/files/paths.h"
#include "project/language_rows.h"
#include "project/subtitle_file.h"

#include <algorithm>
#include <cmath>
#include <cstdint>
#include <iterator>
#include <memory>
#include <string_view>
#include <utility>

namespace corvane {
namespace {

using whole = finding_item::whole_kind;
using stream_kind = disc_language::stream_kind;

constexpr int seconds_a_minute = 60, minutes_an_hour = 60;
constexpr double bits_a_byte = 8;

// What a disc holds of each; a damaged project may name any number.
constexpr std::size_t most_streams = 1 + 8;
constexpr std::size_t most_buttons = 36;
constexpr std::size_t most_of_a_command = 200;  // characters

std::string native_of(const std::string& stored) {
  return native_from_stored(stored, native_style());
}

std::string name_of_file(const std::string& stored) {
  return std::string(file_name_of(stored));
}

/// "20.5 s", "12:34 min", "1:02:03 h".
std::string length_text(double seconds) {
  if (seconds < seconds_a_minute - 0.05)
    return decimal_text(seconds, 1) + " s";
  constexpr std::int64_t an_hour = std::int64_t{seconds_a_minute} * minutes_an_hour;
  const bool is_short = std::llround(seconds) < an_hour;
  return clock_text(seconds) + (is_short ? " min" : " h");
}

/// Of an estimate: to the second up to ten minutes, then to the minute.
std::string rounded_length_text(double seconds) {
  constexpr double ten_minutes = 600;
  if (seconds < ten_minutes)
    return length_text(std::max(1.0, std::round(seconds)));
  const std::int64_t minutes = std::llround(seconds / seconds_a_minute);
  if (minutes < minutes_an_hour)
    return trimmed(minutes) + " min";
  return trimmed(minutes / minutes_an_hour) + ":" + two_digits(minutes % minutes_an_hour) + " h";
}

/// Of 1,000,000,000 bytes a GB, as discs are sold.
std::string bytes_text(std::uint64_t bytes) {
  constexpr double kilo = 1e3, mega = 1e6, giga = 1e9;
  const auto size = static_cast<double>(bytes);
  if (size >= giga)
    return decimal_text(size / giga, 2) + " GB";
  if (size >= mega)
    return decimal_text(size / mega, 1) + " MB";
  return decimal_text(std::ceil(size / kilo), 0) + " kB";
}

/// The language of the n-th stream of a kind (1-based) with a small letter behind the first:
/// "English"; empty: none.
std::string language_of(const disc_description& d, int titleset, stream_kind kind,
                        std::size_t number) {
  for (const disc_language& tag : d.languages) {
    if (tag.kind != kind || tag.titleset != titleset || --number > 0)
      continue;
    const std::string tagged = language_in(tag.text);
    const std::string language = tagged.substr(0, tagged.find(' '));
    const std::string small = lower(language);
    return language.empty() ? tag.code : language.substr(0, 1) + small.substr(1);
  }
  return {};
}

/// Pieces that are there, with ", " between them.
std::string listed(const std::vector<std::string>& pieces) {
  std::vector<std::string> there;
  std::ranges::copy_if(pieces, std::back_inserter(there),
                       [](const std::string& piece) { return !piece.empty(); });
  return join(there, ", ");
}

// Streams -----------------------------------------------------------------------------------------

std::string channels_text(const audio_frame& frame) {
  if (frame.low_frequency && frame.channels > 1)
    return trimmed(frame.channels - 1) + ".1 channels";
  return count_text(static_cast<std::uint64_t>(frame.channels), "channel", "channels");
}

std::string kilohertz_text(int sample_rate) {
  return decimal_text(sample_rate / 1e3, 1) + " kHz";
}

/// "AC-3, 48 kHz, 2 channels, 192 kb/s".
std::string sound_text(const audio_facts& sound) {
  const std::string kind = sound.kind == audio_kind::unknown ? "no sound that is known"
                                                             : std::string(name_of(sound.kind));
  if (!sound.first)
    return kind;
  const std::string rate = rate_text(sound.highest_bit_rate);
  return listed({kind, kilohertz_text(sound.first->sample_rate), channels_text(*sound.first),
                 sound.bit_rate_varies ? "up to " + rate : rate});
}

std::string sound_text(const inner_stream& sound) {
  if (sound.audio)
    return sound_text(*sound.audio);
  if (sound.kind == inner_kind::lpcm && sound.lpcm)
    return listed(
        {"LPCM", kilohertz_text(sound.lpcm->sample_rate),
         sound.lpcm->bits > 0 ? trimmed(sound.lpcm->bits) + " bits" : std::string(),
         count_text(static_cast<std::uint64_t>(sound.lpcm->channels), "channel", "channels")});
  switch (sound.kind) {
    case inner_kind::mpeg_audio:
      return "MPEG audio";
    case inner_kind::ac3:
      return "AC-3";
    case inner_kind::lpcm:
      return "LPCM";
    default:
      return "DTS";
  }
}

bool is_sound(const inner_stream& stream) {
  return stream.kind == inner_kind::mpeg_audio || stream.kind == inner_kind::ac3 ||
         stream.kind == inner_kind::dts || stream.kind == inner_kind::lpcm;
}

/// "720x480, NTSC, 16:9".
std::string video_text(const video_facts& video) {
  if (!video.shape)
    return "no video that is known";
  const video_shape& shape = *video.shape;
  const std::string standard = video.standard == video_standard::ntsc  ? "NTSC"
                               : video.standard == video_standard::pal ? "PAL"
                                                                       : "neither NTSC nor PAL";
  return listed(
      {size_text(shape), standard, aspect_text(shape), shape.mpeg2 ? std::string() : "MPEG-1",
       video.whole && video.average_rate > 0 ? rate_text(video.average_rate) + " on average"
                                             : std::string()});
}

/// Why nothing is known of a file, for a person.
std::string unknown_text(const known_material& known, const std::string& stored) {
  const std::string path = native_of(stored);
  const std::string name = name_of_file(stored);
  if (known.missing.contains(path))
    return "the file " + name + " is missing";
  const auto file = known.files.find(path);
  if (file == known.files.end())
    return "the file " + name + " has not been looked at yet";
  const file_facts& facts = *file->second;
  switch (facts.kind) {
    case file_kind::unreadable:
      return "the file " + name + " cannot be read: " + facts.why_unreadable;
    case file_kind::empty:
      return "the file " + name + " is empty";
    case file_kind::video:
      return "the file " + name + " is a video";
    case file_kind::audio:
      return "the file " + name + " is sound";
    case file_kind::program_stream:
      return "the file " + name + " holds several streams in packets";
    default:
      return "the file " + name + " is in no format that is known";
  }
}

/// The streams of a title or menu with what is known of them.
class summary {
 public:
  summary(const disc_description& d, const known_material& known, bool hand_edited)
      : d_(d), known_(known), hand_edited_(hand_edited) {}

  item_summary of_title(int number) {
    const disc_title& title = d_.title(number);
    made_.heading = "title " + trimmed(number);
    take(title.streams);
    say_length_and_size(seconds_of_delay(title));
    say_video();
    say_sounds(title.titleset);
    if (title.is_multiplexed_here && title.delay.value != 0)
      say("A/V delay", title.delay.text + " ms");
    say_subtitles(title);
    if (hand_edited_) {
      say("edited XML", "it says which chapters and languages there are, and what follows");
    } else {
      const std::size_t chapters = chapters_in_file(title, {}, true).begins.size();
      say("chapters",
          chapters > 1 ? trimmed(static_cast<std::int64_t>(chapters)) : "none but the beginning");
      say("then", what_follows(title, number));
    }
    return std::move(made_);
  }

  std::string length_of_title(int number) {
    const disc_title& title = d_.title(number);
    take(title.streams);
    const std::optional<double> exact = exact_seconds(seconds_of_delay(title));
    return exact ? clock_text(*exact) : estimated_length().value_or(std::string());
  }

  item_summary of_menu(int number) {
    const disc_menu& menu = d_.menu(number);
    made_.heading = "menu " + trimmed(number);
    take(menu.files);
    say_kind(menu);
    say_video();
    if (files_.size() > 1 || made_of_packets())
      say_sounds(menu.titleset);
    else
      say("audio", "none");
    say_times(menu);
    say_buttons(menu);
    if (hand_edited_)
      say("edited XML", "it says what the buttons do");
    return std::move(made_);
  }

 private:
  void say(std::string name, std::string text) {
    made_.lines.push_back({std::move(name), std::move(text)});
  }

  /// The first is the video; an empty path is no stream.
  void take(const std::vector<std::string>& stored) {
    for (const std::string& path : stored)
      if (!path.empty() && files_.size() < most_streams)
        files_.push_back(path);
    left_out_ = stored.size() - std::min(stored.size(), most_streams);
    if (files_.empty())
      return;
    made_.video = native_of(files_.front());
    if (const file_facts* const first = facts_of(files_.front())) {
      if (first->video)
        video_ = &*first->video;
      inside_ = first->program ? &*first->program : nullptr;
      if (inside_ != nullptr && inside_->video() != nullptr && inside_->video()->video)
        video_ = &*inside_->video()->video;
    }
  }

  /// Null if nothing is known of it.
  const file_facts* facts_of(const std::string& stored) const {
    const auto file = known_.files.find(native_of(stored));
    return file == known_.files.end() ? nullptr : file->second.get();
  }
  const audio_facts* sound_in(const std::string& stored) const {
    const file_facts* const facts = facts_of(stored);
    return facts != nullptr && facts->audio ? &*facts->audio : nullptr;
  }
  bool made_of_packets() const { return inside_ != nullptr; }

  // Length and size -------------------------------------------------------------------------------

  static double seconds_of_delay(const disc_title& title) {
    constexpr double milliseconds = 1000;
    return title.is_multiplexed_here ? title.delay.value / milliseconds : 0;
  }

  /// `delay`: seconds by which the picture comes later than the sound.
  void say_length_and_size(double delay) {
    const std::string size = size_of_files();
    const auto exact = exact_seconds(delay);
    const auto length = exact ? std::optional(length_text(*exact)) : estimated_length();
    if (length)
      say("length", listed({*length, size}));
    else if (!size.empty())
      say("size", size);
    if (!length && video_ != nullptr)
      say("length", "known after \"check project...\", which reads the file");
  }

  /// Up to the last picture or the last sound, of files that were read to their end.
  std::optional<double> exact_seconds(double delay) const {
    const file_facts* const first = files_.empty() ? nullptr : facts_of(files_.front());
    if (first == nullptr || !first->whole || video_ == nullptr)
      return std::nullopt;
    if (made_of_packets())
      return std::max(inside_->seconds, inside_->shown_until);
    double seconds = video_->seconds;
    for (std::size_t i = 1; i < files_.size(); ++i)
      if (const audio_facts* const sound = sound_in(files_[i]); sound != nullptr) {
        if (!facts_of(files_[i])->whole)
          return std::nullopt;
        seconds = std::max(seconds, seconds_of(sound->length) - delay);
      }
    return seconds > 0 ? std::optional(seconds) : std::nullopt;
  }

  // Sound has one bit rate from its beginning to its end, mostly. That of video is the highest one
  // where it is stated as variable.
  std::optional<std::string> estimated_length() const {
    for (std::size_t i = 1; i < files_.size(); ++i)
      if (const audio_facts* const sound = sound_in(files_[i]);
          sound != nullptr && sound->highest_bit_rate > 0)
        return "about " + rounded_length_text(static_cast<double>(facts_of(files_[i])->size) *
                                              bits_a_byte / sound->highest_bit_rate);
    const file_facts* const first = files_.empty() ? nullptr : facts_of(files_.front());
    if (first == nullptr || !first->video || video_->bit_rate.value_or(0) == 0)
      return std::nullopt;
    return (video_->variable_bit_rate ? "at least " : "about ") +
           rounded_length_text(static_cast<double>(first->size) * bits_a_byte /
                               static_cast<double>(*video_->bit_rate));
  }

  /// Empty if none is known.
  std::string size_of_files() const {
    std::uint64_t bytes = 0;
    for (const std::string& file : files_)
      if (const file_facts* const facts = facts_of(file))
        bytes += facts->size;
    return bytes > 0 ? bytes_text(bytes) : std::string();
  }

  // Picture and sound -----------------------------------------------------------------------------

  void say_video() {
    if (video_ != nullptr)
      say("picture", video_text(*video_));
    else
      say("picture", files_.empty() ? "none" : unknown_text(known_, files_.front()));
  }

  void say_sounds(int titleset) {
    std::vector<std::string> sounds;
    if (made_of_packets()) {
      for (const inner_stream& stream : inside_->streams)
        if (is_sound(stream))
          sounds.push_back(sound_text(stream));
    } else {
      for (std::size_t i = 1; i < files_.size(); ++i) {
        const audio_facts* const sound = sound_in(files_[i]);
        sounds.push_back(sound != nullptr ? sound_text(*sound) : unknown_text(known_, files_[i]));
      }
    }
    if (sounds.empty() && (made_of_packets() || files_.size() == 1))
      say("audio", video_ != nullptr || !made_of_packets() ? "none" : "not known");
    for (std::size_t i = 0; i < sounds.size(); ++i)
      say(sounds.size() > 1 ? "audio " + trimmed(static_cast<std::int64_t>(i) + 1) : "audio",
          listed({language(titleset, stream_kind::audio, i + 1), sounds[i]}));
    if (left_out_ > 0)
      say("audio",
          trimmed(static_cast<std::int64_t>(left_out_)) + " more, which a disc has no room for");
  }

  std::string language(int titleset, stream_kind kind, std::size_t number) const {
    return hand_edited_ ? std::string() : language_of(d_, titleset, kind, number);
  }

  // Title -----------------------------------------------------------------------------------------

  void say_subtitles(const disc_title& title) {
    if (made_of_packets()) {
      if (const int inside = inside_->count_of(inner_kind::subpicture); inside > 0)
        say("subtitles", trimmed(inside) + " in the file");
      return;
    }
    const std::size_t count = title.subtitles.size();
    const std::size_t shown = std::min(count, most_subpictures);
    for (std::size_t i = 0; i < shown; ++i)
      say(count > 1 ? "subtitles " + trimmed(static_cast<std::int64_t>(i) + 1) : "subtitles",
          listed({language(title.titleset, stream_kind::subpicture, i + 1),
                  subtitle_text(title.subtitles[i].file)}));
    if (count > shown)
      say("subtitles", trimmed(static_cast<std::int64_t>(count - shown)) + " more, " +
                           "which a disc has no room for");
  }

  std::string subtitle_text(const std::string& stored) const {
    const std::string path = native_of(stored);
    if (known_.missing.contains(path))
      return "the file " + name_of_file(stored) + " is missing";
    const auto counted = known_.texts.find(path);
    const bool is_known = counted != known_.texts.end() && counted->second;
    return listed({name_of_file(stored),
                   is_known ? count_text(*counted->second, "text", "texts") : std::string()});
  }

  std::string what_follows(const disc_title& title, int number) const {
    if (is_given(title.post))
      return words_of_command(d_, *title.post);
    return number == d_.title_count() ? "the disc stops" : "title " + trimmed(number + 1);
  }

  // Menu ------------------------------------------------------------------------------------------

  void say_kind(const disc_menu& menu) {
    const std::string shown =
        menu.loop ? "again and again, with a pause of five seconds" : "until a button is chosen";
    if (is_still()) {
      say("kind", "a still picture, shown " + shown);
      say("size", size_of_files());
      return;
    }
    say_length_and_size(0);
    if (video_ == nullptr) {
      say("kind", "not known: " + why_no_video());
      return;
    }
    say("kind", (menu.loop ? "plays " : "plays and stays ") + shown);
  }

  std::string why_no_video() const {
    if (files_.empty())
      return "there is no video";
    if (known_.missing.contains(native_of(files_.front())))
      return "the video is missing";
    return unknown_text(known_, files_.front());
  }

  bool is_still() const {
    const file_facts* const first = files_.empty() ? nullptr : facts_of(files_.front());
    return first != nullptr && first->video && first->video->pictures == 1 &&
           (first->whole || first->video->bytes >= first->size);
  }

  void say_times(const disc_menu& menu) {
    if (menu.buttons.empty())
      return;
    if (menu.spu_begin.seconds.value_or(0) > 0)
      say("buttons come", "after " + length_text(*menu.spu_begin.seconds));
    if (menu.spu_end.seconds.value_or(0) > 0)
      say("buttons go", "after " + length_text(*menu.spu_end.seconds));
  }

  void say_buttons(const disc_menu& menu) {
    if (menu.buttons.empty()) {
      say("buttons", "none");
      return;
    }
    std::vector<std::string> actions;
    const std::size_t shown = std::min(menu.buttons.size(), most_buttons);
    for (std::size_t i = 0; i < shown; ++i)
      actions.push_back(words_of_command(d_, menu.buttons[i].action));
    if (shown < menu.buttons.size())
      actions.emplace_back("...");
    const std::string count = trimmed(static_cast<std::int64_t>(menu.buttons.size()));
    say("buttons", hand_edited_ ? count : count + ": " + join(actions, "; "));
  }

  const disc_description& d_;
  const known_material& known_;
  bool hand_edited_;
  item_summary made_;
  std::vector<std::string> files_;  // stored paths
  std::size_t left_out_ = 0;        // of them
  const video_facts* video_ = nullptr;
  const program_stream_facts* inside_ = nullptr;  // of a ready file
};

}  // namespace

item_summary title_summary(const disc_description& d, int title, const known_material& known,
                           bool hand_edited) {
  return summary(d, known, hand_edited).of_title(title);
}

item_summary menu_summary(const disc_description& d, int menu, const known_material& known,
                          bool hand_edited) {
  return summary(d, known, hand_edited).of_menu(menu);
}

std::string title_length_text(const disc_description& d, int title, const known_material& known) {
  return summary(d, known, false).length_of_title(title);
}

std::string menu_line(const disc_description& d, int menu) {
  const disc_menu& shown = d.menu(menu);
  return "menu " + trimmed(menu) + ": " + name_of_file(shown.video()) + ", " +
         (shown.buttons.empty() ? "no buttons"
                                : count_text(shown.buttons.size(), "button", "buttons"));
}

std::string words_of_command(const disc_description& d, const disc_command& command) {
  const command_form& form = command.form;
  const auto place = [](const char* what, int number, int count) {
    return what + trimmed(number) +
           (number < 1 || number > count ? " (there is none)" : std::string());
  };
  switch (form.what) {
    case verb::jump_title:
      if (!form.number)
        break;
      return place("title ", *form.number, d.title_count()) +
             (form.chapter ? ", chapter " + trimmed(*form.chapter) : std::string());
    case verb::jump_menu:
    case verb::call_menu:
      return form.number ? place("menu ", *form.number, d.menu_count()) : "the menu";
    case verb::call_last_menu:
      return "the menu shown last";
    default:
      break;
  }
  const std::string typed = sanitized_short(trim(command.text), most_of_a_command);
  return typed.empty() ? "nothing" : typed;
}

namespace {

/// A film's texts are some 100 KiB; more than this would hold up the window that waits.
constexpr std::uint64_t most_bytes_counted = std::uint64_t{2} << 20;

std::string key_of(const disc_subtitle& subtitle) {
  const subtitle_settings& settings = *subtitle.settings;
  return native_of(subtitle.file) + "\n" + settings[subtitle_field::character_set] + "\n" +
         settings[subtitle_field::frame_rate];
}

}  // namespace

bool text_counts::find(const disc_subtitle& subtitle, std::optional<std::size_t>& count) const {
  const auto known = counts_.find(key_of(subtitle));
  if (known == counts_.end() || stamp_of(native_of(subtitle.file)) != known->second.stamp)
    return false;
  count = known->second.count;
  return true;
}

std::optional<std::size_t> text_counts::count(const disc_subtitle& subtitle) {
  const std::string path = native_of(subtitle.file);
  counted& kept = counts_[key_of(subtitle)];
  kept = {stamp_of(path), std::nullopt};
  if (!kept.stamp || kept.stamp->size > most_bytes_counted)
    return std::nullopt;
  if (const result<subtitle_file> file = subtitle_file::read(path)) {
    const subtitle_cues cues = cues_of(*file, *subtitle.settings);
    if (cues.format != subtitle_format::unknown && cues.format != subtitle_format::other)
      kept.count = cues.cues.size();
  }
  return kept.count;
}

summary_look::summary_look(const disc_description& d, const finding_item& item, fact_store& store,
                           text_counts& counts)
    : store_(store), counts_(counts) {
  if (item.whole == whole::title && item.number >= 1 && item.number <= d.title_count()) {
    const disc_title& title = d.title(item.number);
    for (std::size_t i = 0; i < std::min(title.streams.size(), most_streams); ++i)
      take_file(title.streams[i]);
    for (std::size_t i = 0; i < std::min(title.subtitles.size(), most_subpictures); ++i)
      take_subtitle(title.subtitles[i]);
  } else if (item.whole == whole::menu && item.number >= 1 && item.number <= d.menu_count()) {
    const std::vector<std::string>& files = d.menu(item.number).files;
    for (std::size_t i = 0; i < std::min(files.size(), most_streams); ++i)
      take_file(files[i]);
  }
}

void summary_look::take_file(const std::string& stored) {
  if (stored.empty())
    return;
  const std::string path = native_of(stored);
  if (known_.files.contains(path) || known_.missing.contains(path) ||
      std::ranges::find(unseen_, path) != unseen_.end())
    return;
  if (auto facts = store_.find(path, false))
    known_.files[path] = std::move(facts);
  else if (!stamp_of(path))
    known_.missing.insert(path);
  else
    unseen_.push_back(path);
}

void summary_look::take_subtitle(const disc_subtitle& subtitle) {
  const std::string path = native_of(subtitle.file);
  std::optional<std::size_t> count;
  if (!stamp_of(path))
    known_.missing.insert(path);
  else if (counts_.find(subtitle, count))
    known_.texts[path] = count;
  else
    uncounted_.push_back(subtitle);
}

bool summary_look::step() {
  if (!unseen_.empty())
    look_at_next_file();
  else if (!uncounted_.empty())
    count_next_subtitle();
  return !is_done();
}

void summary_look::look_at_next_file() {
  const std::string path = std::move(unseen_.front());
  unseen_.pop_front();
  const auto stamp = stamp_of(path);
  file_facts facts = read_file_head(path);
  if (stamp && facts.kind != file_kind::unreadable)
    store_.keep(path, *stamp, facts);
  known_.files[path] = std::make_shared<const file_facts>(std::move(facts));
}

void summary_look::count_next_subtitle() {
  const disc_subtitle subtitle = std::move(uncounted_.front());
  uncounted_.pop_front();
  known_.texts[native_of(subtitle.file)] = counts_.count(subtitle);
}

}  // namespace corvane
