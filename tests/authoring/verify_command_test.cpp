// "verify disc...": its whole conversation, with discs that are none.
#include "authoring/verify_command.h"

#include "authoring/asked_disc.h"
#include "platform/files/files.h"
#include "support/command_test.h"
#include "support/temporary_folder.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <string>

namespace corvane::testing_support {
namespace {

using ::testing::HasSubstr;
using ::testing::StartsWith;

const file_dialog disc_question = {"choose the VIDEO_TS.IFO or the image of a disc",
                                   "DVD(VIDEO_TS.IFO, *.iso)|*.ifo;*.iso", ""};

class VerifyCommand : public command_test {
 protected:
  VerifyCommand() {
    question_.text =
        "Is this the disc of the project that is open?\n\nYes: it is held against what the project "
        "asks for.\nNo: only what a disc must be by itself is looked at.";
    question_.picture = icon::information;
    question_.choice = buttons::yes_no_cancel;
    folder.add("disc/VIDEO_TS/VIDEO_TS.IFO", "no disc");
  }

  std::string ifo() const { return folder.path("disc/VIDEO_TS/VIDEO_TS.IFO"); }
  std::optional<verified_disc> verify() {
    return verify_command(doc, {folder.path("app"), {}, {}});
  }

  message_box question_;
};

TEST_F(VerifyCommand, CancelledNothingIsRead) {
  ask.expect_open(disc_question, "");
  EXPECT_FALSE(verify());
}

TEST_F(VerifyCommand, WithoutAProjectNothingMoreIsAsked) {
  ask.expect_open(disc_question, ifo());
  const auto disc = verify();
  ASSERT_TRUE(disc);
  EXPECT_EQ(disc->path, folder.path("disc"));
  EXPECT_FALSE(disc->compared);
  ASSERT_FALSE(disc->findings.empty());
  EXPECT_EQ(disc->findings[0].rule, "disc-missing");
  EXPECT_THAT(verified_text(*disc), StartsWith(folder.path("disc") + "\n1 error"));
}

TEST_F(VerifyCommand, WithAProjectItIsAskedWhetherTheDiscIsItsOwn) {
  p.List11 = {"\\a.m2v/\\a.ac3"};
  p.List1 = {"title1:a.m2v/a.ac3"};
  p.chapters = {"0"};
  p.delay = {"0"};
  for (const answer said : {answer::cancel, answer::no, answer::yes}) {
    ask.expect_open(disc_question, ifo());
    ask.expect(question_, said);
    const auto disc = verify();
    EXPECT_EQ(disc.has_value(), said != answer::cancel);
    if (disc) {
      EXPECT_EQ(disc->compared, said == answer::yes);
    }
  }
}

TEST_F(VerifyCommand, ImageIsTakenAsItIs) {
  const std::string image = folder.add("film.iso", "no image");
  ask.expect_open(disc_question, image);
  const auto disc = verify();
  ASSERT_TRUE(disc);
  EXPECT_EQ(disc->path, image);
  EXPECT_THAT(verified_text(*disc), HasSubstr("image-volume"));
}

TEST_F(VerifyCommand, StoppedThereIsNothingToShow) {
  ask.expect_open(disc_question, ifo());
  verification_equipment e{folder.path("app"), {}, [](verification&) { return false; }};
  EXPECT_FALSE(verify_command(doc, e));
}

TEST_F(VerifyCommand, XmlThatCannotBeReadIsSaidAndNothingIsRead) {
  p.List11 = {"\\a.m2v/\\a.ac3"};
  p.List1 = {"title1:a.m2v/a.ac3"};
  p.chapters = {"0"};
  p.customxml = "<dvdauthor dest=\"x\">\r\n<vmgm>";
  ask.expect_open(disc_question, ifo());
  ask.expect(question_, answer::yes);
  const std::string why = asked_disc(p, {folder.path("app"), "x"}).error;
  ASSERT_FALSE(why.empty());
  expect_refusal("The hand-edited XML cannot be read: " + why +
                 ".  The disc cannot be held against it.");
  EXPECT_FALSE(verify());
}

TEST_F(VerifyCommand, ItIsSavedAsText) {
  verified_disc disc;
  disc.path = "/the/disc";
  disc.table = "table\n";
  const file_dialog where = {"save what was found", "text file(*.txt)|*.txt", "disc.txt"};
  const std::string file = folder.path("found.txt");
  ask.expect_save(where, file);
  save_verified(doc, disc);
  EXPECT_EQ(folder.read("found.txt"),
            "/the/disc\nNothing was found that would spoil this disc.\n\ntable\n");
  ask.expect_save(where, folder.path("no folder/found.txt"));
  const failure why = write_file(folder.path("no folder/found.txt"), "x");
  ASSERT_TRUE(why);
  expect_error("The file \"" + folder.path("no folder/found.txt") +
               "\" could not be written: " + *why + ".");
  save_verified(doc, disc);
}

}  // namespace
}  // namespace corvane::testing_support
