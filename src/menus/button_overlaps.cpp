#include "menus/button_overlaps.h"

#include "formats/numbers.h"
#include "menus/menu_geometry.h"
#include "project/messages.h"

#include <cstddef>

namespace corvane {
namespace {

// Nobody can click away the messages of a menu with hundreds of buttons in one place.
constexpr std::size_t most_messages = 100;

bool has_corner_in(const menu_rectangle& a, const menu_rectangle& b) {
  return b.contains(a.x1, a.y1) || b.contains(a.x0, a.y0) || b.contains(a.x1, a.y0) ||
         b.contains(a.x0, a.y1);
}

}  // namespace

std::vector<button_pair> overlapping_buttons(const std::vector<std::string>& records,
                                             std::size_t most) {
  std::vector<menu_rectangle> edges;
  edges.reserve(records.size());
  for (const std::string& record : records)
    edges.push_back(edges_of(record));

  std::vector<button_pair> pairs;
  for (std::size_t a = 0; a < edges.size(); ++a) {
    for (std::size_t b = 0; b < edges.size(); ++b) {
      if (pairs.size() == most)
        return pairs;
      // Of a pair met for the second time the first time was the other way round.
      const bool told = b < a && has_corner_in(edges[b], edges[a]);
      if (a != b && !told && has_corner_in(edges[a], edges[b]))
        pairs.push_back({static_cast<int>(a) + 1, static_cast<int>(b) + 1});
    }
  }
  return pairs;
}

std::string Checkbuttons(document& doc, const std::vector<std::string>& records) {
  std::string told;
  const auto tell = [&](const std::string& text) {
    say(doc, icon::exclamation, text);
    told += text + "\n";
  };
  std::size_t messages = 0;
  for (const button_pair& pair : overlapping_buttons(records, most_messages + 1)) {
    if (++messages > most_messages)
      tell("More buttons intersect");
    else
      tell("button" + trimmed(pair.a) + " intersects with button" + trimmed(pair.b));
  }
  return told;
}

}  // namespace corvane
