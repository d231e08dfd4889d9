#include "clips.h"

#include "command.h"
#include "support/temporary_folder.h"

#include <gtest/gtest.h>

#include <filesystem>
#include <functional>
#include <unistd.h>

namespace corvane::disc {

std::string kept_clip(const std::string& line, const std::string& name) {
  const std::string folder = CORVANE_CLIPS;
  std::filesystem::create_directories(folder);
  std::string file = folder + "/" + std::to_string(std::hash<std::string>()(line)) + "-" + name;
  if (std::filesystem::exists(file))
    return file;
  const testing_support::temporary_folder work;
  command c{{"/bin/sh", "-c", line + " " + name}};
  c.folder = work.path();
  const finished made = run(c);
  EXPECT_EQ(made.status, 0) << line << "\n" << made.out;
  // Another test may be making it, too.
  const std::string whole = folder + "/whole-" + std::to_string(::getpid());
  if (made.status == 0) {
    std::filesystem::copy_file(work.path(name), whole);
    std::filesystem::rename(whole, file);
  }
  return file;
}

}  // namespace corvane::disc
