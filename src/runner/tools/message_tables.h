// The tables of known messages (runner/tools/known_messages.h), one for each tool.
#pragma once

#include "runner/tools/known_messages.h"

namespace corvane {

std::span<const known_message> mplex_messages();
std::span<const known_message> dvdauthor_messages();
std::span<const known_message> spumux_messages();
std::span<const known_message> mkisofs_messages();

}  // namespace corvane
