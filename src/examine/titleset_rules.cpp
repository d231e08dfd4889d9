#include "examine/titleset_rules.h"

#include "examine/measures.h"
#include "examine/ready_rules.h"
#include "examine/stream_rules.h"
#include "platform/files/paths.h"

#include <algorithm>
#include <array>
#include <optional>
#include <set>
#include <utility>

namespace corvane {
namespace {

using severity = finding_severity;
using part = finding_item::part_kind;
using whole = finding_item::whole_kind;

constexpr std::string_view dvdauthor_measured = "dvdauthor 0.7.2, measured";
constexpr std::string_view files_needed = "what the tools read";

constexpr std::array file_table = {
    rule{"file-missing", severity::error, "Each file that the project names is there",
         "a file that can be read", "nothing: the run fails at this file",
         "put the file back where it was, or choose it anew", files_needed},
    rule{"file-empty", severity::error, "No file is empty", "a file that holds a stream",
         "nothing: the run fails at this file", "copy the file again from its source",
         files_needed},
};

constexpr std::array titleset_rules_table = {
    rule{"titleset-size", severity::error, "All titles of a titleset have pictures of one size",
         "of the size of the first title",
         "a distorted picture, or none: the disc's tables state "
         "the size of the first title for all",
         "encode the titles alike, or author a disc of each", dvdauthor_measured},
    rule{"titleset-aspect", severity::error,
         "All titles of a titleset have pictures of one proportion",
         "of the proportions of the first title",
         "a squeezed picture: the disc's tables state the proportions of the first title for all",
         "encode the titles alike, or edit the XML so that each proportion has a titleset of its "
         "own",
         dvdauthor_measured},
    rule{"titleset-coding", severity::error, "All titles of a titleset are coded alike",
         "MPEG-1 or MPEG-2, as the first title is",
         "no picture in players that believe the disc's tables", "encode the titles alike",
         dvdauthor_measured},
    rule{"titleset-audio-kind", severity::error,
         "The n-th sound streams of all titles of a titleset are of one kind",
         "of the kind of the first title's",
         "silence until the viewer changes the sound stream: the disc's tables state the first "
         "title's kind for all",
         "encode the sound alike, or put the streams in the same order", dvdauthor_measured},
    rule{"titleset-audio-number", severity::error,
         "The sound streams of all ready titles of a titleset have the same numbers",
         "of the numbers of the first title's",
         "silence until the viewer changes the sound stream: the disc has a stream of its own for "
         "each number",
         "multiplex the titles' streams again, or add them one by one", dvdauthor_measured},
    rule{"titleset-audio-samples", severity::warning,
         "LPCM sound of the titles of a titleset has one rate, size of samples and number of "
         "channels",
         "as the first title's",
         "noise, or sound too fast or too slow, in players that believe the disc's tables more "
         "than the stream",
         "encode the sound alike", dvdauthor_measured},
    rule{"titleset-audio-channels", severity::note,
         "AC-3 and DTS sound of the titles of a titleset has one number of channels",
         "as many as the first title's",
         "nothing in most players, which take the number from the stream; others show that of the "
         "first title, for the disc's tables state it for all",
         "nothing need be done; to have them alike, encode the sound alike", dvdauthor_measured},
    rule{"titleset-audio-count", severity::warning,
         "All titles of a titleset have the same number of sound streams", "as many as the others",
         "silence in this title for a viewer who chose the missing stream",
         "add the missing stream (the same one again will do)", dvdauthor_measured},
    rule{"menus-video", severity::error, "All menus of a titleset have pictures of one kind",
         "of the size, proportions and coding of the first menu",
         "a distorted or squeezed menu, with buttons that are not where they are shown",
         "make the menus alike", dvdauthor_measured},
    rule{"menus-audio-kind", severity::error, "The sound of all menus of a titleset is of one kind",
         "of the kind of the first menu's", "a silent menu", "encode the sound alike",
         dvdauthor_measured},
};

// One sound stream of a title or menu, as far as it is known.
struct known_sound {
  int number = 0;    // as the program stream has it; 0-based
  std::string kind;  // "AC-3"; empty where nothing is known
  std::string file;
  std::optional<lpcm_format> lpcm;
  double rate = 0;   // bits a second
  int channels = 0;  // of AC-3 and DTS; 0: not known
};

// The streams of one title or menu, as far as they are known. A title of several ready files has
// one of these for each.
struct streams_of_item {
  int titleset = 1;
  finding_item item;
  std::string video_file;
  const video_facts* video = nullptr;
  std::vector<known_sound> sounds;

  double rate_of_sounds() const {
    double rate = 0;
    for (const known_sound& one : sounds)
      rate += one.rate;
    return rate;
  }
};

finding about(std::span<const rule> rules, std::string_view id, finding_item item,
              const std::string& file, std::string found, std::string wanted = {}) {
  finding f = finding_of(rules, id, item, std::move(found), std::move(wanted));
  f.file = file;
  return f;
}

class look {
 public:
  look(const disc_description& d, const facts_by_path& facts) : d_(d), facts_(facts) {}

  std::vector<finding> all() {
    for (int title = 1; title <= d_.title_count(); ++title)
      look_at_title(title);
    for (int menu = 1; menu <= d_.menu_count(); ++menu)
      look_at_menu({whole::menu, menu}, d_.menu(menu));
    int number = 0;
    for (const disc_menu& menu : d_.disc_menus)
      look_at_menu({whole::disc_menu, ++number}, menu);
    compare(titles_, false);
    compare(menus_, true);
    return std::move(findings_);
  }

 private:
  void look_at_title(int number) {
    const disc_title& t = d_.title(number);
    for (const title_file* const file : t.files())
      look_at_file({whole::title, number}, t.titleset, *file);
  }

  void look_at_file(finding_item item, int titleset, const title_file& file) {
    if (file.streams.empty())
      return;
    if (file.is_multiplexed_here)
      titles_.push_back(look_at_streams(item, titleset, file.streams, file.delay.value / 1000));
    else if (auto inside = look_at_ready(item, titleset, file.video()))
      titles_.push_back(std::move(*inside));
  }

  void look_at_menu(finding_item item, const disc_menu& m) {
    if (m.files.empty())
      return;
    if (m.is_ready) {
      if (auto inside = look_at_ready(item, m.titleset, m.video()))
        menus_.push_back(std::move(*inside));
      return;
    }
    std::vector<std::string> files = {m.video()};
    if (!m.audio().empty())
      files.push_back(m.audio());
    menus_.push_back(look_at_streams(item, m.titleset, files, 0));
  }

  // Null, with a finding, if there is nothing to look at; null without one if it was not read.
  const file_facts* known(finding_item item, const std::string& file) {
    const auto found = facts_.find(file);
    if (found == facts_.end())
      return nullptr;
    const file_facts& f = *found->second;
    if (f.kind == file_kind::unreadable)
      add(file_table, "file-missing", item, file, "the file cannot be read: " + f.why_unreadable);
    else if (f.kind == file_kind::empty)
      add(file_table, "file-empty", item, file, "the file is empty");
    else
      return &f;
    return nullptr;
  }

  /// `delay`: seconds by which the picture comes later.
  streams_of_item look_at_streams(finding_item item, int titleset,
                                  const std::vector<std::string>& stored, double delay) {
    streams_of_item s{titleset, item, native_from_stored(stored.front(), native_style()), {}, {}};
    const finding_item video_item = part_of(item, part::video, 0);
    const file_facts* const video = known(video_item, s.video_file);
    if (video != nullptr)
      s.video = look_at_video_file(*video, video_item, s.video_file);
    const bool known_length = video != nullptr && video->whole && s.video != nullptr;
    const auto seconds = known_length ? std::optional(s.video->seconds) : std::nullopt;
    for (std::size_t n = 1; n < stored.size(); ++n)
      look_at_sound_file(s, static_cast<int>(n), native_from_stored(stored[n], native_style()),
                         seconds);
    if (s.video != nullptr)
      append(multiplexing_findings(*s.video,
                                   {static_cast<int>(s.sounds.size()), s.rate_of_sounds(), delay},
                                   item, s.video_file));
    return s;
  }

  const video_facts* look_at_video_file(const file_facts& f, finding_item item,
                                        const std::string& file) {
    if (f.kind == file_kind::video && f.video) {
      append(video_findings(*f.video, d_.standard, item, file, false));
      return &*f.video;
    }
    if (f.kind == file_kind::program_stream)
      add(video_rules(), "video-packets", item, file, "the file is a program stream");
    else
      add(video_rules(), "video-none", item, file, "there is no MPEG video in it");
    return nullptr;
  }

  void look_at_sound_file(streams_of_item& s, int number, const std::string& file,
                          std::optional<double> picture_seconds) {
    // A menu has one sound at most, which needs no number.
    const int shown = s.item.whole == whole::title ? number : 0;
    const finding_item item = part_of(s.item, part::audio, shown);
    s.sounds.push_back({number - 1, {}, file, {}, 0, 0});
    const file_facts* const f = known(item, file);
    if (f == nullptr)
      return;
    if (f->audio) {
      const auto compared = f->whole ? picture_seconds : std::nullopt;
      append(audio_findings(*f->audio, item, file, false, compared));
      s.sounds.back().kind = kind_of(*f->audio);
      s.sounds.back().rate = f->audio->highest_bit_rate;
      s.sounds.back().channels = channels_of(*f->audio);
    } else {
      add(audio_rules(), "audio-kind", item, file, "there is no sound in it that is known");
    }
  }

  // The streams inside a ready file.
  std::optional<streams_of_item> look_at_ready(finding_item item, int titleset,
                                               const std::string& stored) {
    const std::string file = native_from_stored(stored, native_style());
    const file_facts* const f = known(item, file);
    if (f == nullptr)
      return std::nullopt;
    if (f->kind != file_kind::program_stream || !f->program) {
      findings_.push_back(not_ready_finding(f->kind == file_kind::video, item, file));
      return std::nullopt;
    }
    return look_inside(*f, item, titleset, file);
  }

  std::optional<streams_of_item> look_inside(const file_facts& f, finding_item item, int titleset,
                                             const std::string& file);
  known_sound look_at_sound_inside(const inner_stream& sound, finding_item item,
                                   const std::string& file, std::optional<double> picture_seconds);

  // Where nothing is known of a stream it is not compared.
  static std::string kind_of(const audio_facts& a) {
    return a.kind == audio_kind::unknown ? std::string() : std::string(name_of(a.kind));
  }

  void compare(const std::vector<streams_of_item>& items, bool menus) {
    std::map<int, const streams_of_item*> first;
    for (const streams_of_item& one : items) {
      const streams_of_item& before = *first.emplace(one.titleset, &one).first->second;
      if (&before == &one)
        continue;
      compare_video(before, one, menus);
      compare_sounds(before, one, menus);
    }
  }

  // "title 1", beside `one`.
  static std::string name(const streams_of_item& s, const streams_of_item& one) {
    if (s.item == one.item)
      return "its first file";
    finding f;
    f.item = s.item;
    return place_text(f);
  }

  void compare_video(const streams_of_item& first, const streams_of_item& one, bool menus) {
    if (first.video == nullptr || one.video == nullptr || !first.video->shape || !one.video->shape)
      return;
    const video_shape& a = *first.video->shape;
    const video_shape& b = *one.video->shape;
    const auto differs = [&](std::string_view id, const std::string& mine,
                             const std::string& theirs) {
      add(titleset_rules_table, menus ? "menus-video" : id, part_of(one.item, part::video, 0),
          one.video_file,
          "the picture is " + mine + ", that of " + name(first, one) + " " + theirs);
    };
    if (a.width != b.width || a.height != b.height)
      differs("titleset-size", size_text(b), size_text(a));
    if (a.mpeg2 != b.mpeg2)
      differs("titleset-coding", b.mpeg2 ? "MPEG-2" : "MPEG-1", a.mpeg2 ? "MPEG-2" : "MPEG-1");
    // Square pixels and MPEG-1 are taken for 4:3.
    const auto is_wide = [](const video_shape& s) { return s.mpeg2 && s.aspect_code == 3; };
    if (is_wide(a) != is_wide(b))
      differs("titleset-aspect", is_wide(b) ? "16:9" : "4:3", is_wide(a) ? "16:9" : "4:3");
  }

  // dvdauthor gives each kind of each number a stream of the disc. What a player was told to play
  // of one title, it plays of the next one: by number.
  void compare_sounds(const streams_of_item& first, const streams_of_item& one, bool menus) {
    for (std::size_t n = 0; n < one.sounds.size(); ++n) {
      const known_sound& mine = one.sounds[n];
      const int number = menus ? 0 : static_cast<int>(n) + 1;
      const finding_item item = part_of(one.item, part::audio, number);
      if (const known_sound* const alike = find(first, mine.number, mine.kind))
        compare_alike(*alike, mine, item, name(first, one), menus);
      else if (const known_sound* const other = missing(first, one, mine.number);
               other != nullptr && !mine.kind.empty())
        add(titleset_rules_table, menus ? "menus-audio-kind" : "titleset-audio-kind", item,
            mine.file,
            "the sound is " + mine.kind + ", that of " + name(first, one) + " " + other->kind);
    }
    if (!menus)
      compare_numbers(first, one);
  }

  static const known_sound* find(const streams_of_item& s, int number, const std::string& kind) {
    const auto found = std::ranges::find_if(s.sounds, [&](const known_sound& sound) {
      return sound.number == number && (sound.kind == kind || sound.kind.empty());
    });
    return found == s.sounds.end() ? nullptr : &*found;
  }

  // The first title's stream of the number that the other one has in no such kind.
  static const known_sound* missing(const streams_of_item& first, const streams_of_item& one,
                                    int number) {
    const auto found = std::ranges::find_if(first.sounds, [&](const known_sound& sound) {
      return sound.number == number && find(one, number, sound.kind) == nullptr;
    });
    return found == first.sounds.end() ? nullptr : &*found;
  }

  void compare_samples(const known_sound& first, const known_sound& one, finding_item item,
                       const std::string& name_of_first) {
    if (first.lpcm && one.lpcm && *first.lpcm != *one.lpcm)
      add(titleset_rules_table, "titleset-audio-samples", item, one.file,
          "the sound is " + lpcm_text(*one.lpcm) + ", that of " + name_of_first + " " +
              lpcm_text(*first.lpcm));
  }

  void compare_alike(const known_sound& first, const known_sound& one, finding_item item,
                     const std::string& name_of_first, bool menus) {
    compare_samples(first, one, item, name_of_first);
    // No table states the channels of a menu's sound for a viewer.
    if (!menus)
      compare_channels(first, one, item, name_of_first);
  }

  void compare_channels(const known_sound& first, const known_sound& one, finding_item item,
                        const std::string& name_of_first) {
    const auto text = [](int channels) {
      return count_text(static_cast<std::uint64_t>(channels), "channel", "channels");
    };
    if (first.channels > 0 && one.channels > 0 && first.channels != one.channels)
      add(titleset_rules_table, "titleset-audio-channels", item, one.file,
          "the sound has " + text(one.channels) + ", that of " + name_of_first + " " +
              text(first.channels));
  }

  // Of MPEG audio dvdauthor states two channels, whatever it has.
  static int channels_of(const audio_facts& a) {
    return a.first && a.kind != audio_kind::mpeg_layer_2 ? a.first->channels : 0;
  }

  void compare_numbers(const streams_of_item& first, const streams_of_item& one) {
    const auto text = [](const streams_of_item& s) {
      std::set<int> numbers;
      for (const known_sound& sound : s.sounds)
        numbers.insert(sound.number + 1);
      std::string all;
      for (const int number : numbers)
        all += (all.empty() ? "" : ", ") + std::to_string(number);
      return all;
    };
    if (first.sounds.size() != one.sounds.size())
      add(titleset_rules_table, "titleset-audio-count", one.item, one.video_file,
          (first.item == one.item ? std::string("the file") : name(one, first)) + " has " +
              count_text(one.sounds.size(), "sound stream", "sound streams") + ", " +
              name(first, one) + " " + std::to_string(first.sounds.size()));
    else if (const std::string mine = text(one), theirs = text(first); mine != theirs)
      add(titleset_rules_table, "titleset-audio-number", one.item, one.video_file,
          "its sound has the number " + mine + " inside, that of " + name(first, one) + " " +
              theirs);
  }

  void add(std::span<const rule> rules, std::string_view id, finding_item item,
           const std::string& file, std::string found) {
    findings_.push_back(about(rules, id, item, file, std::move(found)));
  }
  void append(std::vector<finding> more) {
    std::move(more.begin(), more.end(), std::back_inserter(findings_));
  }

  const disc_description& d_;
  const facts_by_path& facts_;
  std::vector<finding> findings_;
  std::vector<streams_of_item> titles_, menus_;
};

std::optional<streams_of_item> look::look_inside(const file_facts& f, finding_item item,
                                                 int titleset, const std::string& file) {
  const program_stream_facts& p = *f.program;
  append(ready_findings(p, f.size, item, file));
  const inner_stream* const video = p.video();
  if (video == nullptr)
    return std::nullopt;
  streams_of_item s{titleset, item, file, nullptr, {}};
  std::optional<double> seconds;
  if (video->video) {
    s.video = &*video->video;
    append(video_findings(*s.video, d_.standard, part_of(item, part::video, 0), file, true));
    if (f.whole && s.video->seconds > 0)
      seconds = s.video->seconds;
  }
  for (const inner_stream* const sound : sounds_inside(p)) {
    const int number = static_cast<int>(s.sounds.size()) + 1;
    s.sounds.push_back(
        look_at_sound_inside(*sound, part_of(item, part::audio, number), file, seconds));
  }
  if (s.video != nullptr && f.whole)
    append(total_rate_findings(*s.video, s.rate_of_sounds(), item, file));
  return s;
}

known_sound look::look_at_sound_inside(const inner_stream& sound, finding_item item,
                                       const std::string& file,
                                       std::optional<double> picture_seconds) {
  known_sound known{sound.number, {}, file, sound.lpcm, 0, 0};
  if (sound.audio) {
    append(audio_findings(*sound.audio, item, file, true, picture_seconds));
    known.kind = kind_of(*sound.audio);
    known.rate = sound.audio->highest_bit_rate;
    known.channels = channels_of(*sound.audio);
  } else if (sound.kind == inner_kind::lpcm || sound.kind == inner_kind::dts) {
    append(packet_sound_findings(sound, item, file, picture_seconds));
    known.kind = sound.kind == inner_kind::lpcm ? "LPCM" : name_of(audio_kind::dts);
    known.rate = sound.lpcm ? bits_a_second(*sound.lpcm) : 0;
  }
  return known;
}

}  // namespace

std::span<const rule> file_rules() {
  return file_table;
}

std::span<const rule> titleset_rules() {
  return titleset_rules_table;
}

std::vector<finding> stream_findings(const disc_description& d, const facts_by_path& facts) {
  return look(d, facts).all();
}

}  // namespace corvane
