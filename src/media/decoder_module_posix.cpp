// The decoders are in a shared object, which is found where the program's other parts are.
#include "media/decoder_module.h"
#include "media/module_function_posix.h"

#include <utility>

namespace corvane {

result<std::unique_ptr<picture_decoder>> make_picture_decoder(picture_coding coding) {
  using made = result<std::unique_ptr<picture_decoder>>;
  const auto function = module_function("corvane-decoders.so", "corvane_make_decoder");
  if (!function)
    return made::fail(function.error);
  auto* const make = reinterpret_cast<corvane_decoder_maker*>(*function);
  std::unique_ptr<picture_decoder> decoder(make(coding));
  return decoder ? made::ok(std::move(decoder)) : made::fail("there is no decoder for it");
}

}  // namespace corvane
