// A program that was built without the toolkit, as the tests under the sanitizers are.
#include "drawing/letter_drawer.h"

namespace corvane {

result<std::unique_ptr<letter_drawer>> make_letter_drawer() {
  return result<std::unique_ptr<letter_drawer>>::fail(
      "this program was built without what draws texts");
}

}  // namespace corvane
