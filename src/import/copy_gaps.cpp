#include "import/copy_gaps.h"

#include "examine/file_facts.h"
#include "examine/measures.h"

#include <algorithm>
#include <optional>
#include <string>

namespace corvane {
namespace {

// Streams may begin and end within a frame or two of what their packets say.
constexpr double least_gap = 0.1;
// Where the clock itself jumps, between parts that were joined, nothing is missing.
constexpr double most_gap = 60;

bool is_multiplex(const import_plan& plan) {
  return plan.container == "mpeg" || plan.container == "mpegts";
}

file_facts facts_of_made(const std::string& file) {
  file_scan scan(temporary_name(file));
  while (scan.read_slice()) {
  }
  return scan.facts();
}

/// Why a stream that should last so long, and does so, is encoded; nullopt if it has no gaps.
std::optional<std::string> why_gaps(double wanted, double made) {
  const double missing = wanted - made;
  if (wanted <= 0 || missing < least_gap || missing > most_gap)
    return std::nullopt;
  return seconds_text(missing) + " are missing inside it";
}

void note(import_plan& plan, int stream, const std::string& why) {
  for (planned_stream& planned : plan.streams)
    if (planned.stream == stream)
      planned = {stream, stream_fate::encoded, why};
}

bool encode_video(import_job& job) {
  video_plan& video = job.plan.video;
  if (video.fate != stream_fate::copied)
    return false;
  const file_facts made = facts_of_made(job.files.video);
  if (!made.video)
    return false;
  const auto why = why_gaps(job.plan.seconds, made.video->seconds);
  if (!why)
    return false;
  video.fate = stream_fate::encoded;
  note(job.plan, video.stream, *why);
  // About as many bits as it had.
  if (job.bits.quality == import_quality::fill_disc) {
    const double rate = static_cast<double>(made.size) * 8 / made.video->seconds;
    job.bits.quality = import_quality::mean_rate;
    job.bits.mean = std::clamp(static_cast<std::int64_t>(rate), job.bits.mean, job.bits.peak);
  }
  return true;
}

bool encode_sound(import_job& job, std::size_t number) {
  sound_work& work = job.plan.sound.streams[number];
  if (work.fate != stream_fate::copied)
    return false;
  const file_facts made = facts_of_made(job.files.sounds[number]);
  if (!made.audio)
    return false;
  const auto why = why_gaps(work.source_seconds, seconds_of(made.audio->length));
  if (!why)
    return false;
  encode_instead(work, work.channels, *why);
  note(job.plan, *work.stream, *why);
  return true;
}

}  // namespace

bool encode_what_has_gaps(import_job& job) {
  if (!is_multiplex(job.plan))
    return false;
  bool changed = encode_video(job);
  for (std::size_t i = 0; i < job.plan.sound.streams.size(); ++i)
    changed = encode_sound(job, i) || changed;
  return changed;
}

}  // namespace corvane
