// The proportions of menus that stay where others are made beside them: all menus of a disc are 4:3
// or all are 16:9.
#pragma once

#include "disc/disc_description.h"
#include "platform/result.h"
#include "project/project.h"

#include <map>
#include <optional>
#include <string>
#include <vector>

namespace corvane {

/// Those of some menus, without the ones whose videos do not tell theirs.
struct menu_shapes {
  struct shape {
    int menu = 0;  ///< 1-based
    bool is_wide = false;
  };
  std::vector<shape> known;

  /// Whether they are 16:9: what the first of them is. Not set if none is known.
  std::optional<bool> is_wide() const;
  /// Some are 4:3 and some 16:9.
  bool are_mixed() const;
};

/// Reads the beginnings of menus' videos, each once.
class menu_shape_reader {
 public:
  /// `menus`: 1-based, each one of the project's.
  menu_shapes shapes_of(const project& p, const std::vector<int>& menus);

 private:
  std::map<std::string, std::optional<bool>> is_wide_;  ///< by native path
};

/// The menus that stay when others are made: those that the menu maker has not made; none if the
/// user's own are replaced. 1-based, ascending.
std::vector<int> menus_that_stay(const project& p, bool replaces_own);

/// Why new menus cannot stand beside those that stay, with what to do; not set if they can.
failure why_not_beside(const menu_shapes& staying, bool is_wide);

}  // namespace corvane
