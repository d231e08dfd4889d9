// A variable of this process's environment for the length of a test.
#pragma once

#include <cstdlib>
#include <optional>
#include <string>
#include <utility>

namespace corvane::testing_support {

/// Sets a variable of this process's environment.
inline void set_environment(const std::string& name, const std::string& value) {
#ifdef _WIN32
  // An empty value removes it.
  ::_putenv_s(name.c_str(), value.c_str());
#else
  ::setenv(name.c_str(), value.c_str(), 1);
#endif
}

class environment_variable {
 public:
  environment_variable(std::string name, const std::string& value) : name_(std::move(name)) {
    if (const char* const old = std::getenv(name_.c_str()))
      old_ = old;
    set_environment(name_, value);
  }
  ~environment_variable() {
    if (old_)
      set_environment(name_, *old_);
    else
      remove();
  }
  environment_variable(const environment_variable&) = delete;
  environment_variable& operator=(const environment_variable&) = delete;

 private:
  void remove() {
#ifdef _WIN32
    set_environment(name_, "");
#else
    ::unsetenv(name_.c_str());
#endif
  }

  std::string name_;
  std::optional<std::string> old_;
};

}  // namespace corvane::testing_support
