#include "menus/maker/menu_design.h"

#include "formats/numbers.h"
#include "formats/sanitized.h"
#include "formats/text.h"
#include "menus/maker/page_rows.h"
#include "platform/files/paths.h"
#include "platform/text/utf8.h"
#include "project/menu_rows.h"

#include <algorithm>
#include <array>
#include <functional>
#include <map>
#include <optional>
#include <utility>

namespace corvane {
namespace {

constexpr int smallest_text = 8, largest_text = 120;
constexpr int thickest_edge = 20, widest_band = 120;

std::string_view without_blanks(std::string_view text) {
  constexpr std::string_view blanks = " \t\r";
  const std::size_t begin = text.find_first_not_of(blanks);
  if (begin == std::string_view::npos)
    return {};
  return text.substr(begin, text.find_last_not_of(blanks) - begin + 1);
}

std::string listed_keys(const std::vector<std::string>& names) {
  return join(names, ", ");
}

std::optional<int> hex_pair(std::string_view text) {
  int value = 0;
  for (const char c : text) {
    constexpr std::string_view digits = "0123456789abcdef";
    const std::size_t digit = digits.find(c >= 'A' && c <= 'F' ? static_cast<char>(c + 32) : c);
    if (digit == std::string_view::npos)
      return std::nullopt;
    value = value * 16 + static_cast<int>(digit);
  }
  return value;
}

std::optional<page_colour> colour_of(std::string_view text) {
  if (!text.starts_with('#') || (text.size() != 7 && text.size() != 9))
    return std::nullopt;
  std::array<std::uint8_t, 4> parts{0, 0, 0, 255};
  for (std::size_t i = 0; 1 + 2 * i < text.size(); ++i) {
    const auto part = hex_pair(text.substr(1 + 2 * i, 2));
    if (!part)
      return std::nullopt;
    parts[i] = static_cast<std::uint8_t>(*part);
  }
  return page_colour{parts[0], parts[1], parts[2], parts[3]};
}

std::optional<int> whole_of(std::string_view text, int least, int most) {
  if (text.empty() || text.size() > 4 || !std::ranges::all_of(text, is_digit))
    return std::nullopt;
  const int value = leading_whole(text);
  return value >= least && value <= most ? std::optional(value) : std::nullopt;
}

/// The words of a value, without the blanks between them.
std::vector<std::string> words_of(std::string_view value) {
  std::vector<std::string> words = split(replace_all(value, "\t", " "), ' ');
  std::erase(words, std::string());
  return words;
}

/// What a value must be, if it is not.
using expectation = std::optional<std::string>;
using value_taker = std::function<expectation(std::string_view)>;

/// A key of a section.
struct design_key {
  std::string name;
  value_taker take;
};

value_taker whole_taker(int& target, int least, int most) {
  return [&target, least, most](std::string_view value) -> expectation {
    const auto number = whole_of(value, least, most);
    if (!number)
      return "a whole number from " + trimmed(least) + " to " + trimmed(most);
    target = *number;
    return std::nullopt;
  };
}

value_taker yes_taker(bool& target) {
  return [&target](std::string_view value) -> expectation {
    if (value != "yes" && value != "no")
      return "yes or no";
    target = value == "yes";
    return std::nullopt;
  };
}

value_taker colour_taker(page_colour& target) {
  return [&target](std::string_view value) -> expectation {
    const auto colour = colour_of(value);
    if (!colour)
      return "a colour such as #ffd080, or #ffd08080 for one through which half of what is behind "
             "it can be seen";
    target = *colour;
    return std::nullopt;
  };
}

/// "2 #000000", or "0" for none.
value_taker edge_taker(int& width, page_colour& colour, int most = thickest_edge) {
  return [&width, &colour, most](std::string_view value) -> expectation {
    const std::vector<std::string> words = words_of(value);
    const auto number = words.empty() ? std::nullopt : whole_of(words[0], 0, most);
    const auto drawn = words.size() == 2 ? colour_of(words[1]) : std::nullopt;
    const bool is_none = words.size() == 1 && number == 0;
    if (!is_none && (!number || !drawn))
      return "a thickness from 0 to " + trimmed(most) +
             " and a colour, such as 2 #000000, or 0 for none";
    width = *number;
    if (drawn)
      colour = *drawn;
    return std::nullopt;
  };
}

template <typename T>
value_taker choice_taker(T& target, std::vector<std::pair<std::string, T>> choices) {
  return [&target, choices = std::move(choices)](std::string_view value) -> expectation {
    std::vector<std::string> names;
    for (const auto& [name, choice] : choices) {
      if (value == name) {
        target = choice;
        return std::nullopt;
      }
      names.push_back(name);
    }
    return "one of: " + listed_keys(names);
  };
}

value_taker name_taker(std::string& target, std::size_t most) {
  return [&target, most](std::string_view value) -> expectation {
    if (value.empty() || first_characters(value, most) != value)
      return "a text of at most " + trimmed(static_cast<int>(most)) + " characters";
    target = value;
    return std::nullopt;
  };
}

value_taker families_taker(std::vector<std::string>& target) {
  return [&target](std::string_view value) -> expectation {
    std::vector<std::string> families;
    for (const std::string& name : split(value, ','))
      families.emplace_back(without_blanks(name));
    const bool has_blank = std::ranges::any_of(families, &std::string::empty);
    if (families.empty() || has_blank || families.size() > 10)
      return "up to ten names of fonts with \",\" between them, such as DejaVu Sans, Arial, sans";
    target = std::move(families);
    return std::nullopt;
  };
}

value_taker button_colour_taker(std::string& target) {
  return [&target](std::string_view value) -> expectation {
    if (std::ranges::find(button_colours, value) == button_colours.end())
      return "one of: " + listed_keys(button_colours);
    target = value;
    return std::nullopt;
  };
}

void add_text_keys(std::vector<design_key>& keys, design_text& text) {
  keys.push_back({"font", families_taker(text.style.families)});
  keys.push_back({"size", whole_taker(text.style.size, smallest_text, largest_text)});
  keys.push_back({"least size", whole_taker(text.least_size, smallest_text, largest_text)});
  keys.push_back({"bold", yes_taker(text.style.bold)});
  keys.push_back({"italic", yes_taker(text.style.italic)});
  keys.push_back({"colour", colour_taker(text.style.colour)});
  keys.push_back({"outline", edge_taker(text.style.outline, text.style.outline_colour)});
  keys.push_back({"shadow", edge_taker(text.style.shadow, text.style.shadow_colour)});
  keys.push_back({"align", choice_taker<page_align>(text.align, {{"left", page_align::begin},
                                                                 {"centre", page_align::middle},
                                                                 {"right", page_align::end}})});
  keys.push_back({"lines", whole_taker(text.most_lines, 1, 4)});
}

void add_panel_keys(std::vector<design_key>& keys, design_panel& panel, const std::string& before) {
  keys.push_back({before + "colour", colour_taker(panel.colour)});
  keys.push_back({before + "radius", whole_taker(panel.radius, 0, 60)});
  keys.push_back({before + "border", edge_taker(panel.border, panel.border_colour)});
}

void add_look_keys(std::vector<design_key>& keys, design_look& look) {
  keys.push_back({"highlight", button_colour_taker(look.highlight)});
  keys.push_back({"select", button_colour_taker(look.select)});
}

/// The background as the file states it, which may be a colour or a picture.
struct background_words {
  colour_background colours;
  picture_background picture;
  bool has_colours = false, is_video = false;

  page_background background() const {
    if (is_video)
      return video_background{};
    if (!picture.file.empty())
      return picture;
    return colours;
  }
};

std::vector<design_key> background_keys(background_words& words, const std::string& folder) {
  using direction = colour_background::direction;
  std::vector<design_key> keys;
  keys.push_back({"colours", [&words](std::string_view value) -> expectation {
                    const std::vector<std::string> colours = words_of(value);
                    const auto from = colours.empty() ? std::nullopt : colour_of(colours.front());
                    const auto to = colours.empty() ? std::nullopt : colour_of(colours.back());
                    if (!from || !to || colours.size() > 2)
                      return "one or two colours, such as #102040 #000000";
                    words.colours.from = *from;
                    words.colours.to = *to;
                    return std::nullopt;
                  }});
  keys.push_back({"direction", choice_taker<direction>(words.colours.towards,
                                                       {{"down", direction::down},
                                                        {"right", direction::right},
                                                        {"down right", direction::down_right},
                                                        {"up right", direction::up_right},
                                                        {"outward", direction::outward}})});
  keys.push_back({"picture", [&words, folder](std::string_view value) -> expectation {
                    if (value.empty() || why_not_storable(value))
                      return "the name of a picture file beside the design, or its full path";
                    words.picture.file = is_absolute(value) || folder.empty()
                                             ? std::string(value)
                                             : join_path(folder, value);
                    return std::nullopt;
                  }});
  keys.push_back({"fit", choice_taker<page_fit>(words.picture.fit, {{"fill", page_fit::fill},
                                                                    {"whole", page_fit::fit}})});
  keys.push_back({"around", colour_taker(words.picture.around)});
  keys.push_back({"shade", colour_taker(words.picture.shade)});
  keys.push_back({"video", yes_taker(words.is_video)});
  return keys;
}

class design_reader {
 public:
  explicit design_reader(const std::string& folder) {
    background_.picture.shade.alpha = 0;
    add_texts();
    sections_[""] = {{"name", name_taker(design_.name, 60)},
                     {"about", name_taker(design_.about, 200)}};
    sections_["entries"] = {
        {"arrangement",
         choice_taker<menu_arrangement>(
             design_.arrangement, {{"list", menu_arrangement::list},
                                   {"list with thumbnails", menu_arrangement::thumbnails_list},
                                   {"grid", menu_arrangement::grid}})},
        {"columns", whole_taker(design_.columns, 1, 6)},
        {"rows", whole_taker(design_.rows, 1, 12)},
        {"gap", whole_taker(design_.gap, 4, 60)}};
    add_panel_keys(sections_["entries"], design_.sheet, "sheet ");
    sections_["background"] = background_keys(background_, folder);
    add_edge_key("background", "upper band", design_.upper_band, widest_band);
    add_edge_key("background", "lower band", design_.lower_band, widest_band);
    add_edge_key("heading", "rule", design_.heading_rule, thickest_edge);
    sections_["thumbnail"] = {
        {"border", edge_taker(design_.thumbnail_border, design_.thumbnail_border_colour)}};
    add_edge_key("thumbnail", "shadow", design_.thumbnail_shadow, thickest_edge);
    sections_["buttons"] = {{"frame", whole_taker(design_.frame, 1, 6)}};
  }

  result<menu_design> read(std::string_view text) {
    if (text.size() > largest_design)
      return result<menu_design>::fail("the file has more than " +
                                       trimmed(static_cast<int>(largest_design / 1024)) +
                                       " kilobytes, so it is no design");
    if (!is_utf8(text))
      return result<menu_design>::fail("the file is not a text in UTF-8");
    if (text.starts_with("\xEF\xBB\xBF"))
      text.remove_prefix(3);
    for (const std::string& line : split(text, '\n')) {
      ++line_;
      if (auto why = take_line(without_blanks(line)))
        return result<menu_design>::fail("line " + trimmed(line_) + ": " + *why);
    }
    return finish();
  }

 private:
  void add_texts() {
    struct named_text {
      const char* section;
      design_text& text;
      design_panel& panel;
      int size, least;
    };
    const std::array<named_text, 3> texts{
        {{"heading", design_.heading, design_.heading_panel, 40, 22},
         {"entry", design_.entry, design_.entry_panel, 26, 16},
         {"way", design_.way, design_.way_panel, 20, 14}}};
    for (const named_text& named : texts) {
      named.text.style.families = {"sans"};
      named.text.style.size = named.size;
      named.text.least_size = named.least;
      add_text_keys(sections_[named.section], named.text);
      add_panel_keys(sections_[named.section], named.panel, "panel ");
    }
    design_.way.align = page_align::middle;
    add_look_keys(sections_["entry"], design_.entry_look);
    add_look_keys(sections_["way"], design_.way_look);
  }

  void add_edge_key(const std::string& section, const std::string& name, design_edge& edge,
                    int most) {
    sections_[section].push_back({name, edge_taker(edge.lines, edge.colour, most)});
  }

  failure take_line(std::string_view line) {
    if (line.empty() || line.starts_with('#'))
      return std::nullopt;
    if (holds_control_character(replace_all(line, "\t", " ")))
      return "it holds a control character";
    if (line.starts_with('['))
      return begin_section(line);
    const std::size_t equals = line.find('=');
    if (equals == std::string_view::npos)
      return "expected is \"key = value\", \"[section]\", or a remark that begins with \"#\", and "
             "not " +
             sanitized_quoted(line);
    return take_value(std::string(without_blanks(line.substr(0, equals))),
                      without_blanks(line.substr(equals + 1)));
  }

  failure begin_section(std::string_view line) {
    const std::string name(without_blanks(line.substr(1, line.size() - 2)));
    if (!line.ends_with(']') || name.empty() || !sections_.contains(name)) {
      std::vector<std::string> names;
      for (const auto& [section, keys] : sections_)
        if (!section.empty())
          names.push_back("[" + section + "]");
      return sanitized_quoted(line) + " is none of the sections: " + listed_keys(names);
    }
    section_ = name;
    return std::nullopt;
  }

  failure take_value(const std::string& key, std::string_view value) {
    const std::vector<design_key>& keys = sections_[section_];
    const auto found = std::ranges::find(keys, key, &design_key::name);
    if (found == keys.end()) {
      std::vector<std::string> names;
      names.reserve(keys.size());
      for (const design_key& known : keys)
        names.push_back(known.name);
      return sanitized_quoted(key) + " is none of the keys " +
             (section_.empty() ? "before the first section" : "of [" + section_ + "]") + ": " +
             listed_keys(names);
    }
    const auto [first, is_new] = lines_.emplace(section_ + "]" + key, line_);
    if (!is_new)
      return sanitized_quoted(key) + " stands in line " + trimmed(first->second) + " already";
    if (const expectation wanted = found->take(value))
      return sanitized_quoted(key) + " must be " + *wanted + ", and is " + sanitized_quoted(value);
    return std::nullopt;
  }

  result<menu_design> finish() {
    for (const char* const key : {"]name", "entries]arrangement"})
      if (!lines_.contains(key))
        return result<menu_design>::fail(
            std::string("the design does not say ") +
            (key[0] == ']' ? "its name: \"name = ...\" before the first section"
                           : "how its entries stand: \"arrangement = list\" in [entries]"));
    design_.background = background_.background();
    design_.gap += design_.gap % 2;
    for (design_text* const text : {&design_.heading, &design_.entry, &design_.way})
      text->least_size = std::min(text->least_size, text->style.size);
    const int most = 36 - most_ways;
    if (design_.most_entries() > most)
      return result<menu_design>::fail("the design has " + trimmed(design_.rows) + " rows of " +
                                       trimmed(design_.columns) + " entries; a page has room for " +
                                       trimmed(most) + ", and the ways to other pages");
    if (auto why = why_no_room(design_))
      return result<menu_design>::fail(*why);
    return result<menu_design>::ok(design_);
  }

  menu_design design_;
  background_words background_;
  std::map<std::string, std::vector<design_key>> sections_;
  std::map<std::string, int> lines_;  ///< by section and key, where it stands
  std::string section_;
  int line_ = 0;
};

}  // namespace

result<menu_design> read_design(std::string_view text, const std::string& folder) {
  return design_reader(folder).read(text);
}

}  // namespace corvane
