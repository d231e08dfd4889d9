// How long a path may be.
//
// Windows takes 259 characters, unless long paths are switched on in it and in the program; those
// of ours ask for them in their manifests, Windows' own setting is off until somebody changes it.
#pragma once

#include <cstddef>
#include <optional>
#include <string_view>

namespace corvane {

/// The most characters, as Windows counts them, that a path may have here; nullopt where long ones
/// are no matter.
std::optional<std::size_t> longest_path();

/// UTF-8 text's length as Windows counts it, in UTF-16 units. Text that is not UTF-8 is not counted
/// exactly.
std::size_t windows_length(std::string_view text);

}  // namespace corvane
