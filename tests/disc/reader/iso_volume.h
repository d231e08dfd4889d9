// The head of a disc image: its ISO 9660 volume name and whether it carries UDF.
//
// Read straight from the image: the volume descriptors from sector 16 on (ISO 9660 "CD001" and the
// UDF recognition sequence "BEA01", "NSR02", "TEA01") and UDF's anchor in sector 256.
#pragma once

#include "platform/result.h"

#include <string>

namespace corvane::disc {

struct iso_volume {
  std::string name;                ///< ISO 9660 volume name, trailing blanks removed
  bool udf_recognised = false;     ///< "NSR02" or "NSR03" between "BEA01" and "TEA01"
  bool udf_anchor = false;         ///< a sound anchor descriptor in sector 256
  unsigned long long sectors = 0;  ///< size that the volume states, in sectors of 2048 bytes
  bool udf() const { return udf_recognised && udf_anchor; }
};

/// Fails when the file cannot be read or its head is not that of an ISO 9660 image.
result<iso_volume> read_iso_volume(const std::string& native_path);

}  // namespace corvane::disc
