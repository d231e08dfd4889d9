// Where a large file is read to, slice by slice.
#pragma once

#include <array>
#include <cstddef>
#include <cstdint>
#include <memory>

namespace corvane {

/// 128 KiB that begin with a page. Into a vector of that size, which begins 16 bytes behind the
/// beginning of a page, processors that copy with their string instructions take up to five times
/// as long: more than all that is done with most files.
class slice_buffer {
 public:
  std::uint8_t* data() { return pages_->bytes.data(); }
  std::size_t size() const { return pages_->bytes.size(); }

 private:
  struct alignas(4096) pages {
    std::array<std::uint8_t, std::size_t{128} * 1024> bytes;
  };
  std::unique_ptr<pages> pages_{new pages};
};

}  // namespace corvane
