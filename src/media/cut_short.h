// Whether a file ends before what its head promises: a copy or download that was broken off.
#pragma once

#include "media/source_reader.h"

namespace corvane {

/// By the lengths that the outermost parts of MP4 and MOV, AVI and WAV, MKV and WebM files state.
/// False where these are whole, and for all other files, which state none.
bool is_cut_short(source_bytes& bytes);

}  // namespace corvane
