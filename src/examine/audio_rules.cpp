// What a disc allows of sound.
#include "examine/finding_collector.h"
#include "examine/measures.h"
#include "examine/stream_rules.h"

#include <algorithm>
#include <array>

namespace corvane {
namespace {

using severity = finding_severity;

constexpr int disc_sample_rate = 48'000;
constexpr int most_ac3_rate = 448'000;
constexpr int most_mpeg_rate = 384'000;
constexpr double most_lpcm_rate = 6.144e6;
constexpr int lpcm_sample_rate = 96'000;  // or that of all sound

// Shorter than this, nobody misses sound at the end.
constexpr double missed_sound = 1.0;

constexpr std::array audio_rules_table = {
    rule{"audio-kind", severity::error, "The sound is of a kind that a disc can hold",
         "AC-3 or MPEG audio layer II", "silence: the run fails, or no player decodes it",
         "encode the sound as AC-3 (ffmpeg: -c:a ac3 -ar 48000)", dvd_video_sound},
    rule{"audio-optional-kind", severity::warning,
         "The sound is of a kind that every player decodes", "AC-3 or MPEG audio layer II",
         "silence in players without a DTS decoder", "add an AC-3 stream beside it",
         dvd_video_sound},
    rule{"audio-sample-rate", severity::error, "The sound has 48,000 samples a second",
         "48 kHz; LPCM also 96 kHz", "sound too fast, too slow or none",
         "encode the sound again with 48 kHz", dvd_video_sound},
    rule{"audio-bit-rate", severity::error, "The sound has no more bits than a player reads",
         "at most 448 kb/s of AC-3, 384 kb/s of MPEG audio, 6.144 Mb/s of LPCM",
         "silence or gaps in the sound", "encode the sound again with fewer bits", dvd_video_sound},
    rule{"audio-samples", severity::error, "Samples of LPCM have a size that there is",
         "16, 20 or 24 bits", "silence or noise", "encode the sound again with 16 bits",
         dvd_video_sound},
    rule{"audio-rate-varies", severity::warning, "All frames have the same number of bits",
         "one bit rate", "perhaps gaps in the sound", "encode the sound again with a constant rate",
         dvd_video_sound},
    rule{"audio-changes", severity::error,
         "Kind, sample rate and channels stay the same through the stream", "one kind of sound",
         "silence or noise from there on", "encode the parts alike and join them again",
         mplex_measured},
    rule{"audio-gap", severity::error, "No bytes stand between the frames of the sound",
         "frames with nothing between them",
         "silence from there on: mplex reads MPEG audio no further, and fails with AC-3",
         "encode the sound again, or remove the bytes with an audio tool", mplex_measured},
    rule{"audio-leading-bytes", severity::error, "No bytes stand before the first frame",
         "frames only, from the first byte on", "nothing: mplex does not know the file for sound",
         "encode the sound again, or remove tags and other bytes with an audio tool",
         mplex_measured},
    rule{"audio-trailing-bytes", severity::note, "No bytes stand behind the last frame",
         "frames only, to the last byte", "nothing: mplex leaves the bytes out",
         "nothing need be done", mplex_measured},
    rule{"audio-cut", severity::note, "The stream ends with a whole frame",
         "a whole frame at the end", "nothing: less than a tenth of a second is missing",
         "copy the file again if it should be longer", sound_frames},
    rule{"audio-damage", severity::warning, "The frames are whole", "frames with right checksums",
         "clicks or short silence", "copy the file again from its source, or encode it again",
         sound_frames},
    rule{"audio-short", severity::warning, "The sound is as long as the picture",
         "about as long as the picture", "silence at the end",
         "check that the right file was chosen, and whether it is whole", asked_and_streams},
    rule{"audio-long", severity::note, "The sound is no longer than the picture",
         "about as long as the picture", "the last picture stays, or the sound is cut",
         "check that the right file was chosen", asked_and_streams},
};

std::string sound_text(const audio_frame& frame) {
  return std::string(name_of(frame.kind)) + ", " + decimal_text(frame.sample_rate / 1e3, 3) +
         " kHz, " + count_text(static_cast<std::uint64_t>(frame.channels), "channel", "channels");
}

bool is_kind_of_a_disc(audio_kind kind) {
  return kind == audio_kind::ac3 || kind == audio_kind::mpeg_layer_2;
}

void look_at_kind(const audio_facts& a, finding_collector& c) {
  if (a.kind == audio_kind::dts)
    c.add("audio-optional-kind", "the sound is DTS, which is not examined");
  else if (a.kind == audio_kind::unknown)
    c.add("audio-kind", "there is no sound in it that is known");
  else if (!is_kind_of_a_disc(a.kind))
    c.add("audio-kind", "the sound is " + std::string(name_of(a.kind)));
}

void look_at_frames(const audio_facts& a, finding_collector& c) {
  if (a.first->sample_rate != disc_sample_rate)
    c.add("audio-sample-rate",
          "the sound has " + decimal_text(a.first->sample_rate / 1e3, 3) + " kHz");
  const int most = a.kind == audio_kind::ac3 ? most_ac3_rate : most_mpeg_rate;
  if (a.highest_bit_rate > most)
    c.add("audio-bit-rate", "the sound has " + rate_text(a.highest_bit_rate),
          "at most " + rate_text(most));
  if (a.bit_rate_varies)
    c.add("audio-rate-varies",
          "frames have different numbers of bits, up to " + rate_text(a.highest_bit_rate));
  if (a.change)
    c.add_at("audio-changes", a.change->position, seconds_of(a.change->before),
             sound_text(*a.first) + " becomes " + sound_text(a.change->to));
}

std::string of_tag(const audio_gap& gap) {
  return gap.content == audio_gap::id3v1 || gap.content == audio_gap::id3v2 ? " (an ID3 tag)" : "";
}

// mplex knows no file for sound that does not begin with a frame, and fails at whatever is no frame
// of AC-3; of MPEG audio it takes what stands before the first such byte.
void look_at_gaps(const audio_facts& a, finding_collector& c) {
  for (const audio_gap& gap : a.gaps) {
    const bool at_end = gap.position + gap.size == a.bytes;
    const std::string bytes = count_text(gap.size, "byte", "bytes");
    if (gap.position == 0)
      c.add_at("audio-leading-bytes", 0, 0, bytes + " before the first frame" + of_tag(gap));
    else if (at_end && a.kind == audio_kind::mpeg_layer_2)
      c.add_at("audio-trailing-bytes", gap.position, seconds_of(gap.before),
               bytes + " behind the last frame" + of_tag(gap));
    else if (at_end)
      c.add_at("audio-gap", gap.position, seconds_of(gap.before),
               bytes + " behind the last frame" + of_tag(gap) + ", at which mplex fails");
  }
  if (!a.first_inner_gap)
    return;
  const audio_time before = a.first_inner_gap->before;
  std::string found = count_text(a.first_inner_gap->size, "byte", "bytes") + " between frames";
  if (a.gap_count > 1)
    found += ", and more behind";
  if (a.kind == audio_kind::mpeg_layer_2)
    found += "; " + seconds_text(seconds_of(a.length - std::min(a.length, before))) +
             " of sound would be lost";
  c.add_at("audio-gap", a.first_inner_gap->position, seconds_of(before), found);
}

void look_at_end(const audio_facts& a, finding_collector& c) {
  if (a.cut)
    c.add_at("audio-cut", a.cut->position, seconds_of(a.length), "the last frame is cut off");
  if (a.first_damaged)
    c.add_at("audio-damage", a.first_damaged->position, seconds_of(a.first_damaged->before),
             count_text(a.damaged_frames, "frame has", "frames have") +
                 " a wrong checksum, the first one here");
}

void look_at_length(double sound, double picture, finding_collector& c) {
  const std::string found =
      "the sound is " + seconds_text(sound) + " long, the picture " + seconds_text(picture);
  if (sound < picture - missed_sound)
    c.add("audio-short", found).seconds = sound;
  else if (sound > picture + missed_sound)
    c.add("audio-long", found).seconds = picture;
}

void look_at_lpcm(const inner_stream& sound, finding_collector& c) {
  const lpcm_format& lpcm = *sound.lpcm;
  if (lpcm.sample_rate != disc_sample_rate && lpcm.sample_rate != lpcm_sample_rate)
    c.add("audio-sample-rate",
          "the sound has " + decimal_text(lpcm.sample_rate / 1e3, 3) + " kHz (LPCM)",
          "48 or 96 kHz");
  if (lpcm.bits == 0)
    c.add("audio-samples", "its packets state samples of a size that there is not");
  if (bits_a_second(lpcm) > most_lpcm_rate)
    c.add("audio-bit-rate",
          "the sound is " + lpcm_text(lpcm) + ": " + rate_text(bits_a_second(lpcm)),
          "at most " + rate_text(most_lpcm_rate));
  if (sound.lpcm_changes > 0)
    c.add("audio-changes", "rate, size of samples or channels change " +
                               count_text(sound.lpcm_changes, "time", "times"));
}

}  // namespace

double bits_a_second(const lpcm_format& lpcm) {
  return 1.0 * lpcm.sample_rate * lpcm.bits * lpcm.channels;
}

std::string lpcm_text(const lpcm_format& lpcm) {
  return "LPCM of " + decimal_text(lpcm.sample_rate / 1e3, 3) + " kHz, " +
         std::to_string(lpcm.bits) + " bits, " +
         count_text(static_cast<std::uint64_t>(lpcm.channels), "channel", "channels");
}

std::span<const rule> audio_rules() {
  return audio_rules_table;
}

std::vector<finding> audio_findings(const audio_facts& audio, finding_item item,
                                    const std::string& file, bool packed,
                                    std::optional<double> picture_seconds) {
  finding_collector c(audio_rules_table, item, file);
  look_at_kind(audio, c);
  if (audio.first && is_kind_of_a_disc(audio.kind)) {
    look_at_frames(audio, c);
    if (!packed)
      look_at_gaps(audio, c);
    look_at_end(audio, c);
    if (picture_seconds)
      look_at_length(seconds_of(audio.length), *picture_seconds, c);
  }
  return c.take();
}

std::vector<finding> packet_sound_findings(const inner_stream& sound, finding_item item,
                                           const std::string& file,
                                           std::optional<double> picture_seconds) {
  finding_collector c(audio_rules_table, item, file);
  if (sound.kind == inner_kind::dts)
    c.add("audio-optional-kind", "the sound is DTS, which is not examined");
  if (sound.lpcm)
    look_at_lpcm(sound, c);
  if (picture_seconds && sound.stamps > 1)
    look_at_length(static_cast<double>(sound.length) / stamps_a_second, *picture_seconds, c);
  return c.take();
}

}  // namespace corvane
