// Any bytes as a font file.
#include "formats/font_characters.h"
#include "formats/font_names.h"

#include <cstddef>
#include <cstdint>
#include <cstdlib>
#include <string_view>

namespace {

void check(bool holds) {
  if (!holds)
    std::abort();
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* bytes, std::size_t size) {
  const auto characters = corvane::read_font_characters({bytes, size});
  check(!characters || !characters->holds(0x10000));
  const auto names = corvane::font_names({reinterpret_cast<const char*>(bytes), size});
  check(names.size() <= 400);
  return 0;
}
