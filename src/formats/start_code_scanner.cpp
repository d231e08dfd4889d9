#include "formats/start_code_scanner.h"

#include "formats/start_code_mask.h"

#include <algorithm>
#include <bit>
#include <cstring>

namespace corvane {

// Tells of the codes that begin in `data` and are whole in it.
void start_code_scanner::look(const std::uint8_t* data, std::size_t size, std::uint64_t position) {
  if (size < whole)
    return;
  const auto tell = [&](const std::uint8_t* code) {
    sink_.start_code_found(code[3], position + static_cast<std::uint64_t>(code - data), code + 4);
  };
  const std::uint8_t* const end = data + (size - whole) + 1;  // of where a code can begin
  const std::uint8_t* from = data;
  for (; static_cast<std::size_t>(end - from) >= mask_bytes; from += mask_bytes)
    for (std::uint64_t mask = start_code_mask(from); mask != 0; mask &= mask - 1)
      tell(from + std::countr_zero(mask));
  for (; from < end; ++from)
    if (from[0] == 0 && from[1] == 0 && from[2] == 1)
      tell(from);
}

void start_code_scanner::feed(const std::uint8_t* data, std::size_t size) {
  const std::uint64_t position = fed_;
  fed_ += size;
  // What is kept becomes whole with the first bytes of this slice.
  const std::size_t joined = std::min(size, whole - 1);
  std::copy_n(data, joined, kept_.begin() + static_cast<std::ptrdiff_t>(kept_size_));
  const std::size_t here = kept_size_ + joined;
  look(kept_.data(), here, position - kept_size_);
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
  std::array<std::uint8_t, 2 * (whole - 1)> end{};
  std::copy_n(kept_.begin(), kept_size_, end.begin());
  look(end.data(), kept_size_ + whole - 1, fed_ - kept_size_);
  kept_size_ = 0;
}

}  // namespace corvane
