// The console a program without windows talks through.
#pragma once

namespace corvane {

/// For the length of the object the console takes our UTF-8 text as such.
class utf8_console {
 public:
  utf8_console();
  ~utf8_console();
  utf8_console(const utf8_console&) = delete;
  utf8_console& operator=(const utf8_console&) = delete;

 private:
  [[maybe_unused]] unsigned old_code_page_;
};

/// Whether somebody watches standard output on a terminal that can go back to a line's beginning.
bool output_is_terminal();

/// Columns of that terminal; 80 when it does not say.
int terminal_width();

}  // namespace corvane
