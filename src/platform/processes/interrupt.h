// Ctrl-C and the system's other requests to end, for a program that has tools to stop first.
#pragma once

#include <chrono>

namespace corvane {

/// From now on Ctrl-C and a request to end only leave a note. One that was ignored when the
/// program started stays ignored. On POSIX a reader of our output that went away no longer ends
/// the program either.
void catch_interrupts();

/// 0, or the first request's number as shells count them: 1 the terminal was closed, 2 Ctrl-C,
/// 15 any other request to end. The exit status of a program that obeyed is 128 + the number.
int interrupt_number();

/// Waits, shorter when a request comes.
void wait_or_interrupt(std::chrono::milliseconds time);

}  // namespace corvane
