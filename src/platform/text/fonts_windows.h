// Windows only: the fonts that keys of the registry list.
#pragma once

#include "platform/text/fonts.h"

#include <string>
#include <vector>

namespace corvane {

/// The text values of a key: their names are those of fonts, their data the files. A place is
/// "HKEY_LOCAL_MACHINE\SOFTWARE\..." or "HKEY_CURRENT_USER\...". Of several places the first that
/// has a value counts.
std::vector<installed_font> fonts_at(const std::vector<std::string>& places);

}  // namespace corvane
