// How long the examination of a stream takes against "cat" of it, both with the file in memory.
//
//   examine_bench video|audio FILE [RUNS]       5 runs of each, in turns
#include "examine/audio_facts.h"
#include "examine/video_facts.h"
#include "platform/files/file_slices.h"

#include <algorithm>
#include <chrono>
#include <cstdint>
#include <cstdio>
#include <cstdlib>
#include <iostream>
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
  std::cerr << "examine_bench: " << why << "\n";
  std::exit(1);
}

template <typename Scanner>
auto facts_of(const std::string& path) {
  auto file = corvane::file_slices::open(path);
  if (!file)
    give_up(file.error);
  Scanner scanner;
  for (;;) {
    const auto slice = file->next();
    if (!slice)
      give_up(slice.error);
    if (slice->empty())
      break;
    scanner.feed(slice->data(), slice->size());
  }
  scanner.finish();
  return scanner.facts();
}

std::uint64_t pictures_of(const std::string& path) {
  return facts_of<corvane::video_scanner>(path).pictures;
}

std::uint64_t frames_of(const std::string& path) {
  const corvane::audio_facts facts = facts_of<corvane::audio_scanner>(path);
  if (facts.frame_bytes != facts.bytes || facts.damaged_frames > 0)
    give_up("the file is not whole");
  return facts.frames;
}

void cat(const std::string& file) {
  const std::string command = "cat '" + file + "' >/dev/null";
  if (std::system(command.c_str()) != 0)
    give_up("cat failed");
}

template <typename Work>
double timed(Work work) {
  const auto begin = steady::now();
  work();
  return seconds_since(begin);
}

}  // namespace

int main(int argc, char** argv) {
  const std::string kind = argc > 2 ? argv[1] : "";
  if (kind != "video" && kind != "audio")
    give_up("usage: examine_bench video|audio FILE [RUNS]");
  const std::string file = argv[2];
  const int runs = argc > 3 ? std::atoi(argv[3]) : 5;
  cat(file);
  std::uint64_t found = 0;
  std::vector<double> scans, cats;
  for (int run = 0; run < runs; ++run) {
    scans.push_back(timed([&] { found = kind == "video" ? pictures_of(file) : frames_of(file); }));
    cats.push_back(timed([&] { cat(file); }));
  }
  std::printf("scan_s %.3f\ncat_s %.3f\nratio %.2f\n", median(scans), median(cats),
              median(scans) / median(cats));
  std::printf("%s %llu\n", kind == "video" ? "pictures" : "frames",
              static_cast<unsigned long long>(found));
  return 0;
}
