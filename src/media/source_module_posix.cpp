// The reader of people's files is in a shared object.
#include "media/module_function_posix.h"
#include "media/source_module.h"

#include <utility>

namespace corvane {

result<std::unique_ptr<source_reader>> make_source_reader() {
  using made = result<std::unique_ptr<source_reader>>;
  const auto function = module_function("corvane-sources.so", "corvane_make_source_reader");
  if (!function)
    return made::fail(function.error);
  auto* const make = reinterpret_cast<corvane_source_reader_maker*>(*function);
  std::unique_ptr<source_reader> reader(make());
  return reader ? made::ok(std::move(reader)) : made::fail("there is not enough memory");
}

}  // namespace corvane
