// What a disc allows of video.
#include "examine/finding_collector.h"
#include "examine/measures.h"
#include "examine/stream_rules.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <cstdio>

namespace corvane {
namespace {

using severity = finding_severity;

// In bits a second, and bits.
constexpr double most_video_rate = 9.8e6;
constexpr double most_mpeg1_rate = 1.856e6;
constexpr double most_total_rate = 10.08e6;
constexpr double buffer_bits = 1'835'008;
constexpr double mpeg1_buffer_bits = 327'680;

constexpr std::uint64_t most_ntsc_fields = 36;
constexpr std::uint64_t most_pal_fields = 30;

constexpr std::array video_rules_table = {
    rule{"video-none", severity::error, "A title's or menu's video file holds MPEG video",
         "an MPEG-1 or MPEG-2 video stream", "nothing: the run fails at this file",
         "choose the right file, or encode it as MPEG-2 video for DVD", mpeg_video},
    rule{"video-packets", severity::error,
         "The video of a title with sound streams is an elementary stream",
         "an elementary stream (.m2v), not packets with streams inside",
         "nothing: the run fails, or the sound inside is lost",
         "add the file as a ready title without sound streams, or extract its video",
         mplex_measured},
    rule{"video-standard", severity::error, "The video is of the project's standard",
         "of the project's standard",
         "a distorted or rolling picture, or none: the disc's tables say another standard than its "
         "pictures have",
         "choose the other region in the main window, or encode the video again",
         dvd_video_pictures},
    rule{"video-size", severity::error, "The picture has a size that a disc allows",
         "720, 704 or 352 pixels wide and 480 (NTSC) or 576 (PAL) high, or 352x240 (NTSC), 352x288 "
         "(PAL); of MPEG-1 only the last two",
         "a distorted picture, or none: players refuse such video",
         "encode the video again in one of these sizes", dvd_video_pictures},
    rule{"video-rate", severity::error, "The pictures come at the standard's rate",
         "29.97 pictures a second (NTSC) or 25 (PAL); film of 23.976 needs repeated fields "
         "(pulldown)",
         "picture and sound drift apart, or the player refuses the title",
         "encode the video again at that rate", dvd_video_pictures},
    rule{"video-aspect", severity::error,
         "The proportions of the picture are ones that a disc knows", "4:3 or 16:9",
         "a squeezed picture", "encode the video again as 4:3 or 16:9", dvd_video_pictures},
    rule{"video-aspect-square", severity::warning, "The stream does not call its pixels square",
         "4:3 or 16:9; the disc's tables will say 4:3",
         "a squeezed picture in players that believe the stream more than the tables",
         "encode the video again and state the proportions (mpeg2enc: -a 2 or -a 3)",
         dvd_video_pictures},
    rule{"video-aspect-narrow", severity::warning, "Wide video is 720 or 704 pixels wide",
         "4:3 at 352 pixels", "a squeezed picture in some players",
         "encode the video again 720 pixels wide", dvd_video_pictures},
    rule{"video-chroma", severity::error, "The colours are stored as 4:2:0", "4:2:0",
         "nothing or blocks: players decode no other", "encode the video again as 4:2:0",
         main_profile_main_level},
    rule{"video-profile", severity::warning, "The stream is of main profile at main level",
         "main or simple profile at main level (MP@ML)",
         "nothing in players that look at the profile", "encode the video again at main level",
         main_profile_main_level},
    rule{"video-low-delay", severity::warning, "The stream is not marked as of low delay",
         "low_delay off", "stutter in some players", "encode the video again without low delay",
         dvd_video_pictures},
    rule{"video-peak-rate", severity::error, "Video has no more bits than a player reads",
         "at most 9.8 Mb/s (MPEG-1: 1.856 Mb/s) beyond what the decoder's buffer evens out",
         "the run fails after it has written the whole title, or the picture stutters there",
         "encode the video again with a maximum of 9 Mb/s and the buffer of a disc (ffmpeg: "
         "-maxrate 9000k -bufsize 1835k)",
         dvd_video_pictures},
    rule{"video-large-beginning", severity::error,
         "The first pictures are small enough to be read before they are shown",
         "a first picture of some 120,000 bytes at most, and pictures behind it that do not need "
         "more",
         "nothing: the run fails when the whole title or menu has been multiplexed (buffer "
         "under-runs)",
         "encode the video again so that its beginning has fewer bits (mpeg2enc: a larger -q)",
         mplex_measured},
    rule{"video-high-rate", severity::warning,
         "No second of video has more bits than the highest rate",
         "at most 9.8 Mb/s (MPEG-1: 1.856 Mb/s)",
         "perhaps a stutter there: only the buffer evens it out",
         "encode the video again with a maximum of 9 Mb/s", dvd_video_pictures},
    rule{"total-rate", severity::error,
         "Picture and sound together have no more bits than a player reads",
         "at most 10.08 Mb/s beyond what the decoder's buffer evens out",
         "the run fails after it has written the whole title, or the title stutters there",
         "encode the video with a lower maximum, or leave sound streams out", dvd_video_pictures},
    rule{"video-buffer", severity::warning, "The stream needs no larger buffer than players have",
         "a vbv buffer of at most 1,835,008 bits (MPEG-1: 327,680)",
         "stutter where the stream uses the larger buffer",
         "encode the video again with that buffer (ffmpeg: -bufsize 1835k)",
         main_profile_main_level},
    rule{"gop-length", severity::warning, "No group of pictures (GOP) is too long",
         "at most 36 fields (NTSC) or 30 (PAL)",
         "chapters and searching land late, and some players stutter",
         "encode the video again with shorter groups (18 pictures, PAL 15)", dvd_video_pictures},
    rule{"gop-sequence-header", severity::warning,
         "A sequence header stands before each group of pictures", "one before each group",
         "no picture for a moment after a jump in some players",
         "encode the video again with a sequence header for each group", dvd_video_pictures},
    rule{"first-gop-open", severity::warning, "The first group of pictures is closed",
         "closed: no picture that needs an earlier group",
         "broken or missing pictures at the beginning",
         "encode the video again, or cut it at a closed group", mplex_measured},
    rule{"video-changes", severity::error,
         "Size, rate, standard and coding stay the same through the stream", "one kind of video",
         "a distorted picture or none from there on",
         "encode the parts alike and join them again, or make them titles of their own",
         dvd_video_pictures},
    rule{"video-aspect-changes", severity::warning,
         "The proportions stay the same through the stream", "one proportion",
         "a squeezed picture from there on: the disc's tables know one for a title",
         "encode the parts alike, or make them titles of their own", dvd_video_pictures},
    rule{"video-end-code", severity::error,
         "No sequence end code stands in the middle of the stream",
         "an end code behind the last picture only",
         "only what stands before it: the run fails there",
         "join the parts again with a tool that removes the end codes", mplex_measured},
    rule{"video-stray-bytes", severity::warning, "No bytes stand where none belong",
         "headers and pictures without anything between", "perhaps a broken picture there",
         "encode or cut the video again", mpeg_video},
    rule{"video-packet-codes", severity::warning,
         "No headers of packets stand in an elementary stream", "pictures alone",
         "broken pictures there: the stream was taken out of its packets wrongly",
         "take the video out of its source again, with another tool", mpeg_video},
    rule{"video-beginning", severity::warning, "The stream begins with an I picture",
         "an I picture before all others",
         "the picture later than the sound: pictures before the first I picture cannot be decoded",
         "cut the video at an I picture, or encode it again", mpeg_video},
    rule{"video-damage", severity::warning, "The stream is whole",
         "whole pictures with all their rows", "broken pictures there",
         "copy the file again from its source, or encode it again", mpeg_video},
    rule{"video-cut", severity::note, "The stream ends with a whole picture",
         "a whole picture at the end", "perhaps a broken last picture",
         "copy the file again if it should be longer", mpeg_video},
};

bool is_one_of(int value, std::initializer_list<int> list) {
  return std::find(list.begin(), list.end(), value) != list.end();
}

bool is_size_of_a_disc(const video_shape& s) {
  if (s.width == 352 && is_one_of(s.height, {240, 288}))
    return true;
  return s.mpeg2 && is_one_of(s.width, {720, 704, 352}) && is_one_of(s.height, {480, 576});
}

bool has_rate_of(const video_shape& s, video_standard standard) {
  if (standard == video_standard::pal)
    return s.rate_numerator == 25 * s.rate_denominator;
  return static_cast<long long>(s.rate_numerator) * 1001 == 30000LL * s.rate_denominator;
}

std::string name_of_standard(video_standard standard) {
  switch (standard) {
    case video_standard::ntsc:
      return "NTSC";
    case video_standard::pal:
      return "PAL";
    case video_standard::other:
      break;
  }
  return "neither NTSC nor PAL";
}

// "25", "29.97".
std::string picture_rate_text(const video_shape& s) {
  return decimal_text(1.0 * s.rate_numerator / s.rate_denominator, 2);
}

std::string damage_text(const video_damage& d) {
  switch (d.kind) {
    case video_damage_kind::bad_sequence_header:
      return "a sequence header with forbidden values";
    case video_damage_kind::bad_picture_header:
      return "a picture of a kind that there is not";
    case video_damage_kind::no_picture_extension:
      return "a picture without its extension";
    case video_damage_kind::picture_without_slices:
      return "a picture of which there is only the header";
    case video_damage_kind::missing_rows:
      return "a picture of which rows are missing";
    case video_damage_kind::rows_out_of_order:
      return "a picture whose rows are out of order";
    case video_damage_kind::slices_without_picture:
      return "pieces of a picture without its header";
    case video_damage_kind::lone_field:
      return "half a picture: one field without the other";
    case video_damage_kind::group_without_intra:
      return "a group of pictures that does not begin with an I picture";
    case video_damage_kind::reserved_code:
      return "a start code that means nothing";
    case video_damage_kind::cut_at_end:
      return "the stream ends within a picture";
  }
  return "damage";
}

void add_at(finding_collector& c, std::string_view id, const video_place& place, std::string found,
            std::string wanted = {}) {
  c.add_at(id, place.byte, place.seconds, std::move(found), std::move(wanted));
}

void look_at_shape(const video_facts& v, video_standard standard, finding_collector& c) {
  const video_shape& s = *v.shape;
  if (v.standard != video_standard::other && standard != video_standard::other &&
      v.standard != standard)
    c.add("video-standard",
          "the video is " + name_of_standard(v.standard) + " (" + size_text(s) + ", " +
              picture_rate_text(s) + " pictures a second) in a project of " +
              name_of_standard(standard),
          name_of_standard(standard));
  if (!is_size_of_a_disc(s))
    c.add("video-size", "the picture is " + size_text(s) + (s.mpeg2 ? "" : " (MPEG-1)"));
  const video_standard own = v.standard == video_standard::other ? standard : v.standard;
  if (own != video_standard::other && !has_rate_of(s, own))
    c.add("video-rate", "the video has " + picture_rate_text(s) + " pictures a second",
          own == video_standard::pal
              ? "25 pictures a second"
              : "29.97 pictures a second; film of 23.976 needs repeated fields (pulldown)");
}

// Of MPEG-1, whose aspect codes mean proportions of pixels, the tables say 4:3 and players agree.
void look_at_aspect(const video_facts& v, finding_collector& c) {
  const video_shape& s = *v.shape;
  if (!s.mpeg2)
    return;
  if (s.aspect_code == 1)
    c.add("video-aspect-square", "the stream says that its pixels are square");
  else if (s.aspect_code != 2 && s.aspect_code != 3)
    c.add("video-aspect", "the proportions are " + aspect_text(s));
  else if (s.aspect_code == 3 && s.width == 352)
    c.add("video-aspect-narrow", "the picture is 16:9 and 352 pixels wide");
}

void look_at_profile(const video_facts& v, finding_collector& c) {
  if (!v.shape->mpeg2)
    return;
  if (v.chroma_format != 1)
    c.add("video-chroma",
          std::string("the colours are stored as ") + (v.chroma_format == 2 ? "4:2:2" : "4:4:4"));
  const int profile = v.profile_and_level >> 4 & 7;
  const int level = v.profile_and_level & 15;
  constexpr int simple = 5, main = 4, main_level = 8, low_level = 10;
  const bool allowed = (v.profile_and_level & 0x80) == 0 && is_one_of(profile, {simple, main}) &&
                       is_one_of(level, {main_level, low_level});
  if (v.chroma_format == 1 && !allowed) {
    std::array<char, 8> code{};
    std::snprintf(code.data(), code.size(), "%02X", static_cast<unsigned>(v.profile_and_level));
    c.add("video-profile", std::string("profile and level are stated as ") + code.data() +
                               " (hexadecimal), not as 48");
  }
  if (v.low_delay)
    c.add("video-low-delay", "the stream is marked as of low delay");
}

bool has_too_many_bits(const video_facts& v) {
  return v.need_of_video.of_full.bits >
         (v.shape->mpeg2 ? read_ahead::buffer : read_ahead::mpeg1_buffer);
}

void add_at(finding_collector& c, std::string_view id, const missing_bits& place, std::string found,
            std::string wanted = {}) {
  c.add_at(id, place.byte, place.seconds, std::move(found), std::move(wanted));
}

void look_at_rate(const video_facts& v, finding_collector& c) {
  const bool mpeg2 = v.shape->mpeg2;
  const double limit = mpeg2 ? most_video_rate : most_mpeg1_rate;
  const double buffer = mpeg2 ? buffer_bits : mpeg1_buffer_bits;
  if (has_too_many_bits(v))
    add_at(c, "video-peak-rate", v.need_of_video.of_full,
           "up to here the pictures need more than " + rate_text(limit) +
               " for longer than a buffer evens out; the highest second has " +
               rate_text(v.peak_rate),
           "at most " + rate_text(limit));
  else if (v.whole && v.peak_rate > limit)
    add_at(c, "video-high-rate", v.peak_place,
           "the second that begins here has " + rate_text(v.peak_rate),
           "at most " + rate_text(limit));
  if (static_cast<double>(v.vbv_bytes) * 8 > buffer)
    c.add("video-buffer",
          "the stream asks for a buffer of " + std::to_string(v.vbv_bytes * 8) + " bits",
          "at most " + std::to_string(static_cast<long long>(buffer)) + " bits");
}

void look_at_groups(const video_facts& v, finding_collector& c) {
  const std::uint64_t most = v.standard == video_standard::pal ? most_pal_fields : most_ntsc_fields;
  std::uint64_t too_long = 0;
  for (std::size_t fields = most + 1; fields < v.groups_by_fields.size(); ++fields)
    too_long += v.groups_by_fields[fields];
  if (too_long > 0 && v.longest_group)
    add_at(c, "gop-length", v.longest_group->place,
           count_text(too_long, "group is", "groups are") + " too long; the longest, here, has " +
               std::to_string(v.longest_group->fields) + " fields",
           "at most " + std::to_string(most) + " fields");
  const auto& bare = v.groups_without_sequence_header;
  if (bare.count > 0)
    add_at(c, "gop-sequence-header", bare.kept.front(),
           count_text(bare.count, "group has", "groups have") +
               " no sequence header, the first one here");
  if (v.first_group_open)
    c.add("first-gop-open",
          "the first group is open: " + count_text(v.hidden_pictures, "picture", "pictures") +
              " of it cannot be decoded");
}

std::string change_text(const video_change& change) {
  const auto text = [](const video_shape& s) {
    return std::string(s.mpeg2 ? "MPEG-2 " : "MPEG-1 ") + size_text(s) + ", " +
           picture_rate_text(s) + " pictures a second, " + aspect_text(s);
  };
  return text(change.before) + " becomes " + text(change.after);
}

void look_at_changes(const video_facts& v, finding_collector& c) {
  const counted_list<video_change>* first = nullptr;
  for (const auto* changes :
       {&v.size_changes, &v.rate_changes, &v.standard_changes, &v.coding_changes})
    if (changes->count > 0 &&
        (first == nullptr || changes->kept.front().place.byte < first->kept.front().place.byte))
      first = changes;
  if (first != nullptr)
    add_at(c, "video-changes", first->kept.front().place, change_text(first->kept.front()));
  else if (v.aspect_changes.count > 0)
    add_at(c, "video-aspect-changes", v.aspect_changes.kept.front().place,
           change_text(v.aspect_changes.kept.front()));
}

void look_at_wholeness(const video_facts& v, bool packed, finding_collector& c) {
  if (v.middle_end_codes.count > 0 && !packed)
    add_at(c, "video-end-code", v.middle_end_codes.kept.front(),
           count_text(v.middle_end_codes.count, "end code stands", "end codes stand") +
               " in the middle of the stream, the first one here");
  if (v.stray_bytes.count > 0)
    add_at(c, "video-stray-bytes", v.stray_bytes.kept.front().place,
           count_text(v.stray_bytes_in_all, "byte stands", "bytes stand") +
               " where none belong, the first one here");
  if (v.system_codes.count > 0)
    add_at(
        c, "video-packet-codes", v.system_codes.kept.front(),
        count_text(v.system_codes.count, "header of a packet stands", "headers of packets stand") +
            " in the stream, the first one here");
  // With the header of a group before them it is the group that is damaged.
  if (v.pictures_before_intra > 0 &&
      (v.damage.kept.empty() ||
       v.damage.kept.front().kind != video_damage_kind::group_without_intra))
    c.add("video-beginning",
          count_text(v.pictures_before_intra, "picture stands", "pictures stand") +
              " before the first I picture");
  std::uint64_t damages = v.damage.count;
  const bool cut = v.whole && !v.damage.kept.empty() &&
                   v.damage.kept.back().kind == video_damage_kind::cut_at_end;
  if (cut) {
    --damages;
    add_at(c, "video-cut", v.damage.kept.back().place, "the stream ends within a picture");
  }
  if (damages > 0)
    add_at(
        c, "video-damage", v.damage.kept.front().place,
        damage_text(v.damage.kept.front()) +
            (damages > 1 ? "; in all " + count_text(damages, "place is", "places are") + " damaged"
                         : ""));
}

/// How many bits mplex sends before it shows the first picture: half of what the buffers hold, by
/// the time that takes in whole pictures.
double bits_before_beginning(const video_facts& v, const sounds_of_title& sounds) {
  constexpr double of_video = 0.0943, of_sound = 0.008;
  const double rate = 1.0 * v.shape->rate_numerator / v.shape->rate_denominator;
  const double seconds = std::floor((of_video + of_sound * sounds.count) * rate + 0.5) / rate;
  return read_ahead::rate_in_packs * (seconds + std::max(0.0, sounds.delay));
}

/// The picture from which on these needs are more than mplex can send in time; null if there is
/// none. `more`: bits that it may have sent besides.
const missing_bits* late_picture(const buffer_need* need, double before, double more) {
  if (need != nullptr && need->of_empty.bits > before + more)
    return &need->of_empty;
  return need != nullptr && need->of_full.bits > read_ahead::buffer + more ? &need->of_full
                                                                           : nullptr;
}

}  // namespace

std::span<const rule> video_rules() {
  return video_rules_table;
}

std::vector<finding> video_findings(const video_facts& video, video_standard standard,
                                    finding_item item, const std::string& file, bool packed) {
  finding_collector c(video_rules_table, item, file);
  if (video.kind == video_kind::packets && !packed) {
    c.add("video-packets", "the file is a program stream");
    return c.take();
  }
  if (!video.shape) {
    c.add("video-none", "there is no MPEG video in it");
    return c.take();
  }
  look_at_shape(video, standard, c);
  look_at_aspect(video, c);
  look_at_profile(video, c);
  look_at_rate(video, c);
  look_at_groups(video, c);
  look_at_changes(video, c);
  look_at_wholeness(video, packed, c);
  return c.take();
}

std::vector<finding> total_rate_findings(const video_facts& video, double sound, finding_item item,
                                         const std::string& file) {
  if (!video.whole || !video.shape || !video.shape->mpeg2)
    return {};
  const double total = video.peak_rate + sound;
  if (total <= most_total_rate + buffer_bits || has_too_many_bits(video))
    return {};
  finding_collector c(video_rules_table, item, file);
  add_at(c, "total-rate", video.peak_place,
         "the second that begins here has " + rate_text(total) + ", " + rate_text(sound) +
             " of it sound",
         "at most " + rate_text(most_total_rate));
  return c.take();
}

std::vector<finding> multiplexing_findings(const video_facts& video, const sounds_of_title& sounds,
                                           finding_item item, const std::string& file) {
  if (!video.whole || !video.shape || has_too_many_bits(video))
    return {};
  // What mplex can send of each sound before it is heard.
  constexpr double sound_buffer_bits = 150'000;
  constexpr double beginning = 1;
  const double before = bits_before_beginning(video, sounds);
  const missing_bits* const alone =
      late_picture(need_at(video.needs_in_packs, read_ahead::rate_in_packs), before, 0);
  const missing_bits* const late =
      alone != nullptr
          ? alone
          : late_picture(need_at(video.needs_in_packs, read_ahead::rate_in_packs - sounds.rate),
                         before, sounds.count * sound_buffer_bits);
  if (late == nullptr)
    return {};
  finding_collector c(video_rules_table, item, file);
  if (late == alone && late->seconds < beginning)
    add_at(c, "video-large-beginning", *late,
           "the pictures up to here have more bits than can be read before this one is decoded");
  else
    add_at(c, "total-rate", *late,
           "up to here picture and sound, " + rate_text(sounds.rate) +
               " of it, need more for longer than a buffer evens out; the highest second of the "
               "picture has " +
               rate_text(video.peak_rate),
           "at most " + rate_text(most_total_rate));
  return c.take();
}

}  // namespace corvane
