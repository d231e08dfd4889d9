// Projects kept for the case that their program ends without saving them.
#include "project/recovery.h"

#include "project/project_file.h"
#include "project/title_commands.h"
#include "support/command_test.h"

#include <gmock/gmock.h>

namespace corvane {
namespace {

using ::testing::IsEmpty;
using ::testing::SizeIs;

class Recovery : public testing_support::command_test {
 protected:
  Recovery() { doc.keep_in(&keeper); }
  ~Recovery() override { doc.keep_in(nullptr); }

  void change(const std::string& delay) {
    const document::step step(doc, "edit A/V delay");
    p.delay[0] = delay;
  }
  /// What another program finds that is started after this one has died.
  static std::vector<kept_project> found(const std::string& folder) {
    recovery other(folder);
    std::vector<kept_project> all;
    for (const left_project& project : other.left())
      all.push_back(project.what());
    return all;
  }

  std::string kept = folder.path("app/kept");
  recovery keeper{kept};
};

TEST_F(Recovery, WhatIsNotSavedIsKeptAfterEachStep) {
  {
    recovery dying(kept);
    doc.keep_in(&dying);
    {
      const document::step step(doc, "add title");
      add_files_and_title({"a.m2v", "a.ac3"});
    }
    change("40");
    doc.set_file("/home/u/p.cvp", "what the file holds");
    change("80");
    EXPECT_EQ(dying.flush(), std::nullopt);
    EXPECT_THAT(found(kept), IsEmpty()) << "its program lives";
    doc.keep_in(nullptr);
  }
  const auto left = found(kept);
  ASSERT_THAT(left, SizeIs(1));
  EXPECT_EQ(left[0].file, "/home/u/p.cvp");
  EXPECT_EQ(left[0].text, project_text(p));
  EXPECT_EQ(left[0].editor, "");
}

TEST_F(Recovery, WhatIsSavedOrGivenUpIsForgotten) {
  add_files_and_title({"a.m2v", "a.ac3"});
  for (const bool saved : {true, false}) {
    recovery ending(kept);
    doc.keep_in(&ending);
    change(saved ? "40" : "80");
    EXPECT_EQ(ending.flush(), std::nullopt);
    if (saved) {
      const document::step step(doc, "save");
      doc.set_file("/p.cvp");
    }
    doc.end(!saved);
    doc.keep_in(nullptr);
  }
  EXPECT_THAT(found(kept), IsEmpty());
  EXPECT_THAT(found(kept), IsEmpty());
}

TEST_F(Recovery, WhatAnOpenWindowHoldsIsKeptWithItsName) {
  add_files_and_title({"a.m2v", "a.ac3"});
  {
    recovery dying(kept);
    doc.keep_in(&dying);
    project draft = p;
    draft.chapters[0] = "00:05:00";
    doc.keep_draft(draft, "chapters");
    doc.keep_draft(draft, "chapters");
    EXPECT_EQ(dying.flush(), std::nullopt);
    doc.keep_in(nullptr);
  }
  const auto left = found(kept);
  ASSERT_THAT(left, SizeIs(1));
  EXPECT_EQ(left[0].editor, "chapters");
  EXPECT_THAT(left[0].text, ::testing::HasSubstr("00:05:00\r\n"));
}

TEST_F(Recovery, EachProgramHasItsOwn) {
  {
    recovery one(kept), other(kept);
    one.keep({"/1.cvp", "", "first"});
    other.keep({"/2.cvp", "", "second"});
  }
  const auto left = found(kept);
  ASSERT_THAT(left, SizeIs(2));
  EXPECT_NE(left[0].file, left[1].file);
}

TEST_F(Recovery, WhatWasOfferedIsGoneOnceItIsDropped) {
  { recovery(kept).keep({"", "", "text"}); }
  recovery next(kept);
  {
    auto left = next.left();
    ASSERT_THAT(left, SizeIs(1));
    EXPECT_THAT(found(kept), IsEmpty()) << "nobody else is offered it meanwhile";
  }
  EXPECT_THAT(found(kept), SizeIs(1)) << "nobody has decided";
  next.left().front().drop();
  EXPECT_THAT(found(kept), IsEmpty());
}

TEST_F(Recovery, AFileThatIsNoneIsLeftAlone) {
  folder.add("app/kept/1/project.kept", "something");
  EXPECT_THAT(found(kept), IsEmpty());
  EXPECT_EQ(folder.read("app/kept/1/project.kept"), "something");
}

TEST_F(Recovery, WhereNothingCanBeWrittenThatIsTold) {
  folder.add("app/kept", "a file in the place of the folder");
  keeper.keep({"", "", "text"});
  EXPECT_NE(keeper.flush(), std::nullopt);
}

}  // namespace
}  // namespace corvane
