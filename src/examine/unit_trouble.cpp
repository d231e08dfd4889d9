#include "examine/unit_trouble.h"

#include <algorithm>
#include <utility>

namespace corvane {

bool unit_trouble_list::is_first(int vob, int cell, int kind, std::uint32_t sector) {
  const auto found = all_.find({vob, cell, kind});
  if (found == all_.end())
    return all_.size() < most;
  if (std::exchange(found->second.last, sector) != sector)
    ++found->second.others;
  return false;
}

void unit_trouble_list::add(int kind, unit_trouble one) {
  const std::tuple key(one.vob, one.cell, kind);
  const std::uint32_t sector = one.sector;
  all_.emplace(key, counted{std::move(one), 0, sector});
}

std::vector<unit_trouble> unit_trouble_list::take() {
  std::vector<unit_trouble> taken;
  for (auto& [key, one] : all_) {
    if (one.others > 0)
      one.first.what += ", and so in " + std::to_string(one.others) +
                        (one.others == 1 ? " other unit" : " other units") + " of its cell";
    taken.push_back(std::move(one.first));
  }
  all_.clear();
  std::stable_sort(taken.begin(), taken.end(), [](const unit_trouble& a, const unit_trouble& b) {
    return a.sector < b.sector;
  });
  return taken;
}

}  // namespace corvane
