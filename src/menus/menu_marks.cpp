#include "menus/menu_marks.h"

#include "examine/button_neighbours.h"
#include "examine/button_shapes.h"
#include "formats/numbers.h"
#include "formats/text.h"
#include "menus/button_overlaps.h"
#include "project/menu_rows.h"

#include <algorithm>
#include <cstddef>
#include <utility>

namespace corvane {
namespace {

constexpr std::size_t most_marked = 100;

/// Which of the records are buttons.
std::vector<int> buttons_among(const std::vector<std::string>& records) {
  std::vector<int> indexes;
  for (std::size_t i = 0; i < records.size(); ++i)
    if (!trim(records[i]).empty())
      indexes.push_back(static_cast<int>(i));
  return indexes;
}

button_edges key_edges_of(const std::string& record) {
  const button_record b = parse_button(record);
  const button_box box = box_of(number_of(b.x0), number_of(b.y0), number_of(b.x1), number_of(b.y1));
  return {static_cast<int>(box.left), static_cast<int>(box.top), static_cast<int>(box.right),
          static_cast<int>(box.bottom)};
}

std::vector<button_edges> key_edges_of(const std::vector<std::string>& records,
                                       const std::vector<int>& indexes) {
  std::vector<button_edges> edges;
  edges.reserve(indexes.size());
  for (const int i : indexes)
    edges.push_back(key_edges_of(records[static_cast<std::size_t>(i)]));
  return edges;
}

void mark_unreached(const std::vector<std::string>& records, const std::vector<int>& indexes,
                    std::vector<button_mark>& marks) {
  for (const int number : buttons_out_of_reach(key_edges_of(records, indexes)))
    marks[static_cast<std::size_t>(number) - 1].is_reached = false;
}

void mark_overlaps(const std::vector<std::string>& records, std::vector<button_mark>& marks) {
  const auto mark_at = [&marks](int number) {
    return std::find_if(marks.begin(), marks.end(),
                        [number](const button_mark& m) { return m.index == number - 1; });
  };
  for (const button_pair& pair : overlapping_buttons(records, records.size() * records.size())) {
    const auto a = mark_at(pair.a), b = mark_at(pair.b);
    if (a == marks.end() || b == marks.end())
      continue;
    a->overlaps.push_back(b->index);
    b->overlaps.push_back(a->index);
  }
  for (button_mark& m : marks)
    std::sort(m.overlaps.begin(), m.overlaps.end());
}

}  // namespace

std::vector<button_mark> marks_of(const std::vector<std::string>& records,
                                  const words_of_action& words) {
  const std::vector<int> indexes = buttons_among(records);
  std::vector<button_mark> marks;
  marks.reserve(indexes.size());
  for (const int i : indexes) {
    const button_record b = parse_button(records[static_cast<std::size_t>(i)]);
    marks.push_back({i, trimmed(i + 1) + ": " + words(command_of(b.action)), true, {}});
  }
  if (records.size() <= most_marked) {
    mark_unreached(records, indexes, marks);
    mark_overlaps(records, marks);
  }
  return marks;
}

std::vector<key_way> ways_of(const std::vector<std::string>& records, std::optional<int> from) {
  const std::vector<int> indexes = buttons_among(records);
  std::vector<key_way> ways;
  if (indexes.size() > most_marked)
    return ways;
  const std::vector<button_neighbours> all = neighbours_of(key_edges_of(records, indexes));
  for (std::size_t i = 0; i < all.size(); ++i) {
    if (from && indexes[i] != *from)
      continue;
    const std::pair<arrow_key, int> keys[] = {{arrow_key::up, all[i].up},
                                              {arrow_key::down, all[i].down},
                                              {arrow_key::left, all[i].left},
                                              {arrow_key::right, all[i].right}};
    for (const auto& [key, number] : keys) {
      const int to = indexes[static_cast<std::size_t>(number) - 1];
      if (to != indexes[i])
        ways.push_back({key, indexes[i], to});
    }
  }
  return ways;
}

}  // namespace corvane
