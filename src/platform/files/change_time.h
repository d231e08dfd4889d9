// When something was changed last, by the clock of the disk on which it lies.
#pragma once

#include "platform/result.h"

#include <cstdint>
#include <optional>
#include <string_view>

namespace corvane {

/// The latest time that the file system keeps of a file, folder or link (which is not followed): of
/// its making, its bytes, its name or its rights. So a copy that was given the times of what it was
/// copied from, and what was moved here, have the time at which that was done. In ticks, which one
/// may compare on one disk. Returns nullopt if nothing has this name.
std::optional<std::int64_t> changed_at(std::string_view native);

/// Has the file system note that a file that is there was changed now.
failure mark_changed(std::string_view native);

}  // namespace corvane
