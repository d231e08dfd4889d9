#include "examine/titleset_rules.h"

#include "examine/measures.h"
#include "examine/stream_rules.h"
#include "platform/files/paths.h"

#include <algorithm>
#include <array>
#include <optional>
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
    rule{"ready-not-program-stream", severity::error,
         "A ready title, and a menu without a file for its sound, can be read by dvdauthor",
         "a program stream with its streams inside (.vob, .mpg)",
         "nothing: the run fails at this file",
         "add the file with a sound stream to have it multiplexed, or multiplex it first",
         dvdauthor_measured},
    rule{"ready-without-nav-packs", severity::error,
         "A ready title has the packs that a disc is navigated by",
         "NAV packs in front of each unit", "nothing: dvdauthor finds no VOBU in it and fails",
         "multiplex it for DVD (mplex -f 8, ffmpeg -f dvd), or add its streams one by one",
         dvdauthor_measured},
    rule{"ready-without-video", severity::error, "A ready title has a video stream inside",
         "a video stream", "nothing: the run fails at this file", "choose the right file",
         dvdauthor_measured},
    rule{"ready-clock", severity::warning, "The times in a ready title go on without a break",
         "times without a break", "a stumble there, or a player that stops",
         "multiplex the title's streams again", dvdauthor_measured},
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

// The streams of one title or menu, as far as they are known.
struct streams_of_item {
  int titleset = 1;
  finding_item item;
  std::string video_file;
  const video_facts* video = nullptr;
  std::vector<const audio_facts*> sounds;  // null where nothing is known
  std::vector<std::string> sound_files;
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
      look_at_menu(menu);
    compare(titles_, false);
    compare(menus_, true);
    return std::move(findings_);
  }

 private:
  void look_at_title(int number) {
    const disc_title& t = d_.title(number);
    const finding_item item{whole::title, number};
    if (t.streams.empty())
      return;
    if (t.is_multiplexed_here)
      titles_.push_back(look_at_streams(item, t.titleset, t.streams));
    else if (auto inside = look_at_ready(item, t.titleset, t.video()))
      titles_.push_back(std::move(*inside));
  }

  void look_at_menu(int number) {
    const disc_menu& m = d_.menu(number);
    const finding_item item{whole::menu, number};
    if (m.files.empty())
      return;
    std::vector<std::string> files = {m.video()};
    if (!m.audio().empty())
      files.push_back(m.audio());
    menus_.push_back(look_at_streams(item, m.titleset, files));
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

  streams_of_item look_at_streams(finding_item item, int titleset,
                                  const std::vector<std::string>& stored) {
    streams_of_item s{titleset, item, native_from_stored(stored.front(), native_style()),
                      {},       {},   {}};
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
      append(total_rate_findings(*s.video, known_sounds(s), item, s.video_file));
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
    const int shown = s.item.whole == whole::menu ? 0 : number;
    const finding_item item = part_of(s.item, part::audio, shown);
    s.sounds.push_back(nullptr);
    s.sound_files.push_back(file);
    const file_facts* const f = known(item, file);
    if (f == nullptr)
      return;
    if (f->audio) {
      const auto compared = f->whole ? picture_seconds : std::nullopt;
      append(audio_findings(*f->audio, item, file, false, compared));
      s.sounds.back() = &*f->audio;
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
      add(file_table, "ready-not-program-stream", item, file,
          f->kind == file_kind::video ? "the file is video alone, without packets around it"
                                      : "the file is no program stream");
      return std::nullopt;
    }
    return look_inside(*f, item, titleset, file);
  }

  std::optional<streams_of_item> look_inside(const file_facts& f, finding_item item, int titleset,
                                             const std::string& file);

  static std::vector<const audio_facts*> known_sounds(const streams_of_item& s) {
    std::vector<const audio_facts*> sounds;
    for (const audio_facts* one : s.sounds)
      if (one != nullptr)
        sounds.push_back(one);
    return sounds;
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

  static std::string name(const streams_of_item& s) {
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
          one.video_file, "the picture is " + mine + ", that of " + name(first) + " " + theirs);
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

  void compare_sounds(const streams_of_item& first, const streams_of_item& one, bool menus) {
    for (std::size_t n = 0; n < std::min(first.sounds.size(), one.sounds.size()); ++n) {
      const audio_facts* const a = first.sounds[n];
      const audio_facts* const b = one.sounds[n];
      if (a == nullptr || b == nullptr || a->kind == b->kind)
        continue;
      const int number = menus ? 0 : static_cast<int>(n) + 1;
      add(titleset_rules_table, menus ? "menus-audio-kind" : "titleset-audio-kind",
          part_of(one.item, part::audio, number), one.sound_files[n],
          "the sound is " + std::string(name_of(b->kind)) + ", that of " + name(first) + " " +
              std::string(name_of(a->kind)));
    }
    if (!menus && first.sounds.size() != one.sounds.size())
      add(titleset_rules_table, "titleset-audio-count", one.item, one.video_file,
          name(one) + " has " + count_text(one.sounds.size(), "sound stream", "sound streams") +
              ", " + name(first) + " " + std::to_string(first.sounds.size()));
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

// dvdauthor numbers the sound streams of a ready file by their stream numbers, whatever their kind.
std::map<int, const inner_stream*> sounds_inside(const program_stream_facts& p) {
  std::map<int, const inner_stream*> sounds;
  for (const inner_stream& one : p.streams)
    if (one.kind == inner_kind::ac3 || one.kind == inner_kind::mpeg_audio)
      sounds.emplace(one.number, &one);
  return sounds;
}

std::optional<streams_of_item> look::look_inside(const file_facts& f, finding_item item,
                                                 int titleset, const std::string& file) {
  const program_stream_facts& p = *f.program;
  if (p.nav_packs == 0)
    add(file_table, "ready-without-nav-packs", item, file, "there is no NAV pack in it");
  if (p.clock_breaks.count > 0) {
    const time_break& first = p.clock_breaks.kept.front();
    finding broken =
        about(file_table, "ready-clock", item, file,
              "the clock of the stream breaks off " +
                  count_text(p.clock_breaks.count, "time", "times") + ", the first time here");
    broken.byte = first.position;
    broken.seconds = static_cast<double>(first.elapsed) / static_cast<double>(clocks_a_second);
    findings_.push_back(std::move(broken));
  }
  const inner_stream* const video = p.video();
  if (video == nullptr) {
    add(file_table, "ready-without-video", item, file, "there is no video stream in it");
    return std::nullopt;
  }
  streams_of_item s{titleset, item, file, nullptr, {}, {}};
  if (video->video) {
    s.video = &*video->video;
    append(video_findings(*s.video, d_.standard, part_of(item, part::video, 0), file, true));
  }
  for (const auto& [number, sound] : sounds_inside(p)) {
    s.sounds.push_back(sound->audio ? &*sound->audio : nullptr);
    s.sound_files.push_back(file);
    if (sound->audio)
      append(audio_findings(*sound->audio, part_of(item, part::audio, number + 1), file, true,
                            std::nullopt));
  }
  return s;
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
