#include "media/sources.h"

#include "media/source_probe.h"
#include "platform/files/paths.h"

#include <gtest/gtest.h>

namespace corvane::media_test {

std::string source(std::string_view name) {
  return join_path(CORVANE_MEDIA_SOURCES, name);
}

source_facts probed(std::string_view name) {
  auto facts = probe_source(source(name));
  EXPECT_TRUE(facts) << name << ": " << facts.error;
  return facts ? *facts : source_facts();
}

source_stream stream_of(std::string_view name, std::size_t index) {
  const source_facts facts = probed(name);
  EXPECT_LT(index, facts.streams.size()) << name;
  return index < facts.streams.size() ? facts.streams[index] : source_stream();
}

}  // namespace corvane::media_test
