#include "import/sound_plan.h"

#include "disc/av_delay.h"
#include "examine/measures.h"
#include "import/codec_names.h"
#include "import/language_codes.h"

#include <algorithm>
#include <cmath>

namespace corvane {
namespace {

constexpr std::int64_t most_ac3_rate = 448'000;
constexpr std::int64_t most_mp2_rate = 384'000;

// Frames of sound come every 24 or 32 ms, and nobody hears a third of that.
constexpr double near_enough = 0.010;
constexpr double no_delay_at_all = 0.001;

std::optional<disc_sound> kind_of(const source_stream& stream) {
  if (stream.codec == "ac3")
    return disc_sound::ac3;
  if (stream.codec == "mp2")
    return disc_sound::mp2;
  return std::nullopt;
}

std::string kind_name(disc_sound kind) {
  return kind == disc_sound::mp2 ? "MPEG audio layer II" : "AC-3";
}

std::int64_t rate_for(disc_sound kind, int channels) {
  if (channels > 2)
    return most_ac3_rate;
  return kind == disc_sound::mp2 ? 224'000 : 192'000;
}

/// What an encoder makes of so many channels, where the disc's other titles have `wanted` (0: any).
int channels_for(disc_sound kind, int channels, int wanted) {
  if (wanted == 1)
    return 1;
  return kind == disc_sound::ac3 && channels > 2 && (wanted == 0 || wanted > 2) ? 6 : 2;
}

class sound_planner {
 public:
  sound_planner(const source_facts& file, const titleset_demands& demands,
                const import_choices& choices, source_ratio speed)
      : demands_(demands),
        choices_(choices),
        is_joined_(file.joined),
        is_faster_(speed != source_ratio{1, 1}) {
    const source_stream* const video = video_of(file);
    if (video != nullptr && video->start)
      picture_begin_ = *video->start;
    for (const source_stream& stream : file.streams)
      if (stream.kind == source_kind::audio && stream.decodes)
        unused_.push_back(&stream);
  }

  sound_plan plan() {
    const std::size_t wanted = demands_.sounds ? demands_.sounds->size() : 0;
    first_ = unused_.empty() ? nullptr : unused_.front();
    choose_streams(wanted);
    for (std::size_t slot = 0; slot < chosen_.size(); ++slot)
      plan_.streams.push_back(work_for(chosen_[slot], slot));
    if (plan_.problem.empty())
      settle_begin();
    settle_end();
    for (const source_stream* stream : unused_)
      plan_.beyond.push_back(stream->index);
    return std::move(plan_);
  }

 private:
  const titleset_sound* asked(std::size_t slot) const {
    return demands_.sounds && slot < demands_.sounds->size() ? &(*demands_.sounds)[slot] : nullptr;
  }

  const source_stream* take(std::vector<const source_stream*>::iterator found) {
    const source_stream* const stream = *found;
    unused_.erase(found);
    return stream;
  }

  /// Languages first, then what is left in the file's order.
  void choose_streams(std::size_t wanted) {
    // A first title without sound does not silence the others.
    const bool any_number = wanted == 0 || choices_.more_sounds;
    const bool silent = first_ == nullptr;
    chosen_.assign(wanted, nullptr);
    for (std::size_t slot = 0; slot < wanted; ++slot) {
      const auto found =
          std::find_if(unused_.begin(), unused_.end(), [&](const source_stream* stream) {
            return same_language(stream->language, asked(slot)->language);
          });
      if (found != unused_.end())
        chosen_[slot] = take(found);
    }
    for (const source_stream*& slot : chosen_)
      if (slot == nullptr && !unused_.empty())
        slot = take(unused_.begin());
    while (any_number && !unused_.empty() && chosen_.size() < most_sounds)
      chosen_.push_back(take(unused_.begin()));
    if (silent && !choices_.silence)
      chosen_.clear();
    else if (silent && wanted == 0 && !demands_.sounds)
      chosen_.push_back(nullptr);
    else
      std::replace(chosen_.begin(), chosen_.end(), static_cast<const source_stream*>(nullptr),
                   first_);
  }

  double begin_of(const source_stream& stream) const {
    return stream.start ? *stream.start - picture_begin_ : 0;
  }

  std::optional<std::string> why_not_copied(const source_stream& stream, disc_sound kind) const {
    if (kind_of(stream) != kind)
      return "it is " + codec_name(stream.codec);
    if (stream.audio.sample_rate != 48000)
      return "it has " + decimal_text(stream.audio.sample_rate / 1000.0, 3) + " kHz, a disc 48 kHz";
    const std::int64_t most = kind == disc_sound::mp2 ? most_mp2_rate : most_ac3_rate;
    if (stream.bit_rate.value_or(0) > most)
      return "it has " + rate_text(static_cast<double>(*stream.bit_rate)) + ", a disc at most " +
             rate_text(static_cast<double>(most));
    if (is_joined_)
      return "its clock jumps, as where recordings were joined";
    if (is_faster_)
      return "it is made faster with the picture";
    if (choices_.even_loudness)
      return "its loudness is changed";
    if (std::abs(begin_of(stream)) * 1000 >= too_long_a_delay)
      return "it begins " + seconds_text(std::abs(begin_of(stream))) +
             (begin_of(stream) > 0 ? " after the picture" : " before the picture");
    return std::nullopt;
  }

  sound_work work_for(const source_stream* stream, std::size_t slot) {
    const titleset_sound* const wanted = asked(slot);
    sound_work work;
    work.kind = wanted != nullptr ? wanted->kind : choices_.new_sound;
    if (work.kind == disc_sound::other)
      plan_.problem = "sound stream " + std::to_string(slot + 1) +
                      " of the first title is neither AC-3 nor MPEG audio, and no other kind can "
                      "be made for the new one";
    if (stream == nullptr) {
      work.channels = channels_for(work.kind, 2, wanted != nullptr ? wanted->channels : 0);
      work.bit_rate = rate_for(work.kind, work.channels);
      work.reason = "the file has no sound";
      return work;
    }
    // Where no title asks for a kind, what is ready stays as it is.
    if (wanted == nullptr)
      work.kind = kind_of(*stream).value_or(choices_.new_sound);
    work.stream = stream->index;
    work.is_joined = is_joined_;
    work.language = language_code_of(stream->language);
    work.source_seconds = stream->length.value_or(0);
    const std::optional<std::string> why = why_not_copied(*stream, work.kind);
    if (!why) {
      work.fate = stream_fate::copied;
      work.reason = kind_name(work.kind) + " that a disc takes as it is";
      work.channels = stream->audio.channels;
      work.bit_rate = stream->bit_rate.value_or(rate_for(work.kind, work.channels));
    } else {
      encode(work, *stream, wanted, *why);
    }
    return work;
  }

  static void encode(sound_work& work, const source_stream& stream, const titleset_sound* wanted,
                     const std::string& why) {
    encode_instead(work, stream.audio.channels, why, wanted != nullptr ? wanted->channels : 0);
  }

  /// All that are copied must begin together.
  void settle_begin() {
    std::optional<double> begin;
    for (std::size_t slot = 0; slot < plan_.streams.size(); ++slot) {
      sound_work& work = plan_.streams[slot];
      if (work.fate != stream_fate::copied)
        continue;
      const double own = begin_of(*chosen_[slot]);
      if (!begin)
        begin = own;
      else if (std::abs(own - *begin) > near_enough)
        encode(work, *chosen_[slot], asked(slot), "it begins at another time than the first one");
    }
    if (begin && std::abs(*begin) > no_delay_at_all)
      plan_.begin = *begin;
  }

  void settle_end() {
    for (const source_stream* const stream : chosen_)
      if (stream != nullptr && stream->length)
        plan_.end = std::max(plan_.end, begin_of(*stream) + *stream->length);
  }

  const titleset_demands& demands_;
  const import_choices& choices_;
  bool is_joined_, is_faster_;
  double picture_begin_ = 0;
  std::vector<const source_stream*> unused_, chosen_;
  const source_stream* first_ = nullptr;
  sound_plan plan_;
};

}  // namespace

void encode_instead(sound_work& work, int channels, const std::string& why, int wanted_channels) {
  work.fate = stream_fate::encoded;
  work.reason = why;
  work.channels = channels_for(work.kind, channels, wanted_channels);
  work.bit_rate = rate_for(work.kind, work.channels);
}

int sound_plan::delay() const {
  return -static_cast<int>(std::lround(begin * 1000));
}

sound_plan sound_plan_for(const source_facts& file, const titleset_demands& demands,
                          const import_choices& choices, source_ratio speed) {
  return sound_planner(file, demands, choices, speed).plan();
}

}  // namespace corvane
