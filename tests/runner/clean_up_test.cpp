#include "runner/clean_up.h"

#include "platform/files/files.h"
#include "support/temporary_folder.h"
#ifndef _WIN32
#include "support/long_folder.h"
#endif

#include <gtest/gtest.h>

#include <filesystem>
#include <string>
#include <system_error>
#include <vector>

namespace corvane {
namespace {

using testing_support::temporary_folder;

TEST(CleanUp, RemovesTheThreeKindsAndNothingElse) {
  temporary_folder app;
  for (const char* name : {"process.bat", "menu1.xml", "a.PNG", "notes.txt", "xml", "x.xml.bak"})
    app.add(name);
  ASSERT_FALSE(make_folders(app.path("folder.xml/inside")));
  EXPECT_TRUE(clean_up(app.path()).empty());
  EXPECT_EQ(files_in(app.path()), (std::vector<std::string>{"notes.txt", "x.xml.bak", "xml"}));
  EXPECT_TRUE(folder_exists(app.path("folder.xml/inside")));
}

TEST(CleanUp, CopiesThatAreThereAlreadyAreReplacedInSilence) {
  temporary_folder app;
  for (const char* name : {"process.bat", "fake.png", "fake.xml"})
    app.add(name);
  EXPECT_TRUE(clean_up(app.path()).empty());
  EXPECT_TRUE(files_in(app.path()).empty());
}

TEST(CleanUp, ScriptThatIsGoneIsToldAndTheRestIsRemoved) {
  temporary_folder app;
  app.add("config.xml");
  const auto troubles = clean_up(app.path());
  ASSERT_EQ(troubles.size(), 2u);
  EXPECT_EQ(troubles[0].file, app.path("fake.png"));
  EXPECT_EQ(troubles[1].file, app.path("fake.xml"));
  EXPECT_TRUE(files_in(app.path()).empty());
}

#ifndef _WIN32
TEST(CleanUp, CopyIsNotWrittenThroughALink) {
  temporary_folder app;
  app.add("process.bat");
  std::filesystem::create_symlink(app.add("mine", "mine"), app.path("fake.png"));
  EXPECT_TRUE(clean_up(app.path()).empty());
  EXPECT_EQ(app.read("mine"), "mine");
  EXPECT_EQ(files_in(app.path()), std::vector<std::string>{"mine"});
}

TEST(CleanUp, FileThatCannotBeRemovedIsToldWithTheReasonAndTheRestIsRemoved) {
  testing_support::long_folder app(100);
  const std::string script = app.add("process.bat"), other = app.add("z.xml");
  const std::string stays = app.add(std::string(200, 'n') + ".xml");
  const auto troubles = clean_up(app.path());
  ASSERT_EQ(troubles.size(), 1u);
  EXPECT_EQ(troubles[0].file, stays);
  EXPECT_EQ(troubles[0].text, "could not be removed by the clean-up: " +
                                  std::make_error_code(std::errc::filename_too_long).message());
  EXPECT_FALSE(file_exists(script));
  EXPECT_FALSE(file_exists(other));
  EXPECT_EQ(files_in(app.path()).size(), 1u);
}
#endif

}  // namespace
}  // namespace corvane
