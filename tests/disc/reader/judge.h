// Holds the product's reader of discs against libdvdread: every value that both know must be the
// same on a disc that is in order.
#pragma once

#include <string>
#include <vector>

namespace corvane::disc {

/// What the two readers do not agree on, and what the product's finds wrong with a disc (a folder
/// or an image) that the tools have made; one sentence each. Empty: nothing. Looked at are all
/// tables of all IFO files that both read, the copies in BUP files, every navigation pack of menus
/// and titles, and, of an image, the places of files.
std::vector<std::string> disagreements(const std::string& native_path);

/// The same as text, a line each.
std::string disagreement_text(const std::string& native_path);

}  // namespace corvane::disc
