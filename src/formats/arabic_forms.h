// The forms that letters of the Arabic script have as characters of their own. spumux shapes text
// with FriBidi, so it is these that it looks for in a font, not the letters.
#pragma once

#include <cstdint>

namespace corvane {

/// The form that stands alone, behind which the one at a word's end has the next number; the
/// character itself if it has no forms.
std::uint32_t isolated_form(std::uint32_t character);

}  // namespace corvane
