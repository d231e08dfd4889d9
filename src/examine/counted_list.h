// Places in a file of a stranger: all are counted, the first thousand are kept.
#pragma once

#include <cstddef>
#include <cstdint>
#include <utility>
#include <vector>

namespace corvane {

template <typename T>
struct counted_list {
  static constexpr std::size_t most_kept = 1000;

  std::uint64_t count = 0;
  std::vector<T> kept;  ///< the first ones

  void add(T one) {
    ++count;
    if (kept.size() < most_kept)
      kept.push_back(std::move(one));
  }

  bool operator==(const counted_list&) const = default;
};

}  // namespace corvane
