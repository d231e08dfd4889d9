#include "formats/start_code_scanner.h"

#include <algorithm>
#include <bit>
#include <cstring>

namespace corvane {

// Bit i of the mask: a code begins at data[i], which is byte position + i of the stream.
void start_code_scanner::tell(std::uint64_t mask, const std::uint8_t* data,
                              std::uint64_t position) {
  for (; mask != 0; mask &= mask - 1) {
    const auto i = static_cast<std::size_t>(std::countr_zero(mask));
    sink_.start_code_found(data[i + 3], position + i, data + i + 4);
  }
}

// Tells of the codes that begin in the whole blocks before `end`; gives where these end.
std::size_t start_code_scanner::look_at_blocks(const std::uint8_t* data, std::size_t end,
                                               std::uint64_t position) {
  std::size_t at = 0;
  for (; end - at >= mask_bytes; at += mask_bytes)
    if (const std::uint64_t mask = start_code_mask(data + at); mask != 0)
      tell(mask, data + at, position + at);
  return at;
}

#ifdef CORVANE_HAS_WIDE_MASKS
__attribute__((target("avx2"))) std::size_t start_code_scanner::look_at_wide_blocks(
    const std::uint8_t* data, std::size_t end, std::uint64_t position) {
  std::size_t at = 0;
  for (; end - at >= mask_bytes; at += mask_bytes)
    if (const std::uint64_t mask = wide_start_code_mask(data + at); mask != 0)
      tell(mask, data + at, position + at);
  return at;
}
#else
std::size_t start_code_scanner::look_at_wide_blocks(const std::uint8_t* data, std::size_t end,
                                                    std::uint64_t position) {
  return look_at_blocks(data, end, position);
}
#endif

// Tells of the codes that begin in `data` and are whole in it.
void start_code_scanner::look(const std::uint8_t* data, std::size_t size, std::uint64_t position) {
  if (size < whole)
    return;
  const std::size_t end = size - whole + 1;  // of where a code can begin
  std::size_t at = has_wide_masks() ? look_at_wide_blocks(data, end, position)
                                    : look_at_blocks(data, end, position);
  if (end >= mask_bytes && at < end) {
    // The last ones once more: byte for byte takes as long as many masks.
    const std::uint64_t new_ones = ~std::uint64_t{0} << (mask_bytes - (end - at));
    at = end - mask_bytes;
    tell(start_code_mask(data + at) & new_ones, data + at, position + at);
    return;
  }
  for (; at < end; ++at)
    if (data[at] == 0 && data[at + 1] == 0 && data[at + 2] == 1)
      tell(1, data + at, position + at);
}

// The same of the first bytes of what is kept.
void start_code_scanner::look_at_kept(std::size_t size, std::uint64_t position) {
  if (size < whole)
    return;
  const std::uint64_t whole_ones = (std::uint64_t{1} << (size - whole + 1)) - 1;
  tell(start_code_mask(kept_.data()) & whole_ones, kept_.data(), position);
}

void start_code_scanner::feed(const std::uint8_t* data, std::size_t size) {
  const std::uint64_t position = fed_;
  fed_ += size;
  // What is kept becomes whole with the first bytes of this slice.
  const std::size_t joined = std::min(size, whole - 1);
  std::copy_n(data, joined, kept_.begin() + static_cast<std::ptrdiff_t>(kept_size_));
  const std::size_t here = kept_size_ + joined;
  look_at_kept(here, position - kept_size_);
  if (joined == size) {
    const std::size_t left = std::min(here, whole - 1);
    std::memmove(kept_.data(), kept_.data() + (here - left), left);
    kept_size_ = left;
    return;
  }
  look(data, size, position);
  kept_size_ = whole - 1;
  std::copy_n(data + (size - kept_size_), kept_size_, kept_.begin());
}

void start_code_scanner::finish() {
  std::fill_n(kept_.begin() + static_cast<std::ptrdiff_t>(kept_size_), whole - 1, std::uint8_t{0});
  look_at_kept(kept_size_ + whole - 1, fed_ - kept_size_);
  kept_size_ = 0;
}

}  // namespace corvane
