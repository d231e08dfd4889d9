// A variable of this process's environment for the length of a test.
#pragma once

#include "platform/files/program_folder.h"

#include <cstdlib>
#include <optional>
#include <string>
#include <utility>

namespace corvane::testing_support {

class environment_variable {
 public:
  environment_variable(std::string name, const std::string& value) : name_(std::move(name)) {
    if (const char* const old = std::getenv(name_.c_str()))
      old_ = old;
    set_environment(name_, value);
  }
  ~environment_variable() {
    // Nothing in the program tells an empty variable from one that is not there.
    set_environment(name_, old_.value_or(""));
  }
  environment_variable(const environment_variable&) = delete;
  environment_variable& operator=(const environment_variable&) = delete;

 private:
  std::string name_;
  std::optional<std::string> old_;
};

}  // namespace corvane::testing_support
