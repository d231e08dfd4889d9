#include "disc/command_reading.h"

#include "formats/numbers.h"
#include "formats/sanitized.h"

#include <algorithm>
#include <array>
#include <charconv>
#include <cstddef>
#include <utility>

namespace corvane {
namespace {

constexpr int deepest = 100;

enum class token_kind { word, number, general_register, system_register, sign, unknown, end };

struct token {
  token_kind kind = token_kind::end;
  std::string_view text;
  int number = 0;  ///< of a number or register
};

bool is_letter(char c) {
  return (c >= 'a' && c <= 'z') || (c >= 'A' && c <= 'Z') || c == '_';
}
bool is_blank(char c) {
  return c == ' ' || c == '\t' || c == '\n';
}

/// Words that have a meaning; any other one is a label.
constexpr std::array known_words = {
    "and",   "angle",    "audio", "break",  "button", "call",   "cell", "chapter",  "counter",
    "else",  "entry",    "eq",    "exit",   "fpc",    "ge",     "goto", "gt",       "if",
    "jump",  "le",       "lt",    "menu",   "ne",     "next",   "not",  "or",       "pgc",
    "prev",  "program",  "ptt",   "random", "region", "resume", "root", "subtitle", "tail",
    "title", "titleset", "top",   "up",     "vmgm",   "xor"};

bool is_label(const token& t) {
  return t.kind == token_kind::word &&
         std::find(known_words.begin(), known_words.end(), t.text) == known_words.end();
}

/// The number that digits stand for, which may be any many; nullopt above `most`.
std::optional<int> number_in(std::string_view digits, int base, int most) {
  int value = 0;
  const auto [end, error] =
      std::from_chars(digits.data(), digits.data() + digits.size(), value, base);
  if (error != std::errc() || end != digits.data() + digits.size() || value > most)
    return std::nullopt;
  return value;
}

class token_reader {
 public:
  explicit token_reader(std::string_view text) : rest_(text) {}

  token next() {
    skip_blanks();
    if (rest_.empty())
      return {};
    if (is_digit(rest_[0]))
      return number();
    if (is_letter(rest_[0]))
      return word();
    return sign();
  }

 private:
  void skip_blanks() {
    for (;;) {
      while (!rest_.empty() && is_blank(rest_[0]))
        rest_.remove_prefix(1);
      if (!rest_.starts_with("/*"))
        return;
      const auto end = rest_.find("*/", 2);
      if (end == std::string_view::npos)
        return;
      rest_.remove_prefix(end + 2);
    }
  }

  std::string_view take(std::size_t length) {
    const std::string_view taken = rest_.substr(0, length);
    rest_.remove_prefix(taken.size());
    return taken;
  }

  std::size_t run_of(bool (*belongs)(char)) const {
    return static_cast<std::size_t>(std::find_if_not(rest_.begin(), rest_.end(), belongs) -
                                    rest_.begin());
  }

  token number() {
    if (rest_.starts_with("0x")) {
      const auto end = rest_.find_first_not_of("0123456789abcdefABCDEF", 2);
      const std::string_view text = rest_.substr(0, end);
      if (text.size() > 2)
        return number_token(take(text.size()), number_in(text.substr(2), 16, 65535));
    }
    const std::string_view digits = take(run_of(is_digit));
    if (!rest_.starts_with('k'))
      return number_token(digits, number_in(digits, 10, 65535));
    take(1);
    const std::optional<int> thousands = number_in(digits, 10, 63);
    return number_token(digits, thousands ? std::optional(*thousands * 1024) : std::nullopt);
  }

  static token number_token(std::string_view text, std::optional<int> value) {
    return value ? token{token_kind::number, text, *value} : token{token_kind::unknown, text};
  }

  token word() {
    const std::string_view text = take(run_of([](char c) { return is_letter(c) || is_digit(c); }));
    const std::string_view digits = text.substr(1);
    const bool is_register = (text[0] == 'g' || text[0] == 's') && !digits.empty() &&
                             std::all_of(digits.begin(), digits.end(), is_digit);
    if (!is_register)
      return {token_kind::word, text};
    const bool general = text[0] == 'g';
    const std::optional<int> number = number_in(digits, 10, general ? 12 : 23);
    if (!number)
      return {token_kind::unknown, text};
    return {general ? token_kind::general_register : token_kind::system_register, text, *number};
  }

  token sign() {
    constexpr std::array two = {
        "+=", "-=", "*=", "/=", "%=", "&=", "|=", "^=", "==", "!=", ">=", "<=", "&&", "||"};
    for (const std::string_view pair : two)
      if (rest_.starts_with(pair))
        return {token_kind::sign, take(2)};
    // A language code stands for the number of its two letters.
    if (rest_.size() >= 4 && rest_[0] == '"' && rest_[3] == '"')
      return {token_kind::number, take(4)};
    constexpr std::string_view one = "=+-*/%&|^><!;:{}()";
    if (one.find(rest_[0]) == std::string_view::npos)
      return {token_kind::unknown, take(1)};
    return {token_kind::sign, take(1)};
  }

  std::string_view rest_;
};

enum class value_kind { number, condition };

template <std::size_t count>
bool is_one_of(std::string_view op, const std::array<const char*, count>& all) {
  return std::find(all.begin(), all.end(), op) != all.end();
}

bool is_comparison(std::string_view op) {
  return is_one_of(
      op, std::array{"==", "!=", "eq", "ne", ">=", ">", "<=", "<", "ge", "gt", "le", "lt"});
}

// How tightly an operator binds; 0: not one of the kind. "or" and "and" stand between numbers as
// well as between conditions; which, is told by what stands to their left.
constexpr int binding_of_not = 3;
constexpr int binding_of_signs = 6;

int binding_between_numbers(std::string_view op) {
  if (is_one_of(op, std::array{"or", "xor", "|", "^"}))
    return 1;
  if (is_one_of(op, std::array{"and", "&"}))
    return 2;
  if (is_one_of(op, std::array{"+", "-"}))
    return binding_of_signs;
  return is_one_of(op, std::array{"*", "/", "%"}) ? 7 : 0;
}

int binding_between_conditions(std::string_view op) {
  if (is_one_of(op, std::array{"or", "||"}))
    return 1;
  return is_one_of(op, std::array{"and", "&&"}) ? 2 : 0;
}

class command_reader {
 public:
  explicit command_reader(std::string_view text)
      : text_(text), tokens_(text), now_(tokens_.next()) {}

  command_reading read() {
    if (is_end())
      fail("is empty");
    while (is_fine() && !is_end())
      statement();
    if (reading_.fault) {
      reading_.leads.clear();
      reading_.menus.clear();
    }
    reading_.falls_through = !leads_ || is_tangled_;
    return std::move(reading_);
  }

 private:
  bool is_fine() const { return !reading_.fault; }
  bool is_end() const { return now_.kind == token_kind::end; }
  void advance() { now_ = tokens_.next(); }

  void fail(std::string why) {
    if (!reading_.fault)
      reading_.fault = std::move(why);
  }
  void fail_here(std::string_view wanted) {
    fail("has " + (is_end() ? "nothing" : sanitized_quoted(now_.text)) + " where dvdauthor wants " +
         std::string(wanted));
  }

  bool is_at(std::string_view text) const {
    return (now_.kind == token_kind::word || now_.kind == token_kind::sign) && now_.text == text;
  }
  bool accept(std::string_view text) {
    if (!is_at(text))
      return false;
    advance();
    return true;
  }
  void expect(std::string_view text) {
    if (is_fine() && !accept(text))
      fail_here(sanitized_quoted(text));
  }

  int number_up_to(int most, const char* what) {
    const token t = now_;
    if (t.kind != token_kind::number) {
      fail_here("a number");
      return 0;
    }
    if (t.number < 1 || t.number > most)
      fail("names " + std::string(what) + " " + std::to_string(t.number) +
           ", but they go from 1 to " + std::to_string(most));
    advance();
    return t.number;
  }

  bool goes_deeper() {
    if (++depth_ <= deepest)
      return true;
    fail("has brackets nested too deep");
    return false;
  }

  void statement() {
    if (!goes_deeper())
      return;
    one_statement();
    --depth_;
  }

  void one_statement() {
    if (accept("jump"))
      return jump();
    if (accept("call"))
      return call();
    if (accept("exit")) {
      reading_.ends = leads_ = true;
      return expect(";");
    }
    if (accept("resume")) {
      reading_.resumes = leads_ = true;
      return expect(";");
    }
    if (accept("break")) {
      is_tangled_ = true;
      return expect(";");
    }
    if (accept("goto")) {
      is_tangled_ = true;
      label();
      return expect(";");
    }
    if (accept("{"))
      return block();
    if (accept("if"))
      return condition();
    if (is_label(now_)) {
      const token name = now_;
      advance();
      if (!accept(":"))
        fail("has the word " + sanitized_quoted(name.text) +
             ", which dvdauthor does not know here");
      return;
    }
    set();
  }

  void label() {
    if (is_label(now_))
      advance();
    else
      fail_here("the name of a label");
  }

  void block() {
    do {
      statement();
    } while (is_fine() && !is_at("}") && !is_end());
    expect("}");
  }

  void condition() {
    expect("(");
    condition_value(0);
    expect(")");
    // Only where both ways lead somewhere the condition does.
    const bool before = std::exchange(leads_, false);
    if (is_fine())
      statement();
    const bool when_true = std::exchange(leads_, false);
    if (is_fine() && accept("else"))
      statement();
    leads_ = before || (when_true && leads_);
  }

  // Leads -----------------------------------------------------------------------------------------

  command_lead place_of_lead(bool is_call) {
    command_lead lead;
    lead.is_call = is_call;
    if (accept("titleset"))
      lead.titleset = number_up_to(99, "titleset");
    else
      lead.of_disc = accept("vmgm");
    if (!is_fine())
      return lead;
    if (accept("menu")) {
      menu(lead);
    } else if (accept("title")) {
      lead.to = command_lead::place::title;
      lead.number = number_up_to(99, "title");
    } else if (accept("fpc")) {
      lead.to = command_lead::place::first_play;
    }
    if (is_fine() && accept("chapter")) {
      lead.chapter = number_up_to(65535, "chapter");
      if (lead.to == command_lead::place::nowhere)
        lead.to = command_lead::place::chapter;
    }
    return lead;
  }

  void menu(command_lead& lead) {
    lead.to = command_lead::place::menu_entry;
    if (now_.kind == token_kind::number) {
      lead.to = command_lead::place::menu;
      const auto at = static_cast<std::size_t>(now_.text.data() - text_.data());
      const std::size_t length = now_.text.size();
      lead.number = number_up_to(99, "menu");
      if (!lead.of_disc)
        reading_.menus.push_back({at, length, lead.number, lead.titleset});
    } else if (accept("entry")) {
      constexpr std::array entries = {"title", "root", "subtitle", "audio", "angle", "ptt"};
      if (std::find(entries.begin(), entries.end(), now_.text) == entries.end())
        return fail_here("the name of an entry");
      lead.entry = now_.text;
      advance();
    }
  }

  /// "jump next cell", "jump pgc 3": "cell top", "next pgc", "up pgc", "pgc tail" and so on.
  bool jump_within() {
    for (const char* const part : {"pgc", "program", "cell"})
      if (accept(part)) {
        const bool at_end = std::string_view(part) == "pgc" && accept("tail");
        if (!at_end && !accept("top"))
          number_up_to(65535, part);
        return true;
      }
    const bool up = is_at("up");
    if (!accept("next") && !accept("prev") && !accept("up"))
      return false;
    if (!accept("pgc") && (up || (!accept("program") && !accept("cell"))))
      fail_here("what to jump to");
    return true;
  }

  void jump() {
    command_lead lead;
    if (jump_within())
      lead.to = command_lead::place::within;
    else
      lead = place_of_lead(false);
    expect(";");
    leads_ = true;
    reading_.leads.push_back(std::move(lead));
  }

  void call() {
    command_lead lead = place_of_lead(true);
    if (is_fine() && accept("resume"))
      number_up_to(65535, "cell");
    expect(";");
    leads_ = true;
    reading_.leads.push_back(std::move(lead));
  }

  // Registers and what is computed with them
  // ---------------------------------------------------------

  bool accept_register() {
    constexpr std::array names = {"audio", "subtitle", "angle", "button", "region"};
    const bool named = now_.kind == token_kind::word &&
                       std::find(names.begin(), names.end(), now_.text) != names.end();
    if (!named && now_.kind != token_kind::general_register &&
        now_.kind != token_kind::system_register)
      return false;
    advance();
    return true;
  }

  void set() {
    const bool counter = accept("counter");
    if (counter && now_.kind != token_kind::general_register)
      return fail_here("a general register");
    if (!accept_register())
      return fail_here("a command");
    constexpr std::array changes = {"+=", "-=", "*=", "/=", "%=", "&=", "|=", "^="};
    const bool changed =
        !counter && std::find(changes.begin(), changes.end(), now_.text) != changes.end();
    if (changed)
      advance();
    else
      expect("=");
    number_value(0);
    expect(";");
  }

  // Each takes what binds more tightly than `least`.

  void number_value(int least) {
    if (!is_fine() || !goes_deeper())
      return;
    if (accept("(")) {
      number_value(0);
      expect(")");
    } else {
      single_number();
    }
    rest_of_number(least);
    --depth_;
  }

  void single_number() {
    if (accept("random")) {
      expect("(");
      number_value(0);
      expect(")");
    } else if (now_.kind == token_kind::number) {
      advance();
    } else if (!accept_register()) {
      fail_here("a number or a register");
    }
  }

  void rest_of_number(int least) {
    while (is_fine()) {
      const int binding = binding_between_numbers(operator_here());
      if (binding <= least)
        return;
      advance();
      number_value(binding);
    }
  }

  void condition_value(int least) {
    if (is_fine() && value(least) != value_kind::condition)
      fail_here("a comparison");
  }

  /// A condition, or a number where no comparison follows.
  value_kind value(int least) {
    if (!goes_deeper())
      return value_kind::condition;
    value_kind left = first_value();
    if (left == value_kind::number) {
      rest_of_number(0);
      if (is_fine() && is_comparison(operator_here())) {
        advance();
        compared_value();
        left = value_kind::condition;
      }
    }
    while (is_fine() && left == value_kind::condition) {
      const int binding = binding_between_conditions(operator_here());
      if (binding <= least)
        break;
      advance();
      condition_value(binding);
    }
    --depth_;
    return left;
  }

  /// "or" and "and" end it; "|", "&" and the like, which cannot stand between conditions, go on.
  void compared_value() {
    number_value(binding_of_signs - 1);
    while (is_fine()) {
      const std::string_view op = operator_here();
      const int binding = binding_between_numbers(op);
      if (binding == 0 || op == "or" || op == "and")
        return;
      advance();
      number_value(binding);
    }
  }

  value_kind first_value() {
    if (accept("not") || accept("!")) {
      condition_value(binding_of_not);
      return value_kind::condition;
    }
    if (accept("(")) {
      const value_kind inner = value(0);
      expect(")");
      return inner;
    }
    single_number();
    return value_kind::number;
  }

  std::string_view operator_here() const {
    const bool may_be = now_.kind == token_kind::word || now_.kind == token_kind::sign;
    return may_be ? now_.text : std::string_view();
  }

  std::string_view text_;
  token_reader tokens_;
  token now_;
  command_reading reading_;
  bool leads_ = false;       // what was read so far leads somewhere, whatever registers hold
  bool is_tangled_ = false;  // it may be left on other ways than those
  int depth_ = 0;
};

}  // namespace

command_reading read_commands(std::string_view text) {
  return command_reader(text).read();
}

}  // namespace corvane
