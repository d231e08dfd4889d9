// Gathers the findings about one file of an item under a family's rules.
#pragma once

#include "examine/rules.h"

#include <cstdint>
#include <span>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

namespace corvane {

class finding_collector {
 public:
  /// `rules` must outlive the collector. `file`: native path.
  finding_collector(std::span<const rule> rules, finding_item item, std::string file)
      : rules_(rules), item_(item), file_(std::move(file)) {}

  /// Adds a finding under the rule `id`, which must be one of the rules. An empty `wanted` stands
  /// for the rule's own. The reference holds until the next call.
  finding& add(std::string_view id, std::string found, std::string wanted = {}) {
    all_.push_back(finding_of(rules_, id, item_, std::move(found), std::move(wanted)));
    all_.back().file = file_;
    return all_.back();
  }

  /// The same at a place: 0-based byte of the file, and the time in its stream.
  finding& add_at(std::string_view id, std::uint64_t byte, double seconds, std::string found,
                  std::string wanted = {}) {
    finding& f = add(id, std::move(found), std::move(wanted));
    f.byte = byte;
    f.seconds = seconds;
    return f;
  }

  /// What was added, in that order; nothing is left.
  std::vector<finding> take() { return std::exchange(all_, {}); }

 private:
  std::span<const rule> rules_;
  finding_item item_;
  std::string file_;
  std::vector<finding> all_;
};

}  // namespace corvane
