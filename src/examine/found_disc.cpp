#include "examine/found_disc.h"

#include "disc/disc_description.h"
#include "examine/button_looks.h"
#include "examine/chapter_rules.h"
#include "examine/cue_times.h"
#include "examine/disc_walk.h"
#include "examine/inner_stream_scan.h"
#include "examine/measures.h"
#include "examine/time_course.h"
#include "formats/numbers.h"
#include "formats/text.h"

#include <algorithm>
#include <cmath>
#include <cstddef>
#include <optional>
#include <span>
#include <utility>

namespace corvane {
namespace {

using trait_kind = disc_trait_kind;
using whole = finding_item::whole_kind;
using part = finding_item::part_kind;

constexpr int still_for_ever = 255;
/// What is heard at the last time stamp: the shortest frame of sound.
constexpr double frame_of_sound = 0.024;

std::string format_of(const audio_attributes& attributes) {
  const std::string_view format = attributes.format();
  if (format == "ac3")
    return "AC-3";
  if (format == "lpcm")
    return "LPCM";
  if (format == "dts")
    return "DTS";
  return format == "mp2" ? "MPEG audio" : std::string(format);
}

/// Below 0 if the end is before the begin. Stamps begin again at 0.
double seconds_from(stream_time begin, stream_time end) {
  return static_cast<double>(way_between(begin, end, stamp_turn)) / stamps_a_second;
}
double seconds_of_stamps(stream_time length) {
  return static_cast<double>(length) / stamps_a_second;
}

class saying {
 public:
  saying(const disc_contents& disc, const disc_streams& streams)
      : disc_(disc), streams_(streams), walks_(disc) {}

  disc_traits all() {
    const auto menus = menus_with_pictures(disc_);
    const finding_item disc;
    said_.say_count(disc, trait_kind::titles, disc_.titles.size());
    for (const auto& [what, of] : {std::pair{trait_kind::menus, whole::menu},
                                   std::pair{trait_kind::disc_menus, whole::disc_menu}})
      said_.say_count(disc, what,
                      static_cast<std::size_t>(std::ranges::count(
                          menus, of, [](const named_menu& menu) { return menu.first.whole; })));
    say_way(disc, trait_kind::first_play, walks_.after_start());
    if (disc_.first_play)
      say_commands(disc, disc_.first_play->pre);
    for (const disc_title_contents& title : disc_.titles)
      say_title(title);
    for (const auto& [item, menu] : menus)
      say_menu(item, *menu);
    return std::move(said_);
  }

 private:
  /// Null where not all of it was read for this chain.
  const chain_streams* streams_of(const disc_chain& chain) const {
    const chain_streams* const found = streams_.find(chain);
    return found != nullptr && !found->shared && found->in_order ? found : nullptr;
  }

  void say_title(const disc_title_contents& title) {
    const finding_item item{whole::title, title.number, part::whole, 0};
    say_video(item, title.video, title.chain.seconds);
    said_.say_count(item, trait_kind::chapters, title.chapters.size());
    for (std::size_t i = 0; i < title.chapters.size(); ++i)
      said_.say_seconds(part_of(item, part::chapter, static_cast<int>(i) + 1), trait_kind::begins,
                        title.chapters[i]);
    const chain_streams* const streams = streams_of(title.chain);
    say_end_of_picture(item, streams);
    say_bytes(item, streams);
    say_sounds(item, title, streams);
    say_subtitles(item, title, streams);
    say_commands_around(item, title, title.chain);
    say_way(item, trait_kind::then, walks_.after_title(title));
    if (title.chain.tables->still_seconds != 0)
      say_stay(item, title.chain);
    say_commands(item, title.chain.tables->post);
  }

  void say_stay(const finding_item& item, const disc_chain& chain) {
    const int still = chain.tables->still_seconds;
    said_.say(item, trait_kind::stays,
              still == still_for_ever ? "for ever" : std::to_string(still) + " s");
  }

  /// Without the one that dvdauthor puts before those of a menu with buttons: the first button is
  /// highlighted.
  static std::span<const vm_command> commands_before(const finding_item& item,
                                                     const program_chain& tables) {
    constexpr vm_bytes first_button = {0x56, 0, 0, 0, 0x04, 0, 0, 0};
    const std::span<const vm_command> all = tables.pre;
    const bool is_added =
        item.whole != whole::title && !all.empty() && all.front().bytes == first_button;
    return is_added ? all.subspan(1) : all;
  }

  /// Those before a title or menu, and of its cells.
  template <typename Contents>
  void say_commands_around(const finding_item& item, const Contents& of, const disc_chain& chain) {
    const program_chain& tables = *chain.tables;
    if (const auto pre = commands_before(item, tables); !pre.empty())
      said_.say(item, trait_kind::before, walks_.by_commands(of, pre).value_or(not_told));
    int number = 0;
    for (const cell_playback& cell : tables.cells) {
      const auto index = static_cast<std::size_t>(cell.command) - 1;
      if (cell.command == 0 || index >= tables.cell_commands.size())
        continue;
      const finding_item command = part_of(item, part::command, ++number);
      say_way(command, trait_kind::then, walks_.by_commands(of, {&tables.cell_commands[index], 1}));
      say_commands(command, {tables.cell_commands[index]});
    }
  }

  void say_video(const finding_item& item, const video_attributes& video, double seconds) {
    const finding_item picture = part_of(item, part::video);
    said_.say(picture, trait_kind::standard, std::string(video.standard()));
    said_.say(picture, trait_kind::size,
              std::to_string(video.width()) + "x" + std::to_string(video.height()));
    said_.say(picture, trait_kind::aspect, std::string(video.aspect()));
    said_.say(picture, trait_kind::coding, video.coding == 1 ? "MPEG-2" : "MPEG-1");
    said_.say_seconds(item, trait_kind::length, seconds);
  }

  /// From the first picture on.
  void say_end_of_picture(const finding_item& item, const chain_streams* streams) {
    const inner_stream* const video = streams == nullptr ? nullptr : streams->facts.video();
    if (video == nullptr || !video->first || video->breaks.count > 0)
      return;
    // Without a stamp among the last sectors, pictures end long before them: the last stamp may be
    // that of a whole group.
    constexpr double longest_group = 2;
    said_.say_seconds(part_of(item, part::video), trait_kind::shows_until,
                      streams->pictures_end ? seconds_from(*video->first, *streams->pictures_end)
                                            : seconds_of_stamps(video->length) + longest_group);
  }

  void say_bytes(const finding_item& item, const chain_streams* streams) {
    if (streams == nullptr)
      return;
    said_.say_count(item, trait_kind::bytes, streams->sectors * disc_sector_size);
    if (const inner_stream* const video = streams->facts.video())
      said_.say_count(part_of(item, part::video), trait_kind::bytes, video->payload_bytes);
  }

  void say_sounds(const finding_item& item, const disc_title_contents& title,
                  const chain_streams* streams) {
    std::size_t heard = 0;
    for (std::size_t i = 0; i < title.audio.size(); ++i) {
      const disc_audio_stream& one = title.audio[i];
      const finding_item sound = part_of(item, part::audio, static_cast<int>(i) + 1);
      said_.say(sound, trait_kind::format, format_of(one.attributes));
      said_.say(sound, trait_kind::language,
                one.attributes.language.empty() ? "none" : one.attributes.language);
      const inner_stream* const stream =
          streams == nullptr ? nullptr : stream_with(streams->facts, one.id);
      heard += stream != nullptr && stream->packets > 0 ? 1 : 0;
      if (streams == nullptr)
        continue;
      said_.say_seconds(sound, trait_kind::sounds_until, heard_until(*streams, stream));
      said_.say_count(sound, trait_kind::bytes, stream == nullptr ? 0 : stream->payload_bytes);
    }
    if (streams != nullptr)
      said_.say_count(item, trait_kind::audio_streams, heard);
  }

  /// From the first picture on.
  static double heard_until(const chain_streams& streams, const inner_stream* sound) {
    const inner_stream* const video = streams.facts.video();
    if (sound == nullptr || !sound->first || video == nullptr || !video->first)
      return 0;
    return seconds_from(*video->first, *sound->first) + seconds_of_stamps(sound->length) +
           frame_of_sound;
  }

  void say_subtitles(const finding_item& item, const disc_title_contents& title,
                     const chain_streams* streams) {
    std::size_t shown = 0;
    for (std::size_t i = 0; i < title.subpictures.size(); ++i) {
      const disc_subpicture_stream& one = title.subpictures[i];
      const finding_item subtitle = part_of(item, part::subtitle, static_cast<int>(i) + 1);
      said_.say(subtitle, trait_kind::language,
                one.attributes.language.empty() ? "none" : one.attributes.language);
      if (streams == nullptr)
        continue;
      const inner_stream* const stream = stream_with(streams->facts, one.id);
      const inner_stream* const video = streams->facts.video();
      said_.say_count(subtitle, trait_kind::cues, stream == nullptr ? 0 : stream->stamps);
      if (stream == nullptr || !stream->first || video == nullptr || !video->first)
        continue;
      ++shown;
      said_.say_seconds(subtitle, trait_kind::first_cue,
                        seconds_from(*video->first, *stream->first));
      said_.say_seconds(subtitle, trait_kind::last_cue, seconds_from(*video->first, *stream->last));
      say_cue_times(subtitle, *streams, *stream);
    }
    if (streams != nullptr)
      said_.say_count(item, trait_kind::subtitles, shown);
  }

  void say_cue_times(const finding_item& subtitle, const chain_streams& streams,
                     const inner_stream& stream) {
    const auto units = streams.subtitles.find(stream.number);
    if (units == streams.subtitles.end() || units->second.size() != stream.stamps)
      return;
    std::vector<cue_time> times;
    for (const shown_unit& one : units->second) {
      const double begins = seconds_from(*streams.facts.video()->first, one.stamp);
      times.push_back({begins + one.times.begins.value_or(0), std::nullopt});
      if (one.times.ends)
        times.back().ends = begins + *one.times.ends;
    }
    said_.say(subtitle, trait_kind::shown, cue_times_text(times));
  }

  void say_menu(const finding_item& item, const disc_menu_contents& menu) {
    say_video(item, menu.video, menu.chain.seconds);
    say_commands_around(item, menu, menu.chain);
    if (!menu.chain.tables->post.empty())
      say_way(item, trait_kind::then, walks_.by_commands(menu, menu.chain.tables->post));
    say_stay(item, menu.chain);
    if (const auto entries = walks_.entries_of(menu); !entries.empty())
      said_.say(item, trait_kind::entries, join(entries, ", "));
    const chain_streams* const streams = streams_of(menu.chain);
    say_end_of_picture(item, streams);
    say_bytes(item, streams);
    if (streams != nullptr)
      say_menu_sounds(item, *streams);
    const auto& shown = menu.chain.highlight;
    const std::size_t buttons = shown ? shown->first_group().size() : 0;
    said_.say_count(item, trait_kind::buttons, buttons);
    const std::vector<seen_button> seen = seen_buttons(menu, streams);
    for (std::size_t i = 0; i < buttons; ++i) {
      const finding_item button = part_of(item, part::button, static_cast<int>(i) + 1);
      say_button(button, menu, i);
      if (i < seen.size())
        say_look(button, seen[i]);
    }
  }

  /// Nothing where their picture is not known, or is not there: a rule of its own tells that.
  static std::vector<seen_button> seen_buttons(const disc_menu_contents& menu,
                                               const chain_streams* streams) {
    if (streams == nullptr || streams->facts.count_of(inner_kind::subpicture) == 0)
      return {};
    const auto picture = picture_of_buttons(*streams);
    return picture ? buttons_on_disc(menu, *picture) : std::vector<seen_button>();
  }

  void say_look(const finding_item& item, const seen_button& seen) {
    said_.say(item, trait_kind::highlighted, seen.highlighted);
    said_.say(item, trait_kind::selected, seen.selected);
    said_.say(item, trait_kind::drawn, seen.drawn);
  }

  void say_menu_sounds(const finding_item& item, const chain_streams& streams) {
    std::size_t heard = 0;
    for (const inner_stream& one : streams.facts.streams) {
      if (one.kind != inner_kind::ac3 && one.kind != inner_kind::mpeg_audio)
        continue;
      ++heard;
      const finding_item sound = part_of(item, part::audio);
      said_.say(sound, trait_kind::format, one.kind == inner_kind::ac3 ? "AC-3" : "MPEG audio");
      said_.say_seconds(sound, trait_kind::sounds_until, heard_until(streams, &one));
      said_.say_count(sound, trait_kind::bytes, one.payload_bytes);
    }
    said_.say_count(item, trait_kind::audio_streams, heard);
  }

  void say_button(const finding_item& item, const disc_menu_contents& menu, std::size_t index) {
    const menu_button& b = menu.chain.highlight->buttons[index];
    said_.say(item, trait_kind::edges,
              std::to_string(b.x0) + "," + std::to_string(b.y0) + " to " + std::to_string(b.x1) +
                  "," + std::to_string(b.y1));
    say_way(item, trait_kind::leads_to, walks_.after_button(menu, index));
    say_commands(item, commands_of_button(menu, b.command));
  }

  /// dvdauthor puts several commands of a button behind its menu, and into the button a way there.
  static std::vector<vm_command> commands_of_button(const disc_menu_contents& menu,
                                                    const vm_command& command) {
    constexpr int tail_of_chain = 13;
    std::vector<vm_command> all = {command};
    const vm_target to = command.target();
    if (to.where == vm_target::place::within && to.link == tail_of_chain)
      all.insert(all.end(), menu.chain.tables->post.begin(), menu.chain.tables->post.end());
    return all;
  }

  void say_commands(const finding_item& item, const std::vector<vm_command>& commands) {
    constexpr std::size_t most_commands = 20;
    std::string text;
    for (std::size_t i = 0; i < std::min(commands.size(), most_commands); ++i)
      text += (text.empty() ? "" : "; ") + commands[i].text();
    if (commands.size() > most_commands)
      text += "; ...";
    if (!text.empty())
      said_.say(item, trait_kind::does, text);
  }

  void say_way(const finding_item& item, trait_kind what, const std::optional<std::string>& place) {
    if (place)
      said_.say(item, what, *place);
  }

  const disc_contents& disc_;
  const disc_streams& streams_;
  disc_walks walks_;
  disc_traits said_;
};

}  // namespace

disc_traits found_disc(const disc_contents& disc, const disc_streams& streams) {
  return saying(disc, streams).all();
}

void find_landed_chapters(const disc_title_contents& title, const disc_traits& foreseen,
                          disc_traits& found) {
  if (title.chapters.empty())
    return;
  const finding_item item{whole::title, title.number, part::whole, 0};
  for (int number = 1;; ++number) {
    const finding_item chapter = part_of(item, part::chapter, number);
    const disc_trait* const lands = foreseen.find(chapter, trait_kind::lands);
    if (lands == nullptr)
      return;
    const double asked = leading_number(lands->value);
    found.say_seconds(chapter, trait_kind::lands,
                      *std::ranges::min_element(title.chapters, {}, [asked](double begins) {
                        return std::abs(begins - asked);
                      }));
  }
}

namespace {

/// A file of the title, as the disc has it: a VOB.
struct file_on_disc {
  double begins = 0, seconds = 0;
  std::vector<double> units;  // from its beginning
  std::size_t chapters = 0;
};

/// `is_one`: the title was asked for as one file, whatever it is made of.
std::vector<file_on_disc> files_on_disc(const disc_title_contents& title, bool is_one) {
  std::vector<file_on_disc> files;
  if (is_one)
    files.push_back({0, title.chain.seconds, title.chain.units, title.chapters.size()});
  if (is_one || title.chain.cells.empty())
    return files;
  const disc_cell* before = nullptr;
  for (const disc_cell& cell : title.chain.cells) {
    if (before == nullptr || before->vob != cell.vob || before->cell >= cell.cell)
      files.push_back({cell.begins, 0, {}, 0});
    before = &cell;
    files.back().seconds += cell.seconds;
  }
  const auto file_at = [&files](double seconds) {
    constexpr double rounding = 1e-6;
    auto file = files.begin();
    while (file + 1 != files.end() && seconds >= (file + 1)->begins - rounding)
      ++file;
    return file;
  };
  for (const double unit : title.chain.units) {
    file_on_disc& file = *file_at(unit);
    file.units.push_back(std::round((unit - file.begins) * stamps_a_second) / stamps_a_second);
  }
  for (const double chapter : title.chapters)
    ++file_at(chapter)->chapters;
  return files;
}

/// Where the chapters of a file must be, from its beginning.
std::vector<double> chapters_of_file(const file_on_disc& file, const std::string& asked,
                                     bool is_first) {
  title_file as_asked;
  as_asked.chapters.push_back({asked, {}});
  std::vector<double> begins =
      chapters_in_file(as_asked, {file.seconds, file.units, {}}, is_first).begins;
  // What counts for dvdauthor is the end of the last picture, which the disc's tables do not tell:
  // a chapter may be right before or behind it.
  constexpr double about_the_end = 0.1;
  for (const double apart : {about_the_end, -about_the_end}) {
    if (begins.size() == file.chapters)
      break;
    std::vector<double> other =
        chapters_in_file(as_asked, {file.seconds + apart, file.units, {}}, is_first).begins;
    if (other.size() == file.chapters)
      begins = std::move(other);
  }
  return begins;
}

}  // namespace

void foresee_chapters(const disc_title_contents& title, const std::string& asked,
                      disc_traits& foreseen) {
  if (asked == unknown_chapters || title.chain.units.empty())
    return;
  const std::vector<std::string> lists = split(asked, chapters_of_next_file);
  const std::vector<file_on_disc> files = files_on_disc(title, lists.size() == 1);
  // Which part of the title a missing file would be is not known; its length tells that.
  if (files.size() != lists.size())
    return;
  std::vector<double> begins;
  for (std::size_t i = 0; i < files.size(); ++i)
    for (const double at : chapters_of_file(files[i], lists[i], i == 0))
      begins.push_back(files[i].begins + at);
  const finding_item item{whole::title, title.number, part::whole, 0};
  foreseen.say_count(item, trait_kind::chapters, begins.size());
  for (std::size_t i = 0; i < begins.size(); ++i)
    foreseen.say_seconds(part_of(item, part::chapter, static_cast<int>(i) + 1), trait_kind::begins,
                         begins[i]);
}

}  // namespace corvane
