// Tells what is in a file, or why it cannot be told; before and after, whether FFmpeg is in memory.
// A program of its own, so that a test can put it where it has its module and where it has not.
#include "media/source_probe.h"

#include <fstream>
#include <iostream>
#include <string>

namespace {

bool ffmpeg_in_memory() {
  std::ifstream maps("/proc/self/maps");
  for (std::string line; std::getline(maps, line);)
    if (line.find("libavformat") != std::string::npos ||
        line.find("libavutil") != std::string::npos)
      return true;
  return false;
}

void tell(const corvane::source_facts& facts) {
  std::cout << facts.container;
  for (const corvane::source_stream& stream : facts.streams)
    std::cout << " " << stream.codec;
}

}  // namespace

int main(int argc, char** argv) {
  const char* const loaded[] = {"without", "with"};
  const bool before = ffmpeg_in_memory();
  const auto facts = corvane::probe_source(argc > 1 ? argv[1] : "");
  std::cout << loaded[before ? 1 : 0] << " FFmpeg; ";
  if (facts)
    tell(*facts);
  else
    std::cout << facts.error;
  std::cout << "; " << loaded[ffmpeg_in_memory() ? 1 : 0] << " FFmpeg\n";
  return facts ? 0 : 1;
}
