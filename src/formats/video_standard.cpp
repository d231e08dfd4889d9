#include "formats/video_standard.h"

#include "formats/start_code_scanner.h"

namespace corvane {
namespace {

/// The height that the first sequence header states; 0 when there is none.
class first_height : public start_code_sink {
 public:
  void start_code_found(std::uint8_t code, std::uint64_t /*position*/,
                        const std::uint8_t* bytes) override {
    if (found_ || code != start_code::sequence_header)
      return;
    found_ = true;
    height_ = read_stored_size(bytes).height;
  }
  int height() const { return height_; }

 private:
  bool found_ = false;
  int height_ = 0;
};

}  // namespace

std::string video_standard_of(std::string_view stream_start) {
  first_height first;
  start_code_scanner scanner(first);
  scanner.feed(reinterpret_cast<const std::uint8_t*>(stream_start.data()), stream_start.size());
  scanner.finish();
  switch (first.height()) {
    case 576:
    case 288:
      return "PAL";
    case 480:
    case 240:
      return "NTSC";
    default:
      return {};
  }
}

}  // namespace corvane
