// What plays sound is a part of the program.
#include "media/sound_module.h"

#include <utility>

namespace corvane {

result<std::unique_ptr<sound_output>> make_sound_output() {
  using made = result<std::unique_ptr<sound_output>>;
  std::unique_ptr<sound_output> output(corvane_make_sound_output());
  return output ? made::ok(std::move(output)) : made::fail(no_sound_here);
}

}  // namespace corvane
