// How long the examination of an audio file takes against "cat" of it, both with the file in
// memory.
//
//   audio_bench FILE [RUNS]       5 runs of each, in turns
#include "examine/audio_facts.h"
#include "platform/files/slice_buffer.h"

#include <algorithm>
#include <chrono>
#include <cstdint>
#include <cstdio>
#include <cstdlib>
#include <iostream>
#include <memory>
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
  std::cerr << "audio_bench: " << why << "\n";
  std::exit(1);
}

// As "cat" reads.
corvane::audio_facts examine(const std::string& name) {
  const std::unique_ptr<std::FILE, int (*)(std::FILE*)> file(std::fopen(name.c_str(), "rb"),
                                                             std::fclose);
  if (!file || std::setvbuf(file.get(), nullptr, _IONBF, 0) != 0)
    give_up("cannot open " + name);
  corvane::audio_scanner scanner;
  corvane::slice_buffer slice;
  while (const std::size_t read = std::fread(slice.data(), 1, slice.size(), file.get()))
    scanner.feed(slice.data(), read);
  scanner.finish();
  return scanner.facts();
}

void cat(const std::string& file) {
  const std::string command = "cat '" + file + "' >/dev/null";
  if (std::system(command.c_str()) != 0)
    give_up("cat failed");
}

}  // namespace

int main(int argc, char** argv) {
  if (argc < 2)
    give_up("usage: audio_bench FILE [RUNS]");
  const std::string file = argv[1];
  const int runs = argc > 2 ? std::atoi(argv[2]) : 5;
  cat(file);
  std::vector<double> scans, cats;
  corvane::audio_facts facts;
  for (int run = 0; run < runs; ++run) {
    const auto scan_begin = steady::now();
    facts = examine(file);
    scans.push_back(seconds_since(scan_begin));
    const auto cat_begin = steady::now();
    cat(file);
    cats.push_back(seconds_since(cat_begin));
  }
  if (facts.frames == 0 || facts.frame_bytes != facts.bytes || facts.damaged_frames > 0)
    give_up("the facts are wrong");
  std::printf("frames %llu\nscan_s %.3f\ncat_s %.3f\nratio %.2f\n",
              static_cast<unsigned long long>(facts.frames), median(scans), median(cats),
              median(scans) / median(cats));
  return 0;
}
