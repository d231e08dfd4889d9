// The console that a program talks through.
#pragma once

namespace corvane {

/// Lets a program that has windows print where it was started: on Windows such a program has no
/// standard output unless that was led somewhere. Elsewhere it has it already.
void use_callers_console();

/// Until the program ends the console takes our UTF-8 text as such.
void use_utf8_console();

/// Whether somebody watches standard output on a terminal that can go back to a line's beginning.
bool output_is_terminal();

/// Columns of that terminal; 80 when it does not say.
int terminal_width();

}  // namespace corvane
