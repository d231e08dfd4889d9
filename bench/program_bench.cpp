// How long the examination of a program stream takes against "cat" of it, both with the file in
// memory: with the facts of the streams inside, and without them.
//
//   program_bench FILE [RUNS]       5 runs of each, in turns
#include "examine/program_stream_facts.h"
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
  std::cerr << "program_bench: " << why << "\n";
  std::exit(1);
}

corvane::program_stream_facts examine(const std::string& path, corvane::inner_streams which) {
  auto file = corvane::file_slices::open(path);
  if (!file)
    give_up(file.error);
  corvane::program_stream_scanner scanner(which);
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
    give_up("usage: program_bench FILE [RUNS]");
  const std::string file = argv[1];
  const int runs = argc > 2 ? std::atoi(argv[2]) : 5;
  cat(file);
  std::vector<double> examined, counted, cats;
  corvane::program_stream_facts facts;
  for (int run = 0; run < runs; ++run) {
    examined.push_back(timed([&] { facts = examine(file, corvane::inner_streams::examined); }));
    cats.push_back(timed([&] { cat(file); }));
    counted.push_back(timed([&] { examine(file, corvane::inner_streams::counted); }));
  }
  if (facts.video() == nullptr || facts.loose.count > 0 || facts.cut)
    give_up("the facts are wrong");
  std::printf("packs %llu\nexamined_s %.3f\ncounted_s %.3f\ncat_s %.3f\n",
              static_cast<unsigned long long>(facts.packs), median(examined), median(counted),
              median(cats));
  std::printf("examined_ratio %.2f\ncounted_ratio %.2f\n", median(examined) / median(cats),
              median(counted) / median(cats));
  return 0;
}
