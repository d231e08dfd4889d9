// Rules about finished discs: what a disc must be by itself, and that it is what was asked for.
#pragma once

#include "examine/disc_streams.h"
#include "examine/disc_traits.h"
#include "examine/read_disc.h"
#include "examine/rules.h"

#include <span>
#include <string>
#include <vector>

namespace corvane {

std::span<const rule> disc_rules();

/// What of a disc contradicts itself, or breaks off: its tables, and its streams against them.
std::vector<finding> disc_findings(const disc_contents& disc, const disc_streams& streams);

/// What of `found` is not as foreseen: each trait that is foreseen is looked at, and `found` says
/// nothing of it only where it cannot be told. What follows from material of whose errors the user
/// was told is a warning.
std::vector<finding> differences(const disc_traits& foreseen, const disc_traits& found,
                                 std::span<const told_item> told);

/// A finding of the file at `path`, under one of the rules about files and images.
finding disc_file_finding(std::string_view rule, const std::string& path, std::string found);

}  // namespace corvane
