// Where tool tips stand.
#pragma once

class wxToolBar;

namespace corvane {

/// Has the tips of the bar's tools stand below the bar, where they cover none of its tools; GTK
/// would show them at the pointer. To be called when all tools are there. On Windows the system
/// places them.
void let_tips_stand_below(wxToolBar& bar);

}  // namespace corvane
