#include "import/copied_streams.h"

#include "examine/measures.h"
#include "examine/stream_rules.h"
#include "import/disc_budget.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <optional>
#include <string>
#include <string_view>

namespace corvane {
namespace {

using namespace std::string_view_literals;

// Streams may begin and end within a frame or two of what their packets say.
constexpr double least_gap = 0.1;
// Where the clock itself jumps, which is not seen of all files, nothing is missing.
constexpr double most_gap = 60;
// Beside sound that follows the clock at each join, video has to be as long as that says.
constexpr double most_off_at_joins = 0.045;

bool is_of_multiplex(const import_plan& plan) {
  return plan.container == "mpeg" || plan.container == "mpegts";
}

file_facts facts_of_made(const std::string& file, const std::function<bool()>& goes_on) {
  file_scan scan(temporary_name(file));
  while (goes_on() && scan.read_slice()) {
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

std::optional<std::string> why_off_at_joins(double wanted, double made) {
  if (wanted <= 0 || std::abs(wanted - made) < most_off_at_joins)
    return std::nullopt;
  return "its parts do not end with their sound, by " + seconds_text(std::abs(wanted - made));
}

/// Of what is found about a video that headers at its beginning do not tell, what encoding cures.
constexpr std::array curable = {
    "video-peak-rate"sv, "video-high-rate"sv,      "video-large-beginning"sv,
    "video-buffer"sv,    "gop-length"sv,           "gop-sequence-header"sv,
    "video-changes"sv,   "video-aspect-changes"sv, "video-end-code"sv,
    "video-low-delay"sv, "video-profile"sv,        "video-aspect-square"sv,
};

/// Why a disc does not take it as it is; nullopt if it does.
std::optional<std::string> why_not_as_it_is(const video_facts& video, const import_plan& plan) {
  const video_standard standard = plan.demands.standard.value_or(video.standard);
  for (const finding& f : video_findings(video, standard, {}, {}, false))
    if (std::ranges::find(curable, f.rule) != curable.end())
      return f.found;
  return std::nullopt;
}

void note(import_plan& plan, int stream, const std::string& why) {
  for (planned_stream& planned : plan.streams)
    if (planned.stream == stream)
      planned = {stream, stream_fate::encoded, why};
}

bool encode_video(import_job& job, const file_facts& made) {
  video_plan& video = job.plan.video;
  if (video.fate != stream_fate::copied || !made.video)
    return false;
  auto why = why_not_as_it_is(*made.video, job.plan);
  if (!why && is_of_multiplex(job.plan))
    why = job.plan.joined ? why_off_at_joins(job.plan.seconds, made.video->seconds)
                          : why_gaps(job.plan.seconds, made.video->seconds);
  if (!why)
    return false;
  video.fate = stream_fate::encoded;
  hold_for_what_is_left_out(job.plan);
  note(job.plan, video.stream, *why);
  // About as many bits as it had, which are what is counted of the disc.
  if (job.bits.quality == import_quality::fill_disc && made.video->seconds > 0) {
    const double rate = static_cast<double>(made.size) * 8 / made.video->seconds;
    const auto most = static_cast<double>(std::min(job.bits.peak, most_mean_rate));
    job.bits.quality = import_quality::mean_rate;
    job.bits.mean = std::llround(std::clamp(rate, static_cast<double>(least_rate), most));
  }
  return true;
}

bool encode_sound(import_job& job, std::size_t number, const std::function<bool()>& goes_on) {
  sound_work& work = job.plan.sound.streams[number];
  if (work.fate != stream_fate::copied)
    return false;
  const file_facts made = facts_of_made(job.files.sounds[number], goes_on);
  if (!made.whole || !made.audio)
    return false;
  const double wanted = job.plan.sound.left_out > 0
                            ? std::min(work.source_seconds, job.plan.seconds - job.plan.sound.begin)
                            : work.source_seconds;
  const auto why = why_gaps(wanted, seconds_of(made.audio->length));
  if (!why)
    return false;
  encode_instead(work, work.channels, *why);
  note(job.plan, *work.stream, *why);
  return true;
}

}  // namespace

bool encode_what_cannot_stay(import_job& job, const file_facts& made,
                             const std::function<bool()>& goes_on) {
  bool changed = false;
  for (std::size_t i = 0; is_of_multiplex(job.plan) && i < job.plan.sound.streams.size(); ++i)
    changed = encode_sound(job, i, goes_on) || changed;
  // Behind the sound, which ends with the picture as long as that is copied.
  return encode_video(job, made) || changed;
}

}  // namespace corvane
