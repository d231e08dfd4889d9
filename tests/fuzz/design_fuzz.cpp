// Any bytes as a design of menus: reading ends with a design that leaves room for what it has, or
// with a word about why not.
#include "menus/maker/menu_design.h"
#include "menus/maker/menu_memory.h"
#include "menus/maker/page_rows.h"
#include "must.h"
#include "platform/text/utf8.h"

#include <cstddef>
#include <cstdint>
#include <string_view>

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  const std::string_view text(reinterpret_cast<const char*>(data), size);
  const auto design = corvane::read_design(text, "/designs");
  if (!design) {
    must(!design.error.empty() && design.error.size() < 1000, "the fault is told in short");
    must(corvane::is_utf8(design.error), "the fault can be shown");
  } else {
    must(!corvane::why_no_room(*design), "a design has room for its entries");
    must(design->most_entries() >= 1 && design->most_entries() <= 32, "a page has entries");
    must(design->gap % 2 == 0, "entries stand on even lines");
    must(corvane::is_utf8(design->name), "a design's name can be shown");
  }
  if (const auto memory = corvane::read_memory(text)) {
    const auto again = corvane::read_memory(corvane::memory_text(*memory));
    must(again && *again == *memory, "what is remembered is written and read again");
  }
  return 0;
}
