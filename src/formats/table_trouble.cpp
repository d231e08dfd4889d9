#include "formats/table_trouble.h"

#include <utility>

namespace corvane {

std::string table_trouble::text() const {
  return table + " at byte " + std::to_string(at) + " " + what;
}

void add_trouble(std::vector<table_trouble>& troubles, std::string table, std::uint64_t at,
                 std::string what) {
  if (troubles.size() < most_troubles)
    troubles.push_back({std::move(table), at, std::move(what)});
}

}  // namespace corvane
