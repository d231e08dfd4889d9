// What is on the screen, as GTK knows it. Everything here runs in the main thread.
#pragma once

#include "ui/robot.h"

#include <wx/colour.h>

#include <optional>
#include <string>

namespace corvane::testing_support {

enum class label_place { menu, toolbar, button, anywhere };

/// The middle (screen coordinates) of the shown label with this text in a menu or menu bar, in a
/// toolbar, on a button, or anywhere.
std::optional<wxPoint> find_label(const std::string& text, label_place place);

/// The middle of the arrow beside the toolbar button of that caption.
std::optional<wxPoint> find_tool_arrow(const std::string& caption);

/// The dialog on top.
std::optional<seen_dialog> look_at_dialog();

/// Whether the dialog on top has the keyboard.
bool dialog_has_the_keys();

/// Takes from the display's connection whatever the display has sent so far; the main loop then
/// deals with it before anything that is called after.
void take_from_display();

/// Height of a row of a list box.
int list_row_height(const wxWindow& list);

/// The path that stands in the open file dialog; empty when there is none.
std::string chosen_path();

/// Whether a file of that name is offered by the filter that the open file dialog shows.
bool filter_offers(const std::string& file_name);

/// Where the tool tip that is shown stands on the screen.
std::optional<wxRect> tip_on_screen();

/// How many pixels of the display are one of the toolkit's, each way (GDK_SCALE).
int display_scale();

/// The colour of a pixel of the screen.
wxColour colour_at(wxPoint screen);

/// The name that the toolkit's accessibility gives a control.
std::string accessible_name(const wxWindow& control);

}  // namespace corvane::testing_support
