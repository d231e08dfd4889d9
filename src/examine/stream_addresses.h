// Where units (VOBU) say that streams go on, held against the packs that lie there.
#pragma once

#include "examine/read_disc.h"

#include <cstdint>
#include <span>
#include <vector>

namespace corvane {

/// `packs`: of each sector of the VOBs the stream of its pack, as pack_headers.h names it; 0: not
/// known. What leads to such a sector is not told.
std::vector<unit_trouble> stream_address_troubles(const disc_vobs& vobs,
                                                  std::span<const std::uint8_t> packs);

}  // namespace corvane
