// Programs and modules that were built, put into folders as an installation would, and what they
// print there.
#pragma once

#include "platform/files/program_folder.h"
#include "support/temporary_folder.h"

#include <gtest/gtest.h>

#include <cstdio>
#include <filesystem>
#include <string>

namespace corvane::testing_support {

class installed_programs : public testing::Test {
 protected:
  /// Copies a file that was built into a folder, and gives its path there.
  std::string place(const std::string& file, const std::string& folder = "usr/bin") const {
    const std::filesystem::path to = path_of(folder_.path(folder));
    std::filesystem::create_directories(to);
    std::filesystem::copy_file(path_of(own_executable()).parent_path() / file, to / file);
    return text_of(to / file);
  }

  /// What a command prints, errors too.
  static std::string printed_by(const std::string& command) {
    std::string output;
    std::FILE* const pipe = ::popen((command + " 2>&1").c_str(), "r");
    EXPECT_NE(pipe, nullptr) << command;
    if (pipe == nullptr)
      return output;
    for (int c = 0; (c = std::fgetc(pipe)) != EOF;)
      output += static_cast<char>(c);
    ::pclose(pipe);
    return output;
  }

  temporary_folder folder_;
};

}  // namespace corvane::testing_support
