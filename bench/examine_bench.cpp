// How long the examination of a stream takes against "cat" of it, both with the file in memory.
//
//   examine_bench FILE [RUNS]       5 runs of each, in turns
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

corvane::video_facts scan(const std::string& path) {
  auto file = corvane::file_slices::open(path);
  if (!file)
    give_up(file.error);
  corvane::video_scanner scanner;
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
  if (argc < 2)
    give_up("usage: examine_bench FILE [RUNS]");
  const std::string file = argv[1];
  const int runs = argc > 2 ? std::atoi(argv[2]) : 5;
  cat(file);
  corvane::video_facts facts;
  std::vector<double> scans, cats;
  for (int run = 0; run < runs; ++run) {
    scans.push_back(timed([&] { facts = scan(file); }));
    cats.push_back(timed([&] { cat(file); }));
  }
  std::printf("scan_s %.3f\ncat_s %.3f\nratio %.2f\n", median(scans), median(cats),
              median(scans) / median(cats));
  std::printf("pictures %llu\n", static_cast<unsigned long long>(facts.pictures));
  return 0;
}
