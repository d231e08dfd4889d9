#include "examine/foreseen_disc.h"

#include "examine/button_looks.h"
#include "examine/chapter_rules.h"
#include "examine/cue_times.h"
#include "examine/foreseen_ways.h"
#include "examine/inner_stream_scan.h"
#include "examine/measures.h"
#include "examine/subtitle_text_rules.h"
#include "examine/time_course.h"
#include "formats/numbers.h"
#include "formats/text.h"
#include "platform/files/paths.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <cstddef>
#include <cstdint>
#include <map>
#include <optional>
#include <span>
#include <string_view>
#include <utility>

namespace corvane {
namespace {

using trait_kind = disc_trait_kind;
using whole = finding_item::whole_kind;
using part = finding_item::part_kind;
using stream_kind = disc_language::stream_kind;

std::optional<std::string> disc_format(audio_kind what) {
  if (what == audio_kind::ac3)
    return "AC-3";
  if (what == audio_kind::mpeg_layer_2)
    return "MPEG audio";
  return std::nullopt;
}

class foreseeing {
 public:
  foreseeing(const disc_description& d, const facts_by_path& facts, bool hand_edited)
      : d_(d), facts_(facts), hand_edited_(hand_edited), ways_(d, hand_edited) {
    for (const disc_title& title : d.titles)
      title_streams_.push_back(streams_of_files(title));
  }

  disc_traits all() {
    const finding_item disc;
    said_.say_count(disc, trait_kind::titles, d_.titles.size());
    const auto menus = menus_shown(d_);
    for (const auto& [what, of] : {std::pair{trait_kind::menus, whole::menu},
                                   std::pair{trait_kind::disc_menus, whole::disc_menu}})
      said_.say_count(disc, what,
                      static_cast<std::size_t>(std::ranges::count(
                          menus, of, [](const auto& menu) { return menu.first.whole; })));
    say_way(disc, trait_kind::first_play, ways_.after_start());
    for (int title = 1; title <= d_.title_count(); ++title)
      say_title(title);
    for (const auto& [item, menu] : menus)
      say_menu(item, *menu);
    return std::move(said_);
  }

 private:
  /// The streams that are known of a title or menu. Of a ready file, those inside.
  struct streams {
    const video_facts* video = nullptr;
    bool whole_video = false;
    bool known_sounds = false;
    std::vector<const audio_facts*> sounds;  // null where nothing is known
    std::vector<bool> whole_sounds;
    const program_stream_facts* inside = nullptr;  // of a ready file
    std::vector<const inner_stream*> inner_sounds;
  };

  const file_facts* facts_of(const std::string& stored) const {
    const auto file = facts_.find(native_from_stored(stored, native_style()));
    return file == facts_.end() ? nullptr : file->second.get();
  }

  streams streams_of(const std::vector<std::string>& stored, bool multiplexed) const {
    streams s;
    const file_facts* const first = stored.empty() ? nullptr : facts_of(stored.front());
    if (first != nullptr && first->video) {
      s.video = &*first->video;
      s.whole_video = first->whole;
    }
    if (first != nullptr && first->program) {
      s.inside = &*first->program;
      look_inside(s, *first);
      return s;
    }
    s.known_sounds = multiplexed;
    for (std::size_t i = 1; i < stored.size(); ++i) {
      if (stored[i].empty())
        continue;
      const file_facts* const sound = facts_of(stored[i]);
      const bool known = sound != nullptr && sound->audio;
      s.sounds.push_back(known ? &*sound->audio : nullptr);
      s.whole_sounds.push_back(known && sound->whole);
    }
    return s;
  }

  std::vector<streams> streams_of_files(const disc_title& title) const {
    std::vector<streams> all;
    for (const title_file* const file : title.files())
      all.push_back(streams_of(file->streams, file->is_multiplexed_here));
    return all;
  }

  // dvdauthor leaves gaps where they are, and makes others where it moves a clock that begins
  // again: such a file becomes longer than its pictures.
  static bool times_go_on(const program_stream_facts& p) {
    constexpr double gap = 0.1;
    const inner_stream* const video = p.video();
    return p.clock_breaks.count == 0 && video != nullptr && video->breaks.count == 0 &&
           (!video->video || p.seconds < video->video->seconds + gap);
  }

  /// Of DTS and LPCM there are no facts but those of packets.
  static bool is_known_by_packets(const inner_stream& sound) {
    return sound.kind == inner_kind::dts || sound.kind == inner_kind::lpcm;
  }

  // dvdauthor numbers the sound streams of a ready file by their stream numbers.
  static void look_inside(streams& s, const file_facts& file) {
    const inner_stream* const video = file.program->video();
    if (video != nullptr && video->video)
      s.video = &*video->video;
    s.whole_video = file.whole && times_go_on(*file.program);
    std::map<int, const inner_stream*> by_number;
    for (const inner_stream& one : file.program->streams)
      if (one.kind == inner_kind::ac3 || one.kind == inner_kind::mpeg_audio)
        by_number.emplace(one.number, &one);
    // In which order DTS and LPCM stand among others is not known.
    const int dts = file.program->count_of(inner_kind::dts);
    const int lpcm = file.program->count_of(inner_kind::lpcm);
    const int others =
        file.program->count_of(inner_kind::ac3) + file.program->count_of(inner_kind::mpeg_audio);
    for (const inner_stream& one : file.program->streams)
      if (others == 0 && (dts == 0 || lpcm == 0) &&
          (one.kind == inner_kind::dts || one.kind == inner_kind::lpcm))
        by_number.emplace(one.number, &one);
    s.known_sounds = file.whole && static_cast<int>(by_number.size()) == others + dts + lpcm;
    int next = 0;
    for (const auto& [number, one] : by_number) {
      // A gap in the numbers: what of them becomes which stream of the disc is not foreseen.
      s.known_sounds = s.known_sounds && number == next++;
      s.sounds.push_back(one->audio ? &*one->audio : nullptr);
      s.whole_sounds.push_back(file.whole && (one->audio || is_known_by_packets(*one)));
      s.inner_sounds.push_back(one);
    }
  }

  void say_title(int number) {
    const disc_title& title = d_.title(number);
    const std::vector<streams>& all = title_streams_[static_cast<std::size_t>(number) - 1];
    const finding_item item{whole::title, number, part::whole, 0};
    say_video(item, all.front());
    say_breaks(item, title);
    if (all.size() > 1)
      say_joined(item, title, all);
    else
      say_only_file(item, title, all.front());
    say_way(item, trait_kind::then, ways_.after_title(number));
    const auto way = [&](const disc_command& command) {
      return ways_.by_title_command(number, command);
    };
    if (is_given(title.pre))
      say_way(item, trait_kind::before, way(*title.pre));
    for (std::size_t i = 0; i < title.cell_commands.size(); ++i)
      say_way(part_of(item, part::command, static_cast<int>(i) + 1), trait_kind::then,
              way(title.cell_commands[i]));
    // A title without a pause has none, which is no trait of it.
    if (const auto stays = stated_pause(title.pause); stays && *stays != "0 s")
      said_.say(item, trait_kind::stays, *stays);
    say_stated_aspect(item, title.aspect);
  }

  /// As the disc tells it. Of other numbers dvdauthor keeps the lowest byte.
  static std::optional<std::string> stated_pause(const std::string& pause) {
    constexpr int longest = 254;
    if (pause == "inf")
      return "for ever";
    const text_number seconds = number_of(pause);
    const auto whole_seconds = whole_number(seconds, longest);
    return whole_seconds ? std::optional(std::to_string(*whole_seconds) + " s") : std::nullopt;
  }

  void say_stated_aspect(const finding_item& item, const std::string& aspect) {
    if (hand_edited_ && (aspect == "4:3" || aspect == "16:9"))
      said_.say(part_of(item, part::video), trait_kind::aspect, aspect);
  }

  /// Seconds by which the picture comes later than the sound.
  static double delay_of(const title_file& file) {
    return file.is_multiplexed_here ? file.delay.value / 1000 : 0;
  }

  void say_only_file(const finding_item& item, const disc_title& title, const streams& s) {
    // Cells may leave parts out.
    if (!title.has_cells) {
      say_length(item, s, delay_of(title));
      say_end_of_picture(item, s);
      say_chapters(item, title, {&s, 1});
      if (title.is_multiplexed_here)
        say_bytes(item, title.streams);
      else
        say_bytes_of_ready(item, title.video());
    }
    if (s.known_sounds)
      say_sounds(item, title, s);
    say_languages(item, title.titleset, s.sounds.size(), title.subtitles.size());
    // A ready file may carry subtitles of its own.
    if (!s.inside && title.is_multiplexed_here && !title.has_cells)
      said_.say_count(item, trait_kind::subtitles, title.subtitles.size());
  }

  // Titles of several files -----------------------------------------------------------------------

  void say_joined(const finding_item& item, const disc_title& title,
                  const std::vector<streams>& all) {
    if (!is_cut(title)) {
      if (const auto seconds = joined_seconds(title, all))
        said_.say_seconds(item, trait_kind::length, *seconds);
      say_chapters(item, title, all);
    }
    const std::vector<const title_file*> files = title.files();
    // Of ready files it is not foreseen what becomes of their streams behind each other.
    if (!std::all_of(files.begin(), files.end(),
                     [](const title_file* file) { return file->is_multiplexed_here; }))
      return;
    std::size_t sounds = 0, subtitles = 0;
    for (const streams& s : all)
      sounds = std::max(sounds, s.sounds.size());
    for (const title_file* const file : files)
      subtitles = std::max(subtitles, file->subtitles.size());
    if (!is_cut(title))
      said_.say_count(item, trait_kind::subtitles, subtitles);
    say_languages(item, title.titleset, sounds, subtitles);
    if (have_alike_sounds(all))
      said_.say_count(item, trait_kind::audio_streams, sounds);
    for (std::size_t i = 0; i < all.front().sounds.size(); ++i)
      say_joined_sound(part_of(item, part::audio, static_cast<int>(i) + 1), title, all, i);
  }

  /// Each file loses what a single one may.
  std::optional<double> joined_seconds(const disc_title& title,
                                       const std::vector<streams>& all) const {
    constexpr std::size_t most_files = 5;
    if (all.size() > most_files)
      return std::nullopt;
    double seconds = 0;
    for (std::size_t i = 0; i < all.size(); ++i) {
      const double delay = delay_of(*title.files()[i]);
      const auto more = i + 1 < all.size() ? seconds_before_next_file(all[i], delay)
                                           : seconds_of_file(all[i], delay);
      if (!more || (all[i].inside != nullptr && !goes_on(*all[i].inside)))
        return std::nullopt;
      seconds += *more;
    }
    return seconds;
  }

  /// Nullopt as well for sound of a ready file that goes on behind the picture: it has no place
  /// there.
  static std::optional<double> seconds_before_next_file(const streams& s, double delay) {
    constexpr double last_frame = 0.05;
    const auto seconds = seconds_of_file(s, delay);
    if (s.inside != nullptr && seconds && *seconds > s.video->seconds + last_frame)
      return std::nullopt;
    return seconds;
  }

  /// Whether the n-th sounds of all files are of one kind, so that they are one stream of the disc.
  static bool have_alike_sounds(const std::vector<streams>& all) {
    for (const streams& s : all)
      for (std::size_t i = 0; i < s.sounds.size(); ++i) {
        const audio_facts* const first =
            i < all.front().sounds.size() ? all.front().sounds[i] : nullptr;
        if (first == nullptr || s.sounds[i] == nullptr || s.sounds[i]->kind != first->kind)
          return false;
      }
    return true;
  }

  /// What comes behind the last time stamp of a file is only known of the last one.
  void say_joined_sound(const finding_item& sound, const disc_title& title,
                        const std::vector<streams>& all, std::size_t i) {
    constexpr double behind_last_stamp = 0.5, little_delay = 0.2;
    if (all.front().sounds[i] == nullptr)
      return;
    if (const auto format = disc_format(all.front().sounds[i]->kind))
      said_.say(sound, trait_kind::format, *format);
    double until = -behind_last_stamp * static_cast<double>(all.size() - 1);
    for (std::size_t n = 0; n < all.size(); ++n) {
      const streams& s = all[n];
      const double delay = delay_of(*title.files()[n]);
      if (i >= s.sounds.size() || !s.whole_sounds[i] || s.video == nullptr || !s.whole_video ||
          std::abs(delay) > little_delay || s.sounds[i]->kind != all.front().sounds[i]->kind ||
          is_cut(title))
        return;
      until += std::min(seconds_of(s.sounds[i]->length) - delay, s.video->seconds);
    }
    if (until > 0)
      said_.say_seconds(sound, trait_kind::sounds_until, until);
  }

  // Titles and menus ------------------------------------------------------------------------------

  void say_video(const finding_item& item, const streams& s) {
    if (s.video == nullptr || !s.video->shape)
      return;
    const video_shape& shape = *s.video->shape;
    const finding_item video = part_of(item, part::video);
    if (s.video->standard != video_standard::other)
      said_.say(video, trait_kind::standard,
                s.video->standard == video_standard::pal ? "PAL" : "NTSC");
    said_.say(video, trait_kind::size, size_text(shape));
    // Square pixels and MPEG-1 are taken for 4:3. Edited XML may state others.
    if (!hand_edited_)
      said_.say(video, trait_kind::aspect, shape.mpeg2 && shape.aspect_code == 3 ? "16:9" : "4:3");
    said_.say(video, trait_kind::coding, shape.mpeg2 ? "MPEG-2" : "MPEG-1");
  }

  void say_length(const finding_item& item, const streams& s, double delay) {
    if (const auto seconds = seconds_of_file(s, delay))
      said_.say_seconds(item, trait_kind::length, *seconds);
  }

  /// Up to the last picture or the last sound, whichever is later. `delay`: seconds by which the
  /// picture comes later.
  static std::optional<double> seconds_of_file(const streams& s, double delay) {
    if (s.video == nullptr || !s.whole_video || s.video->seconds <= 0)
      return std::nullopt;
    if (s.inside != nullptr)
      return seconds_of_ready(s);
    if (!s.known_sounds)
      return std::nullopt;
    double seconds = s.video->seconds;
    for (std::size_t i = 0; i < s.sounds.size(); ++i) {
      if (!s.whole_sounds[i])
        return std::nullopt;
      seconds = std::max(seconds, seconds_of(s.sounds[i]->length) - delay);
    }
    return seconds;
  }

  /// Its sounds count whatever their numbers on the disc will be.
  static std::optional<double> seconds_of_ready(const streams& s) {
    double seconds = s.video->seconds;
    for (const inner_stream& one : s.inside->streams) {
      if (one.kind != inner_kind::ac3 && one.kind != inner_kind::mpeg_audio &&
          !is_known_by_packets(one))
        continue;
      const auto begins = begin_of_inner_sound(s, one);
      if (!begins || (!one.audio && !is_known_by_packets(one)))
        return std::nullopt;
      seconds = std::max(seconds, *begins + length_of_inner_sound(one));
    }
    return seconds;
  }

  /// Frames may be missing between two stamps.
  static double length_of_inner_sound(const inner_stream& sound) {
    return std::max(sound.audio ? seconds_of(sound.audio->length) : 0,
                    seconds_of_stamps(sound.length));
  }

  void say_sounds(const finding_item& item, const disc_title& title, const streams& s) {
    said_.say_count(item, trait_kind::audio_streams, s.sounds.size());
    for (std::size_t i = 0; i < s.sounds.size(); ++i) {
      const finding_item sound = part_of(item, part::audio, static_cast<int>(i) + 1);
      say_sound(sound, s, i, delay_of(title), !title.has_cells);
    }
  }

  /// `delay`: seconds by which the picture comes later. `all_of_it`: it is played to its end.
  void say_sound(const finding_item& sound, const streams& s, std::size_t i, double delay,
                 bool all_of_it) {
    const bool by_packets = s.inside != nullptr && is_known_by_packets(*s.inner_sounds[i]);
    if (s.sounds[i] == nullptr && !by_packets)
      return;
    if (by_packets)
      said_.say(sound, trait_kind::format,
                s.inner_sounds[i]->kind == inner_kind::dts ? "DTS" : "LPCM");
    else if (const auto format = disc_format(s.sounds[i]->kind))
      said_.say(sound, trait_kind::format, *format);
    if (!s.whole_sounds[i] || s.video == nullptr || !s.whole_video || !all_of_it)
      return;
    const double ends = s.inside == nullptr ? seconds_of(s.sounds[i]->length) - delay
                                            : last_of_inner_sound(s, *s.inner_sounds[i]);
    if (const double until = std::min(ends, s.video->seconds); until > 0)
      said_.say_seconds(sound, trait_kind::sounds_until, until);
  }

  static double seconds_of_stamps(stream_time stamps) {
    return static_cast<double>(stamps) / stamps_a_second;
  }

  /// In a ready file both have times of their own: from the first picture to the first stamp of the
  /// sound, below 0 if that comes before. Nullopt if it is not known.
  static std::optional<double> begin_of_inner_sound(const streams& s, const inner_stream& sound) {
    if (!sound.first || !goes_on(*s.inside))
      return std::nullopt;
    return static_cast<double>(way_between(*s.inside->video()->first, *sound.first, stamp_turn)) /
           stamps_a_second;
  }

  /// From the first picture to the last stamp. 0: not known.
  static double last_of_inner_sound(const streams& s, const inner_stream& sound) {
    const auto begins = begin_of_inner_sound(s, sound);
    return begins ? *begins + seconds_of_stamps(sound.length) : 0;
  }

  /// Whether a ready file is taken as it is: navigable from its first byte, without breaks.
  static bool goes_on(const program_stream_facts& file) {
    const inner_stream* const video = file.video();
    return file.begins_with_nav_pack && file.clock_breaks.count == 0 && video != nullptr &&
           video->first.has_value() &&
           std::all_of(file.streams.begin(), file.streams.end(),
                       [](const inner_stream& one) { return one.breaks.count == 0; });
  }

  /// Where the stream's own groups of pictures are no longer than what the disc tells of its end.
  void say_end_of_picture(const finding_item& item, const streams& s) {
    constexpr std::uint64_t longest_group = 100;
    if (s.video == nullptr || !s.whole_video || s.video->seconds <= 0 || !s.video->longest_group ||
        s.video->longest_group->fields > longest_group)
      return;
    if (s.inside != nullptr &&
        (!goes_on(*s.inside) || s.inside->seconds + longest_group / 50.0 < s.video->seconds))
      return;
    said_.say_seconds(part_of(item, part::video), trait_kind::shows_until, s.video->seconds);
  }

  /// Of a file of which only the beginning was read, its size tells how much of it must be there:
  /// all but what mplex leaves out.
  void say_bytes(const finding_item& item, const std::vector<std::string>& stored) {
    // The largest picture; the largest frame, and tags behind the last one.
    constexpr std::uint64_t last_picture = 1'835'008 / 8, last_frame = 16'384;
    int sounds = 0;
    for (std::size_t i = 0; i < stored.size(); ++i) {
      if (i > 0 && stored[i].empty())
        continue;
      const finding_item stream =
          i == 0 ? part_of(item, part::video)
                 : part_of(item, part::audio, item.whole == whole::title ? ++sounds : 0);
      const file_facts* const file = facts_of(stored[i]);
      if (file != nullptr && !file->whole && is_elementary(*file, i == 0))
        say_least_bytes(stream, file->size, i == 0 ? last_picture : last_frame);
    }
  }

  /// As mplex reads it to its end.
  static bool is_elementary(const file_facts& file, bool video) {
    if (video)
      return file.kind == file_kind::video;
    return file.kind == file_kind::audio && file.audio && disc_format(file.audio->kind);
  }

  /// dvdauthor takes the packs of a ready file as they are, but for what is cut off at its end.
  void say_bytes_of_ready(const finding_item& item, const std::string& stored) {
    constexpr std::uint64_t cut_off = 65'536;
    const file_facts* const file = facts_of(stored);
    if (file != nullptr && !file->whole && file->program && file->program->begins_with_nav_pack &&
        file->program->uneven_packs.count == 0)
      say_least_bytes(item, file->size, cut_off);
  }

  void say_least_bytes(const finding_item& item, std::uint64_t size, std::uint64_t left_out) {
    if (size > left_out)
      said_.say_count(item, trait_kind::bytes, size - left_out);
  }

  /// What examination knows of a file's units; none where dvdauthor may make others.
  static title_length units_of(const title_file& file, const streams& s) {
    if (s.video == nullptr || !s.whole_video)
      return {};
    if (s.inside == nullptr)
      return file.is_multiplexed_here ? title_length{s.video->seconds, s.video->unit_begins, {}}
                                      : title_length{};
    return goes_on(*s.inside) ? title_length{s.inside->shown_until, s.inside->unit_begins, {}}
                              : title_length{};
  }

  /// Where examination says that they come to lie. One right before the end may be left out: mplex
  /// drops the last picture of some streams.
  void say_chapters(const finding_item& item, const disc_title& title,
                    std::span<const streams> all) {
    constexpr double about_the_end = 0.1;
    std::vector<double> begins;
    double of_file = 0, longest = 0;
    for (std::size_t n = 0; n < all.size(); ++n) {
      const title_file& file = *title.files()[n];
      title_length length = units_of(file, all[n]);
      if (length.units.empty() || !length.seconds || (all[n].inside && all.size() > 1))
        return;
      longest = std::max(longest, *length.seconds - length.units.back());
      for (std::size_t i = 1; i < length.units.size(); ++i)
        longest = std::max(longest, length.units[i] - length.units[i - 1]);
      *length.seconds -= about_the_end;
      for (const double at : chapters_in_file(file, length, n == 0).begins)
        begins.push_back(of_file + at);
      if (n + 1 == all.size())
        break;
      const auto seconds = seconds_before_next_file(all[n], delay_of(file));
      if (!seconds)
        return;
      of_file += *seconds;
    }
    for (std::size_t i = 0; i < begins.size(); ++i)
      said_.say_seconds(part_of(item, part::chapter, static_cast<int>(i) + 1), trait_kind::lands,
                        begins[i]);
    said_.say_seconds(item, trait_kind::unit, longest);
  }

  /// Those that a ready file brings were told before the run.
  void say_breaks(const finding_item& item, const disc_title& title) {
    std::uint64_t breaks = 0;
    for (const title_file* const of_title : title.files()) {
      const file_facts* const file = facts_of(of_title->video());
      if (file == nullptr || !file->program)
        continue;
      breaks += file->program->clock_breaks.count;
      for (const inner_stream& one : file->program->streams)
        breaks += one.breaks.count;
    }
    if (breaks > 0)
      said_.say_count(item, trait_kind::breaks, breaks);
  }

  /// The n-th language of a kind labels the n-th stream of it, in each title of its titleset.
  void say_languages(const finding_item& item, int titleset, std::size_t sounds,
                     std::size_t subtitles) {
    std::size_t audio = 0, subpicture = 0;
    const auto say = [&](part what, std::size_t index, std::size_t count, const std::string& code) {
      if (index < count)
        said_.say(part_of(item, what, static_cast<int>(index) + 1), trait_kind::language,
                  code.empty() ? "none" : lower(code));
    };
    for (const disc_language& language : d_.languages) {
      if (language.titleset != titleset)
        continue;
      if (language.kind == stream_kind::audio)
        say(part::audio, audio++, sounds, language.code);
      else
        say(part::subtitle, subpicture++, subtitles, language.code);
    }
    while (audio < sounds)
      say(part::audio, audio++, sounds, "");
    while (subpicture < subtitles)
      say(part::subtitle, subpicture++, subtitles, "");
  }

  void say_menu(const finding_item& item, const disc_menu& menu) {
    const streams s = streams_of(menu.files, true);
    say_video(item, s);
    say_stated_aspect(item, menu.aspect);
    say_stay(item, menu);
    if (!menu.has_parts) {
      say_menu_streams(item, menu.files, s);
      say_buttons(item, menu);
    }
    if (hand_edited_)
      say_menu_commands(item, menu);
    // A ready file may bring a picture of its own.
    if (!menu.is_ready && !menu.has_other_looks && !s.inside)
      say_looks(item, menu);
  }

  void say_buttons(const finding_item& item, const disc_menu& menu) {
    said_.say_count(item, trait_kind::buttons, menu.buttons.size());
    for (std::size_t i = 0; i < menu.buttons.size(); ++i) {
      const finding_item button = part_of(item, part::button, static_cast<int>(i) + 1);
      say_edges(button, menu.buttons[i]);
      say_way(button, trait_kind::leads_to, ways_.after_button(menu, menu.buttons[i].action));
    }
  }

  void say_menu_streams(const finding_item& item, const std::vector<std::string>& stored,
                        const streams& s) {
    say_length(item, s, 0);
    say_end_of_picture(item, s);
    say_bytes(item, stored);
    if (s.inside || s.video == nullptr)
      return;
    said_.say_count(item, trait_kind::audio_streams, s.sounds.size());
    for (std::size_t i = 0; i < s.sounds.size(); ++i)
      say_sound(part_of(item, part::audio), s, i, 0, true);
  }

  void say_stay(const finding_item& item, const disc_menu& menu) {
    if (!hand_edited_)
      said_.say(item, trait_kind::stays, menu.loop ? "5 s" : "for ever");
    else if (const auto stays = stated_pause(menu.pause))
      said_.say(item, trait_kind::stays, *stays);
  }

  void say_menu_commands(const finding_item& item, const disc_menu& menu) {
    const auto way = [&](const disc_command& command) {
      return ways_.by_menu_command(menu, command);
    };
    // dvdauthor chooses a button before a menu's commands, unless they do.
    if (is_given(menu.pre) && !chooses_button(menu.pre->text))
      say_way(item, trait_kind::before, way(*menu.pre));
    // dvdauthor puts what several commands of a button do behind the menu, too.
    const bool has_programs = std::any_of(
        menu.buttons.begin(), menu.buttons.end(),
        [](const disc_button& button) { return button.action.form.what == verb::other; });
    if (is_given(menu.post) && !has_programs)
      say_way(item, trait_kind::then, way(*menu.post));
    for (std::size_t i = 0; i < menu.cell_commands.size(); ++i)
      say_way(part_of(item, part::command, static_cast<int>(i) + 1), trait_kind::then,
              way(menu.cell_commands[i]));
    if (!menu.entries.empty() && !d_.has_jump_pad)
      said_.say(item, trait_kind::entries, join(menu.entries, ", "));
  }

  static bool chooses_button(const std::string& commands) {
    return commands.find("button") != std::string::npos || commands.find("s8") != std::string::npos;
  }

  void say_looks(const finding_item& item, const disc_menu& menu) {
    const std::vector<seen_button> seen = foreseen_buttons(d_, menu);
    for (std::size_t i = 0; i < seen.size(); ++i) {
      const finding_item button = part_of(item, part::button, static_cast<int>(i) + 1);
      say_if_known(button, trait_kind::highlighted, seen[i].highlighted);
      say_if_known(button, trait_kind::selected, seen[i].selected);
      say_if_known(button, trait_kind::drawn, seen[i].drawn);
    }
  }

  void say_if_known(const finding_item& item, trait_kind what, const std::string& text) {
    if (!text.empty())
      said_.say(item, what, text);
  }

  void say_edges(const finding_item& item, const disc_button& b) {
    constexpr int most_edge = 1023;  // that a disc's tables hold
    std::array<int, 4> edges{};
    std::size_t i = 0;
    for (const text_number* one : {&b.x0, &b.y0, &b.x1, &b.y1}) {
      const auto edge = whole_number(*one, most_edge);
      if (!edge)
        return;
      edges[i++] = *edge;
    }
    said_.say(item, trait_kind::edges,
              std::to_string(edges[0]) + "," + std::to_string(edges[1]) + " to " +
                  std::to_string(edges[2]) + "," + std::to_string(edges[3]));
  }

  void say_way(const finding_item& item, trait_kind what, const std::optional<std::string>& place) {
    if (place)
      said_.say(item, what, *place);
  }

  const disc_description& d_;
  const facts_by_path& facts_;
  bool hand_edited_;
  foreseen_ways ways_;
  std::vector<std::vector<streams>> title_streams_;  // of each file
  disc_traits said_;
};

}  // namespace

disc_traits foreseen_disc(const disc_description& d, const facts_by_path& facts, bool hand_edited) {
  return foreseeing(d, facts, hand_edited).all();
}

void foresee_cues(const disc_description& d, disc_traits& foreseen) {
  // Films have some ten thousand cues in all their languages; the text of them is read back whole.
  std::size_t room = std::size_t{16} << 20;
  for (int number = 1; number <= d.title_count(); ++number) {
    const finding_item title{whole::title, number, part::whole, 0};
    // Of several files the times begin again with each; cells may leave some out.
    if (!d.title(number).further.empty() || d.title(number).has_cells)
      continue;
    const std::vector<disc_subtitle>& subtitles = d.title(number).subtitles;
    for (std::size_t i = 0; i < std::min(subtitles.size(), most_subpictures); ++i) {
      const auto file = subtitle_file::read(native_from_stored(subtitles[i].file, native_style()));
      if (!file)
        continue;
      const double rate = leading_number((*subtitles[i].settings)[subtitle_field::frame_rate]);
      const std::vector<cue_time> cues =
          cue_times_of(cues_of(*file, *subtitles[i].settings), rate > 0 ? rate : 25);
      if (cues.empty())
        continue;
      const finding_item item = part_of(title, part::subtitle, static_cast<int>(i) + 1);
      foreseen.say_count(item, trait_kind::cues, cues.size());
      foreseen.say_seconds(item, trait_kind::first_cue, cues.front().begins);
      foreseen.say_seconds(item, trait_kind::last_cue, cues.back().begins);
      std::string times = cue_times_text(cues);
      if (times.size() > room)
        continue;
      room -= times.size();
      foreseen.say(item, trait_kind::shown, std::move(times));
    }
  }
}

std::vector<std::string> chapters_asked(const disc_description& d) {
  std::vector<std::string> chapters;
  for (const disc_title& title : d.titles) {
    std::vector<std::string> lists;
    for (const title_file* const file : title.files())
      lists.push_back(file->chapters_text);
    const bool is_known =
        !is_cut(title) && std::ranges::none_of(lists, [](const std::string& list) {
          return list.find(chapters_of_next_file) != std::string::npos;
        });
    chapters.push_back(is_known ? join(lists, chapters_of_next_file) : unknown_chapters);
  }
  return chapters;
}

}  // namespace corvane
