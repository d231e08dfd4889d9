// What commands of a disc lead to, by the file that is played there, so that it is known again
// under another number.
#pragma once

#include "disc/disc_description.h"
#include "disc/finding.h"

#include <optional>
#include <string>
#include <vector>

namespace corvane {

/// Where a command led once.
struct command_target {
  finding_item item;  ///< whose command it is: of the disc (first play), a title, or a button
  std::string text;   ///< the command
  std::string video;  ///< stored path: the video of the title or menu that it led to
  bool operator==(const command_target&) const = default;
};

/// All commands that lead to a title or menu by its number, in the order of first play, titles,
/// menus and their buttons. Those with a number that there is none of are left out.
std::vector<command_target> command_targets(const disc_description& d);

/// The order of `command_targets`.
bool is_before(const finding_item& a, const finding_item& b);

/// The one of this item's command among `targets`, which are in that order; null if there is none.
const command_target* target_of_item(const std::vector<command_target>& targets,
                                     const finding_item& item);

}  // namespace corvane
