// The bitmaps of buttons: the three commands of the editor, their checks and messages.
#include "menus/bitmaps.h"

#include "editor_test.h"
#include "menus/menu_editor.h"

namespace corvane {
namespace {

using testing_support::record_at;
using testing_support::rows;

const char* const too_deep = "Color depth is not 4BPP or less, please reduce the number of colors.";
const char* const too_large = "image is larger than 700x300.";
const char* const other_size = "the select image must be the same size as the highlight image";

class Bitmaps : public testing_support::editor_test {
 protected:
  /// A file of the test's folder that says it has `depth` bits a pixel, and decodes to that size.
  std::string add_bitmap(const std::string& name, int width, int height, int depth = 4,
                         std::size_t bytes = 300) {
    std::string file(bytes, '\x7f');
    if (bytes > 28)
      file[28] = static_cast<char>(depth);
    pictures.set(folder.path(name), width, height);
    return folder.add(name, file);
  }
  void expect_dialog(const std::string& native) {
    ask.expect_open({"select a 4 bit bitmap image", "4 bit bitmap image(*.bmp)|*.bmp", ""}, native);
  }
  std::string with_bitmaps(int x0, int y0, int x1, int y1, const std::string& highlight,
                           const std::string& select) {
    button_record b = button_with_edges(x0, y0, x1, y1);
    b.action = "exit";
    b.highlight = folder.stored(highlight);
    b.select = folder.stored(select);
    return button_text(b);
  }
  /// The editor with a bitmap button of 60 x 30.
  menu_editor& edit_bitmap() {
    add_bitmap("h.bmp", 60, 30);
    return edit_first(with_bitmaps(10, 20, 70, 50, "h.bmp", "h.bmp"));
  }
};

// Use bmp button ---------------------------------------------------------------------------------

TEST_F(Bitmaps, HighlightBitmapBecomesBothImagesAndSetsTheSize) {
  menu_editor& e = edit_first(record_at(10, 20, 110, 60));
  expect_dialog(add_bitmap("a.bmp", 64, 32));
  e.bmphighlight();
  EXPECT_EQ(record(), with_bitmaps(10, 20, 74, 52, "a.bmp", "a.bmp"));
  EXPECT_TRUE(shown().bitmap_mode);
  EXPECT_EQ(shown().Image1, folder.stored("a.bmp"));
  EXPECT_EQ(shown().Image2, folder.stored("a.bmp"));
  EXPECT_FALSE(shown().sizes_enabled);
  EXPECT_FALSE(shown().Slider1.enabled);
  EXPECT_FALSE(shown().Slider2.enabled);
  EXPECT_EQ(shown().widthpos, " 64");
}

TEST_F(Bitmaps, PositionStaysUnlessTheBitmapWouldReachOut) {
  menu_editor& e = edit_first(record_at(650, 470, 700, 473));
  expect_dialog(add_bitmap("a.bmp", 200, 100));
  e.bmphighlight();
  EXPECT_EQ(record(), with_bitmaps(519, 379, 719, 479, "a.bmp", "a.bmp"));
}

TEST_F(Bitmaps, Of699By299IsAccepted) {
  menu_editor& e = edit_first(record_at(0, 0, 100, 3));
  expect_dialog(add_bitmap("a.bmp", 699, 299));
  e.bmphighlight();
  EXPECT_EQ(record(), with_bitmaps(0, 0, 699, 299, "a.bmp", "a.bmp"));
}

TEST_F(Bitmaps, Of1By1IsAcceptedAsItIs) {
  menu_editor& e = edit_first(record_at(0, 0, 100, 3));
  expect_dialog(add_bitmap("a.bmp", 1, 1));
  e.bmphighlight();
  EXPECT_EQ(record(), with_bitmaps(0, 0, 1, 1, "a.bmp", "a.bmp"));
}

TEST_F(Bitmaps, Of700WideOr300HighIsRefused) {
  menu_editor& e = edit_first(record_at(0, 0, 100, 3));
  const std::vector<pixel_size> sizes = {{700, 299}, {699, 300}, {100000, 100000}};
  for (const auto& [width, height] : sizes) {
    expect_dialog(add_bitmap("a.bmp", width, height));
    expect_note(too_large);
    e.bmphighlight();
    EXPECT_TRUE(ask.all_asked());
    EXPECT_EQ(record(), record_at(0, 0, 100, 3));
    EXPECT_FALSE(shown().bitmap_mode);
  }
}

TEST_F(Bitmaps, UpToFourBitsAreAcceptedAndFiveAndMoreRefused) {
  for (const int depth : {0, 1, 2, 4, 5, 8, 16, 24, 32, 128, 255}) {
    menu_editor& e = edit_first(record_at(0, 0, 100, 3));
    expect_dialog(add_bitmap("a.bmp", 50, 40, depth));
    if (depth > 4)
      expect_refusal(too_deep);
    e.bmphighlight();
    EXPECT_TRUE(ask.all_asked()) << depth;
    EXPECT_EQ(record(),
              depth > 4 ? record_at(0, 0, 100, 3) : with_bitmaps(0, 0, 50, 40, "a.bmp", "a.bmp"))
        << depth;
  }
}

TEST_F(Bitmaps, DepthIsComplainedOfBeforeTheSize) {
  menu_editor& e = edit_first(record_at(0, 0, 100, 3));
  expect_dialog(add_bitmap("a.bmp", 2000, 2000, 24));
  expect_refusal(too_deep);
  e.bmphighlight();
}

TEST_F(Bitmaps, OnlyByte28OfTheHeaderIsLookedAt) {
  menu_editor& e = edit_first(record_at(0, 0, 100, 3));
  expect_dialog(add_bitmap("a.bmp", 50, 40, 4, 29));
  e.bmphighlight();
  EXPECT_EQ(record(), with_bitmaps(0, 0, 50, 40, "a.bmp", "a.bmp"));
}

TEST_F(Bitmaps, CancelledDialogLeavesTheButton) {
  menu_editor& e = edit_first(record_at(5, 6, 100, 30));
  expect_dialog("");
  e.bmphighlight();
  EXPECT_EQ(record(), record_at(5, 6, 100, 30));
}

TEST_F(Bitmaps, FileThatCannotBeDecodedIsRefused) {
  menu_editor& e = edit_first(record_at(0, 0, 100, 3));
  const std::string file = folder.add("a.bmp", "no picture at all, but long enough");
  expect_dialog(file);
  expect_error("\"" + file + "\" cannot be used as a bitmap: it is no picture.");
  e.bmphighlight();
  EXPECT_EQ(record(), record_at(0, 0, 100, 3));
}

TEST_F(Bitmaps, FileThatDecodesToNothingIsRefused) {
  menu_editor& e = edit_first(record_at(0, 0, 100, 3));
  const std::string file = add_bitmap("a.bmp", 0, 0);
  expect_dialog(file);
  expect_error("\"" + file + "\" cannot be used as a bitmap: it is empty.");
  e.bmphighlight();
  EXPECT_EQ(record(), record_at(0, 0, 100, 3));
}

TEST_F(Bitmaps, FileWithoutWidthOrWithoutHeightIsRefused) {
  menu_editor& e = edit_first(record_at(0, 0, 100, 3));
  const std::vector<pixel_size> sizes = {{0, 40}, {50, 0}};
  for (const auto& [width, height] : sizes) {
    const std::string file = add_bitmap("a.bmp", width, height);
    expect_dialog(file);
    expect_error("\"" + file + "\" cannot be used as a bitmap: it is empty.");
    e.bmphighlight();
    EXPECT_EQ(record(), record_at(0, 0, 100, 3));
  }
}

TEST_F(Bitmaps, FileTooShortForADepthIsRefused) {
  menu_editor& e = edit_first(record_at(0, 0, 100, 3));
  for (const std::size_t bytes : {0u, 28u}) {
    const std::string file = add_bitmap("a.bmp", 50, 40, 4, bytes);
    expect_dialog(file);
    expect_error("\"" + file + "\" cannot be used as a bitmap: the file is too short.");
    e.bmphighlight();
    EXPECT_EQ(record(), record_at(0, 0, 100, 3));
  }
}

TEST_F(Bitmaps, FileWhoseNameCannotBeStoredIsRefused) {
  menu_editor& e = edit_first(record_at(0, 0, 100, 3));
  const std::string name = folder.path("a|b.bmp");
  expect_dialog(name);
  expect_refusal("\"" + name +
                 "\" cannot be used: its name contains a vertical bar (|).  Please rename it.");
  e.bmphighlight();
  EXPECT_EQ(record(), record_at(0, 0, 100, 3));
}

TEST_F(Bitmaps, WithoutAChosenButtonTheFileIsAskedForAndThenRefused) {
  menu_editor& e = edit(record_at(0, 0, 100, 3));
  expect_dialog(add_bitmap("a.bmp", 50, 40));
  expect_choose_first();
  e.bmphighlight();
  EXPECT_EQ(record(), record_at(0, 0, 100, 3));
  EXPECT_EQ(shown().Colorhighlight, "black");
  EXPECT_EQ(shown().Slider1.value, 100);

  expect_dialog("");
  expect_choose_first();
  e.bmphighlight();
}

TEST_F(Bitmaps, NewHighlightResetsTheSelectImage) {
  menu_editor& e = edit_bitmap();
  expect_dialog(add_bitmap("s.bmp", 60, 30));
  e.bmpselect();
  EXPECT_EQ(record(), with_bitmaps(10, 20, 70, 50, "h.bmp", "s.bmp"));
  expect_dialog(add_bitmap("new.bmp", 61, 31));
  e.bmphighlight();
  EXPECT_EQ(record(), with_bitmaps(10, 20, 71, 51, "new.bmp", "new.bmp"));
}

// Change select ----------------------------------------------------------------------------------

TEST_F(Bitmaps, SelectImageOfTheSameSizeIsTaken) {
  menu_editor& e = edit_bitmap();
  expect_dialog(add_bitmap("s.bmp", 60, 30));
  e.bmpselect();
  EXPECT_EQ(record(), with_bitmaps(10, 20, 70, 50, "h.bmp", "s.bmp"));
  EXPECT_EQ(shown().Image1, folder.stored("h.bmp"));
  EXPECT_EQ(shown().Image2, folder.stored("s.bmp"));
}

TEST_F(Bitmaps, SelectImageOfAnotherDepthUpToFourBitsIsTaken) {
  menu_editor& e = edit_bitmap();
  expect_dialog(add_bitmap("s.bmp", 60, 30, 1));
  e.bmpselect();
  EXPECT_EQ(record(), with_bitmaps(10, 20, 70, 50, "h.bmp", "s.bmp"));
}

TEST_F(Bitmaps, SelectImageOfAnotherSizeIsRefused) {
  menu_editor& e = edit_bitmap();
  const std::vector<pixel_size> sizes = {{61, 30}, {60, 31}, {30, 60}};
  for (const auto& [width, height] : sizes) {
    expect_dialog(add_bitmap("s.bmp", width, height));
    expect_note(other_size);
    e.bmpselect();
    EXPECT_TRUE(ask.all_asked());
    EXPECT_EQ(record(), with_bitmaps(10, 20, 70, 50, "h.bmp", "h.bmp"));
    EXPECT_EQ(shown().Image2, folder.stored("h.bmp"));
  }
}

TEST_F(Bitmaps, RefusedSelectImageLeavesTheHighlightInItsPictureUntilTheNextChange) {
  menu_editor& e = edit_bitmap();
  expect_dialog(add_bitmap("s.bmp", 60, 30));
  e.bmpselect();
  ASSERT_EQ(shown().Image2, folder.stored("s.bmp"));
  expect_dialog(add_bitmap("t.bmp", 61, 30));
  expect_note(other_size);
  e.bmpselect();
  EXPECT_EQ(shown().Image2, folder.stored("h.bmp"));
  EXPECT_EQ(record(), with_bitmaps(10, 20, 70, 50, "h.bmp", "s.bmp"));
  e.move_by(1, 0);
  EXPECT_EQ(shown().Image2, folder.stored("s.bmp"));
  EXPECT_EQ(record(), with_bitmaps(11, 20, 71, 50, "h.bmp", "s.bmp"));
}

TEST_F(Bitmaps, SelectImageOfAnotherSizeIsRefusedBeforeItsDepth) {
  menu_editor& e = edit_bitmap();
  expect_dialog(add_bitmap("s.bmp", 61, 30, 8));
  expect_note(other_size);
  e.bmpselect();
}

TEST_F(Bitmaps, SelectImageOfMoreThanFourBitsIsRefused) {
  menu_editor& e = edit_bitmap();
  expect_dialog(add_bitmap("s.bmp", 60, 30, 8));
  expect_refusal(too_deep);
  e.bmpselect();
  EXPECT_EQ(record(), with_bitmaps(10, 20, 70, 50, "h.bmp", "h.bmp"));
}

TEST_F(Bitmaps, CancelledSelectDialogChangesNothing) {
  menu_editor& e = edit_bitmap();
  expect_dialog("");
  e.bmpselect();
  EXPECT_EQ(record(), with_bitmaps(10, 20, 70, 50, "h.bmp", "h.bmp"));
}

TEST_F(Bitmaps, SelectImageThatCannotBeDecodedIsRefused) {
  menu_editor& e = edit_bitmap();
  const std::string file = folder.add("s.bmp", "x");
  expect_dialog(file);
  expect_error("\"" + file + "\" cannot be used as a bitmap: it is no picture.");
  e.bmpselect();
  EXPECT_EQ(record(), with_bitmaps(10, 20, 70, 50, "h.bmp", "h.bmp"));
}

TEST_F(Bitmaps, HighlightThatCannotBeDecodedAnyMoreIsNamed) {
  menu_editor& e = edit_first(with_bitmaps(10, 20, 70, 50, "gone.bmp", "gone.bmp"));
  expect_dialog(add_bitmap("s.bmp", 60, 30));
  expect_error("\"" + folder.path("gone.bmp") + "\" cannot be used as a bitmap: it is no picture.");
  e.bmpselect();
  EXPECT_EQ(record(), with_bitmaps(10, 20, 70, 50, "gone.bmp", "gone.bmp"));
}

TEST_F(Bitmaps, SelectImageOfAButtonWithoutHighlightBitmapIsRefused) {
  menu_editor& e = edit_first(record_at(0, 0, 60, 30));
  expect_dialog(add_bitmap("s.bmp", 60, 30));
  expect_note(other_size);
  e.bmpselect();
  EXPECT_EQ(record(), record_at(0, 0, 60, 30));
}

// Revert and display -----------------------------------------------------------------------------

TEST_F(Bitmaps, RevertedButtonKeepsTheSizeOfASmallBitmap) {
  menu_editor& e = edit_bitmap();
  expect_dialog(add_bitmap("tiny.bmp", 3, 1));
  e.bmphighlight();
  e.removebmp();
  EXPECT_EQ(record(), " 10/ 20/ 13/ 21/exit/black/black");
}

TEST_F(Bitmaps, RevertMakesABlackBoxOfTheCurrentSize) {
  menu_editor& e = edit_bitmap();
  e.removebmp();
  EXPECT_EQ(record(), record_at(10, 20, 70, 50));
  EXPECT_FALSE(shown().bitmap_mode);
  EXPECT_TRUE(shown().sizes_enabled);
  EXPECT_TRUE(shown().Slider1.enabled);
  EXPECT_EQ(shown().Image1, "");
  EXPECT_EQ(shown().Image2, "");
  EXPECT_TRUE(shown().thickness.enabled);
}

TEST_F(Bitmaps, DisplayFollowsTheHighlightOfTheChosenButton) {
  const std::string bitmap = with_bitmaps(0, 0, 60, 30, "h.bmp", "s.bmp");
  menu_editor& e = edit(bitmap + "|" + record_at(0, 100, 100, 103));
  e.choose(0);
  EXPECT_TRUE(shown().bitmap_mode);
  EXPECT_EQ(shown().Image2, folder.stored("s.bmp"));
  e.choose(1);
  EXPECT_FALSE(shown().bitmap_mode);
  EXPECT_EQ(shown().Image1, "");
  EXPECT_TRUE(shown().sizes_enabled);
  EXPECT_EQ(record(0), bitmap);
}

TEST_F(Bitmaps, BitmapHighlightWithAColourSelectShowsOneImage) {
  edit_first(" 0/ 0/ 60/ 30/exit/" + folder.stored("h.bmp") + "/cyan");
  EXPECT_TRUE(shown().bitmap_mode);
  EXPECT_EQ(shown().Image1, folder.stored("h.bmp"));
  EXPECT_EQ(shown().Image2, "");
  edit_first(" 0/ 0/ 60/ 30/exit/cyan/" + folder.stored("h.bmp"));
  EXPECT_FALSE(shown().bitmap_mode);
  EXPECT_EQ(shown().ColorSelect, folder.stored("h.bmp"));
}

}  // namespace
}  // namespace corvane
