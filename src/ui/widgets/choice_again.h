// A list from which the entry that it shows already can be chosen again.
#pragma once

#include <functional>

class wxChoice;

namespace corvane {

/// Calls `again` when the user opens the list and takes the entry that is selected. The toolkit
/// tells of other entries only with GTK; on Windows it tells of that one itself, as of any other.
void tell_choice_again(wxChoice& choice, std::function<void()> again);

}  // namespace corvane
