// What the window tells of missing tools when it starts.
#include "platform/files/program_folder.h"
#include "ui/main_window.h"
#include "ui/window_fixture.h"

namespace corvane::testing_support {
namespace {

class MissingToolsWindow : public window_test {
 protected:
  void SetUp() override {
    // Files that cannot be started; what stands in bin itself is left alone at the start.
    folder_.add("program/bin/gm.exe", "no program");
    folder_.add("program/bin/mpeg2enc.exe", "no program");
    window_test::SetUp();
  }
  const std::string notice_ =
      "Corvane runs tools that are not installed:\n\n"
      "mpeg2enc: package mjpegtools\n"
      "gm: package graphicsmagick\n\n"
      "Install these packages (the tools must be on the PATH), and start Corvane again.  "
      "Until then, what needs one of them is refused; everything else works.";
};

TEST_F(MissingToolsWindow, AreToldOnceAtTheStart) {
  const seen_dialog box = answer_message(notice_, "OK");
  EXPECT_EQ(box.title, "Corvane");
  EXPECT_EQ(box.picture, "warning");
  EXPECT_EQ(box.buttons, std::vector<std::string>{"OK"});
  add_title(file("a.m2v"), file("a.ac3"));
  EXPECT_EQ(rows().size(), 1u);
  EXPECT_TRUE(no_dialog());
}

}  // namespace
}  // namespace corvane::testing_support
