// What plays sound is in a shared object.
#include "media/module_function_posix.h"
#include "media/sound_module.h"

#include <utility>

namespace corvane {

result<std::unique_ptr<sound_output>> make_sound_output() {
  using made = result<std::unique_ptr<sound_output>>;
  const auto function = module_function("corvane-sound.so", "corvane_make_sound_output");
  if (!function)
    return made::fail(function.error);
  auto* const make = reinterpret_cast<corvane_sound_output_maker*>(*function);
  std::unique_ptr<sound_output> output(make());
  return output ? made::ok(std::move(output)) : made::fail(no_sound_here);
}

}  // namespace corvane
