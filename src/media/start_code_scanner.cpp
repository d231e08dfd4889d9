#include "media/start_code_scanner.h"

#include <algorithm>
#include <cstring>

namespace corvane {

// Tells of the codes that begin in `data` and are whole in it. Looks for the byte 1, which is rare
// in video, as fast as the C library can.
void start_code_scanner::look(const std::uint8_t* data, std::size_t size, std::uint64_t position) {
  if (size < whole)
    return;
  const std::uint8_t* const end = data + (size - whole) + 3;  // behind the last 1 that can count
  for (const std::uint8_t* from = data + 2; from < end; ++from) {
    from = static_cast<const std::uint8_t*>(
        std::memchr(from, 1, static_cast<std::size_t>(end - from)));
    if (from == nullptr)
      return;
    if (from[-1] == 0 && from[-2] == 0)
      sink_.start_code_found(from[1], position + static_cast<std::uint64_t>(from - 2 - data),
                             from + 2);
  }
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
