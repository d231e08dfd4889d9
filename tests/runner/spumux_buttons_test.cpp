#include "runner/tools/spumux_buttons.h"

#include "menu_stream.h"
#include "support/temporary_folder.h"

#include <gtest/gtest.h>

namespace corvane::testing_support {
namespace {

const std::string none = "no picture of them was added";
const std::string late = "their picture comes up after the end of the menu";

std::string why_not_in(const std::string& stream) {
  const temporary_folder folder;
  return why_no_buttons_seen(folder.add("menusub1.mpg", stream));
}

TEST(OverlayCheck, SubpictureAmongPicturesAndSoundIsSeen) {
  EXPECT_EQ(why_not_in(picture_at(0.1) + buttons_at(0.1) + sound_at(0.1) + picture_at(2)), "");
  EXPECT_EQ(why_not_in(picture_at(0.1) + picture_at(2) + buttons_at(0.1, 7)), "");
}

TEST(OverlayCheck, StreamWithoutSubpictureShowsNoButtons) {
  EXPECT_EQ(why_not_in(picture_at(0.1) + sound_at(0.1) + picture_at(2)), none);
  EXPECT_EQ(why_not_in(""), none);
  EXPECT_EQ(why_not_in("not a stream at all"), none);
}

TEST(OverlayCheck, OtherPrivateStreamsAreNoButtons) {
  for (const unsigned first : {0x80u, 0xA0u, 0x21u, 0x00u, 0xFFu})
    EXPECT_EQ(why_not_in(picture_at(0.1) + pack_of(0xBD, 0.1, first)), none) << first;
}

TEST(OverlayCheck, SubpictureThatBeginsAfterTheEndIsNotSeen) {
  EXPECT_EQ(why_not_in(picture_at(0.1) + picture_at(2) + buttons_at(20)), late);
  EXPECT_EQ(why_not_in(picture_at(0.1) + picture_at(2) + buttons_at(2)), "");
  EXPECT_EQ(why_not_in(picture_at(0.1) + buttons_at(1) + picture_at(2) + buttons_at(20)), "");
}

TEST(OverlayCheck, StillMenuLastsAsLongAsItsSound) {
  EXPECT_EQ(why_not_in(picture_at(0.1) + buttons_at(5) + sound_at(30)), "");
  EXPECT_EQ(why_not_in(picture_at(0.1) + buttons_at(5) + pack_of(0xC0, 30)), "");
  EXPECT_EQ(why_not_in(picture_at(0.1) + buttons_at(5) + pack_of(0xBD, 30, 0x21)), late);
}

TEST(OverlayCheck, TimesBeyondThirtyTwoBitsAreCompared) {
  const double wraps_at = 4294967296.0 / 90000;
  EXPECT_EQ(why_not_in(picture_at(wraps_at + 1) + buttons_at(wraps_at)), "");
  EXPECT_EQ(why_not_in(picture_at(wraps_at - 1) + buttons_at(wraps_at)), late);
}

TEST(OverlayCheck, PacketsWithoutATimeAreContinuations) {
  EXPECT_EQ(why_not_in(picture_at(0.1) + buttons_at(no_time)), none);
  EXPECT_EQ(why_not_in(picture_at(1) + buttons_at(0.1) + buttons_at(no_time)), "");
}

TEST(OverlayCheck, PacketThatLeadsOutOfItsPackAndPackThatIsCutOffAreNoHarm) {
  std::string broken = picture_at(0.1);
  broken[18] = broken[19] = '\xFF';
  EXPECT_EQ(why_not_in(broken + buttons_at(0.1)), "");
  EXPECT_EQ(why_not_in(picture_at(0.1) + buttons_at(0.1).substr(0, 1000)), none);
}

TEST(OverlayCheck, StreamThatIsNotThereIsAReason) {
  const temporary_folder folder;
  EXPECT_EQ(why_no_buttons_seen(folder.path("menusub1.mpg")), "its stream cannot be read");
}

TEST(OverlayCheck, ButtonsOfAControlFileAreCounted) {
  const temporary_folder folder;
  EXPECT_EQ(buttons_asked_for(folder.add("a.xml",
                                         "<spu>\r\n<button x0=\"1\"/>\r\n    <button "
                                         "x0=\"2\"/>\r\n<buttons/></spu>")),
            2);
  EXPECT_EQ(buttons_asked_for(folder.add("b.xml", "<spu></spu>")), 0);
  EXPECT_EQ(buttons_asked_for(folder.path("missing.xml")), 0);
}

}  // namespace
}  // namespace corvane::testing_support
