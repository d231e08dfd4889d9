#include "examine/ready_rules.h"

#include "examine/finding_collector.h"
#include "examine/inner_stream_scan.h"
#include "examine/measures.h"
#include "examine/time_course.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <iterator>
#include <optional>
#include <tuple>

namespace corvane {
namespace {

using severity = finding_severity;
using part = finding_item::part_kind;

constexpr std::string_view dvdauthor_takes = "dvdauthor 0.7.2, measured";

constexpr std::array ready_rules_table = {
    rule{"ready-not-program-stream", severity::error,
         "A ready title, and a menu without a file for its sound, can be read by dvdauthor",
         "a program stream with its streams inside (.vob, .mpg)",
         "nothing: the run fails at this file",
         "add the file with a sound stream to have it multiplexed, or multiplex it first",
         dvdauthor_takes},
    rule{"ready-without-nav-packs", severity::error,
         "A ready title has the packs that a disc is navigated by",
         "NAV packs in front of each unit", "nothing: dvdauthor finds no VOBU in it and fails",
         "multiplex it for DVD (mplex -f 8, ffmpeg -f dvd), or add its streams one by one",
         dvdauthor_takes},
    rule{"ready-without-video", severity::error, "A ready title has a video stream inside",
         "a video stream", "nothing: the run fails at this file", "choose the right file",
         dvdauthor_takes},
    rule{"ready-beginning", severity::warning, "A ready title begins with a NAV pack",
         "a NAV pack as its first pack", "all but what stands before the first NAV pack",
         "nothing need be done if nothing is missing; else multiplex the title's streams again",
         dvdauthor_takes},
    rule{"ready-bytes", severity::error, "A ready title is packs from its first byte to its last",
         "packs, one behind the other",
         "nothing, if its size is no multiple of 2048 bytes: the run fails; else a stumble there, "
         "or a player that stops",
         "multiplex the title's streams again", dvdauthor_takes},
    rule{"ready-packs", severity::error, "Each pack of a ready title fills a sector of a disc",
         "packs of 2048 bytes, each on a multiple of 2048",
         "nothing: dvdauthor takes 2048 bytes at a time, whatever they are",
         "multiplex it for DVD (mplex -f 8, ffmpeg -f dvd), or add its streams one by one",
         dvdauthor_takes},
    rule{"ready-cut", severity::error, "A ready title ends with a whole pack",
         "a size that is a multiple of 2048 bytes",
         "nothing: the run fails at the end of this file",
         "copy the file again if it should be longer; else multiplex the title's streams again",
         dvdauthor_takes},
    rule{"ready-end-code", severity::warning,
         "No program end code stands in the middle of a ready title",
         "an end code behind the last packet only", "nothing from there on in players that heed it",
         "multiplex the title's streams again", dvdauthor_takes},
    rule{"ready-clock", severity::warning, "The times in a ready title go on without a break",
         "times without a break", "a stumble there, or a player that stops",
         "multiplex the title's streams again", dvdauthor_takes},
    rule{"ready-clock-jump", severity::error,
         "The clock of a ready title goes neither back nor a second forward at once",
         "a clock that goes on, or begins again at 0",
         "nothing where it goes back: dvdauthor fails; a player that stumbles or stops where it "
         "goes forward",
         "multiplex the title's streams again", dvdauthor_takes},
    rule{"ready-times", severity::warning,
         "The time stamps of each stream in a ready title go on without a break",
         "time stamps without a break",
         "silence or a picture that stands there, and perhaps sound that is not with the picture",
         "multiplex the title's streams again", dvdauthor_takes},
};

/// Sound has eight streams of each kind on a disc.
constexpr int sounds_of_a_kind = 8;

int place_of(inner_kind kind) {
  switch (kind) {
    case inner_kind::ac3:
      return 0;
    case inner_kind::mpeg_audio:
      return 1;
    case inner_kind::lpcm:
      return 2;
    default:
      return 3;
  }
}

bool is_sound(inner_kind kind) {
  return kind == inner_kind::ac3 || kind == inner_kind::mpeg_audio || kind == inner_kind::lpcm ||
         kind == inner_kind::dts;
}

double clock_seconds(const time_break& one) {
  return static_cast<double>(one.elapsed) / static_cast<double>(clocks_a_second);
}
double stamp_seconds(const time_break& one) {
  return static_cast<double>(one.elapsed) / static_cast<double>(stamps_a_second);
}

class ready_look {
 public:
  ready_look(const program_stream_facts& p, std::uint64_t size, finding_item item,
             const std::string& file)
      : p_(p), size_(size), item_(item), file_(file), c_(ready_rules_table, item, file) {}

  std::vector<finding> all() {
    if (p_.nav_packs == 0)
      c_.add("ready-without-nav-packs", "there is no NAV pack in it");
    else
      look_at_packs();
    look_at_clock();
    if (p_.video() == nullptr)
      c_.add("ready-without-video", "there is no video stream in it");
    std::vector<finding> found = c_.take();
    look_at_times(found);
    return found;
  }

 private:
  /// One cause makes others: packs behind a stray byte are not where packs must be.
  void look_at_packs() {
    const std::uint64_t begin = p_.first_nav_pack.value_or(0);
    if (begin > 0)
      c_.add_at("ready-beginning", 0, 0,
                count_text(begin, "byte stands", "bytes stand") + " before the first NAV pack");
    const auto& loose = p_.loose.kept;
    const auto stray =
        std::ranges::find_if(loose, [&](const loose_bytes& one) { return one.position >= begin; });
    const auto& uneven = p_.uneven_packs.kept;
    const auto first_uneven =
        std::ranges::find_if(uneven, [&](std::uint64_t position) { return position >= begin; });
    if (stray != loose.end())
      add_at("ready-bytes", stray->position,
             count_text(stray->size, "byte belongs", "bytes belong") + " to no pack" +
                 (p_.loose.count > 1 ? ", and more elsewhere" : ""));
    else if (first_uneven != uneven.end() && *first_uneven + disc_pack_size <= size_)
      add_at("ready-packs", *first_uneven,
             count_text(p_.uneven_packs.count, "pack is", "packs are") +
                 " not 2048 bytes long on a multiple of 2048, the first one here");
    else if (const std::uint64_t rest = size_ % disc_pack_size; rest > 0)
      add_at("ready-cut", size_ - rest,
             "the file ends with " + count_text(rest, "byte", "bytes") + " that are no whole pack");
    if (p_.middle_end_codes.count > 0)
      add_at("ready-end-code", p_.middle_end_codes.kept.front(),
             count_text(p_.middle_end_codes.count, "end code stands", "end codes stand") +
                 " in the middle of the stream, the first one here");
  }

  /// At a byte whose time is not known.
  void add_at(std::string_view id, std::uint64_t byte, std::string found) {
    c_.add(id, std::move(found)).byte = byte;
  }

  /// dvdauthor moves on a clock that begins again at 0, and takes no other that goes back, however
  /// little. What goes forward it takes over.
  void look_at_clock() {
    constexpr std::uint64_t exact = 300;  // what it does not look at is finer
    const time_break *jump = nullptr, *restart = nullptr;
    for (const time_break& one : p_.clock_breaks.kept) {
      const bool begins_again = one.after < exact;
      const bool refused = way_of(one) < 0
                               ? one.after / exact < one.before / exact
                               : way_of(one) > static_cast<std::int64_t>(clocks_a_second);
      const time_break*& first = refused && !begins_again ? jump : restart;
      if (first == nullptr)
        first = &one;
    }
    if (jump != nullptr) {
      const double seconds = static_cast<double>(way_of(*jump)) / clocks_a_second;
      c_.add_at("ready-clock-jump", jump->position, clock_seconds(*jump),
                std::string("the clock of the stream goes ") + (seconds < 0 ? "back" : "forward") +
                    " here by " + seconds_text(std::abs(seconds)));
    }
    if (restart != nullptr)
      c_.add_at("ready-clock", restart->position, clock_seconds(*restart),
                "the clock of the stream breaks off " +
                    count_text(p_.clock_breaks.count, "time", "times") +
                    (jump == nullptr ? ", the first time here" : "; here it begins again"));
  }

  static std::int64_t way_of(const time_break& of_clock) {
    return way_between(of_clock.before, of_clock.after, stamp_turn * 300);
  }

  void look_at_times(std::vector<finding>& found) const {
    if (const inner_stream* const video = p_.video())
      look_at_times(*video, part_of(item_, part::video), found);
    int number = 0;
    for (const inner_stream* const sound : sounds_inside(p_))
      look_at_times(*sound, part_of(item_, part::audio, ++number), found);
    for (const inner_stream& one : p_.streams)
      if (one.kind == inner_kind::subpicture)
        look_at_times(one, part_of(item_, part::subtitle, one.number + 1), found);
  }

  void look_at_times(const inner_stream& stream, finding_item item,
                     std::vector<finding>& found) const {
    const auto& breaks = stream.breaks.kept;
    const auto first =
        std::ranges::find_if(breaks, [&](const time_break& one) { return !is_of_the_clock(one); });
    if (first == breaks.end()) {
      if (breaks.empty())
        look_for_holes(stream, item, found);
      return;
    }
    const double way =
        static_cast<double>(way_between(first->before, first->after, stamp_turn)) / stamps_a_second;
    finding_collector c(ready_rules_table, item, file_);
    c.add_at("ready-times", first->position, stamp_seconds(*first),
             std::string("its times go ") + (way < 0 ? "back" : "forward") + " here by " +
                 seconds_text(std::abs(way)) +
                 (stream.breaks.count > 1
                      ? "; in all there are " + std::to_string(stream.breaks.count) + " breaks"
                      : ""));
    auto more = c.take();
    std::move(more.begin(), more.end(), std::back_inserter(found));
  }

  /// Gaps too short to be known as such one by one: the time stamps go further than the pictures or
  /// frames do.
  void look_for_holes(const inner_stream& stream, finding_item item,
                      std::vector<finding>& found) const {
    constexpr double heard_of = 0.4;
    const double held = stream.video   ? stream.video->seconds
                        : stream.audio ? seconds_of(stream.audio->length)
                                       : 0;
    const double stamped = static_cast<double>(stream.length) / stamps_a_second;
    if (!p_.whole || held <= 0 || stamped < held + heard_of)
      return;
    finding_collector c(ready_rules_table, item, file_);
    c.add("ready-times", "its times cover " + seconds_text(stamped) + ", but there are only " +
                             seconds_text(held) + " of it");
    auto more = c.take();
    std::move(more.begin(), more.end(), std::back_inserter(found));
  }

  /// Where all of the stream breaks off, its clock and its time stamps do.
  bool is_of_the_clock(const time_break& one) const {
    constexpr double about_there = 2;
    return std::ranges::any_of(p_.clock_breaks.kept, [&](const time_break& clock) {
      return std::abs(clock_seconds(clock) - stamp_seconds(one)) < about_there;
    });
  }

  const program_stream_facts& p_;
  std::uint64_t size_;
  finding_item item_;
  const std::string& file_;
  finding_collector c_;
};

}  // namespace

std::span<const rule> ready_rules() {
  return ready_rules_table;
}

std::vector<const inner_stream*> sounds_inside(const program_stream_facts& p) {
  std::vector<const inner_stream*> sounds;
  for (const inner_stream& one : p.streams)
    if (is_sound(one.kind) && one.number < sounds_of_a_kind)
      sounds.push_back(&one);
  std::ranges::stable_sort(sounds, {}, [](const inner_stream* one) {
    return std::tuple(one->number, place_of(one->kind));
  });
  return sounds;
}

std::vector<finding> ready_findings(const program_stream_facts& p, std::uint64_t size,
                                    finding_item item, const std::string& file) {
  return ready_look(p, size, item, file).all();
}

finding not_ready_finding(bool is_video, finding_item item, const std::string& file) {
  finding f = finding_of(ready_rules_table, "ready-not-program-stream", item,
                         is_video ? "the file is video alone, without packets around it"
                                  : "the file is no program stream");
  f.file = file;
  return f;
}

}  // namespace corvane
