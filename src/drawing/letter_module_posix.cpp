// The toolkit's letters are in a shared object.
#include "drawing/letter_module.h"
#include "media/module_function_posix.h"

#include <utility>

namespace corvane {

result<std::unique_ptr<letter_drawer>> make_letter_drawer() {
  using made = result<std::unique_ptr<letter_drawer>>;
  const auto function = module_function("corvane-letters.so", "corvane_make_letter_drawer");
  if (!function)
    return made::fail(function.error);
  auto* const make = reinterpret_cast<corvane_letter_drawer_maker*>(*function);
  std::unique_ptr<letter_drawer> drawer(make());
  return drawer ? made::ok(std::move(drawer)) : made::fail("the toolkit cannot be started");
}

}  // namespace corvane
