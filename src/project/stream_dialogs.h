// The file dialogs for streams and project files: titles and filters.
#pragma once

#include "project/prompts.h"

namespace corvane {

/// The video dialog. With `muxed_too` it offers program streams as a second kind.
file_dialog video_dialog(bool muxed_too);
file_dialog audio_dialog();

/// Filter of the project file dialogs.
inline constexpr const char* project_filter = "corvane project file(*.cvp)|*.cvp";

}  // namespace corvane
