// Programs that are started with their standard files closed: what they print goes
// nowhere, least of all into another file.
#include "apps/author_fixture_posix.h"
#include "platform/files/files.h"
#include "platform/files/program_folder.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <filesystem>
#include <string>

namespace corvane {
namespace {

using testing::HasSubstr;
using testing_support::AuthorProgram;
using testing_support::program_start;

using ClosedOutput = AuthorProgram;

TEST_F(ClosedOutput, NothingOfTheConsoleProgramsProgressIsWrittenIntoTheLock) {
  program_start how = start({project_, out()});
  how.closed_files = {1, 2};
  EXPECT_EQ(run_as(how), 0);
  expect_a_disc();
  EXPECT_EQ(folder_.read("app/corvane.lock"), "");
  EXPECT_THAT(folder_.read("app/CorvaneLOG.txt"), HasSubstr("*process complete"));
}

TEST_F(ClosedOutput, NothingOfConspawnsIsWrittenIntoAToolsFile) {
  const std::string tool = folder_.add("bin/tool.exe", "#!/bin/sh\n/bin/cat\necho made\n");
  std::filesystem::permissions(tool, std::filesystem::perms::owner_all);
  const std::string script = folder_.add(
      "process.bat", "echo *one step\r\n\"" + tool + "\" <\"" + folder_.add("in", "read\n") +
                         "\" >\"" + folder_.path("out") + "\"\r\necho *process complete\r\n");
  const std::string conspawn = folder_.path("bin/conspawn.exe");
  std::filesystem::create_symlink(path_of(own_executable()).parent_path() / "conspawn", conspawn);
  program_start how;
  how.program = conspawn;
  how.arguments = {script};
  how.closed_files = {0, 1, 2};
  EXPECT_EQ(run_as(how), 0);
  EXPECT_EQ(folder_.read("out"), "read\nmade\n");
}

}  // namespace
}  // namespace corvane
