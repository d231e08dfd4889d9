// Rules about room: what the disc will be against what discs hold, and what a run needs against
// what is free where it writes.
//
// What multiplexing adds is counted as the least that it can be, so that a disc or disk that is
// said to be too small is.
#pragma once

#include "disc/disc_description.h"
#include "examine/rules.h"
#include "platform/files/files.h"

#include <cstdint>
#include <functional>
#include <optional>
#include <span>
#include <string>
#include <vector>

namespace corvane {

/// What a single-layer and a double-layer disc hold, in bytes.
inline constexpr std::uint64_t single_layer_bytes = 4'700'372'992;
inline constexpr std::uint64_t double_layer_bytes = 8'543'666'176;

std::span<const rule> space_rules();

/// Bytes at least.
struct space_wanted {
  std::uint64_t disc = 0;     ///< the finished disc
  std::uint64_t output = 0;   ///< in the output folder, when most is there
  std::uint64_t program = 0;  ///< in the program folder
  std::uint64_t image = 0;    ///< beside the output folder, together with the disc
};

/// `size_of` gives the size of a file (stored path), or nothing: such a file is counted as empty.
/// An earlier disc is not counted: it is there already, and it is renamed.
space_wanted space_wanted_by(
    const disc_description& d,
    const std::function<std::optional<std::uintmax_t>(const std::string&)>& size_of);

/// The disks of the folders and, for the image, of the one that holds the output folder; not set:
/// not compared.
struct disks_of_run {
  std::optional<disk_room> output, program, beside_output;
};

/// Disks of equal size are taken for one.
std::vector<finding> space_findings(const space_wanted& wanted, const disks_of_run& disks);

/// The same of files and folders as they are now; native folders, an empty one is not looked at.
/// A finding about a folder names it as its file.
std::vector<finding> space_findings(const disc_description& d, const std::string& output_folder,
                                    const std::string& program_folder);

}  // namespace corvane
