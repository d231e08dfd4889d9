// Pages in a real browser without a screen. Everything it keeps goes into a folder of the test's.
#pragma once

#include <optional>
#include <string>
#include <vector>

namespace corvane::side {

class browser {
 public:
  /// `folder` (native) is there and outlives it.
  explicit browser(std::string folder) : folder_(std::move(folder)) {}

  /// The page as the browser has it after loading (native path), written down as HTML. Nothing,
  /// with a failed test, when the browser could not be run.
  std::optional<std::string> page(const std::string& file);

  /// The same for many pages at one start.
  std::optional<std::vector<std::string>> pages(const std::vector<std::string>& files);

  /// A picture of the page, PNG.
  bool picture(const std::string& file, const std::string& png);

 private:
  bool run(const std::vector<std::string>& words, const std::string& output);

  std::string folder_;
};

}  // namespace corvane::side
