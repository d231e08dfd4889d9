#include "disc/disc_command.h"

#include "formats/numbers.h"
#include "formats/text.h"

#include <algorithm>
#include <vector>

namespace corvane {
namespace {

/// The words of a command: the first ones, and one more than any has that is known here; the
/// command may be any length.
std::vector<std::string> words_of(std::string_view command) {
  constexpr std::size_t most = 6;
  std::vector<std::string> words;
  for (command = trim(command); !command.empty() && words.size() < most;) {
    words.emplace_back(command.substr(0, command.find(' ')));
    command = trim_left(command.substr(words.back().size()));
  }
  return words;
}

/// With one blank between its words.
std::string with_single_blanks(std::string_view command) {
  std::string text;
  for (const char c : trim(command))
    if (c != ' ' || !text.ends_with(' '))
      text += c;
  return text;
}

bool begins_with_words(std::string_view command) {
  constexpr std::string_view all[] = {jump_menu_words, jump_title_words, call_menu_words,
                                      call_last_menu_words};
  return std::any_of(std::begin(all), std::end(all),
                     [&](std::string_view words) { return command.starts_with(words); });
}

std::optional<int> whole_number(const std::string& word) {
  if (word.empty() || word.find_first_not_of("0123456789") != std::string::npos)
    return std::nullopt;
  return leading_whole(word);
}

command_form two_words_and_numbers(const std::vector<std::string>& words) {
  const std::string start = words[0] + " " + words[1];
  const std::optional<int> first = words.size() > 2 ? whole_number(words[2]) : std::nullopt;
  if (start == call_menu_words && words.size() == 2)
    return {verb::call_menu, {}, {}};
  if (!first)
    return {};
  if (start == call_menu_words && words.size() == 3)
    return {verb::call_menu, first, {}};
  if (start == jump_menu_words && words.size() == 3)
    return {verb::jump_menu, first, {}};
  if (start == jump_title_words && words.size() == 3)
    return {verb::jump_title, first, {}};
  if (start == jump_title_words && words.size() == 5 && words[3] == "chapter") {
    const std::optional<int> chapter = whole_number(words[4]);
    return chapter ? command_form{verb::jump_title, first, chapter} : command_form{};
  }
  return {};
}

}  // namespace

command_form parse_command(std::string_view command) {
  const std::vector<std::string> words = words_of(command);
  const std::string text = join(words, " ");
  if (text == "jump titleset 1 menu")
    return {verb::jump_titleset, {}, {}};
  if (text == call_last_menu_words)
    return {verb::call_last_menu, {}, {}};
  return words.size() < 2 ? command_form{} : two_words_and_numbers(words);
}

disc_command command_of(std::string_view text) {
  return {std::string(text), parse_command(text)};
}

std::string interpreted(std::string_view command) {
  const std::string single_blanks = with_single_blanks(command);
  const bool as_it_stands = begins_with_words(command) || !begins_with_words(single_blanks);
  return as_it_stands ? std::string(command) : single_blanks;
}

bool is_interpreted(std::string_view command) {
  return begins_with_words(interpreted(command));
}

}  // namespace corvane
