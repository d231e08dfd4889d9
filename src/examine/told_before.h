// What of a finished disc follows from its material, of which the user was told before the run.
#pragma once

#include "disc/disc_description.h"
#include "disc/finding.h"
#include "examine/disc_traits.h"

#include <span>
#include <vector>

namespace corvane {

/// Whose material was accepted with these errors, each once: the titles and menus themselves and
/// those that share a titleset with them, whose pictures and sound the disc's tables state once.
/// Errors of commands, buttons and room are not of material.
std::vector<told_item> told_of(const std::vector<finding>& accepted, const disc_description& d);

/// Whether a difference in that trait of the item follows from what was told.
bool follows_from(std::span<const told_item> told, const finding_item& item, disc_trait_kind what);

/// Makes warnings of errors of the disc: of those that follow from material whose errors the user
/// accepted, and of as many breaks in a title's times as its ready files have.
void soften_what_was_told(std::vector<finding>& of_disc, const foreseen_run& asked);

}  // namespace corvane
