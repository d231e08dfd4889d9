#include "authoring/map_layout.h"

#include <algorithm>
#include <cmath>
#include <cstdint>
#include <deque>
#include <limits>
#include <map>
#include <numeric>
#include <set>
#include <tuple>
#include <utility>

namespace corvane {
namespace {

using place_kind = map_place::kind;
namespace measures = map_measures;

constexpr double margin = 24;
constexpr double folded_margin = 64;  // at the sides, for arrows from band to band
constexpr double column_gap = 120;
constexpr double node_gap = 22;
constexpr double lane_height = 12;
constexpr double band_gap = 70;
constexpr double wanted_shape = 1.7;  // width by height
constexpr double widest_shape = 2.6;
constexpr std::size_t fewest_in_band = 4, most_between_bands = 3;
constexpr std::size_t most_ordered = 5000;  // lines between two columns; more than any disc has
constexpr double corner = 7;
constexpr int sweeps = 24;

double head_of(const map_place& place) {
  return place.what == place_kind::first_play ? measures::first_play_head : measures::head;
}

double height_of(const map_node& node) {
  const bool has_rows = node.place.what != place_kind::first_play;
  return head_of(node.place) +
         (has_rows && node.exits > 0 ? node.exits * measures::row + measures::foot : 0);
}

/// What stands in a column: a node, or a lane for arrows to one.
struct column_item {
  bool is_lane = false;
  std::size_t node = 0;  // of a lane: where its arrows lead
  double height = 0;
  double y = 0;
};

/// One end of a line between neighbouring columns.
struct line_end {
  std::size_t item = 0;
  double share = 0;   // of the item's height, for the order
  double offset = 0;  // from the item's top
};

/// A line between columns c and c + 1.
struct column_line {
  line_end left, right;
};

/// The way of an arrow: the items that it passes, from its source to its target.
struct arrow_way {
  std::size_t arrow = 0, from = 0, to = 0;
  std::vector<std::size_t> items;
};

class layout_maker {
 public:
  layout_maker(const disc_map& map, map_order order) : map_(map), order_(order) {
    for (std::size_t i = 0; i < map.nodes.size(); ++i)
      index_.emplace(map.nodes[i].place, i);
  }

  map_layout make() {
    find_layers();
    fill_columns();
    find_ways();
    if (order_ == map_order::few_crossings)
      order_columns();
    place_items();
    fold_into_bands();
    draw_arrows();
    return std::move(layout_);
  }

 private:
  // Layers ----------------------------------------------------------------------------------------

  void find_layers() {
    layer_.assign(map_.nodes.size(), unlaid);
    for (const map_arrow& arrow : map_.arrows)
      if (arrow.end == map_arrow::end_kind::place)
        next_[index_.at(arrow.from)].push_back(index_.at(arrow.to));
    lay_from(0, 0);
    // What only a key of the player leads to stands beside what the disc begins with.
    for (std::size_t i = 0; i < map_.nodes.size(); ++i)
      if (layer_[i] == unlaid && map_.nodes[i].is_reached)
        lay_from(i, 1);
    const int last = *std::max_element(layer_.begin(), layer_.end());
    for (std::size_t i = 0; i < map_.nodes.size(); ++i)
      if (layer_[i] == unlaid)
        lay_from(i, last + 1);
  }

  void lay_from(std::size_t node, int layer) {
    std::deque<std::size_t> waiting;
    const auto lay = [&](std::size_t i, int at) {
      layer_[i] = at;
      met_.push_back(i);
      waiting.push_back(i);
    };
    lay(node, layer);
    while (!waiting.empty()) {
      const std::size_t at = waiting.front();
      waiting.pop_front();
      for (const std::size_t next : next_[at])
        if (layer_[next] == unlaid)
          lay(next, layer_[at] + 1);
    }
  }

  // Columns ---------------------------------------------------------------------------------------

  /// A column may be so high that the whole has about the wanted shape.
  double most_height() const {
    double all = 0, highest = 0;
    for (const map_node& node : map_.nodes) {
      all += height_of(node) + node_gap;
      highest = std::max(highest, height_of(node));
    }
    const double fair = std::sqrt(all * (measures::width + column_gap) / wanted_shape);
    return std::max(highest, fair);
  }

  void fill_columns() {
    const double most = most_height();
    column_of_.resize(map_.nodes.size());
    item_of_.resize(map_.nodes.size());
    const int layers = 1 + *std::max_element(layer_.begin(), layer_.end());
    for (int layer = 0; layer < layers; ++layer) {
      double filled = std::numeric_limits<double>::max();
      for (const std::size_t node : met_) {
        if (layer_[node] != layer)
          continue;
        const double height = height_of(map_.nodes[node]);
        if (filled + node_gap + height > most) {
          columns_.emplace_back();
          filled = -node_gap;
        }
        filled += node_gap + height;
        column_of_[node] = columns_.size() - 1;
        item_of_[node] = items_.size();
        columns_.back().push_back(items_.size());
        items_.push_back({false, node, height, 0});
      }
    }
  }

  std::size_t lane_to(std::size_t node, std::size_t column) {
    const auto [lane, is_new] = lanes_.try_emplace({node, column}, items_.size());
    if (is_new) {
      columns_[column].push_back(items_.size());
      items_.push_back({true, node, lane_height, 0});
    }
    return lane->second;
  }

  void find_ways() {
    lines_.resize(columns_.size());
    for (std::size_t i = 0; i < map_.arrows.size(); ++i) {
      const map_arrow& arrow = map_.arrows[i];
      if (arrow.end != map_arrow::end_kind::place)
        continue;
      arrow_way way{i, index_.at(arrow.from), index_.at(arrow.to), {}};
      const std::size_t begin = column_of_[way.from], end = column_of_[way.to];
      way.items.push_back(item_of_[way.from]);
      for (std::size_t c = begin; c < end; ++c)
        way.items.push_back(c + 1 == end ? item_of_[way.to] : lane_to(way.to, c + 1));
      for (std::size_t c = begin; c > end; --c)
        way.items.push_back(c - 1 == end ? item_of_[way.to] : lane_to(way.to, c - 1));
      add_lines(way, begin, end);
      ways_.push_back(std::move(way));
    }
  }

  line_end exit_end(const arrow_way& way) const {
    const map_arrow& arrow = map_.arrows[way.arrow];
    const double offset = exit_height(arrow.from, std::max(1, arrow.button));
    return {way.items.front(), offset / items_[way.items.front()].height, offset};
  }

  line_end entry_end(std::size_t item) const {
    const double offset =
        items_[item].is_lane ? lane_height / 2 : head_of(map_.nodes[items_[item].node].place) / 2;
    return {item, offset / items_[item].height, offset};
  }

  void add_lines(const arrow_way& way, std::size_t begin, std::size_t end) {
    line_end from = exit_end(way);
    std::size_t column = begin;
    for (std::size_t i = 1; i < way.items.size(); ++i) {
      const line_end to = entry_end(way.items[i]);
      const bool forward = end > begin;
      if (known_lines_.insert({from.item, from.offset, to.item}).second)
        lines_[forward ? column : column - 1].push_back(forward ? column_line{from, to}
                                                                : column_line{to, from});
      column = forward ? column + 1 : column - 1;
      from = to;
    }
  }

  // Order -----------------------------------------------------------------------------------------

  double rank(const line_end& end) const { return rank_[end.item] + end.share; }

  void number_items() {
    rank_.assign(items_.size(), 0);
    for (const std::vector<std::size_t>& column : columns_)
      for (std::size_t i = 0; i < column.size(); ++i)
        rank_[column[i]] = static_cast<double>(i);
  }

  std::int64_t crossings() const {
    std::int64_t count = 0;
    for (const std::vector<column_line>& lines : lines_)
      for (std::size_t i = 0; i < lines.size() && lines.size() <= most_ordered; ++i)
        for (std::size_t j = i + 1; j < lines.size(); ++j)
          count += (rank(lines[i].left) - rank(lines[j].left)) *
                               (rank(lines[i].right) - rank(lines[j].right)) <
                           0
                       ? 1
                       : 0;
    return count;
  }

  /// Sorts a column by the middle of what its items are joined to in the one beside it.
  void sort_column(std::size_t column, bool by_left) {
    std::map<std::size_t, std::pair<double, int>> sums;
    if (by_left && column == 0)
      return;
    for (const column_line& line : lines_[by_left ? column - 1 : column]) {
      auto& [sum, count] = sums[by_left ? line.right.item : line.left.item];
      sum += rank(by_left ? line.left : line.right);
      ++count;
    }
    std::map<std::size_t, double> middles;
    for (const std::size_t item : columns_[column]) {
      const auto sum = sums.find(item);
      middles[item] = sum == sums.end() ? rank_[item] : sum->second.first / sum->second.second;
    }
    std::stable_sort(
        columns_[column].begin(), columns_[column].end(),
        [&middles](std::size_t a, std::size_t b) { return middles.at(a) < middles.at(b); });
    for (std::size_t i = 0; i < columns_[column].size(); ++i)
      rank_[columns_[column][i]] = static_cast<double>(i);
  }

  void order_columns() {
    number_items();
    auto best = columns_;
    std::int64_t fewest = crossings();
    for (int sweep = 0; sweep < sweeps && fewest > 0; ++sweep) {
      const bool by_left = sweep % 2 == 0;
      for (std::size_t i = 0; i < columns_.size(); ++i)
        sort_column(by_left ? i : columns_.size() - 1 - i, by_left);
      if (const std::int64_t now = crossings(); now < fewest) {
        fewest = now;
        best = columns_;
      }
    }
    columns_ = best;
  }

  // Places ----------------------------------------------------------------------------------------

  double gap_between(std::size_t above, std::size_t below) const {
    return items_[above].is_lane && items_[below].is_lane ? 0 : node_gap;
  }

  /// Gives the items of a column the places that are nearest to those they want and keep their
  /// order: those that want the same room share it around their middle.
  void settle(const std::vector<std::size_t>& column, const std::vector<double>& wanted) {
    struct block {
      double sum = 0;
      std::size_t count = 0;
      double middle() const { return sum / static_cast<double>(count); }
    };
    std::vector<double> before(column.size());  // how far below the first one
    for (std::size_t i = 1; i < column.size(); ++i)
      before[i] =
          before[i - 1] + items_[column[i - 1]].height + gap_between(column[i - 1], column[i]);
    std::vector<block> blocks;
    for (std::size_t i = 0; i < column.size(); ++i) {
      blocks.push_back({wanted[i] - before[i], 1});
      while (blocks.size() > 1 && blocks[blocks.size() - 2].middle() > blocks.back().middle()) {
        const block last = blocks.back();
        blocks.pop_back();
        blocks.back().sum += last.sum;
        blocks.back().count += last.count;
      }
    }
    std::size_t i = 0;
    for (const block& b : blocks)
      for (std::size_t k = 0; k < b.count; ++k, ++i)
        items_[column[i]].y = b.middle() + before[i];
  }

  void stack_columns() {
    for (const std::vector<std::size_t>& column : columns_)
      settle(column, std::vector<double>(column.size()));
    for (const std::vector<std::size_t>& column : columns_) {
      if (column.empty())
        continue;
      const double height = items_[column.back()].y + items_[column.back()].height;
      for (const std::size_t item : column)
        items_[item].y -= height / 2;
    }
  }

  void place_items() {
    constexpr int passes = 8;
    stack_columns();
    for (int pass = 0; pass < passes; ++pass)
      for (std::size_t i = 0; i < columns_.size(); ++i)
        draw_near(pass % 2 == 0 ? i : columns_.size() - 1 - i);
  }

  /// Moves the items of a column towards what they are joined to.
  void draw_near(std::size_t column) {
    std::map<std::size_t, std::pair<double, int>> sums;
    const auto add = [&](const line_end& own, const line_end& other) {
      auto& [sum, count] = sums[own.item];
      sum += items_[other.item].y + other.offset - own.offset;
      ++count;
    };
    for (const column_line& line : lines_[column])
      add(line.left, line.right);
    if (column > 0)
      for (const column_line& line : lines_[column - 1])
        add(line.right, line.left);
    std::vector<double> wanted;
    for (const std::size_t item : columns_[column]) {
      const auto sum = sums.find(item);
      wanted.push_back(sum == sums.end() ? items_[item].y : sum->second.first / sum->second.second);
    }
    settle(columns_[column], wanted);
  }

  // Bands -----------------------------------------------------------------------------------------

  struct extent {
    double top = 0, bottom = 0;
  };

  extent extent_of(std::size_t first, std::size_t end) const {
    extent e{std::numeric_limits<double>::max(), std::numeric_limits<double>::lowest()};
    for (std::size_t c = first; c < std::min(end, columns_.size()); ++c)
      for (const std::size_t item : columns_[c]) {
        e.top = std::min(e.top, items_[item].y);
        e.bottom = std::max(e.bottom, items_[item].y + items_[item].height);
      }
    return e;
  }

  double pitch() const { return measures::width + column_gap; }

  double height_in_bands(std::size_t per_band) const {
    double height = -band_gap;
    for (std::size_t c = 0; c < columns_.size(); c += per_band) {
      const extent e = extent_of(c, c + per_band);
      height += e.bottom - e.top + band_gap;
    }
    return height;
  }

  bool is_too_wide() const {
    const double width = static_cast<double>(per_band_) * pitch();
    return width > widest_shape * std::max(height_in_bands(per_band_), 2 * pitch());
  }

  /// Many arrows from band to band could not be told apart.
  bool can_be_folded(std::size_t per_band) const {
    for (std::size_t end = per_band; end < columns_.size(); end += per_band)
      if (lines_[end - 1].size() > most_between_bands)
        return false;
    return true;
  }

  void fold_into_bands() {
    const std::size_t count = columns_.size();
    per_band_ = count;
    for (std::size_t bands = 2; bands <= count && is_too_wide(); ++bands)
      if (const std::size_t columns = (count + bands - 1) / bands;
          columns >= fewest_in_band && can_be_folded(columns))
        per_band_ = columns;
    double top = margin;
    for (std::size_t c = 0; c < count; c += per_band_) {
      const extent e = extent_of(c, c + per_band_);
      for (std::size_t k = c; k < std::min(c + per_band_, count); ++k)
        for (const std::size_t item : columns_[k])
          items_[item].y += top - e.top;
      top += e.bottom - e.top;
      band_bottom_.push_back(top);
      top += band_gap;
    }
    layout_.height = top - band_gap + margin;
    layout_.width = 2 * side_margin() + static_cast<double>(per_band_) * pitch() -
                    (per_band_ < columns_.size() ? 0 : column_gap / 2);
    place_boxes();
    order_nodes();
  }

  void order_nodes() {
    layout_.order.resize(map_.nodes.size());
    std::iota(layout_.order.begin(), layout_.order.end(), std::size_t{0});
    std::sort(layout_.order.begin(), layout_.order.end(), [this](std::size_t a, std::size_t b) {
      return std::pair(column_of_[a], layout_.boxes[a].y) <
             std::pair(column_of_[b], layout_.boxes[b].y);
    });
  }

  double side_margin() const { return per_band_ < columns_.size() ? folded_margin : margin; }

  double x_of_column(std::size_t column) const {
    return side_margin() + static_cast<double>(column % per_band_) * pitch();
  }

  void place_boxes() {
    for (std::size_t node = 0; node < map_.nodes.size(); ++node) {
      const column_item& item = items_[item_of_[node]];
      layout_.boxes.push_back(
          {x_of_column(column_of_[node]), item.y, measures::width, item.height});
    }
  }

  // Arrows ----------------------------------------------------------------------------------------

  /// Where the arrows from each item arrive at a node: those on a side in the order in which they
  /// come.
  void spread_entries() {
    std::map<std::pair<std::size_t, bool>, std::vector<std::pair<double, std::size_t>>> coming;
    for (const arrow_way& way : ways_) {
      const std::size_t before =
          way.items.size() > 1 ? way.items[way.items.size() - 2] : way.items.front();
      auto& all = coming[{way.to, arrives_left(way)}];
      const double from = items_[before].y + items_[before].height / 2;
      if (std::find(all.begin(), all.end(), std::pair(from, before)) == all.end())
        all.emplace_back(from, before);
    }
    for (auto& [at, all] : coming) {
      std::sort(all.begin(), all.end());
      const double head = head_of(map_.nodes[at.first].place), room = head - 16;
      const double step =
          all.size() < 2 ? 0 : std::min(10.0, room / static_cast<double>(all.size() - 1));
      for (std::size_t i = 0; i < all.size(); ++i)
        entries_[{at.first, at.second, all[i].second}] =
            head / 2 + step * (static_cast<double>(i) - static_cast<double>(all.size() - 1) / 2);
    }
  }

  bool arrives_left(const arrow_way& way) const {
    return column_of_[way.to] > column_of_[way.from];
  }

  map_point entry_of(const arrow_way& way) const {
    const std::size_t before =
        way.items.size() > 1 ? way.items[way.items.size() - 2] : way.items.front();
    const bool left = arrives_left(way);
    const map_box& box = layout_.boxes[way.to];
    return {left ? box.x : box.x + box.width, box.y + entries_.at({way.to, left, before})};
  }

  void draw_arrows() {
    spread_entries();
    for (const arrow_way& way : ways_)
      layout_.arrows.push_back({way.arrow, points_of(way)});
  }

  std::vector<map_point> points_of(const arrow_way& way) {
    const map_arrow& arrow = map_.arrows[way.arrow];
    map_point from = exit_point(layout_.boxes[way.from], arrow.from, std::max(1, arrow.button));
    const std::size_t begin = column_of_[way.from], end = column_of_[way.to];
    const map_point to = entry_of(way);
    if (begin == end)
      return loop(from, to, begin);
    const bool forward = end > begin;
    if (!forward)
      from.x = layout_.boxes[way.from].x;
    std::vector<map_point> points = {from};
    for (std::size_t i = 1; i < way.items.size(); ++i) {
      const std::size_t item = way.items[i];
      const std::size_t column = forward ? begin + i : begin - i;
      const bool is_last = i + 1 == way.items.size();
      const double x = x_of_column(column) + (forward ? 0 : measures::width);
      const map_point there = is_last ? to : map_point{x, items_[item].y + lane_height / 2};
      if ((forward ? column : column + 1) % per_band_ == 0)
        pass_bands(points, there, forward, way.to);
      points.push_back(there);
      if (!is_last)
        points.push_back({x + (forward ? measures::width : -measures::width), there.y});
    }
    return points;
  }

  /// Beside its column, each a little further out.
  std::vector<map_point> loop(const map_point& from, const map_point& to, std::size_t column) {
    const double out = from.x + 16 + 6 * static_cast<double>(loops_[column]++ % 8);
    return {from, {out, from.y}, {out, to.y}, to};
  }

  /// From the end of a band to the beginning of the next one, or back: through the room between
  /// them. Arrows to the same target go the same way.
  void pass_bands(std::vector<map_point>& points, const map_point& there, bool forward,
                  std::size_t target) {
    const map_point here = points.back();
    const double upper = forward ? here.y : there.y;
    const auto band = std::upper_bound(band_bottom_.begin(), band_bottom_.end(), upper);
    const double nudge = 5 * static_cast<double>(target % 8);
    const double between =
        (band == band_bottom_.end() ? layout_.height : *band) + band_gap / 2 - 18 + nudge;
    const double out = forward ? 20 + nudge : -20 - nudge;
    points.push_back({here.x + out, here.y});
    points.push_back({here.x + out, between});
    points.push_back({there.x - out, between});
    points.push_back({there.x - out, there.y});
  }

  static constexpr int unlaid = -1;

  const disc_map& map_;
  map_order order_;
  map_layout layout_;
  std::map<map_place, std::size_t> index_;
  std::map<std::size_t, std::vector<std::size_t>> next_;
  std::vector<int> layer_;
  std::vector<std::size_t> met_;  // nodes in the order in which arrows lead to them
  std::vector<column_item> items_;
  std::vector<std::vector<std::size_t>> columns_;
  std::vector<std::size_t> column_of_, item_of_;                      // by node
  std::map<std::pair<std::size_t, std::size_t>, std::size_t> lanes_;  // by target and column
  std::vector<arrow_way> ways_;
  std::vector<std::vector<column_line>> lines_;  // by their left column
  std::set<std::tuple<std::size_t, double, std::size_t>> known_lines_;
  std::vector<double> rank_;
  std::size_t per_band_ = 1;
  std::vector<double> band_bottom_;
  std::map<std::tuple<std::size_t, bool, std::size_t>, double> entries_;
  std::map<std::size_t, int> loops_;  // by column
};

bool is_level(const map_point& a, const map_point& b) {
  return a.y == b.y;
}
bool is_upright(const map_point& a, const map_point& b) {
  return a.x == b.x;
}

/// The point that is `distance` from `a` towards `b`, half way at most.
map_point towards(const map_point& a, const map_point& b, double distance) {
  const double length = std::hypot(b.x - a.x, b.y - a.y);
  const double share = length == 0 ? 0 : std::min(0.5, distance / length);
  return {a.x + (b.x - a.x) * share, a.y + (b.y - a.y) * share};
}

}  // namespace

map_layout lay_out(const disc_map& map, map_order order) {
  return map.nodes.empty() ? map_layout() : layout_maker(map, order).make();
}

double exit_height(const map_place& place, int exit) {
  return place.what == place_kind::first_play ? measures::first_play_head / 2
                                              : measures::head + (exit - 0.5) * measures::row;
}

map_point exit_point(const map_box& box, const map_place& place, int exit) {
  return {box.x + box.width, box.y + exit_height(place, exit)};
}

// Slanting parts become curves that begin and end level; the corners between level and upright ones
// are rounded.
std::vector<std::array<map_point, 3>> curves_of(const std::vector<map_point>& points) {
  std::vector<std::array<map_point, 3>> curves;
  const auto line = [&curves](const map_point& from, const map_point& to) {
    curves.push_back({from, to, to});
  };
  const auto turns = [&points](std::size_t i) {
    return i > 0 && i + 1 < points.size() &&
           ((is_level(points[i - 1], points[i]) && is_upright(points[i], points[i + 1])) ||
            (is_upright(points[i - 1], points[i]) && is_level(points[i], points[i + 1])));
  };
  for (std::size_t i = 0; i + 1 < points.size(); ++i) {
    const map_point& a = points[i];
    const map_point& b = points[i + 1];
    if (!is_level(a, b) && !is_upright(a, b)) {
      const double middle = (a.x + b.x) / 2;
      curves.push_back({map_point{middle, a.y}, map_point{middle, b.y}, b});
      continue;
    }
    const map_point from = turns(i) ? towards(a, b, corner) : a;
    const map_point to = turns(i + 1) ? towards(b, a, corner) : b;
    line(from, to);
    if (turns(i + 1)) {
      const map_point after = towards(b, points[i + 2], corner);
      curves.push_back({b, b, after});
    }
  }
  return curves;
}

}  // namespace corvane
