// Opens what plays sound, and tells why it cannot be; before and after, whether SDL is in memory. A
// program of its own, so that a test can put it where it has its module and where it has not.
#include "media/sound_output.h"

#include <fstream>
#include <iostream>
#include <string>

namespace {

bool sdl_in_memory() {
  std::ifstream maps("/proc/self/maps");
  for (std::string line; std::getline(maps, line);)
    if (line.find("libSDL") != std::string::npos)
      return true;
  return false;
}

}  // namespace

int main() {
  const char* const loaded[] = {"without", "with"};
  const bool before = sdl_in_memory();
  const auto output = corvane::make_sound_output();
  const corvane::failure why = output ? (*output)->open() : corvane::failure(output.error);
  std::cout << loaded[before ? 1 : 0] << " SDL; " << why.value_or("it is open") << "; "
            << loaded[sdl_in_memory() ? 1 : 0] << " SDL\n";
  return why ? 1 : 0;
}
