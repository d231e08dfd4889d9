// How long the index of a video file takes against "cat" of it, both with the file in memory, what
// memory it costs, and what a picture anywhere costs after it.
//
//   media_bench FILE [RUNS]       5 runs of each, in turns
#include "media/video_file.h"

#include <algorithm>
#include <chrono>
#include <cstdint>
#include <cstdio>
#include <cstdlib>
#include <fstream>
#include <iostream>
#include <memory>
#include <random>
#include <string>
#include <vector>

namespace {

using steady = std::chrono::steady_clock;

double seconds_since(steady::time_point begin) {
  return std::chrono::duration<double>(steady::now() - begin).count();
}

double median(std::vector<double> numbers) {
  std::sort(numbers.begin(), numbers.end());
  return numbers.at(numbers.size() / 2);
}

[[noreturn]] void give_up(const std::string& why) {
  std::cerr << "media_bench: " << why << "\n";
  std::exit(1);
}

double resident_megabytes(const std::string& name) {
  std::ifstream status("/proc/self/status");
  for (std::string line; std::getline(status, line);)
    if (line.rfind(name + ":", 0) == 0)
      return std::stod(line.substr(name.size() + 1)) / 1024;
  return 0;
}

struct scan_times {
  double whole = 0;
  double longest_slice = 0;
};

// As a window does it: slices of 10 ms.
scan_times scan(corvane::video_file& video) {
  scan_times times;
  const auto begin = steady::now();
  for (bool finished = false; !finished;) {
    const auto slice = steady::now();
    const auto progress = video.scan(10);
    if (!progress)
      give_up(progress.error);
    finished = progress->finished;
    times.longest_slice = std::max(times.longest_slice, seconds_since(slice));
  }
  times.whole = seconds_since(begin);
  return times;
}

std::unique_ptr<corvane::video_file> opened(const std::string& file) {
  auto video = corvane::video_file::open(file);
  if (!video)
    give_up(video.error);
  return std::move(*video);
}

double cat(const std::string& file) {
  const std::string command = "cat '" + file + "' >/dev/null";
  const auto begin = steady::now();
  if (std::system(command.c_str()) != 0)
    give_up("cat failed");
  return seconds_since(begin);
}

void compare_scan(const std::string& file, int runs) {
  cat(file);
  std::vector<double> scans, cats, slices;
  for (int run = 0; run < runs; ++run) {
    const auto video = opened(file);
    const scan_times times = scan(*video);
    scans.push_back(times.whole);
    slices.push_back(times.longest_slice);
    cats.push_back(cat(file));
  }
  std::printf("scan_s %.3f\ncat_s %.3f\nratio %.2f\n", median(scans), median(cats),
              median(scans) / median(cats));
  std::printf("longest_slice_ms %.1f\n", 1e3 * median(slices));
}

// The pictures of one group in order, then as many anywhere.
void compare_pictures(corvane::video_file& video) {
  std::mt19937_64 random(1);
  const auto pick = [&](std::int64_t below) {
    return static_cast<std::int64_t>(random() % static_cast<std::uint64_t>(below));
  };
  const auto show = [&](std::int64_t number) {
    const auto begin = steady::now();
    const std::uint64_t before = video.decoded();
    if (const auto p = video.picture_number(number); !p)
      give_up(p.error);
    return std::pair(1e3 * seconds_since(begin), video.decoded() - before);
  };
  std::vector<double> groups, pictures;
  std::uint64_t most = 0, longest_group = 0;
  for (int round = 0; round < 60; ++round) {
    const std::int64_t gop = pick(video.gops() - 1);
    const std::int64_t first = video.first_of_gop(gop), next = video.first_of_gop(gop + 1);
    const auto begin = steady::now();
    for (std::int64_t number = first; number < next; ++number)
      show(number);
    groups.push_back(1e3 * seconds_since(begin));
    longest_group = std::max(longest_group, static_cast<std::uint64_t>(next - first));
    const auto [milliseconds, decoded] = show(pick(video.pictures()));
    pictures.push_back(milliseconds);
    most = std::max(most, decoded);
  }
  std::printf("group_ms %.1f\npicture_ms %.1f\n", median(groups), median(pictures));
  std::printf("slowest_picture_ms %.1f\n", *std::max_element(pictures.begin(), pictures.end()));
  std::printf("most_decoded %llu\nlongest_group %llu\n", static_cast<unsigned long long>(most),
              static_cast<unsigned long long>(longest_group));
}

}  // namespace

int main(int argc, char** argv) {
  if (argc < 2)
    give_up("usage: media_bench FILE [RUNS]");
  compare_scan(argv[1], argc > 2 ? std::atoi(argv[2]) : 5);
  const double before = resident_megabytes("VmRSS");
  const auto video = opened(argv[1]);
  scan(*video);
  std::printf("pictures %lld\n", static_cast<long long>(video->pictures()));
  std::printf("index_mb %.1f\n", resident_megabytes("VmRSS") - before);
  compare_pictures(*video);
  std::printf("peak_mb %.1f\n", resident_megabytes("VmHWM"));
  return 0;
}
