#include "platform/processes/kept_output.h"

#include <gtest/gtest.h>

#include <string>

namespace corvane {
namespace {

constexpr std::size_t first = kept_output::first, last = kept_output::last;

/// Lines of ten characters, numbered, of this size together.
std::string lines(std::size_t size) {
  std::string text;
  for (int i = 0; text.size() < size; ++i) {
    const std::string number = std::to_string(i);
    text += std::string(9 - number.size(), ' ') + number + "\n";
  }
  return text.substr(0, size);
}

std::string kept(const std::string& text, std::size_t piece) {
  kept_output output;
  for (std::size_t at = 0; at < text.size(); at += piece)
    output.add(std::string_view(text).substr(at, piece));
  return output.text();
}

TEST(KeptOutput, OfUsualSizeIsWhole) {
  EXPECT_EQ(kept("", 1), "");
  for (const std::size_t size : {std::size_t{1}, std::size_t{5000}, first - 1, first, first + 1,
                                 first + last - 1, first + last})
    EXPECT_TRUE(kept(lines(size), 4096) == lines(size)) << size;
}

TEST(KeptOutput, OfALongOneIsItsBeginningAndTheWholeLinesAtItsEnd) {
  for (const std::size_t size :
       {first + last + 1, first + 2 * last, first + 2 * last + 1, first + 7 * last + 5})
    for (const std::size_t piece : {std::size_t{4096}, std::size_t{999}, size}) {
      const std::string text = lines(size);
      const std::string end = text.substr(text.size() - last);
      EXPECT_TRUE(kept(text, piece) == text.substr(0, first) + "\n" + end.substr(end.find('\n')))
          << size << " in " << piece;
    }
}

TEST(KeptOutput, PartOfALineIsNotTakenForOne) {
  const std::string text = std::string(first + 2 * last, 'x');
  EXPECT_TRUE(kept(text, 4096) == text.substr(0, first) + "\n");
  EXPECT_TRUE(kept(text + "\rERR:  y", 4096) == text.substr(0, first) + "\n\rERR:  y");
}

}  // namespace
}  // namespace corvane
