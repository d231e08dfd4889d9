#include "import/import_speeds.h"

#include "formats/text.h"
#include "platform/files/files.h"
#include "platform/files/paths.h"
#include "runner/run_files.h"
#include "runner/run_meter.h"

#include <algorithm>
#include <array>
#include <charconv>
#include <thread>

namespace corvane {
namespace {

constexpr std::string_view copying = "copy";

/// The file is much smaller.
constexpr std::uintmax_t largest_file = 4096;
constexpr std::size_t most_kinds = 50;

/// Decoding and scaling a pixel, against encoding one.
constexpr double part_of_source = 0.2;

/// Measured on one core of 2020, with ffmpeg 5.1.
constexpr double encode_cost = 1 / 36e6, copy_cost = 1 / 300e6;

/// More than these do not make ffmpeg's MPEG-2 encoder faster.
constexpr unsigned most_cores = 8;
/// Of each core but the first.
constexpr double use_of_core = 0.6;

/// What takes less says nothing of the machine.
constexpr double least_seconds = 2;

bool is_likely(const std::string& kind, double cost) {
  const double usual = kind == copying ? copy_cost : encode_cost;
  return cost > usual / 1000 && cost < usual * 1000;
}

double guessed_cost(const std::string& kind) {
  if (kind == copying)
    return copy_cost;
  const unsigned cores = std::clamp(std::thread::hardware_concurrency(), 1u, most_cores);
  return encode_cost / (1 + use_of_core * (cores - 1));
}

/// Of the kind, or the slowest of other codecs, as most people's machines have but few kinds.
double cost_of(const std::string& kind, const import_speeds& speeds) {
  if (const auto known = speeds.find(kind); known != speeds.end())
    return known->second;
  double slowest = 0;
  for (const auto& [other, cost] : speeds)
    if (other != copying && kind != copying)
      slowest = std::max(slowest, cost);
  return slowest > 0 ? slowest : guessed_cost(kind);
}

double pixels(picture_size size) {
  return static_cast<double>(size.width) * size.height;
}

}  // namespace

import_speeds parse_import_speeds(std::string_view text) {
  import_speeds speeds;
  for (const std::string& line : split(text, "\n")) {
    const std::size_t blank = line.find(' ');
    if (blank == std::string::npos || blank == 0 || speeds.size() >= most_kinds)
      continue;
    const std::string kind = line.substr(0, blank);
    double cost = 0;
    if (std::from_chars(line.data() + blank + 1, line.data() + line.size(), cost).ec ==
            std::errc() &&
        is_likely(kind, cost))
      speeds[kind] = cost;
  }
  return speeds;
}

std::string import_speeds_text(const import_speeds& speeds) {
  std::string text;
  for (const auto& [kind, cost] : speeds) {
    std::array<char, 32> digits{};
    const auto written = std::to_chars(digits.data(), digits.data() + digits.size(), cost,
                                       std::chars_format::scientific, 3);
    text.append(kind).append(" ").append(digits.data(), written.ptr).append("\n");
  }
  return text;
}

import_speeds read_import_speeds(const std::string& app) {
  const result<std::string> text = read_file(join_path(app, run_file::import_speeds), largest_file);
  return parse_import_speeds(text ? *text : std::string());
}

std::string kind_of_import(const import_job& job) {
  const video_plan& video = job.plan.video;
  if (video.fate == stream_fate::copied)
    return std::string(copying);
  return video.codec.empty() || video.codec.find(' ') != std::string::npos ? "other" : video.codec;
}

double work_of_import(const import_job& job) {
  const import_plan& plan = job.plan;
  if (plan.video.fate == stream_fate::copied)
    return static_cast<double>(plan.source_bytes);
  const picture_work& work = plan.video.work;
  const double pictures = plan.seconds * work.rate.value() * (has_two_passes(job) ? 2 : 1);
  return pictures * (pixels(work.geometry.disc) + part_of_source * pixels(plan.video.size));
}

double expected_seconds(const import_job& job, const import_speeds& speeds) {
  return work_of_import(job) * cost_of(kind_of_import(job), speeds);
}

void learn_speed(import_speeds& speeds, const import_job& job, double seconds) {
  const double work = work_of_import(job);
  const std::string kind = kind_of_import(job);
  if (seconds < least_seconds || work <= 0 || !is_likely(kind, seconds / work))
    return;
  // What else went on then is not what will go on the next time.
  const auto known = speeds.find(kind);
  speeds[kind] = known == speeds.end() ? seconds / work : (known->second + seconds / work) / 2;
}

std::string duration_text(double seconds) {
  const std::string text = time_left_text(seconds);
  constexpr std::string_view left = " left";
  return text.ends_with(left) ? text.substr(0, text.size() - left.size()) : text;
}

}  // namespace corvane
