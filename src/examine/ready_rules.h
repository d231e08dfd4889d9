// Rules about ready titles: program streams (VOBs) that dvdauthor takes as they are, with what it
// does with a wrong one.
#pragma once

#include "examine/program_stream_facts.h"
#include "examine/rules.h"

#include <cstdint>
#include <span>
#include <string>
#include <vector>

namespace corvane {

std::span<const rule> ready_rules();

/// The sound streams inside, in the order in which dvdauthor numbers them: by number, and of one
/// number AC-3, MPEG audio, LPCM, DTS.
std::vector<const inner_stream*> sounds_inside(const program_stream_facts& p);

/// What dvdauthor or a player stumbles over in the packs, the clock and the time stamps of a ready
/// file of `size` bytes, and whether it has what one needs. The streams inside have rules of their
/// own.
std::vector<finding> ready_findings(const program_stream_facts& p, std::uint64_t size,
                                    finding_item item, const std::string& file);

/// The same of a file that is no program stream.
finding not_ready_finding(bool is_video, finding_item item, const std::string& file);

}  // namespace corvane
