// The navigation file config.xml that dvdauthor reads.
#pragma once

#include "authoring/run_paths.h"
#include "disc/disc_description.h"

#include <string>
#include <string_view>

namespace corvane {

/// The generated text before escaping, every line ended by CR LF.
std::string navigation_xml(const disc_description& d, const run_paths& where);

/// The escaping pass: every "&" becomes "&amp;".
std::string escape_ampersands(std::string_view text);

/// The text of config.xml: the hand-edited one as it stands, or if that is empty the generated one,
/// escaped.
std::string config_xml(const disc_description& d, const std::string& customxml,
                       const run_paths& where);

/// The output folder that hand-edited XML names: the text between the first two double quotes of
/// its second line, "&amp;" turned back into "&". Returns an empty text if there is none.
std::string folder_of_custom_xml(std::string_view customxml);

/// Whether the second line is the one that names the folder.
bool names_folder(std::string_view customxml);

}  // namespace corvane
