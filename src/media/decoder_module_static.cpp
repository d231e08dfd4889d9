// The decoders are a part of the program.
#include "media/decoder_module.h"

#include <utility>

namespace corvane {

result<std::unique_ptr<picture_decoder>> make_picture_decoder(picture_coding coding) {
  using made = result<std::unique_ptr<picture_decoder>>;
  std::unique_ptr<picture_decoder> decoder(corvane_make_decoder(coding));
  return decoder ? made::ok(std::move(decoder)) : made::fail("there is no decoder for it");
}

}  // namespace corvane
