// The toolkit's letters are a part of the program.
#include "drawing/letter_module.h"

#include <utility>

namespace corvane {

result<std::unique_ptr<letter_drawer>> make_letter_drawer() {
  using made = result<std::unique_ptr<letter_drawer>>;
  std::unique_ptr<letter_drawer> drawer(corvane_make_letter_drawer());
  return drawer ? made::ok(std::move(drawer)) : made::fail("the toolkit cannot be started");
}

}  // namespace corvane
