#include "examine/video_facts.h"

#include "examine/video_scan.h"
#include "formats/video_standard.h"

#include <algorithm>

namespace corvane {

video_standard standard_of(const video_shape& shape) {
  switch (shape.height) {
    case 576:
    case 288:
      return video_standard::pal;
    case 480:
    case 240:
      return video_standard::ntsc;
    default:
      return video_standard::other;
  }
}

video_scanner::video_scanner(bool to_multiplex)
    : scan_(std::make_unique<video_scan>(to_multiplex)) {}
video_scanner::video_scanner(video_scanner&&) noexcept = default;
video_scanner& video_scanner::operator=(video_scanner&&) noexcept = default;
video_scanner::~video_scanner() = default;

void video_scanner::feed(const std::uint8_t* data, std::size_t size) {
  scan_->feed(data, size);
}

void video_scanner::finish() {
  scan_->finish();
}

const video_facts& video_scanner::facts() const {
  return scan_->facts;
}

video_facts read_video_head(std::span<const std::uint8_t> beginning) {
  video_scanner scanner;
  scanner.feed(beginning.data(), std::min(beginning.size(), enough_for_a_header));
  scanner.scan_->beginning_read();
  return scanner.facts();
}

}  // namespace corvane
