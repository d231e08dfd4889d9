// What a disc image holds: its ISO 9660 volume and its UDF 1.02 volume, which must both list the
// same files at the same places.
//
// Takes the image through an interface that reads bytes anywhere. Gives every file that was found
// and the troubles: what cannot be right in the descriptors and directories of either. The reader
// looks at no more than `most_image_files` files and folders, each folder once, so that no image
// keeps it busy. Sectors are 0-based, with 2048 bytes each.
#pragma once

#include "formats/disc_files.h"
#include "formats/table_trouble.h"

#include <cstddef>
#include <cstdint>
#include <memory>
#include <string>
#include <string_view>
#include <vector>

namespace corvane {

/// A disc of DVD-Video has at most 99 x 12 + 3 in VIDEO_TS; this leaves room for others.
inline constexpr std::size_t most_image_files = 10000;

struct image_volume {
  bool found = false;                   ///< it is there, and its root folder could be read
  std::string name;                     ///< of the volume, without blanks at its end
  std::uint64_t sectors = 0;            ///< size that it states
  std::vector<disc_file> files;         ///< sorted by path; paths as they stand, without ";1"
  std::vector<std::string> folders;     ///< the same; the root is not listed
  std::vector<table_trouble> troubles;  ///< `at`: byte of the image
};

/// Primary volume descriptor, directories, and path tables, which must agree with them; numbers
/// that stand in both byte orders must agree.
image_volume read_iso9660(byte_source& image);

/// Recognition sequence, anchor, volume descriptors, file set, file entries and directories, with
/// the checksums of their tags.
image_volume read_udf(byte_source& image);

struct disc_image {
  image_volume iso9660, udf;
  /// What one lists and the other does not, or elsewhere; one sentence each. Names differ only
  /// where ISO 9660 has no other.
  std::vector<std::string> differences;
};

disc_image read_disc_image(byte_source& image);

/// The files of an image as those of a disc: of its UDF volume, or of ISO 9660 when it has none.
/// Fails when neither can be read or there is no VIDEO_TS.
result<std::unique_ptr<disc_files>> open_image(std::unique_ptr<byte_source> image);

/// A folder or an image, whatever stands at the path.
result<std::unique_ptr<disc_files>> open_disc(std::string_view native_path);

}  // namespace corvane
