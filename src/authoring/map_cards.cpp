#include "authoring/map_cards.h"

#include "examine/navigation_map.h"
#include "formats/numbers.h"
#include "formats/sanitized.h"
#include "formats/text.h"
#include "platform/files/paths.h"

#include <algorithm>
#include <cstddef>
#include <iterator>
#include <optional>
#include <utility>

namespace corvane {
namespace {

using map_kind = map_place::kind;
using arrow_end = map_arrow::end_kind;

std::string count_of(int count, const char* one, const char* many) {
  return trimmed(count) + " " + (count == 1 ? one : many);
}

/// Where arrows lead, shortly: "title 2, chapter 3", "the disc ends".
std::string target_words(const map_arrow& arrow) {
  switch (arrow.end) {
    case arrow_end::place:
      return name_of(arrow.to) +
             (arrow.chapter > 1 ? ", chapter " + trimmed(arrow.chapter) : std::string());
    case arrow_end::stop:
      return "the disc ends";
    case arrow_end::nowhere:
      return "nowhere: " + sanitized(arrow.why);
    case arrow_end::unknown:
      break;
  }
  return sanitized_short(trim(arrow.command));
}

class card_writer {
 public:
  card_writer(const disc_description& d, const disc_map& map,
              const std::map<map_place, std::string>& lengths)
      : disc_(d), map_(map), lengths_(lengths) {}

  map_card card_of(const map_node& node) const {
    map_card card;
    card.place = node.place;
    card.heading = name_of(node.place);
    if (node.place.what == map_kind::title)
      describe_title(card);
    else if (node.place.what != map_kind::first_play)
      describe_menu(card);
    if (node.place.what == map_kind::first_play)
      card.detail = row_of_exit(node.place, 0).text;
    else
      for (int exit = 1; exit <= node.exits; ++exit)
        card.rows.push_back(row_of_exit(node.place, exit));
    if (!node.is_reached)
      card.trouble = "nothing leads here";
    else if (!node.is_left)
      card.trouble = node.exits == 0 ? "no button leads on" : "only to menus for ever";
    else if (node.place.what == map_kind::first_play && row_of_exit(node.place, 0).is_wrong)
      card.trouble = "leads nowhere";
    return card;
  }

 private:
  void describe_title(map_card& card) const {
    const disc_title& title = disc_.title(card.place.number);
    set_video(card, title.video());
    if (const std::optional<int> chapters = chapters_asked_for(title))
      card.detail = count_of(*chapters, "chapter", "chapters");
    add_length(card);
  }

  void describe_menu(map_card& card) const {
    const bool of_disc = card.place.what == map_kind::disc_menu;
    const auto& menus = of_disc ? disc_.disc_menus : disc_.menus;
    const disc_menu& menu = menus[static_cast<std::size_t>(card.place.number) - 1];
    set_video(card, menu.video());
    card.detail = count_of(static_cast<int>(std::ssize(menu.buttons)), "button", "buttons");
    add_length(card);
  }

  void set_video(map_card& card, const std::string& stored) const {
    card.name = sanitized(file_name_of(stored));
    card.video = native_from_stored(stored, native_style());
  }

  void add_length(map_card& card) const {
    const auto length = lengths_.find(card.place);
    if (length != lengths_.end())
      card.detail = length->second + (card.detail.empty() ? "" : ", ") + card.detail;
  }

  /// `exit`: 0 of first play.
  map_card_row row_of_exit(const map_place& place, int exit) const {
    map_card_row row;
    std::vector<std::string> targets;
    bool last_menu = false;
    for (const map_arrow& arrow : map_.arrows) {
      if (arrow.from != place || (arrow.button > 0 && arrow.button != exit))
        continue;
      targets.push_back(target_words(arrow));
      row.is_wrong = row.is_wrong || arrow.end == arrow_end::nowhere;
      row.ends_disc = row.ends_disc || arrow.end == arrow_end::stop;
      last_menu = last_menu || arrow.is_last_menu;
    }
    const std::string where =
        (last_menu ? "the last menu: " : "") + (targets.empty() ? "nothing" : join(targets, ", "));
    row.text = place.what == map_kind::title       ? "then " + where
               : place.what == map_kind::menu      ? trimmed(exit) + ": " + where
               : place.what == map_kind::disc_menu ? trimmed(exit) + ": " + where
                                                   : where;
    return row;
  }

  const disc_description& disc_;
  const disc_map& map_;
  const std::map<map_place, std::string>& lengths_;
};

}  // namespace

std::vector<map_card> cards_of(const disc_description& d, const disc_map& map,
                               const std::map<map_place, std::string>& lengths) {
  std::vector<map_card> cards;
  const card_writer writer(d, map, lengths);
  for (const map_node& node : map.nodes)
    cards.push_back(writer.card_of(node));
  return cards;
}

bool is_wrong(const map_card& card) {
  return !card.trouble.empty() || std::ranges::any_of(card.rows, &map_card_row::is_wrong);
}

std::string words_of(const map_card& card) {
  std::vector<std::string> words = {card.heading};
  for (const std::string* const text : {&card.name, &card.detail, &card.trouble})
    if (!text->empty())
      words.push_back(*text);
  for (const map_card_row& row : card.rows)
    words.push_back(row.text);
  return join(words, "; ");
}

bool holds_text(const map_card& card, const std::string& text) {
  return lower(words_of(card)).find(lower(text)) != std::string::npos;
}

}  // namespace corvane
