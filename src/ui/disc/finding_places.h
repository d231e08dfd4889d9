// Opens what a finding is about.
#pragma once

#include "tools/finding_list.h"

namespace corvane {

class main_window;

/// Selects the title in the main window, or opens the editor of the place as the user would, whose
/// own conversation follows. Nothing happens for a place that is none.
void open_place(main_window& main, const finding_target& place);

}  // namespace corvane
