// The reader of people's files is a part of the program.
#include "media/source_module.h"

namespace corvane {

result<std::unique_ptr<source_reader>> make_source_reader() {
  using made = result<std::unique_ptr<source_reader>>;
  std::unique_ptr<source_reader> reader(corvane_make_source_reader());
  return reader ? made::ok(std::move(reader)) : made::fail("there is not enough memory");
}

}  // namespace corvane
