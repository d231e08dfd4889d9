#include "examine/disc_traits.h"

#include "examine/measures.h"
#include "formats/numbers.h"
#include "formats/text.h"
#include "formats/time_text.h"
#include "formats/xml_reader.h"
#include "formats/xml_text.h"

#include <algorithm>
#include <array>
#include <cstddef>
#include <optional>
#include <utility>

namespace corvane {
namespace {

using trait_kind = disc_trait_kind;
using whole = finding_item::whole_kind;
using part = finding_item::part_kind;

/// In the order of disc_trait_kind.
constexpr std::array<std::string_view, 36> names = {
    "titles",    "menus",    "disc menus",   "first play",  "standard",     "size",
    "aspect",    "coding",   "length",       "chapters",    "begins",       "audio streams",
    "format",    "language", "sounds until", "shows until", "subtitles",    "cues",
    "first cue", "last cue", "before",       "then",        "stays",        "entries",
    "buttons",   "edges",    "leads to",     "does",        "highlighted",  "selected",
    "drawn",     "breaks",   "shown",        "lands at",    "longest unit", "bytes"};
static_assert(static_cast<std::size_t>(trait_kind::bytes) + 1 == names.size());

bool is_time(trait_kind what) {
  return what == trait_kind::length || what == trait_kind::begins ||
         what == trait_kind::sounds_until || what == trait_kind::shows_until ||
         what == trait_kind::lands || what == trait_kind::unit || what == trait_kind::first_cue ||
         what == trait_kind::last_cue;
}

template <std::size_t N>
std::optional<std::size_t> index_of(const std::array<std::string_view, N>& names_of,
                                    std::string_view name) {
  const auto at = std::find(names_of.begin(), names_of.end(), name);
  return at == names_of.end() ? std::nullopt
                              : std::optional(static_cast<std::size_t>(at - names_of.begin()));
}

std::optional<finding_item> item_in(const xml_element& element) {
  const auto of = index_of(whole_names, attribute_text(element, "of"));
  const auto in = index_of(part_names, attribute_text(element, "part"));
  if (!of || !in)
    return std::nullopt;
  return finding_item{static_cast<whole>(*of), leading_whole(attribute_text(element, "number")),
                      static_cast<part>(*in),
                      leading_whole(attribute_text(element, "part-number"))};
}

std::optional<disc_trait> trait_of(const xml_element& element) {
  const auto what = index_of(names, attribute_text(element, "what"));
  const auto item = item_in(element);
  if (!what || !item)
    return std::nullopt;
  return disc_trait{*item, static_cast<trait_kind>(*what), attribute_text(element, "is")};
}

/// False if the element says nothing of a disc.
bool take(const xml_element& element, foreseen_run& run) {
  if (element.name == "chapters")
    run.chapters.push_back(attribute_text(element, "at"));
  if (element.name == "told") {
    const auto item = item_in(element);
    if (item)
      run.told.push_back({*item, attribute_text(element, "by") == "titleset"});
    return item.has_value();
  }
  if (element.name == "trait") {
    const auto trait = trait_of(element);
    if (trait)
      run.disc.say(trait->item, trait->kind, trait->value);
    return trait.has_value();
  }
  return true;
}

std::string attributes_of(const finding_item& item) {
  std::string text = "of=\"" + std::string(name_of(item.whole)) + "\"";
  if (item.number != 0)
    text += " number=\"" + std::to_string(item.number) + "\"";
  if (item.part != part::whole)
    text += " part=\"" + std::string(name_of(item.part)) + "\"";
  if (item.part_number != 0)
    text += " part-number=\"" + std::to_string(item.part_number) + "\"";
  return text;
}

std::string line_of_trait(const disc_trait& trait) {
  return "  <trait " + attributes_of(trait.item) + " what=\"" + std::string(name_of(trait.kind)) +
         "\" is=\"" + xml_attribute_text(trait.value) + "\"/>\n";
}

std::string line_of_told(const told_item& told) {
  return "  <told " + attributes_of(told.item) + (told.of_titleset ? " by=\"titleset\"" : "") +
         "/>\n";
}

std::string yes_or_no(bool yes) {
  return yes ? "yes" : "no";
}

}  // namespace

std::string_view name_of(disc_trait_kind what) {
  return names[static_cast<std::size_t>(what)];
}

bool is_one_of(std::string_view place, std::string_view places) {
  const std::vector<std::string> all = split(places, either_place);
  return std::find(all.begin(), all.end(), place) != all.end();
}

std::string shown_value(const disc_trait& trait) {
  return is_time(trait.kind) ? time_text(leading_number(trait.value)) : trait.value;
}

void disc_traits::say(finding_item item, disc_trait_kind what, std::string value) {
  places_.emplace(key_of(item, what), traits_.size());
  traits_.push_back({item, what, std::move(value)});
}

void disc_traits::say_count(finding_item item, disc_trait_kind what, std::size_t count) {
  say(item, what, std::to_string(count));
}

void disc_traits::say_seconds(finding_item item, disc_trait_kind what, double seconds) {
  say(item, what, decimal_text(seconds, 3));
}

disc_traits::key disc_traits::key_of(const finding_item& item, disc_trait_kind what) {
  return {static_cast<int>(item.whole), item.number, static_cast<int>(item.part), item.part_number,
          static_cast<int>(what)};
}

const disc_trait* disc_traits::find(const finding_item& item, disc_trait_kind what) const {
  const auto at = places_.find(key_of(item, what));
  return at == places_.end() ? nullptr : &traits_[at->second];
}

std::string foreseen_text(const foreseen_run& run) {
  std::string text = "<?xml version=\"1.0\" encoding=\"UTF-8\"?>\n<foreseen folder=\"" +
                     xml_attribute_text(run.out) + "\" image=\"" + yes_or_no(run.image) + "\">\n";
  for (const told_item& told : run.told)
    text += line_of_told(told);
  for (const std::string& chapters : run.chapters)
    text += "  <chapters at=\"" + xml_attribute_text(chapters) + "\"/>\n";
  for (const disc_trait& trait : run.disc.all())
    text += line_of_trait(trait);
  return text + "</foreseen>\n";
}

result<foreseen_run> parse_foreseen(std::string_view text) {
  const xml_reading read = read_xml(text);
  if (read.fault)
    return result<foreseen_run>::fail("line " + std::to_string(read.fault->line) + ": " +
                                      read.fault->what);
  const xml_element& first = read.elements.front();
  foreseen_run run;
  run.out = attribute_text(first, "folder");
  run.image = attribute_text(first, "image") == "yes";
  if (first.name != "foreseen" || run.out.empty())
    return result<foreseen_run>::fail("it names no output folder");
  for (const xml_element& element : read.elements)
    if (!take(element, run))
      return result<foreseen_run>::fail("line " + std::to_string(element.line) +
                                        " says nothing of a disc");
  return result<foreseen_run>::ok(std::move(run));
}

}  // namespace corvane
