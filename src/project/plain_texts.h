// What texts of rows may hold when a tool reads them, and how they are shown when they hold more.
#pragma once

#include "platform/files/paths.h"

#include <optional>
#include <string>
#include <string_view>

namespace corvane {

/// Why something is refused, for the user; nullopt if it is not.
using refusal = std::optional<std::string>;

/// Why a native path is more than Windows takes, as a clause ("has 271 characters, but ...").
refusal why_too_long(std::string_view native, path_style style);

/// Why a native path cannot go into script and XML, as a clause ("is not a full path").
refusal why_not_usable_path(std::string_view native, path_style style);

/// Why a text cannot stand in the XML, as a clause: control characters, quotes, "<", not UTF-8.
refusal why_not_plain_text(std::string_view text);

}  // namespace corvane
