#include "menus/action_choices.h"

#include "disc/disc_command.h"
#include "examine/chapter_rules.h"
#include "examine/item_summary.h"
#include "examine/navigation_map.h"
#include "formats/numbers.h"
#include "formats/sanitized.h"
#include "formats/text.h"
#include "formats/time_text.h"
#include "menus/maker/menu_plan.h"
#include "project/menu_rows.h"
#include "project/post_rows.h"

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <utility>

namespace corvane {
namespace {

using choice_place = map_place::kind;

/// ": tour", or nothing where a file's name says nothing.
std::string name_behind(const std::string& stored) {
  const std::string name = sanitized(cleaned_name(stored));
  return name.empty() ? std::string() : ": " + name;
}

std::string name_of_title(const disc_description& d, int title) {
  return "title " + trimmed(title) + name_behind(d.title(title).video());
}

std::string name_of_menu(const disc_description& d, int menu) {
  return "menu " + trimmed(menu) + name_behind(d.menu(menu).video());
}

/// "00:12:30", "00:12:30.50".
std::string time_of_chapter(double seconds) {
  constexpr std::string_view whole = ".00";
  std::string time = time_text(seconds);
  if (time.ends_with(whole))
    time.resize(time.size() - whole.size());
  return time;
}

class choice_maker {
 public:
  choice_maker(const disc_description& d, const length_teller& length, const lead_source& from)
      : d_(d), length_(length), from_(from) {}

  std::vector<action_choice> make() {
    for (int title = 1; title <= d_.title_count(); ++title)
      add_title_with_chapters(title);
    for (int menu = 1; menu <= d_.menu_count(); ++menu)
      add(name_of_menu(d_, menu), {}, {{choice_place::menu, menu}, 0});
    if (from_.place.what == choice_place::title && d_.jump_table && d_.menu_count() > 0)
      add_words("call last menu", "the menu that was shown last");
    if (from_.place.what == choice_place::first_play)
      add_words(no_first_play, d_.menu_count() > 0 ? "the first menu" : "the first title");
    else
      add_words("exit", "the disc stops");
    return std::move(made_);
  }

 private:
  void add_words(const std::string& command, const std::string& meaning) {
    const std::string line = command + ": " + meaning;
    made_.push_back({command, line, line, 0, 0});
  }

  void add_title_with_chapters(int title) {
    const std::vector<double> begins = chapters_in_file(d_.title(title), {}, true).begins;
    const int chapters = static_cast<int>(begins.size());
    const std::string length = length_(title);
    const std::string name = name_of_title(d_, title);
    std::string about = length;
    if (chapters > 1)
      about += (about.empty() ? "" : ", ") + trimmed(chapters) + " chapters";
    add(about.empty() ? name : name + " (" + about + ")", {}, {{choice_place::title, title}, 0});
    if (chapters < 2 || from_.place.what == choice_place::first_play)
      return;
    for (int chapter = 1; chapter <= chapters; ++chapter)
      add("chapter " + trimmed(chapter) + ", " +
              time_of_chapter(begins[static_cast<std::size_t>(chapter) - 1]),
          name, {{choice_place::title, title}, chapter});
  }

  /// The words are those of every other way of pointing at a place. `below`: the title whose
  /// chapter it is.
  void add(const std::string& text, const std::string& below, const lead_target& to) {
    const result<std::string> command = command_to(d_, from_, to);
    const bool plays = to.place.what == choice_place::title;
    if (command)
      made_.push_back({*command, text, below.empty() ? text : below + ", " + text,
                       plays ? to.place.number : 0, to.chapter});
  }

  const disc_description& d_;
  const length_teller& length_;
  const lead_source& from_;
  std::vector<action_choice> made_;
};

std::vector<std::string> words_in(const std::string& search) {
  std::vector<std::string> words = split(lower(search), ' ');
  std::erase_if(words, [](const std::string& word) { return word.empty(); });
  return words;
}

bool is_number_text(const std::string& text) {
  return std::all_of(text.begin(), text.end(), is_digit);
}

/// Of a time no part is a number by itself.
bool is_of_number(char c) {
  return is_digit(c) || c == ':';
}

bool holds_word(const std::string& line, const std::string& word) {
  const bool is_number = is_number_text(word);
  for (std::size_t at = line.find(word); at != std::string::npos; at = line.find(word, at + 1)) {
    const std::size_t end = at + word.size();
    // "title 2:" ends with a colon, but goes on without a digit.
    const bool goes_on = end < line.size() &&
                         (is_digit(line[end]) ||
                          (line[end] == ':' && end + 1 < line.size() && is_digit(line[end + 1])));
    if (!is_number || (!goes_on && (at == 0 || !is_of_number(line[at - 1]))))
      return true;
  }
  return false;
}

bool holds_all(const std::string& line, const std::vector<std::string>& words) {
  return std::all_of(words.begin(), words.end(),
                     [&line](const std::string& word) { return holds_word(line, word); });
}

/// Where the command leads, for a sentence.
std::string way_in_words(const disc_description& d, const disc_command& command) {
  const int number = command.form.number.value_or(0);
  switch (command.form.what) {
    case verb::jump_title:
      return "plays " + name_of_title(d, number) +
             (command.form.chapter.value_or(1) > 1
                  ? ", from chapter " + trimmed(*command.form.chapter)
                  : std::string());
    case verb::jump_menu:
      return "shows " + name_of_menu(d, number);
    case verb::call_menu:
    case verb::jump_titleset:
      return "shows " + name_of_menu(d, command.form.number.value_or(1));
    case verb::call_last_menu:
      return "shows the menu that was shown last";
    default:
      return trim(command.text) == "exit" ? "stops the disc" : words_of_command(d, command);
  }
}

/// What is done where there is no command.
std::string way_without(const disc_description& d, const lead_source& from) {
  int title = 1;
  if (from.place.what == choice_place::title) {
    title = from.place.number + 1;
    if (title > d.title_count())
      return "stops the disc";
  } else if (d.menu_count() > 0) {
    return "shows " + name_of_menu(d, 1);
  }
  return title <= d.title_count() ? "plays " + name_of_title(d, title) : std::string();
}

/// Of a text that is a command.
action_verdict verdict_of_owner(const disc_description& d, const command_owner& owner,
                                const std::string& text) {
  using kind = action_verdict::kind;
  const disc_command command = command_of(text);
  const command_outcome outcome = navigation_map(d, false).outcome_of(owner, command);
  if (!outcome.problems.empty())
    return {kind::wrong, outcome.problems.front().clause};
  if (outcome.is_typed)
    return {kind::typed, "is a typed command: only where it leads is checked"};
  return {kind::fine, way_in_words(d, command)};
}

}  // namespace

std::vector<action_choice> action_choices(const disc_description& d, const length_teller& length) {
  return command_choices(d, length, {{choice_place::menu, 1}, 1});
}

std::vector<action_choice> command_choices(const disc_description& d, const length_teller& length,
                                           const lead_source& from) {
  return choice_maker(d, length, from).make();
}

std::vector<std::size_t> shown_choices(const std::vector<action_choice>& all,
                                       const choice_filter& filter) {
  const std::vector<std::string> words = words_in(filter.search);
  std::vector<std::size_t> shown;
  for (std::size_t i = 0; i < all.size(); ++i) {
    const action_choice& choice = all[i];
    const bool is_open = choice.chapter == 0 || filter.all_chapters || choice.title == filter.open;
    if (words.empty() ? is_open : holds_all(lower(choice.line), words))
      shown.push_back(i);
  }
  const std::string phrase = join(words, " ");
  std::stable_partition(shown.begin(), shown.end(), [&](std::size_t i) {
    return lower(all[i].line).find(phrase) != std::string::npos;
  });
  return shown;
}

std::vector<std::string> choice_lines(const std::vector<action_choice>& all,
                                      const std::vector<std::size_t>& shown) {
  std::vector<std::string> lines;
  lines.reserve(shown.size());
  int below = 0;  // the title whose line stands above
  for (const std::size_t i : shown) {
    const action_choice& choice = all[i];
    if (choice.chapter == 0)
      below = choice.title;
    lines.push_back(choice.chapter != 0 && choice.title == below ? "      " + choice.text
                                                                 : choice.line);
  }
  return lines;
}

std::optional<std::size_t> choice_of_command(const std::vector<action_choice>& all,
                                             std::string_view command) {
  const auto meant = [form = parse_command(command),
                      text = std::string(trim(command))](const action_choice& choice) {
    return form.what == verb::other ? choice.command == text
                                    : parse_command(choice.command) == form;
  };
  // The last one: the first chapter of a title has the title's own command.
  const auto found = std::find_if(all.rbegin(), all.rend(), meant);
  if (found == all.rend())
    return std::nullopt;
  auto index = static_cast<std::size_t>(all.rend() - found) - 1;
  if (all[index].chapter == 1 && index > 0)
    --index;
  return index;
}

action_verdict verdict_on_action(const disc_description& d, int menu, const std::string& text) {
  if (const auto why = why_not_a_field(text))
    return {action_verdict::kind::wrong, *why};
  return verdict_of_owner(d, {command_owner::kind::menu, menu, 1}, text);
}

action_verdict verdict_on_command(const disc_description& d, const lead_source& from,
                                  const std::string& text) {
  const bool of_title = from.place.what == choice_place::title;
  const std::string_view command = trim(text);
  if (command.empty() || (!of_title && command == no_first_play))
    return {action_verdict::kind::fine, way_without(d, from)};
  command_owner owner;
  if (of_title)
    owner = {command_owner::kind::title, from.place.number, d.title(from.place.number).titleset};
  return verdict_of_owner(d, owner, text);
}

}  // namespace corvane
