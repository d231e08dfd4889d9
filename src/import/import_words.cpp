#include "import/import_words.h"

#include <cmath>

namespace corvane {
namespace {

std::string two_digits(long number) {
  return (number < 10 ? "0" : "") + std::to_string(number);
}

}  // namespace

std::string clock_text(double seconds) {
  const long all = std::lround(seconds);
  const std::string end = two_digits(all % 60);
  if (all < 3600)
    return std::to_string(all / 60) + ":" + end;
  return std::to_string(all / 3600) + ":" + two_digits(all / 60 % 60) + ":" + end;
}

}  // namespace corvane
