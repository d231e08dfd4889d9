// A value or the reason why there is none.
#pragma once

#include <optional>
#include <string>
#include <utility>

namespace corvane {

/// What a function that can fail gives back: `value` when it worked, else `error`, a sentence
/// without a full stop that a message to the user can carry ("Permission denied").
template <typename T>
struct result {
  std::optional<T> value;
  std::string error;

  static result ok(T v) { return {std::move(v), {}}; }
  static result fail(std::string why) { return {std::nullopt, std::move(why)}; }
  explicit operator bool() const { return value.has_value(); }
  T& operator*() { return *value; }
  const T& operator*() const { return *value; }
  T* operator->() { return &*value; }
  const T* operator->() const { return &*value; }
};

/// Success, or the reason why not.
using failure = std::optional<std::string>;

}  // namespace corvane
