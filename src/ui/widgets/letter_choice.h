// Drop-down lists whose entries are chosen by their first letters.
#pragma once

class wxChoice;

namespace corvane {

/// A letter or a digit chooses the next entry that begins with it, while the list has the keyboard
/// and is closed. Windows does that anyway.
void let_letters_choose(wxChoice& list);

}  // namespace corvane
