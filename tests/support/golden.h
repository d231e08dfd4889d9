// Generated texts against the files of a folder, byte for byte.
//
// With CORVANE_WRITE_GOLDEN set in the environment the files are written instead, and the test
// fails so that nobody takes that for a check; read the difference before committing it.
#pragma once

#include "platform/files/files.h"
#include "platform/files/paths.h"

#include <gtest/gtest.h>

#include <cstdlib>
#include <map>
#include <string>
#include <vector>

namespace corvane::testing_support {

inline void expect_golden_file(const std::string& file, const std::string& text) {
  const auto expected = read_file(file, 1u << 20);
  ASSERT_TRUE(expected) << expected.error;
  EXPECT_EQ(*expected, text);
}

/// `texts`: by file name. The folder must hold these files and no other.
inline void expect_golden(const std::string& folder,
                          const std::map<std::string, std::string>& texts) {
  std::vector<std::string> names;
  for (const auto& [name, text] : texts) {
    const std::string file = folder + "/" + name;
    SCOPED_TRACE(file);
    names.push_back(name);
    if (std::getenv("CORVANE_WRITE_GOLDEN") == nullptr) {
      expect_golden_file(file, text);
      continue;
    }
    make_folders(folder);
    ASSERT_FALSE(write_file(file, text));
    ADD_FAILURE() << "written, not checked";
  }
  EXPECT_EQ(files_in(folder), names) << "a text that is expected is not made";
}

/// For INSTANTIATE_TEST_SUITE_P over both styles; the same words, in lower case, name the folders.
inline std::string golden_style_name(const ::testing::TestParamInfo<path_style>& style) {
  return style.param == path_style::windows ? "Windows" : "Linux";
}

}  // namespace corvane::testing_support
