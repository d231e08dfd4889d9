// What the units of a cell say of each other.
#include "examine/measures.h"
#include "examine/unit_facts.h"

#include <algorithm>
#include <cmath>
#include <iterator>
#include <optional>
#include <utility>

namespace corvane {

namespace {

constexpr std::size_t steps = 19;

/// Half seconds of the steps in which search goes.
constexpr std::array<int, steps> half_seconds{1,  2,  3,  4,  5,  6,  7,  8,   9,  10,
                                              11, 12, 13, 14, 15, 20, 60, 120, 240};

constexpr std::uint64_t nowhere = ~std::uint64_t{0};

std::uint64_t away(std::uint32_t from, std::uint32_t distance, bool forward) {
  if (forward)
    return std::uint64_t{from} + distance;
  return distance <= from ? from - distance : nowhere;
}

std::string text_of(const unit_search& search) {
  return search.there ? std::to_string(search.distance) + " sectors away" : "nowhere";
}

constexpr double rounding = 8 / clocks_of_units;

/// Units whose groups are open are written so that one ends some pictures before the next begins:
/// those that are shown first of the next, and stand behind another in its stream.
bool is_of_open_group(double gap) {
  constexpr double pictures[] = {1001.0 / 30'000, 1.0 / 25};
  constexpr int most_reordered = 3;
  for (const double picture : pictures)
    for (int count = 1; count <= most_reordered; ++count)
      if (std::abs(gap - count * picture) <= rounding)
        return true;
  return false;
}

bool goes_on(double gap) {
  return std::abs(gap) <= rounding || is_of_open_group(gap);
}

/// The one value that differs from all the others, which are three or more with it.
template <typename Units, typename Value>
std::optional<std::size_t> lone_one(const Units& units, Value value) {
  if (units.size() < 3)
    return std::nullopt;
  const auto second = value(units[1]);
  const bool first_is_common = value(units[0]) == second || value(units[0]) == value(units[2]);
  const auto common = first_is_common ? value(units[0]) : second;
  std::optional<std::size_t> lone;
  for (std::size_t i = 0; i < units.size(); ++i) {
    if (value(units[i]) == common)
      continue;
    if (lone)
      return std::nullopt;
    lone = i;
  }
  return lone;
}

}  // namespace

/// How many there are if none begins at the sector.
std::size_t unit_checks::unit_at(const cell& of, std::uint64_t sector) {
  const auto found =
      std::lower_bound(of.units.begin(), of.units.end(), sector,
                       [](const unit& one, std::uint64_t before) { return one.sector < before; });
  if (found == of.units.end() || found->sector != sector)
    return of.units.size();
  return static_cast<std::size_t>(found - of.units.begin());
}

/// Whether the unit that the tables have behind the sector `before` begins at `sector`.
bool unit_checks::is_next_unit(std::uint64_t before, std::uint64_t sector) const {
  const auto next = std::upper_bound(units_.begin(), units_.end(), before);
  return next != units_.end() && *next == sector;
}

/// From the nearest step to the farthest: each leads to a unit of the cell, none less far than the
/// one before.
void unit_checks::check_steps(const cell& of, const unit& from, bool forward) {
  std::uint32_t nearer = 0;
  for (std::size_t i = 0; i < steps; ++i) {
    const std::uint32_t pointer = forward ? from.forward[steps - 1 - i] : from.backward[i];
    const std::uint32_t distance = pointer & no_unit;
    if (distance == no_unit)
      continue;
    const std::uint64_t to = away(from.sector, distance, forward);
    const std::size_t index = unit_at(of, to);
    const auto wrong = [&](fact kind, bool harmless, const std::string& what) {
      tell(of, from, kind, harmless,
           "search by " + decimal_text(half_seconds[i] / 2.0, 1) + " s " +
               (forward ? "forward " : "back ") + what);
    };
    if (index == of.units.size())
      wrong(fact::step, is_unit(to),
            to == nowhere ? "leads out of the VOBs"
                          : "leads to " + sector_text(to) + ", where no unit of its cell begins");
    else if (distance < nearer)
      wrong(fact::step_order, false, "leads less far than by a smaller step");
    else if ((pointer >> 31) == 0 && of.units[index].video)
      wrong(fact::step_video, true, "leads to pictures, and says that there are none");
    nearer = std::max(nearer, index == of.units.size() ? 0 : distance);
  }
}

void unit_checks::check_neighbour(const cell& of, std::size_t index, bool next) {
  const unit& from = of.units[index];
  const unit_search& said = next ? from.next : from.previous;
  const bool there = next ? index + 1 < of.units.size() : index > 0;
  if (!said.there && !there)
    return;
  const std::uint64_t to = away(from.sector, said.distance, next);
  const unit* const neighbour = !there ? nullptr : &of.units[next ? index + 1 : index - 1];
  if (said.there &&
      ((neighbour != nullptr && neighbour->sector == to) ||
       (next ? is_next_unit(from.sector, to) : is_unit(to) && is_next_unit(to, from.sector))))
    return;
  tell(of, from, fact::neighbour, false,
       std::string("the ") + (next ? "next" : "previous") + " unit of its cell is said to be " +
           text_of(said) +
           (neighbour == nullptr ? "; there is none"
                                 : "; it is at " + sector_text(neighbour->sector)));
}

void unit_checks::check_neighbours(const cell& of, std::size_t index) {
  check_neighbour(of, index, true);
  check_neighbour(of, index, false);
}

/// `nearest_video`: index of the nearest unit that states the ends of pictures; a unit before it
/// may have some whose ends are not stated.
void unit_checks::check_video_neighbour(const cell& of, const unit& from, bool next,
                                        std::size_t nearest_video) {
  const unit_search& said = next ? from.next_video : from.previous_video;
  const bool there = nearest_video < of.units.size();
  bool right = !there;
  if (said.there) {
    const std::uint64_t to = away(from.sector, said.distance, next);
    const std::size_t index = unit_at(of, to);
    if (index == of.units.size())
      right = !there && is_unit(to);
    else if (next)
      right = to > from.sector && (!there || to <= of.units[nearest_video].sector);
    else
      right = to < from.sector && (!there || to >= of.units[nearest_video].sector);
  }
  if (!right)
    tell(of, from, fact::video_neighbour, false,
         std::string("the ") + (next ? "next" : "previous") + " unit with pictures is said to be " +
             text_of(said) +
             (there ? "; it is at " + sector_text(of.units[nearest_video].sector)
                    : "; there is none"));
}

void unit_checks::check_video_neighbours(const cell& of) {
  const std::size_t none = of.units.size();
  std::vector<std::size_t> next(of.units.size(), none);
  for (std::size_t i = of.units.size(); i-- > 1;)
    next[i - 1] = of.units[i].video ? i : next[i];
  std::size_t previous = none;
  for (std::size_t i = 0; i < of.units.size(); ++i) {
    check_video_neighbour(of, of.units[i], true, next[i]);
    check_video_neighbour(of, of.units[i], false, previous);
    previous = of.units[i].video ? i : previous;
  }
}

/// One unit's time goes on in the next; the time of the cell is what its units make.
void unit_checks::check_times(const cell& of, std::size_t index) {
  const unit& here = of.units[index];
  if (index + 1 < of.units.size()) {
    const double gap = seconds_between_units(here.ends, of.units[index + 1].begins);
    if (!goes_on(gap))
      tell(of, here, fact::times, true,
           "the next unit begins " + decimal_text(std::abs(gap), 4) +
               (gap > 0 ? " s after its end" : " s before its end"));
  }
  const double elapsed = seconds_between_units(of.units.front().begins, here.begins);
  if (here.elapsed >= 0 && std::abs(here.elapsed - elapsed) > 1 + 0.002 * std::abs(elapsed))
    tell(of, here, fact::elapsed, true,
         "it says that its cell has played " + seconds_text(here.elapsed) + "; it has played " +
             seconds_text(elapsed));
}

/// `vob`: its cells, in order.
void unit_checks::check_vob_times(const std::vector<const cell*>& vob) {
  constexpr double much = 0.1;
  for (std::size_t i = 0; i + 1 < vob.size(); ++i) {
    const unit &last = vob[i]->units.back(), &next = vob[i + 1]->units.front();
    const double gap = seconds_between_units(last.ends, next.begins);
    if (last.end + std::uint64_t{1} == next.sector && !goes_on(gap))
      tell(*vob[i], last, fact::times, true,
           "the next cell begins " + decimal_text(std::abs(gap), 4) +
               (gap > 0 ? " s after its end" : " s before its end"));
  }
  const unit &first = vob.front()->units.front(), &last = vob.back()->units.back();
  const auto far = [](std::uint32_t stated, std::uint32_t is) {
    return stated != 0 && std::abs(seconds_between_units(is, stated)) > much;
  };
  if (far(first.vob_begins, first.begins))
    tell(*vob.front(), first, fact::vob_times, true, "it does not begin when its VOB does");
  if (far(last.vob_ends, last.ends))
    tell(*vob.back(), last, fact::vob_times, true, "it does not end when its VOB does");
}

/// `vob`: its cells.
void unit_checks::check_constants(const std::vector<const cell*>& vob) {
  constexpr std::array<const char*, count_of_constants> names{
      "what it says of the time of its VOB", "what the headers of its pack declare",
      "its copy protection", "the keys that it locks", "what it says of pauses of the sound"};
  std::vector<std::pair<const cell*, const unit*>> units;
  for (const cell* const of : vob)
    for (const unit& one : of->units)
      units.emplace_back(of, &one);
  for (std::size_t c = 0; c < count_of_constants; ++c) {
    const auto value = [c](const auto& one) { return one.second->constants[c]; };
    std::optional<std::size_t> lone = lone_one(units, value);
    // Of two, both cannot be right about their VOB; the rest may change.
    if (units.size() == 2 && c == std::size_t{vob_times} && value(units[0]) != value(units[1]))
      lone = 1;
    if (lone)
      tell(*units[*lone].first, *units[*lone].second,
           static_cast<fact>(static_cast<int>(fact::constants) + static_cast<int>(c)), true,
           std::string(names[c]) + " is unlike that of all other units of its VOB");
  }
  const auto ending = lone_one(units, [](const auto& one) { return one.second->sequence_ends; });
  if (ending && *ending + 1 < units.size() && units[*ending].second->sequence_ends)
    tell(*units[*ending].first, *units[*ending].second, fact::sequence_end, true,
         "it says that the pictures end in it; its VOB goes on");
}

/// Buttons that come up at one time are the same ones.
void unit_checks::check_highlights(const cell& of) {
  std::vector<const unit*> shown;
  for (std::size_t i = 0; i < of.units.size(); ++i) {
    const unit& here = of.units[i];
    if (here.new_highlight)
      shown.push_back(&here);
    else if (here.highlight_status == 0 && i + 1 < of.units.size() &&
             of.units[i + 1].new_highlight &&
             seconds_between_units(here.begins, of.units[i + 1].highlight_begins) <= 0)
      tell(of, here, fact::highlight_content, true,
           "it has no buttons; by the next unit they are there already");
  }
  const auto without = lone_one(of.units, [](const unit& one) { return one.highlight_status; });
  if (without.value_or(0) > 0 && of.units[*without].highlight_status == 0 &&
      of.units[0].new_highlight)
    tell(of, of.units[*without], fact::highlight_content, true,
         "it has no buttons; all other units of its cell have");
  bool late = false;
  for (std::size_t i = 0; i < shown.size(); ++i) {
    const unit& here = *shown[i];
    if (i > 0 && here.highlight_begins == shown[i - 1]->highlight_begins &&
        here.highlight_content != shown[i - 1]->highlight_content)
      tell(of, here, fact::highlight_content, false,
           "its buttons are not those that the unit before shows from the same time on");
    if (seconds_between_units(of.units.back().ends, here.highlight_begins) <= 0)
      continue;
    late = true;
    tell(of, here, fact::highlight_times, false, "its buttons come up behind the end of its cell");
  }
  if (late)
    return;
  if (const auto lone = lone_one(shown, [](const unit* one) { return one->highlight_times; }))
    tell(of, *shown[*lone], fact::highlight_times, true,
         "its buttons come and go at other times than in all other units of its cell");
}

std::vector<unit_trouble> unit_checks::judge() {
  std::vector<const cell*> vob;
  const auto end_of_vob = [&] {
    if (!vob.empty() && added_ <= most_units)
      check_vob_times(vob);
    if (!vob.empty())
      check_constants(vob);
    vob.clear();
  };
  for (const auto& [key, of] : cells_) {
    for (std::size_t i = 0; i < of.units.size(); ++i) {
      check_steps(of, of.units[i], true);
      check_steps(of, of.units[i], false);
      check_neighbours(of, i);
      check_times(of, i);
    }
    check_video_neighbours(of);
    check_highlights(of);
    if (!vob.empty() && vob.front()->vob != of.vob)
      end_of_vob();
    vob.push_back(&of);
  }
  end_of_vob();
  return troubles_.take();
}

}  // namespace corvane
