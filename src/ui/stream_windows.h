// What the main window's items for language tags do: the command of the core, and the window that
// it asks for.
#pragma once

namespace corvane {

class main_window;

/// "edit language tags", of the disc.
void edit_tags(main_window& main);

}  // namespace corvane
