#include "disc/finding.h"
#include "examine/verification.h"
#include "formats/text.h"

#include <algorithm>
#include <cstddef>
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

std::vector<row> rows_of(const disc_traits& found, const disc_traits& foreseen) {
  std::vector<row> rows;
  const finding_item* before = nullptr;
  const auto add = [&](const disc_trait& trait, const disc_trait* asked, const disc_trait* got) {
    if (before == nullptr || !is_same_whole(*before, trait.item)) {
      finding_item whole = trait.item;
      whole.part = part::whole;
      whole.part_number = 0;
      rows.push_back({text_of_item(whole), {}, {}});
    }
    before = &trait.item;
    rows.push_back({name_of_row(trait), asked == nullptr ? "" : shown_value(*asked),
                    got == nullptr ? "-" : shown_value(*got)});
  };
  for (const disc_trait& got : found.all())
    if (is_shown(got, found, foreseen))
      add(got, foreseen.find(got.item, got.kind), &got);
  for (const disc_trait& asked : foreseen.all())
    if (is_for_a_person(asked.kind) && found.find(asked.item, asked.kind) == nullptr)
      add(asked, &asked, nullptr);
  return rows;
}

}  // namespace

std::string disc_table(const disc_traits& found, const disc_traits& foreseen) {
  const bool compared = !foreseen.all().empty();
  std::vector<row> rows = rows_of(found, foreseen);
  rows.insert(rows.begin(), {"", compared ? "asked for" : "", "on the disc"});
  std::size_t name = 0, asked = 0;
  for (const row& one : rows) {
    name = std::max(name, width_of(one.name));
    asked = std::max(asked, width_of(one.foreseen));
  }
  std::string text;
  for (const row& one : rows) {
    std::string line;
    pad(line, one.name, name + 3);
    if (compared)
      pad(line, one.foreseen, asked + 3);
    line += one.found;
    line.erase(line.find_last_not_of(' ') + 1);
    text += line + "\n";
  }
  return text;
}

}  // namespace corvane
