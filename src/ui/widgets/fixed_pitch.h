// The font of texts whose columns stand below each other.
#pragma once

#include <wx/font.h>

namespace corvane {

/// A font of fixed pitch in the size of another one.
wxFont fixed_pitch(const wxFont& like);

}  // namespace corvane
