// What the main window's items for text subtitles and language tags do: the command of the core,
// and the window that it asks for.
#pragma once

namespace corvane {

class main_window;

/// "add/edit subtitles", of the selected title.
void edit_subtitles(main_window& main);

/// "edit language tags", of the disc.
void edit_tags(main_window& main);

}  // namespace corvane
