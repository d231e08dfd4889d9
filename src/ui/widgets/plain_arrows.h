// Arrows that point down, of choices and of tools with a drop-down, drawn by GTK itself.
//
// By default they are icons of the desktop's theme: for these few pixels GTK reads the indexes of
// all icon themes before the main window can be painted, a tenth of its start. On Windows nothing
// is to be done.
#pragma once

class wxToolBar;

namespace corvane {

/// From now on choices have such arrows. To be called once, before there is a window.
void draw_choices_with_plain_arrows();

/// The same for the tools of a bar that are there, before it is shown.
void draw_with_plain_arrows(wxToolBar& bar);

}  // namespace corvane
