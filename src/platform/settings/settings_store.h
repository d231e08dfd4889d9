// A settings store at a place of the caller's choice; user_settings() is the one at the user's own.
#pragma once

#include "platform/settings/settings.h"

#include <memory>
#include <string>

namespace corvane {

/// Linux: `place` is the native path of an INI file (made with its folder when first written).
/// Windows: a key under HKEY_CURRENT_USER ("Software\Corvane\preferences"). What cannot be written
/// there is remembered by the object alone.
std::unique_ptr<settings> settings_at(const std::string& place);

/// Where user_settings() keeps them.
std::string user_settings_place();

}  // namespace corvane
