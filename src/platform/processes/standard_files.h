// Standard input, output and error of a program that was started without one of them.
#pragma once

namespace corvane {

/// To be called first by each program. The next file that is opened would take the number of a
/// standard one that is closed, and get what is printed there: in its place stands the system's
/// empty file.
void fill_standard_files();

}  // namespace corvane
