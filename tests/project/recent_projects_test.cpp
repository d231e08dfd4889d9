// The projects that were open last.
#include "project/recent_projects.h"

#include <gmock/gmock.h>

namespace corvane {
namespace {

using ::testing::ElementsAre;
using ::testing::IsEmpty;
using ::testing::SizeIs;

TEST(RecentProjects, TheLastComesFirstAndEachOnce) {
  memory_settings prefs;
  EXPECT_THAT(recent_projects(prefs), IsEmpty());
  for (const char* const file : {"/a.cvp", "/b.cvp", "/a.cvp", "/c.cvp", "/c.cvp"})
    note_recent_project(prefs, file);
  EXPECT_THAT(recent_projects(prefs), ElementsAre("/c.cvp", "/a.cvp", "/b.cvp"));
}

TEST(RecentProjects, OlderOnesAreForgotten) {
  memory_settings prefs;
  for (int i = 0; i < 20; ++i)
    note_recent_project(prefs, "/" + std::to_string(i) + ".cvp");
  EXPECT_THAT(recent_projects(prefs), SizeIs(most_recent_projects));
  EXPECT_EQ(recent_projects(prefs).front(), "/19.cvp");
}

}  // namespace
}  // namespace corvane
