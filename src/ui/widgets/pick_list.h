// A drop-down list that tells of every pick, also of the entry that it shows already.
//
// The menu editor's chooser needs it: a button that was just added stands in the list before the
// user picks it.
#pragma once

#include <functional>

class wxControlWithItems;
class wxWindow;

namespace corvane {

/// `picked` is also called when the list is closed without a pick; it looks at the selection.
wxControlWithItems* make_pick_list(wxWindow* parent, std::function<void()> picked);

}  // namespace corvane
