// How many bits the videos of an import get, by what was chosen and by the room on the disc.
#pragma once

#include "import/import_choices.h"
#include "import/import_script.h"
#include "platform/result.h"

#include <cstdint>
#include <vector>

namespace corvane {

/// Sets `bits` of all jobs, whose plans are made; titles of one import share what is left of the
/// disc by their lengths. `used`: bytes of the disc that the project's titles and menus take
/// already, as space_wanted_by counts them. Fails when the disc is to be filled and has no room, or
/// when nobody knows how long a title is; the reason says what to do, in sentences.
failure settle_bits(std::vector<import_job>& jobs, const import_choices& choices,
                    std::uint64_t used);

/// Bits a second of all sound streams of a title.
std::int64_t sound_rate_of(const import_plan& plan);

/// Bytes of a sound stream that was made, when it lasts so many seconds; its last frame is whole.
std::int64_t bytes_of_sound(const sound_work& work, double seconds);

/// Bytes that the titles take on the disc, and about as many in their folder before. Of video in
/// constant quality nobody knows: its peak rate is taken.
std::uint64_t disc_bytes_of(const std::vector<import_job>& jobs);

}  // namespace corvane
