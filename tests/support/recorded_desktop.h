// A desktop for tests: it keeps what it was asked to show, edit, import and run, and starts
// nothing.
#pragma once

#include "formats/text.h"
#include "platform/processes/desktop.h"

#include <functional>
#include <map>
#include <optional>
#include <string>
#include <vector>

namespace corvane::testing_support {

class recorded_desktop : public desktop {
 public:
  failure show_page(const std::string& file) override { return keep("show " + file); }
  failure show_folder(const std::string& folder) override { return keep("folder " + folder); }
  failure play_disc(const std::string& disc) override { return keep("play " + disc); }
  failure edit_text(const std::string& file) override { return keep("edit " + file); }
  failure import_registry(const std::string& file) override { return keep("import " + file); }
  failure run(const std::vector<std::string>& words) override {
    asked.push_back(join(words, " "));
    const auto bad = broken.find(words[0]);
    if (bad != broken.end())
      return bad->second;
    if (const auto found = effects.find(words[0]); found != effects.end())
      found->second();
    return std::nullopt;
  }

  std::vector<std::string> asked;                        ///< "show FILE", or the words of a command
  failure fails;                                         ///< what show, edit and import end with
  std::map<std::string, std::string> broken;             ///< commands that fail, and why
  std::map<std::string, std::function<void()>> effects;  ///< what the others do

 private:
  failure keep(const std::string& what) {
    asked.push_back(what);
    return fails;
  }
};

}  // namespace corvane::testing_support
