// What the main window's items for side documents do, with what the core needs of the program.
#pragma once

namespace corvane {

class main_window;

void print_layout(main_window& main);
void create_avisynth_script(main_window& main);
void register_extension(main_window& main);

}  // namespace corvane
