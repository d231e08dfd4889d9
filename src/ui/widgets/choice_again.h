// A list from which the entry that it shows already can be chosen again.
#pragma once

#include <functional>

class wxChoice;

namespace corvane {

/// Calls `again` when the user opens the list and takes the entry that is selected. The toolkit
/// tells of other entries only. (On Windows nobody tells of it.)
void tell_choice_again(wxChoice& choice, std::function<void()> again);

}  // namespace corvane
