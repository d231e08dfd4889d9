#include "menus/look_cures.h"

#include "examine/colour_groups.h"
#include "formats/numbers.h"

#include <algorithm>
#include <cstddef>

namespace corvane {
namespace {

/// A look and how many buttons have it.
struct used_look {
  int look = 0;
  int uses = 0;
  int first = 0;  ///< the first button that has it
};

/// In the order in which they come.
std::vector<used_look> uses_of(const std::vector<int>& looks) {
  std::vector<used_look> all;
  for (std::size_t i = 0; i < looks.size(); ++i) {
    const auto known = std::find_if(all.begin(), all.end(),
                                    [&](const used_look& u) { return u.look == looks[i]; });
    if (known == all.end())
      all.push_back({looks[i], 1, static_cast<int>(i)});
    else
      ++known->uses;
  }
  return all;
}

std::vector<int> ordered(const std::vector<int>& looks, const std::vector<used_look>& uses) {
  std::vector<int> order;
  order.reserve(looks.size());
  for (const used_look& u : uses)
    for (std::size_t i = 0; i < looks.size(); ++i)
      if (looks[i] == u.look)
        order.push_back(static_cast<int>(i));
  return order;
}

std::vector<int> in_order(const std::vector<int>& looks, const std::vector<int>& order) {
  std::vector<int> now;
  now.reserve(order.size());
  for (const int i : order)
    now.push_back(looks[static_cast<std::size_t>(i)]);
  return now;
}

bool helps_to_order(const std::vector<int>& looks) {
  return are_looks_sorted_out(in_order(looks, order_by_look(looks)));
}

/// Of looks of which some cannot be changed, those that can.
std::vector<used_look> changeable(const std::vector<int>& looks,
                                  const std::vector<bool>& may_change) {
  std::vector<used_look> all = uses_of(looks);
  std::erase_if(all, [&](const used_look& u) {
    for (std::size_t i = 0; i < looks.size(); ++i)
      if (looks[i] == u.look && !may_change[i])
        return true;
    return false;
  });
  return all;
}

}  // namespace

bool are_looks_sorted_out(const std::vector<int>& looks) {
  return count_of_looks(looks) <= most_looks && !are_looks_too_slow(looks);
}

// The last three looks come into the first group, which is tried first: with the most used ones
// there the fewest ways come before the one that fits.
std::vector<int> order_by_look(const std::vector<int>& looks) {
  std::vector<used_look> uses = uses_of(looks);
  std::vector<int> as_they_come = ordered(looks, uses);
  if (are_looks_sorted_out(in_order(looks, as_they_come)))
    return as_they_come;
  std::stable_sort(uses.begin(), uses.end(),
                   [](const used_look& a, const used_look& b) { return a.uses < b.uses; });
  return ordered(looks, uses);
}

std::optional<fewer_looks> fewer_looks_of(const std::vector<int>& looks,
                                          const std::vector<bool>& may_change) {
  std::vector<used_look> uses = changeable(looks, may_change);
  if (are_looks_sorted_out(looks) || uses.empty())
    return std::nullopt;
  const auto more_used = [](const used_look& a, const used_look& b) { return a.uses > b.uses; };
  std::stable_sort(uses.begin(), uses.end(), more_used);
  const used_look most = uses.front();
  const bool order_is_enough = helps_to_order(looks);
  fewer_looks plan{{}, most.first, false};
  std::vector<int> now = looks;
  for (std::size_t last = uses.size(); last-- > 1;) {
    for (std::size_t i = 0; i < looks.size(); ++i)
      if (looks[i] == uses[last].look) {
        now[i] = most.look;
        plan.buttons.push_back(static_cast<int>(i));
      }
    plan.order = !are_looks_sorted_out(now);
    if (plan.order && (order_is_enough || !helps_to_order(now)))
      continue;
    std::sort(plan.buttons.begin(), plan.buttons.end());
    return plan;
  }
  return std::nullopt;
}

look_cures cures_of(const std::vector<int>& looks, const std::vector<bool>& may_change) {
  if (are_looks_sorted_out(looks))
    return {};
  return {helps_to_order(looks), fewer_looks_of(looks, may_change)};
}

std::string text_of(const fewer_looks& plan) {
  std::string text = plan.buttons.size() == 1 ? "gives button " : "gives buttons ";
  for (std::size_t i = 0; i < plan.buttons.size(); ++i) {
    if (i > 0)
      text += i + 1 == plan.buttons.size() ? " and " : ", ";
    text += trimmed(plan.buttons[i] + 1);
  }
  text += " the look of button " + trimmed(plan.as + 1);
  return plan.order ? text + ", and orders all by look" : text;
}

}  // namespace corvane
