// Streams that tests encode for themselves, kept beside the test program for the next run.
#pragma once

#include <string>

namespace corvane::disc {

/// Native path of the file that the shell line makes; the file's name is put behind the line. A
/// file that is made in another way is another file. Fails the test when the line fails.
std::string kept_clip(const std::string& line, const std::string& name);

}  // namespace corvane::disc
