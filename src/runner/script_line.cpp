#include "runner/script_line.h"

#include "formats/text.h"
#include "platform/text/utf8.h"

#include <algorithm>
#include <utility>

namespace corvane {
namespace {

/// A word, or one of the three operators.
struct token {
  char kind = 'w';  ///< 'w', '<', '>' or '|'
  std::string word;
};

bool is_blank(char c) {
  return c == ' ' || c == '\t';
}

bool is_operator(char c) {
  return c == '<' || c == '>' || c == '|';
}

/// Takes a word off the text's beginning; false when a quote in it is not closed.
bool take_word(std::string_view& text, std::string& word) {
  bool quoted = false;
  std::size_t i = 0;
  for (; i < text.size(); ++i) {
    const char c = text[i];
    if (c == '"')
      quoted = !quoted;
    else if (!quoted && (is_blank(c) || is_operator(c)))
      break;
    else
      word += c;
  }
  text.remove_prefix(i);
  return !quoted;
}

result<std::vector<token>> tokens_of(std::string_view text) {
  std::vector<token> tokens;
  while (!text.empty()) {
    if (is_blank(text[0])) {
      text.remove_prefix(1);
      continue;
    }
    token t;
    if (is_operator(text[0])) {
      t.kind = text[0];
      text.remove_prefix(1);
    } else if (!take_word(text, t.word)) {
      return result<std::vector<token>>::fail("a double quote is not closed");
    }
    tokens.push_back(std::move(t));
  }
  return result<std::vector<token>>::ok(std::move(tokens));
}

result<script_command> fail(const char* why) {
  return result<script_command>::fail(why);
}

result<script_command> parse_builtin(script_verb verb, const std::vector<token>& tokens) {
  script_command c;
  c.verb = verb;
  for (const token& t : tokens) {
    if (t.kind != 'w')
      return fail("a redirection does not belong there");
    if (t.word.empty())
      return fail("a name is empty");
    c.operands.push_back(t.word);
  }
  c.operands.erase(c.operands.begin());
  if (c.operands.size() != (verb == script_verb::rename ? 2u : 1u))
    return fail("the number of names is wrong");
  return result<script_command>::ok(std::move(c));
}

/// Puts the file name after "<" or ">" where it belongs; the reason when it must not stand there.
const char* redirect(script_command& c, const std::vector<token>& tokens, std::size_t at) {
  if (at + 1 >= tokens.size() || tokens[at + 1].kind != 'w' || tokens[at + 1].word.empty())
    return "a file name is missing after < or >";
  const bool reads = tokens[at].kind == '<';
  if (reads && c.pipeline.size() > 1)
    return "only the first program can read a file";
  std::string& file = reads ? c.input : c.output;
  if (!file.empty())
    return "a redirection stands twice";
  file = tokens[at + 1].word;
  return nullptr;
}

bool is_program(const script_words& words) {
  return !words.empty() && words[0].size() > 4 && words[0].substr(words[0].size() - 4) == ".exe";
}

result<script_command> parse_pipeline(const std::vector<token>& tokens) {
  script_command c;
  c.verb = script_verb::run;
  c.pipeline.emplace_back();
  for (std::size_t i = 0; i < tokens.size(); ++i) {
    if (tokens[i].kind == 'w') {
      c.pipeline.back().push_back(tokens[i].word);
    } else if (tokens[i].kind != '|') {
      if (const char* why = redirect(c, tokens, i))
        return fail(why);
      ++i;
    } else if (!c.output.empty()) {
      return fail("only the last program can write a file");
    } else {
      c.pipeline.emplace_back();
    }
  }
  if (!std::all_of(c.pipeline.begin(), c.pipeline.end(), is_program))
    return fail("it is neither a command nor a program of the tools' folder");
  return result<script_command>::ok(std::move(c));
}

script_verb builtin_of(const std::string& word) {
  if (word == "mkdir")
    return script_verb::make_folder;
  if (word == "erase")
    return script_verb::erase;
  if (word == "rename")
    return script_verb::rename;
  return script_verb::run;
}

bool same_character(std::string_view a, std::string_view b) {
#ifdef _WIN32
  return lower(a) == lower(b);
#else
  return a == b;
#endif
}

}  // namespace

result<script_command> parse_script_line(std::string_view line) {
  if (!line.empty() && line.back() == '\r')
    line.remove_suffix(1);
  if (line.find('\0') != std::string_view::npos)
    return fail("it holds a NUL character");
  script_command c;
  if (line.substr(0, 5) == "echo ") {
    c.verb = script_verb::echo;
    c.text = line.substr(5);
    return result<script_command>::ok(std::move(c));
  }
  if (!is_utf8(line))
    return fail("it is not UTF-8 text");
  const result<std::vector<token>> tokens = tokens_of(line);
  if (!tokens)
    return result<script_command>::fail(tokens.error);
  if (tokens->empty())
    return result<script_command>::ok(std::move(c));
  if (tokens->size() == 2 && (*tokens)[0].word == "@echo" && (*tokens)[1].word == "off")
    return result<script_command>::ok(std::move(c));
  const script_verb verb = builtin_of((*tokens)[0].word);
  return verb == script_verb::run ? parse_pipeline(*tokens) : parse_builtin(verb, *tokens);
}

bool matches_wildcard(std::string_view pattern, std::string_view name) {
  // On a mismatch the last "*" takes one character more; what came before it need not be tried
  // again, so the time is bounded by the product of the lengths.
  std::optional<std::string_view> after_star;
  std::string_view from;
  while (!name.empty()) {
    const std::string_view c = first_sequence(name);
    const std::string_view p = first_sequence(pattern);
    if (!pattern.empty() && pattern[0] == '*') {
      pattern.remove_prefix(1);
      after_star = pattern;
      from = name;
    } else if (!pattern.empty() && (p == "?" || same_character(p, c))) {
      pattern.remove_prefix(p.size());
      name.remove_prefix(c.size());
    } else if (after_star) {
      from.remove_prefix(first_sequence(from).size());
      name = from;
      pattern = *after_star;
    } else {
      return false;
    }
  }
  return pattern.find_first_not_of('*') == std::string_view::npos;
}

}  // namespace corvane
