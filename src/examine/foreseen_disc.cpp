#include "examine/foreseen_disc.h"

#include "disc/command_reading.h"
#include "examine/button_looks.h"
#include "examine/chapter_rules.h"
#include "examine/cue_times.h"
#include "examine/inner_stream_scan.h"
#include "examine/measures.h"
#include "examine/subtitle_text_rules.h"
#include "examine/time_course.h"
#include "formats/numbers.h"
#include "formats/text.h"
#include "platform/files/paths.h"

#include <algorithm>
#include <array>
#include <cstddef>
#include <map>
#include <optional>
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

std::string title_place(int title, int chapter) {
  return "title " + std::to_string(title) + " chapter " + std::to_string(chapter);
}

class foreseeing {
 public:
  foreseeing(const disc_description& d, const facts_by_path& facts, bool hand_edited)
      : d_(d), facts_(facts), hand_edited_(hand_edited) {
    for (const disc_title& title : d.titles)
      title_streams_.push_back(streams_of(title.streams, title.is_multiplexed_here));
    for (const disc_menu& menu : d.menus)
      menu_streams_.push_back(streams_of(menu.files, true));
  }

  disc_traits all() {
    const finding_item disc;
    said_.say_count(disc, trait_kind::titles, d_.titles.size());
    // Menus of the whole disc are not described.
    if (!d_.has_other_paths)
      said_.say_count(disc, trait_kind::menus, d_.menus.size());
    say_way(disc, trait_kind::first_play, first_play());
    for (int title = 1; title <= d_.title_count(); ++title)
      say_title(title);
    for (int menu = 1; menu <= d_.menu_count(); ++menu)
      say_menu(menu);
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
      // Further files of a title come behind it.
      s.whole_video = s.whole_video && stored.size() == 1;
      s.known_sounds = s.known_sounds && stored.size() == 1;
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

  // dvdauthor leaves gaps where they are, and makes others where it moves a clock that begins
  // again: such a file becomes longer than its pictures.
  static bool times_go_on(const program_stream_facts& p) {
    constexpr double gap = 0.1;
    const inner_stream* const video = p.video();
    return p.clock_breaks.count == 0 && video != nullptr && video->breaks.count == 0 &&
           (!video->video || p.seconds < video->video->seconds + gap);
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
    // Of other kinds of sound nothing more is known.
    s.known_sounds =
        file.whole && file.program->count_of(inner_kind::dts) == 0 &&
        file.program->count_of(inner_kind::lpcm) == 0 &&
        static_cast<int>(by_number.size()) == file.program->count_of(inner_kind::ac3) +
                                                  file.program->count_of(inner_kind::mpeg_audio);
    int next = 0;
    for (const auto& [number, one] : by_number) {
      // A gap in the numbers: what of them becomes which stream of the disc is not foreseen.
      s.known_sounds = s.known_sounds && number == next++;
      s.sounds.push_back(one->audio ? &*one->audio : nullptr);
      s.whole_sounds.push_back(file.whole && one->audio.has_value());
      s.inner_sounds.push_back(one);
    }
  }

  void say_title(int number) {
    const disc_title& title = d_.title(number);
    const streams& s = title_streams_[static_cast<std::size_t>(number) - 1];
    const finding_item item{whole::title, number, part::whole, 0};
    say_video(item, s);
    // Cells may leave parts out.
    if (!d_.has_other_paths) {
      say_length(item, s, title.is_multiplexed_here ? title.delay.value / 1000 : 0);
      say_end_of_picture(item, s);
    }
    say_breaks(item, title, s);
    say_chapters(item, title, s);
    if (s.known_sounds)
      say_sounds(item, title, s);
    say_languages(item, title.titleset, s.sounds.size(), title.subtitles.size());
    // A ready file may carry subtitles of its own.
    if (!s.inside && title.is_multiplexed_here)
      said_.say_count(item, trait_kind::subtitles, title.subtitles.size());
    say_way(item, trait_kind::then, after_title(number));
  }

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

  /// Up to the last picture or the last sound, whichever is later. `delay`: seconds by which the
  /// picture comes later.
  void say_length(const finding_item& item, const streams& s, double delay) {
    if (s.video == nullptr || !s.whole_video || s.video->seconds <= 0 || !s.known_sounds)
      return;
    double seconds = s.video->seconds;
    for (std::size_t i = 0; i < s.sounds.size(); ++i) {
      const auto ends = end_of_sound(s, i, delay);
      if (!ends)
        return;
      seconds = std::max(seconds, *ends);
    }
    said_.say_seconds(item, trait_kind::length, seconds);
  }

  /// From the first picture to the end of the last frame. Nullopt if it is not known.
  static std::optional<double> end_of_sound(const streams& s, std::size_t i, double delay) {
    if (!s.whole_sounds[i])
      return std::nullopt;
    const double length = seconds_of(s.sounds[i]->length);
    if (s.inside == nullptr)
      return length - delay;
    const auto begins = begin_of_inner_sound(s, *s.inner_sounds[i]);
    if (!begins)
      return std::nullopt;
    // Frames may be missing between two stamps.
    return *begins + std::max(length, seconds_of_stamps(s.inner_sounds[i]->length));
  }

  void say_sounds(const finding_item& item, const disc_title& title, const streams& s) {
    said_.say_count(item, trait_kind::audio_streams, s.sounds.size());
    for (std::size_t i = 0; i < s.sounds.size(); ++i) {
      const finding_item sound = part_of(item, part::audio, static_cast<int>(i) + 1);
      say_sound(sound, s, i, title.is_multiplexed_here ? title.delay.value / 1000 : 0);
    }
  }

  /// `delay`: seconds by which the picture comes later.
  void say_sound(const finding_item& sound, const streams& s, std::size_t i, double delay) {
    if (s.sounds[i] == nullptr)
      return;
    if (const auto format = disc_format(s.sounds[i]->kind))
      said_.say(sound, trait_kind::format, *format);
    if (!s.whole_sounds[i] || s.video == nullptr || !s.whole_video || d_.has_other_paths)
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

  /// What examination knows of a title's units; none where dvdauthor may make others.
  static title_length units_of(const disc_title& title, const streams& s) {
    if (s.video == nullptr || !s.whole_video)
      return {};
    if (s.inside == nullptr)
      return title.is_multiplexed_here ? title_length{s.video->seconds, s.video->unit_begins}
                                       : title_length{};
    return goes_on(*s.inside) ? title_length{s.inside->shown_until, s.inside->unit_begins}
                              : title_length{};
  }

  /// Where examination says that they come to lie. One right before the end may be left out: mplex
  /// drops the last picture of some streams.
  void say_chapters(const finding_item& item, const disc_title& title, const streams& s) {
    constexpr double about_the_end = 0.1;
    const title_length length = units_of(title, s);
    const std::vector<double>& units = length.units;
    if (units.empty() || !length.seconds || d_.has_other_paths)
      return;
    const landed_chapters landed =
        chapters_on_disc(title, {*length.seconds - about_the_end, units});
    for (std::size_t i = 0; i < landed.begins.size(); ++i)
      said_.say_seconds(part_of(item, part::chapter, static_cast<int>(i) + 1), trait_kind::lands,
                        landed.begins[i]);
    double longest = *length.seconds - units.back();
    for (std::size_t i = 1; i < units.size(); ++i)
      longest = std::max(longest, units[i] - units[i - 1]);
    said_.say_seconds(item, trait_kind::unit, longest);
  }

  /// Those that a ready file brings were told before the run.
  void say_breaks(const finding_item& item, const disc_title& title, const streams& s) {
    if (s.inside == nullptr)
      return;
    std::uint64_t breaks = 0;
    for (const std::string& stored : title.streams) {
      const file_facts* const file = facts_of(stored);
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

  void say_menu(int number) {
    const disc_menu& menu = d_.menu(number);
    const streams& s = menu_streams_[static_cast<std::size_t>(number) - 1];
    const finding_item item{whole::menu, number, part::whole, 0};
    // Which of its menus shows nothing is not known of other XML.
    if (d_.has_other_paths)
      return;
    say_video(item, s);
    say_length(item, s, 0);
    say_end_of_picture(item, s);
    if (!s.inside && s.video != nullptr) {
      said_.say_count(item, trait_kind::audio_streams, s.sounds.size());
      for (std::size_t i = 0; i < s.sounds.size(); ++i)
        say_sound(part_of(item, part::audio), s, i, 0);
    }
    // One that begins again may pause for any time in edited XML.
    if (!menu.loop || !hand_edited_)
      said_.say(item, trait_kind::stays, menu.loop ? "5 s" : "for ever");
    said_.say_count(item, trait_kind::buttons, menu.buttons.size());
    for (std::size_t i = 0; i < menu.buttons.size(); ++i) {
      const finding_item button = part_of(item, part::button, static_cast<int>(i) + 1);
      say_edges(button, menu.buttons[i]);
      say_way(button, trait_kind::leads_to,
              place_of(menu.buttons[i].action, menu.titleset, number));
    }
    // Edited XML may give a menu other colours, a ready file may bring a picture of its own.
    if (!hand_edited_ && !s.inside)
      say_looks(item, menu);
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

  /// Titles and menus of several titlesets are numbered in each of them.
  bool is_one_titleset() const {
    const auto is_first = [](const auto& one) { return one.titleset == 1; };
    return std::all_of(d_.titles.begin(), d_.titles.end(), is_first) &&
           std::all_of(d_.menus.begin(), d_.menus.end(), is_first);
  }

  void say_way(const finding_item& item, trait_kind what, const std::optional<std::string>& place) {
    if (place && !d_.has_other_paths && (!d_.jump_table || is_one_titleset()))
      said_.say(item, what, *place);
  }

  /// The number on the disc of title or menu `number` of a titleset, where there is one. `titleset`
  /// 0: of the whole disc.
  template <typename Item>
  static std::optional<int> number_on_disc(const std::vector<Item>& all, int titleset, int number) {
    int before = 0;
    for (std::size_t i = 0; i < all.size(); ++i)
      if ((titleset == 0 || all[i].titleset == titleset) && ++before == number)
        return static_cast<int>(i) + 1;
    return std::nullopt;
  }

  std::optional<std::string> title_of(int titleset, int title, int chapter) const {
    const auto number = number_on_disc(d_.titles, titleset, title);
    return number ? std::optional(title_place(*number, chapter)) : std::nullopt;
  }

  /// Menus of the whole disc are not described.
  std::optional<std::string> menu_of(int titleset, int menu) const {
    const auto number = titleset == 0 ? std::nullopt : number_on_disc(d_.menus, titleset, menu);
    return number ? std::optional("menu " + std::to_string(*number)) : std::nullopt;
  }

  /// `titleset`: the one that the command is in; 0: it is the disc's first. `from`: the menu of it
  /// whose button it is; 0: a title's command, or the first one.
  std::optional<std::string> place_of(const disc_command& command, int titleset, int from) const {
    const command_form& form = command.form;
    const int own = titleset == 0 ? 1 : titleset;
    switch (form.what) {
      case verb::jump_title:
        return form.number ? title_of(titleset, *form.number, form.chapter.value_or(1))
                           : std::nullopt;
      case verb::jump_menu:
        return form.number ? menu_of(is_one_titleset() ? own : titleset, *form.number)
                           : std::nullopt;
      case verb::jump_titleset:
        // Remembered, it comes back to the menu that it was chosen in.
        return menu_of(1, d_.jump_table && from > 0 ? from : 1);
      case verb::call_menu:
        return menu_of(own, d_.jump_table ? form.number.value_or(1) : 1);
      case verb::call_last_menu:
        return d_.jump_table ? menu_of(own, 1) : std::nullopt;  // none was shown before
      case verb::other:
        break;
    }
    return typed_places(command.text, titleset, titleset > 0 && from == 0);
  }

  /// Each place that a typed command names; which of them it leads to is the registers' matter.
  /// Nothing where one of them is not known here. `of_title`: the disc stops behind its end.
  std::optional<std::string> typed_places(const std::string& text, int titleset,
                                          bool of_title) const {
    const command_reading reading = read_commands(text + ";");
    if (reading.fault || reading.resumes || d_.jump_table)
      return std::nullopt;
    std::vector<std::string> places;
    for (const command_lead& lead : reading.leads) {
      const auto place = place_of_lead(lead, titleset);
      if (!place)
        return std::nullopt;
      places.push_back(*place);
    }
    if (places.empty() && !reading.ends)
      return std::nullopt;
    if (reading.ends || (of_title && reading.falls_through))
      places.emplace_back("stop");
    return join(places, either_place);
  }

  std::optional<std::string> place_of_lead(const command_lead& lead, int titleset) const {
    using place = command_lead::place;
    if (lead.of_disc)
      return std::nullopt;
    const int of = lead.titleset.value_or(titleset);
    const bool is_root = lead.entry.empty() || lead.entry == "root";
    if (lead.to == place::menu_entry && lead.titleset && is_root)
      return menu_of(of, 1);
    if (lead.to == place::menu && !lead.chapter && lead.entry.empty())
      return menu_of(of, lead.number);
    if (lead.to == place::title && lead.entry.empty())
      return title_of(of, lead.number, lead.chapter.value_or(1));
    return std::nullopt;
  }

  std::optional<std::string> first_play() const {
    if (d_.first_play)
      return place_of(*d_.first_play, 0, 0);
    if (hand_edited_)
      return std::nullopt;
    return d_.menus.empty() ? title_place(1, 1) : menu_of(1, 1);
  }

  std::optional<std::string> after_title(int number) const {
    if (const auto& post = d_.title(number).post)
      return place_of(*post, d_.title(number).titleset, 0);
    if (hand_edited_)
      return std::nullopt;
    return number < d_.title_count() ? title_place(number + 1, 1) : "stop";
  }

  const disc_description& d_;
  const facts_by_path& facts_;
  bool hand_edited_;
  std::vector<streams> title_streams_, menu_streams_;
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
    const bool several = !title.is_multiplexed_here && title.streams.size() > 1;
    chapters.push_back(several || d.has_other_paths ? unknown_chapters : title.chapters_text);
  }
  return chapters;
}

}  // namespace corvane
