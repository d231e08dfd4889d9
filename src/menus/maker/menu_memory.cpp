#include "menus/maker/menu_memory.h"

#include "formats/numbers.h"
#include "formats/text.h"
#include "menus/menu_geometry.h"
#include "platform/files/files.h"
#include "platform/files/paths.h"
#include "project/disc_of.h"
#include "project/menu_rows.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <cstddef>
#include <optional>
#include <set>
#include <string>
#include <utility>

namespace corvane {
namespace {

constexpr std::string_view first_memory_line = "Corvane: what was made for a menu, form 1";
constexpr std::size_t largest_memory = 4 << 20;

std::string escaped_field(std::string_view text) {
  std::string escaped;
  for (const char c : text) {
    if (c == '\\')
      escaped += "\\\\";
    else if (c == '\t')
      escaped += "\\t";
    else if (c == '\n')
      escaped += "\\n";
    else if (c == '\r')
      escaped += "\\r";
    else
      escaped += c;
  }
  return escaped;
}

std::string plain_field(std::string_view escaped) {
  std::string text;
  for (std::size_t i = 0; i < escaped.size(); ++i) {
    if (escaped[i] != '\\' || i + 1 == escaped.size()) {
      text += escaped[i];
      continue;
    }
    const char c = escaped[++i];
    text += c == 't' ? '\t' : c == 'n' ? '\n' : c == 'r' ? '\r' : c;
  }
  return text;
}

struct named_word {
  const char* name;
  std::string menu_words::*word;
};
constexpr std::array<named_word, 7> named_words{{{"heading", &menu_words::heading},
                                                 {"play all", &menu_words::play_all},
                                                 {"play", &menu_words::play},
                                                 {"back", &menu_words::back},
                                                 {"previous", &menu_words::previous},
                                                 {"next", &menu_words::next},
                                                 {"chapter", &menu_words::chapter}}};

std::string place_words(const menu_rectangle& r) {
  return trimmed(r.x0) + " " + trimmed(r.y0) + " " + trimmed(r.x1) + " " + trimmed(r.y1);
}

std::optional<menu_rectangle> place_of_words(const std::string& text) {
  const std::vector<std::string> numbers = split(text, ' ');
  if (numbers.size() != 4)
    return std::nullopt;
  return menu_rectangle{leading_whole(numbers[0]), leading_whole(numbers[1]),
                        leading_whole(numbers[2]), leading_whole(numbers[3])};
}

class memory_reader {
 public:
  /// Whether the line is one of a memory.
  bool take(const std::vector<std::string>& fields) {
    const std::string& kind = fields[0];
    if (fields.size() == 2)
      return take_value(kind, fields[1]);
    if (fields.size() != 3)
      return false;
    if (kind == "text")
      memory_.texts[fields[1]] = fields[2];
    else if (kind == "button")
      memory_.buttons.push_back({fields[1], fields[2]});
    else if (kind == "word")
      return take_word(fields[1], fields[2]);
    else if (kind == "also")
      memory_.also[fields[1]] = fields[2];
    else if (kind == "place")
      return take_place(fields[1], fields[2]);
    else
      return false;
    return true;
  }

  menu_memory memory() && { return std::move(memory_); }

 private:
  bool take_value(const std::string& kind, const std::string& value) {
    if (kind == "menu")
      memory_.menu = value;
    else if (kind == "design")
      memory_.design = value;
    else if (kind == "look")
      memory_.look = value;
    else if (kind == "wide")
      memory_.is_wide = value == "1";
    else if (kind == "play all")
      memory_.choices.play_all = value == "1";
    else if (kind == "picture after")
      memory_.choices.picture_after = leading_whole(value) / 100.0;
    else if (kind == "chapters of")
      memory_.chapters_of.push_back(value);
    else
      return false;
    return true;
  }

  bool take_word(const std::string& name, const std::string& text) {
    for (const named_word& known : named_words)
      if (name == known.name) {
        memory_.choices.words.*known.word = text;
        return true;
      }
    return false;
  }

  bool take_place(const std::string& key, const std::string& text) {
    const auto place = place_of_words(text);
    if (place)
      memory_.moves[key] = *place;
    return place.has_value();
  }

  menu_memory memory_;
};

/// The record among `now` that was made of `buttons[index]`, if it can be told.
const std::string* record_now(const std::vector<remembered_button>& buttons, std::size_t index,
                              const std::vector<std::string>& now) {
  if (buttons.size() == now.size())
    return &now[index];
  const std::string action = parse_button(buttons[index].record).action;
  const auto has_action = [&](const std::string& record) {
    return parse_button(record).action == action;
  };
  if (std::ranges::count_if(now, has_action) != 1)
    return nullptr;
  return &*std::ranges::find_if(now, has_action);
}

void take_changes(const project& p, int number, const menu_memory& memory, remembered_menus& all) {
  const std::vector<std::string> now = button_records(p, number);
  bool is_made_anew = memory.buttons.size() != now.size();
  for (std::size_t i = 0; i < memory.buttons.size(); ++i) {
    const std::string* const record = record_now(memory.buttons, i, now);
    if (record == nullptr)
      continue;
    const button_record made = parse_button(memory.buttons[i].record);
    const button_record changed = parse_button(*record);
    if (edges_of(*record) != edges_of(memory.buttons[i].record))
      all.moves[memory.buttons[i].key] = edges_of(*record);
    is_made_anew = is_made_anew || trim(made.action) != trim(changed.action) ||
                   made.highlight != changed.highlight || made.select != changed.select;
  }
  if (is_made_anew)
    all.notes.push_back("Menu " + trimmed(number) +
                        " has other buttons, actions or colours than it was made with: of these "
                        "only the places stay when it is made again.");
}

std::vector<int> titles_playing(const disc_description& d, const std::vector<std::string>& videos) {
  std::vector<int> titles;
  for (int title = 1; title <= d.title_count(); ++title)
    if (std::ranges::find(videos, d.title(title).video()) != videos.end())
      titles.push_back(title);
  return titles;
}

}  // namespace

std::string memory_text(const menu_memory& memory) {
  std::string text = std::string(first_memory_line) + "\n";
  const auto add = [&](const std::vector<std::string>& fields) {
    for (std::size_t i = 0; i < fields.size(); ++i)
      text += (i == 0 ? "" : "\t") + escaped_field(fields[i]);
    text += "\n";
  };
  add({"menu", memory.menu});
  add({"design", memory.design});
  add({"look", memory.look});
  add({"wide", memory.is_wide ? "1" : "0"});
  add({"play all", memory.choices.play_all ? "1" : "0"});
  add({"picture after", trimmed(std::llround(memory.choices.picture_after * 100))});
  for (const named_word& known : named_words)
    add({"word", known.name, memory.choices.words.*known.word});
  for (const std::string& video : memory.chapters_of)
    add({"chapters of", video});
  for (const auto& [key, own] : memory.texts)
    add({"text", key, own});
  for (const auto& [name, value] : memory.also)
    add({"also", name, value});
  for (const auto& [key, place] : memory.moves)
    add({"place", key, place_words(place)});
  for (const remembered_button& button : memory.buttons)
    add({"button", button.key, button.record});
  return text;
}

result<menu_memory> read_memory(std::string_view text) {
  memory_reader reader;
  int number = 0;
  for (const std::string& line : split(text, '\n')) {
    if (++number == 1) {
      if (line != first_memory_line)
        return result<menu_memory>::fail("the file is not of a menu that was made");
      continue;
    }
    if (line.empty())
      continue;
    std::vector<std::string> fields = split(line, '\t');
    for (std::string& field : fields)
      field = plain_field(field);
    if (!reader.take(fields))
      return result<menu_memory>::fail("line " + trimmed(number) + " is not understood");
  }
  if (number == 0)
    return result<menu_memory>::fail("the file is empty");
  return result<menu_memory>::ok(std::move(reader).memory());
}

std::string memory_file(const std::string& m2v) {
  const std::size_t name = m2v.size() - native_file_name(m2v).size();
  const std::size_t point = m2v.rfind('.');
  return (point == std::string::npos || point < name ? m2v : m2v.substr(0, point)) + ".menu";
}

remembered_menus menus_made_before(const project& p) {
  remembered_menus all;
  std::set<std::string> seen;
  for (int number = 1; number <= menu_count(p); ++number) {
    const std::string video = parse_menu_row(row_of(p.menulist, number, {})).video;
    // A further menu with the same background is a copy of the user's own.
    if (video.empty() || !seen.insert(video).second)
      continue;
    const auto text = read_file(memory_file(native_from_stored(video)), largest_memory);
    auto memory = text ? read_memory(*text) : result<menu_memory>::fail(text.error);
    if (memory)
      all.made.emplace(number, std::move(*memory));
  }
  if (all.made.empty())
    return all;
  const menu_memory& first = all.made.begin()->second;
  all.design = first.design;
  all.is_wide = first.is_wide;
  all.choices = first.choices;
  all.choices.chapters_of = titles_playing(disc_of(p), first.chapters_of);
  all.texts = first.texts;
  all.moves = first.moves;
  all.look = first.look;
  all.also = first.also;
  for (const auto& [number, memory] : all.made)
    take_changes(p, number, memory, all);
  return all;
}

}  // namespace corvane
