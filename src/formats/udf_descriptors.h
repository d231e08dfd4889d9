// Descriptors of UDF and the tags with which they begin. Used within the room only.
#pragma once

#include "formats/table_bytes.h"

#include <cstddef>
#include <cstdint>
#include <optional>
#include <span>
#include <string>

namespace corvane {

/// What kind of descriptor stands behind a tag.
namespace udf_tag {
inline constexpr int primary = 1, anchor = 2, partition = 5, logical_volume = 6, terminator = 8,
                     integrity = 9, file_set = 256, file_identifier = 257, file_entry = 261;
}  // namespace udf_tag

/// The kind of a descriptor.
inline int tag_of(const table_bytes& descriptor) {
  return descriptor.le16(0);
}

/// What is wrong with a tag, as the end of a sentence: its kind, its sum, the checksum of what
/// follows, or the place that it states (in sectors; nullopt: is not looked at). Nullopt if it is
/// in order.
std::optional<std::string> why_not_tag(const table_bytes& descriptor, int kind,
                                       std::optional<std::uint32_t> place);

/// A text of 8 or 16 bits a letter, as its first byte says, as UTF-8.
std::string udf_text(std::span<const std::uint8_t> bytes);

/// The text in a field of fixed size, whose last byte is the text's length.
std::string udf_field(const table_bytes& descriptor, std::uint64_t at, std::uint64_t size);

}  // namespace corvane
