#include "formats/start_code_scanner.h"

#include <algorithm>
#include <cstring>

namespace corvane {

namespace {

constexpr std::ptrdiff_t stretch = 64;

// Whether a code begins with one of the next `stretch` bytes. In video every sixtieth byte is a 1,
// too many to look at each one: this the compiler turns into a few instructions for 16 bytes.
bool code_ahead(const std::uint8_t* data) {
  std::uint8_t least = 0xFF;
  for (std::ptrdiff_t i = 0; i < stretch; ++i)
    least = std::min(least, static_cast<std::uint8_t>(data[i] | data[i + 1] | (data[i + 2] ^ 1)));
  return least == 0;
}

}  // namespace

// Tells of the codes that begin in `data` and are whole in it.
void start_code_scanner::look(const std::uint8_t* data, std::size_t size, std::uint64_t position) {
  if (size < whole)
    return;
  const std::uint8_t* const end = data + (size - whole) + 1;  // of where a code can begin
  for (const std::uint8_t* from = data; from < end; from += std::min(stretch, end - from)) {
    if (end - from >= stretch && !code_ahead(from))
      continue;
    const std::uint8_t* const stop = from + std::min(stretch, end - from) + 2;
    for (const std::uint8_t* one = from + 2; one < stop; ++one) {
      one = static_cast<const std::uint8_t*>(
          std::memchr(one, 1, static_cast<std::size_t>(stop - one)));
      if (one == nullptr)
        break;
      if (one[-1] == 0 && one[-2] == 0)
        sink_.start_code_found(one[1], position + static_cast<std::uint64_t>(one - 2 - data),
                               one + 2);
    }
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
