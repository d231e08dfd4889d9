// A folder of a test's own, removed at its end.
#pragma once

#include "platform/files/files.h"
#include "platform/files/paths.h"

#include <gtest/gtest.h>

#include <filesystem>
#include <fstream>
#include <random>
#include <string>
#include <string_view>

namespace corvane::testing_support {

class temporary_folder {
 public:
  temporary_folder() {
    std::random_device seed;
    path_ = std::filesystem::temp_directory_path() /
            ("corvane-test-" + std::to_string(seed()) + std::to_string(seed()));
    std::filesystem::create_directories(path_);
  }
  ~temporary_folder() {
    std::error_code ignored;
    std::filesystem::remove_all(path_, ignored);
  }
  temporary_folder(const temporary_folder&) = delete;
  temporary_folder& operator=(const temporary_folder&) = delete;

  /// Native path of the folder, of something in it.
  std::string path() const { return text_of(path_); }
  std::string path(std::string_view name) const { return join_path(path(), name); }
  /// The same in stored form.
  std::string stored(std::string_view name) const { return stored_from_native(path(name)); }

  /// Makes a file with these bytes (and the folders it needs) and gives its native path.
  std::string add(std::string_view name, std::string_view bytes = "x") const {
    const std::filesystem::path file = path_of(path(name));
    std::filesystem::create_directories(file.parent_path());
    std::ofstream(file, std::ios::binary) << bytes;
    return text_of(file);
  }
  std::string read(std::string_view name) const {
    const auto text = read_file(path(name), 1u << 30);
    EXPECT_TRUE(text) << name << ": " << text.error;
    return text ? *text : std::string();
  }

 private:
  std::filesystem::path path_;
};

}  // namespace corvane::testing_support
