// File dialog filters: from the core's form to the toolkit's, and the extension a filter implies.
#pragma once

#include "platform/files/paths.h"

#include <string>
#include <string_view>
#include <vector>

namespace corvane {

struct filter_entry {
  std::string text;                   ///< what the user reads
  std::vector<std::string> patterns;  ///< "*.m2v", without blanks
};

/// The entries of "text|*.a;*.b|text|*.c"; blanks around a pattern are dropped. A text without
/// patterns is left out.
std::vector<filter_entry> filter_entries(std::string_view filter);

/// The filter as the toolkit takes it. On POSIX systems, where its patterns heed case, "*.m2v"
/// becomes "*.[mM]2[vV]", so that MOVIE.M2V from a camera or a Windows disk is offered too.
std::string toolkit_filter(std::string_view filter, path_style style = native_style());

/// The path with the filter's extension when the name does not end in it (in letters of either
/// case) and the filter has exactly one pattern: with "*.cvp", "disc v1.0" gives "disc v1.0.cvp",
/// for what stands behind its point is no kind of file. Where the system's own dialog has added the
/// extension, the path is as it should be already. Any other path is given as it is.
std::string with_implied_extension(std::string_view path, std::string_view filter);

}  // namespace corvane
