// The two system-dependent steps of an all-or-nothing write.
#pragma once

#include "platform/result.h"

#include <filesystem>
#include <string_view>

namespace corvane {

/// A name in the target's folder for the text while it is being written. It holds this process's
/// number, so that two programs do not meet there.
std::filesystem::path unused_name_beside(const std::filesystem::path& target);

/// Creates the file, writes the text and flushes it to the disk. Fails when anything has that name
/// already.
failure write_durably(const std::filesystem::path& path, std::string_view text);

/// Renames `from` over `to`, replacing it (itself, when it is a link) in one step; keeps `to`'s
/// access rights where there was such a file (on Windows it has those that its folder gives). What
/// another program has open is tried again for half a second there.
failure replace_durably(const std::filesystem::path& from, const std::filesystem::path& to);

}  // namespace corvane
