// What is wrong with a table of a disc, and where: readers of such tables give what they could read
// and a list of these, so that one damage does not hide the rest.
#pragma once

#include <cstddef>
#include <cstdint>
#include <string>
#include <vector>

namespace corvane {

struct table_trouble {
  std::string table;     ///< "VTS_PTT_SRPT", "PGC 3 of VTS_PGCIT", "UDF file entry"
  std::uint64_t at = 0;  ///< byte of the file or image, 0-based
  std::string what;      ///< "points past the end of the file"

  /// "VTS_PTT_SRPT at byte 2048 points past the end of the file".
  std::string text() const;
};

/// A damaged table can be wrong in thousands of places: no reader tells more than this.
inline constexpr std::size_t most_troubles = 100;

/// Adds one, unless there are `most_troubles` already.
void add_trouble(std::vector<table_trouble>& troubles, std::string table, std::uint64_t at,
                 std::string what);

}  // namespace corvane
