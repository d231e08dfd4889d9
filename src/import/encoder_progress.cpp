#include "import/encoder_progress.h"

#include "formats/time_text.h"

#include <algorithm>
#include <charconv>
#include <system_error>

namespace corvane {
namespace {

constexpr std::string_view blanks = " \t\r\n";

/// The word behind the last `name` in the text, with a blank behind it.
std::string_view last_value(std::string_view text, std::string_view name) {
  const std::size_t at = text.rfind(name);
  if (at == std::string_view::npos)
    return {};
  text.remove_prefix(at + name.size());
  text.remove_prefix(std::min(text.find_first_not_of(blanks), text.size()));
  const std::size_t end = text.find_first_of(blanks);
  return end == std::string_view::npos ? std::string_view() : text.substr(0, end);
}

/// The number that a word begins with.
std::optional<double> number_at(std::string_view word) {
  double number = 0;
  const auto [end, error] = std::from_chars(word.data(), word.data() + word.size(), number);
  if (error != std::errc() || end == word.data())
    return std::nullopt;
  return number;
}

}  // namespace

std::optional<encoder_progress> encoder_progress_in(std::string_view output) {
  // What is not a whole line is not looked at: "speed" is the last of it.
  const std::size_t last = output.rfind("speed=");
  if (last == std::string_view::npos)
    return std::nullopt;
  const std::string_view before = output.substr(0, last);
  const auto seconds = typed_time(last_value(before, "time="));
  if (!seconds)
    return std::nullopt;
  encoder_progress progress{*seconds, std::nullopt, std::nullopt};
  const std::size_t line = before.rfind("frame=");
  if (line != std::string_view::npos && before.substr(line).find("time=") != std::string_view::npos)
    progress.pictures_a_second = number_at(last_value(before.substr(line), "fps="));
  progress.speed = number_at(last_value(output.substr(last), "speed="));
  return progress;
}

}  // namespace corvane
