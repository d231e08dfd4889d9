#include "disc/finding.h"
#include "disc/finding_json.h"
#include "examine/verification.h"
#include "formats/json_text.h"
#include "formats/text.h"

#include <algorithm>
#include <cstddef>
#include <optional>
#include <string_view>

namespace corvane {
namespace {

using part = finding_item::part_kind;

struct row {
  std::string name, foreseen, found;
};

/// Characters of UTF-8 text.
std::size_t width_of(std::string_view text) {
  return static_cast<std::size_t>(
      std::count_if(text.begin(), text.end(), [](char c) { return (c & 0xC0) != 0x80; }));
}

void pad(std::string& line, const std::string& text, std::size_t width) {
  line += text;
  const std::size_t has = width_of(text);
  line.append(has < width ? width - has : 0, ' ');
}

std::string text_of_item(const finding_item& item) {
  finding f;
  f.item = item;
  return place_text(f);
}

/// "  audio 1: language" under the heading of its title.
std::string name_of_row(const disc_trait& trait) {
  const std::string name(name_of(trait.kind));
  if (trait.item.part == part::whole)
    return "  " + name;
  const std::string place = text_of_item(trait.item);
  return "  " + place.substr(std::min(place.size(), place.find(", ") + 2)) + ": " + name;
}

/// The dots of a button say little, edges and colours tell the same; what comes behind them is not
/// for a person at all.
bool is_for_a_person(disc_trait_kind what) {
  return what < disc_trait_kind::drawn;
}

/// Commands are shown where somebody typed them, so that no more than their places is foreseen, and
/// where they do not tell where they lead.
bool is_shown(const disc_trait& trait, const disc_traits& found, const disc_traits& foreseen) {
  // Few discs have menus of their own.
  if (trait.kind == disc_trait_kind::disc_menus) {
    const disc_trait* const asked = foreseen.find(trait.item, trait.kind);
    return trait.value != "0" || (asked != nullptr && asked->value != "0");
  }
  // What dvdauthor does around menus by itself is only in the way of what was asked for.
  const bool is_around =
      trait.kind == disc_trait_kind::before || trait.kind == disc_trait_kind::entries ||
      (trait.kind == disc_trait_kind::then && trait.item.whole != finding_item::whole_kind::title);
  if (is_around && !foreseen.all().empty())
    return foreseen.find(trait.item, trait.kind) != nullptr;
  if (trait.kind != disc_trait_kind::does)
    return is_for_a_person(trait.kind);
  for (const auto way :
       {disc_trait_kind::leads_to, disc_trait_kind::then, disc_trait_kind::first_play}) {
    const disc_trait* const asked = foreseen.find(trait.item, way);
    const bool is_typed = asked == nullptr ? !foreseen.all().empty()
                                           : asked->value.find(either_place) != std::string::npos;
    if (found.find(trait.item, way) != nullptr)
      return is_typed;
  }
  return true;
}

bool is_same_whole(const finding_item& a, const finding_item& b) {
  return a.whole == b.whole && a.number == b.number;
}

/// A trait that was found, foreseen, or both; null: it was not.
struct compared_trait {
  const disc_trait* foreseen = nullptr;
  const disc_trait* found = nullptr;
  const disc_trait& any() const { return found != nullptr ? *found : *foreseen; }
};

std::vector<compared_trait> compared(const disc_traits& found, const disc_traits& foreseen) {
  std::vector<compared_trait> all;
  for (const disc_trait& got : found.all())
    if (is_shown(got, found, foreseen))
      all.push_back({foreseen.find(got.item, got.kind), &got});
  for (const disc_trait& asked : foreseen.all())
    if (is_for_a_person(asked.kind) && found.find(asked.item, asked.kind) == nullptr)
      all.push_back({&asked, nullptr});
  return all;
}

std::vector<row> rows_of(const disc_traits& found, const disc_traits& foreseen) {
  std::vector<row> rows;
  std::optional<finding_item> before;
  for (const compared_trait& one : compared(found, foreseen)) {
    const disc_trait& trait = one.any();
    if (!before || !is_same_whole(*before, trait.item)) {
      finding_item whole = trait.item;
      whole.part = part::whole;
      whole.part_number = 0;
      rows.push_back({text_of_item(whole), {}, {}});
    }
    before = trait.item;
    rows.push_back({name_of_row(trait), one.foreseen == nullptr ? "" : shown_value(*one.foreseen),
                    one.found == nullptr ? "-" : shown_value(*one.found)});
  }
  return rows;
}

}  // namespace

std::string disc_table(const disc_traits& found, const disc_traits& foreseen) {
  const bool has_both = !foreseen.all().empty();
  std::vector<row> rows = rows_of(found, foreseen);
  rows.insert(rows.begin(), {"", has_both ? "asked for" : "", "on the disc"});
  std::size_t name = 0, asked = 0;
  for (const row& one : rows) {
    name = std::max(name, width_of(one.name));
    asked = std::max(asked, width_of(one.foreseen));
  }
  std::string text;
  for (const row& one : rows) {
    std::string line;
    pad(line, one.name, name + 3);
    if (has_both)
      pad(line, one.foreseen, asked + 3);
    line += one.found;
    line.erase(line.find_last_not_of(' ') + 1);
    text += line + "\n";
  }
  return text;
}

std::string disc_table_json(const disc_traits& found, const disc_traits& foreseen) {
  json_lines lines;
  for (const compared_trait& one : compared(found, foreseen)) {
    json_object object;
    object.add("item", json_of_item(one.any().item));
    object.add_text("trait", name_of(one.any().kind));
    if (one.foreseen != nullptr)
      object.add("askedFor", json_string(shown_value(*one.foreseen)));
    if (one.found != nullptr)
      object.add("onTheDisc", json_string(shown_value(*one.found)));
    lines.add(object.text());
  }
  return lines.text();
}

}  // namespace corvane
