// A hand at the keyboard and an eye at the screen, for windows of another program; what the windows
// are told by messages is in window_program.h.
#pragma once

#include "windows/window_program.h"

#include <cstdint>
#include <initializer_list>
#include <string>
#include <vector>
#include <windows.h>

namespace corvane::testing_support {

/// The shown controls of a window of that class ("ListBox"), in their order.
std::vector<HWND> shown_controls(HWND window, const std::string& kind);

/// Presses keys together (virtual key codes, the last one is the key) in the window that is in
/// front.
void press(std::initializer_list<WORD> keys);

/// Types a text into what has the keyboard.
void type_text(const std::string& text);

/// Waits for a file dialog of that title, types the path and accepts.
void answer_file(const window_program& program, const std::string& title, const std::string& path);

/// Colours as they stand on the screen or in a file, red, green and blue from the top left.
struct pixels {
  int width = 0;
  int height = 0;
  std::vector<std::uint8_t> rgb;
};
pixels pixels_of(HWND control);

/// A picture of a PPM file.
pixels picture_file(const std::string& path);

/// The mean difference (0 to 255) of the colours of `seen` to those of `wanted`, brought to its
/// size; 255 when either could not be had.
double difference(const pixels& seen, const pixels& wanted);

/// Writes what the screen shows to NAME.ppm in the folder that CORVANE_SCREENSHOTS names; without
/// one does nothing.
void screenshot(const std::string& name);

}  // namespace corvane::testing_support
