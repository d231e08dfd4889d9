#include "import/import_bits.h"

#include "import/disc_budget.h"

#include <algorithm>
#include <cmath>
#include <optional>

namespace corvane {
namespace {

bool is_encoded(const import_job& job) {
  return job.plan.video.fate == stream_fate::encoded;
}

budget_title title_of(const import_job& job) {
  budget_title title{job.plan.seconds, sound_rate_of(job.plan), std::nullopt};
  // No more than its whole file.
  if (!is_encoded(job))
    title.video_bytes = job.plan.source_bytes;
  return title;
}

std::vector<budget_title> titles_of(const std::vector<import_job>& jobs) {
  std::vector<budget_title> titles;
  titles.reserve(jobs.size());
  for (const import_job& job : jobs)
    titles.push_back(title_of(job));
  return titles;
}

}  // namespace

std::int64_t sound_rate_of(const import_plan& plan) {
  std::int64_t rate = 0;
  for (const sound_work& work : plan.sound.streams)
    rate += work.bit_rate;
  return rate;
}

std::int64_t bytes_of_sound(const sound_work& work, double seconds) {
  constexpr double rate = 48000;
  constexpr std::int64_t samples_of_ac3 = 1536, samples_of_mp2 = 1152;
  const std::int64_t samples = work.kind == disc_sound::mp2 ? samples_of_mp2 : samples_of_ac3;
  const double frames = std::ceil(seconds * rate / static_cast<double>(samples));
  const std::int64_t frame = work.bit_rate * samples / static_cast<std::int64_t>(rate) / 8;
  return static_cast<std::int64_t>(std::max(0.0, frames)) * frame;
}

failure settle_bits(std::vector<import_job>& jobs, const import_choices& choices,
                    std::uint64_t used) {
  std::int64_t mean = choices.mean_rate;
  if (choices.quality == import_quality::fill_disc &&
      std::any_of(jobs.begin(), jobs.end(), is_encoded)) {
    for (const import_job& job : jobs)
      if (job.plan.seconds <= 0)
        return "Nobody knows how long \"" + job.source +
               "\" is, and so how many bits it may have.  Choose a mean rate or constant quality.";
    const auto filled = video_rate_to_fill(choices.disc_bytes, used, titles_of(jobs));
    if (!filled)
      return "There is not enough room on the disc for so many hours.  Choose a larger disc or a "
             "mean rate, or import fewer files.";
    mean = *filled;
  }
  for (import_job& job : jobs) {
    const std::int64_t peak = peak_rate_beside(sound_rate_of(job.plan));
    job.bits = {choices.quality, std::clamp(mean, std::min(least_rate, peak), peak), peak,
                choices.quantizer};
    job.even_loudness = choices.even_loudness;
  }
  return std::nullopt;
}

std::uint64_t disc_bytes_of(const std::vector<import_job>& jobs) {
  std::uint64_t bytes = 0;
  for (const import_job& job : jobs) {
    const budget_title title = title_of(job);
    bytes += bytes_on_disc(
        {&title, 1}, job.bits.quality == import_quality::constant ? job.bits.peak : job.bits.mean);
  }
  return bytes;
}

}  // namespace corvane
