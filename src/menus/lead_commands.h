// The command with which a button, a title's end or first play leads to a place that was pointed
// at, in the words of the editors, and its writing into the project as one of their changes.
#pragma once

#include "disc/disc_description.h"
#include "examine/disc_map.h"
#include "platform/result.h"
#include "project/document.h"

#include <string>
#include <vector>

namespace corvane {

/// What a command belongs to: a button (1-based) of a menu; 0 of a title's end and of first play.
struct lead_source {
  map_place place;
  int button = 0;
};

/// `chapter`: 1-based; 0: the whole title, or a menu.
struct lead_target {
  map_place place;
  int chapter = 0;
  bool operator==(const lead_target&) const = default;
};

/// Fails with sentences for the user, full stops and all, where no command leads from the one to
/// the other.
result<std::string> command_to(const disc_description& d, const lead_source& from,
                               const lead_target& to);

/// All places that a command can lead to from here: titles, their chapters from the second one on,
/// menus.
std::vector<lead_target> targets_from(const disc_description& d, const lead_source& from);

/// Gives the source that command. What cannot be is told, as is that the project has hand-edited
/// navigation XML, which has its own commands; nothing changes then. True: it was done.
bool lead_command(document& doc, const lead_source& from, const lead_target& to);

}  // namespace corvane
