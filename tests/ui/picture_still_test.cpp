// Pictures that "create m2v still" refuses, made right in the window for that: with a real pointer,
// real keys and the real tools.
#include "formats/aspect_code.h"
#include "media/video_file.h"
#include "platform/files/files.h"
#include "platform/settings/settings.h"
#include "ui/gtk_sight.h"
#include "ui/main_window.h"
#include "ui/video/video_picture.h"
#include "ui/widgets/wx_text.h"
#include "ui/window_fixture.h"

#include <gmock/gmock.h>
#include <wx/choice.h>
#include <wx/spinctrl.h>
#include <wx/stattext.h>
#include <wx/textctrl.h>

#include <algorithm>
#include <array>
#include <cstdlib>
#include <string>
#include <vector>

namespace corvane::testing_support {
namespace {

constexpr const char* dialog = "still";
constexpr const char* refusal = "jpg is not 720x480 or 720x576";
constexpr const char* success_text =
    "Process complete.  Please review the log for more information (recommended).";
constexpr const char* failure_text = "There was an error.  Please review the log.";

using colour = std::array<int, 3>;

class PictureStills : public window_test {
 protected:
  /// Draws with ImageMagick; gives the native path.
  std::string draw(const std::string& name, const std::string& what) {
    const std::string path = folder_.path(name);
    const std::string command = "convert " + what + " '" + path + "'";
    EXPECT_EQ(std::system(command.c_str()), 0) << command;
    return path;
  }
  /// A white circle in the middle of a red picture.
  std::string draw_circle(const std::string& name, int width, int height) {
    const std::string x = std::to_string(width / 2), y = std::to_string(height / 2);
    const std::string top = std::to_string(height / 2 - height / 4);
    return draw(name, "-size " + std::to_string(width) + "x" + std::to_string(height) +
                          " xc:red -fill white -draw 'circle " + x + "," + y + " " + x + "," + top +
                          "'");
  }

  void refuse(const std::string& picture) {
    click_menu("menus", "create m2v still");
    answer_file("select a 720x480 or 720x576 jpeg image", picture);
    answer_message(refusal, "OK");
    ASSERT_TRUE(window_comes(dialog));
  }
  void drop(const std::vector<std::string>& files) {
    on_ui([=, this] { window_->CallAfter([=, this] { window_->drop(files); }); });
  }
  void open_by_drop(const std::string& picture) {
    drop({picture});
    ASSERT_TRUE(window_comes(dialog));
  }

  static std::string text(const char* name) {
    return ask_ui([=] { return utf8_of(control(name, dialog)->GetLabel()); });
  }
  static std::string place() {
    return ask_ui(
        [] { return utf8_of(dynamic_cast<wxTextCtrl*>(control("place", dialog))->GetValue()); });
  }
  static std::string chosen(const char* name) {
    return ask_ui([=] {
      return utf8_of(dynamic_cast<wxChoice*>(control(name, dialog))->GetStringSelection());
    });
  }
  /// By its key and the arrows.
  static void choose(const char* keys, const char* name, const char* entry, const char* arrow) {
    press(keys);
    press(arrow);
    EXPECT_EQ(chosen(name), entry);
  }
  static wxImage preview() {
    return ask_ui([] {
      const wxImage& shown =
          dynamic_cast<video_picture*>(control("preview", dialog))->shown_picture();
      return shown.IsOk() ? shown.Copy() : wxImage();
    });
  }
  static bool preview_comes() {
    return eventually([] { return preview().IsOk(); });
  }
  void make() {
    click_control("make", dialog);
    answer_message(success_text, "Cancel");
  }
};

colour colour_of(const wxImage& image, double x, double y) {
  const int at_x = static_cast<int>(x * (image.GetWidth() - 1));
  const int at_y = static_cast<int>(y * (image.GetHeight() - 1));
  return {image.GetRed(at_x, at_y), image.GetGreen(at_x, at_y), image.GetBlue(at_x, at_y)};
}

testing::Matcher<colour> is_near(colour wanted, int tolerance = 40) {
  using testing::AllOf;
  using testing::ElementsAre;
  using testing::Ge;
  using testing::Le;
  const auto one = [=](std::size_t i) {
    return AllOf(Ge(wanted[i] - tolerance), Le(wanted[i] + tolerance));
  };
  return ElementsAre(one(0), one(1), one(2));
}

/// Width over height of what is white, on a screen of this shape.
double roundness(const wxImage& image, double shape) {
  int left = image.GetWidth(), right = 0, top = image.GetHeight(), bottom = 0;
  for (int y = 0; y < image.GetHeight(); ++y)
    for (int x = 0; x < image.GetWidth(); ++x)
      if (image.GetGreen(x, y) > 128) {
        left = std::min(left, x);
        right = std::max(right, x + 1);
        top = std::min(top, y);
        bottom = std::max(bottom, y + 1);
      }
  const double pixel = shape * image.GetHeight() / image.GetWidth();
  return pixel * (right - left) / (bottom - top);
}

/// The first picture of a video.
wxImage first_of(const std::string& m2v) {
  auto video = video_file::open(m2v);
  EXPECT_TRUE(video) << m2v << ": " << video.error;
  if (!video)
    return {};
  for (auto read = (*video)->scan(100); read && !read->finished;)
    read = (*video)->scan(100);
  const auto shown = (*video)->picture_number(0);
  EXPECT_TRUE(shown) << shown.error;
  if (!shown)
    return {};
  wxImage image(shown->width, shown->height, false);
  std::copy(shown->rgb.begin(), shown->rgb.end(), image.GetData());
  return image;
}

int code_of(const std::string& m2v) {
  const auto bytes = read_file(m2v, 1u << 24);
  EXPECT_TRUE(bytes);
  return bytes && bytes->size() > 7 ? static_cast<unsigned char>((*bytes)[7]) >> 4 : 0;
}

TEST_F(PictureStills, RefusedPhotoIsOfferedAndMadeByThePointer) {
  const std::string photo = draw_circle("holiday.jpg", 1600, 900);
  refuse(photo);
  EXPECT_THAT(text("summary"), testing::HasSubstr("1600x900"));
  EXPECT_EQ(chosen("shape"), "16:9");
  EXPECT_EQ(place(), folder_.path("holiday.m2v"));
  ASSERT_TRUE(preview_comes());
  EXPECT_NEAR(roundness(preview(), 16 / 9.0), 1, 0.02);
  screenshot("picture-still");
  make();
  EXPECT_EQ(code_of(folder_.path("holiday.m2v")), aspect_code::wide);
  const wxImage still = first_of(folder_.path("holiday.m2v"));
  EXPECT_EQ(still.GetSize(), wxSize(720, 480));
  EXPECT_NEAR(roundness(still, 16 / 9.0), 1, 0.02);
  EXPECT_FALSE(file_exists(folder_.path("holiday.m2v.part")));
  EXPECT_FALSE(file_exists(folder_.path("program/still.jpg")));
  EXPECT_TRUE(ask_ui([] { return control("List1")->IsEnabled(); }));
}

TEST_F(PictureStills, ChoicesByKeyChangeThePreviewAndTheStill) {
  open_by_drop(draw_circle("round.png", 1600, 900));
  ASSERT_TRUE(preview_comes());
  EXPECT_EQ(text("described"), "it fills the whole picture");
  choose("alt+s", "shape", "4:3", "Up");
  ASSERT_TRUE(eventually([] { return text("described") == "black bars above and below"; }));
  EXPECT_THAT(colour_of(preview(), 0.5, 0.02), is_near({0, 0, 0}));
  EXPECT_NEAR(roundness(preview(), 4 / 3.0), 1, 0.03);
  screenshot("picture-still-bars");
  choose("alt+p", "picture", "fill the screen, cut the rest", "Down");
  ASSERT_TRUE(
      eventually([] { return text("described") == "about 25 % are cut off at the sides"; }));
  EXPECT_THAT(colour_of(preview(), 0.5, 0.02), is_near({255, 0, 0}));
  EXPECT_NEAR(roundness(preview(), 4 / 3.0), 1, 0.03);
  choose("alt+d", "standard", "PAL (720x576)", "Down");
  press("alt+f");
  press("ctrl+a");
  type_text("3");
  screenshot("picture-still-cropped");
  press("alt+m");
  answer_message(success_text, "Cancel");
  EXPECT_EQ(code_of(folder_.path("round.m2v")), aspect_code::narrow);
  const wxImage still = first_of(folder_.path("round.m2v"));
  EXPECT_EQ(still.GetSize(), wxSize(720, 576));
  EXPECT_NEAR(roundness(still, 4 / 3.0), 1, 0.03);
  EXPECT_THAT(colour_of(still, 0.5, 0.02), is_near({255, 0, 0}));
  EXPECT_EQ(user_settings()->get("framecount"), "3");
}

TEST_F(PictureStills, CmykPictureIsOfferedBehindItsRefusal) {
  const std::string print =
      draw("print.jpg", "-size 720x480 'xc:rgb(200,30,60)' -colorspace CMYK -quality 100");
  click_menu("menus", "create m2v still");
  answer_file("select a 720x480 or 720x576 jpeg image", print);
  answer_message("\"" + print +
                     "\" cannot be used: it has CMYK colours, which jpeg2yuv cannot take.  Please "
                     "save it as a plain JPEG (YCbCr colours, 4:2:0).",
                 "OK");
  ASSERT_TRUE(window_comes(dialog));
  ASSERT_TRUE(preview_comes());
  EXPECT_THAT(colour_of(preview(), 0.5, 0.5), is_near({200, 30, 60}, 4));
  EXPECT_EQ(chosen("shape"), "4:3");
  make();
  EXPECT_THAT(colour_of(first_of(folder_.path("print.m2v")), 0.5, 0.5), is_near({200, 30, 60}, 5));
}

TEST_F(PictureStills, CancelLeavesEverythingAsItWas) {
  refuse(draw_circle("photo.jpg", 300, 400));
  press("Escape");
  ASSERT_TRUE(window_goes(dialog));
  EXPECT_TRUE(no_dialog());
  EXPECT_FALSE(file_exists(folder_.path("photo.m2v")));
  EXPECT_FALSE(file_exists(folder_.path("program/process.bat")));
  EXPECT_TRUE(ask_ui([] { return control("List1")->IsEnabled(); }));
}

TEST_F(PictureStills, FileThatIsThereIsReplacedOnlyWhenTheUserAgrees) {
  const std::string photo = draw_circle("photo.png", 400, 300);
  folder_.add("photo.m2v", "kept");
  open_by_drop(photo);
  EXPECT_EQ(place(), folder_.path("photo (2).m2v"));
  click_control("chooseplace", dialog);
  answer_file("save the mpeg2 still", folder_.path("photo.m2v"));
  answer_message("File exists.  Overwrite?", "No");
  answer_file("save the mpeg2 still", folder_.path("photo.m2v"));
  answer_message("File exists.  Overwrite?", "Yes");
  ASSERT_TRUE(eventually([this] { return place() == folder_.path("photo.m2v"); }));
  EXPECT_EQ(folder_.read("photo.m2v"), "kept");
  make();
  EXPECT_EQ(first_of(folder_.path("photo.m2v")).GetSize(), wxSize(720, 480));
}

TEST_F(PictureStills, BrokenPictureIsNamedAndNoWindowComes) {
  const std::string broken = folder_.add("broken.png", "\x89PNG\r\n\x1A\n and then nothing");
  drop({broken});
  answer_message_with("No still can be made of \"" + broken + "\": ", "OK");
  EXPECT_TRUE(no_dialog());
}

TEST_F(PictureStills, SeveralPicturesAreAskedForOneByOne) {
  drop({draw_circle("a.png", 40, 30), draw_circle("b.png", 40, 30)});
  answer_message("Pictures become stills one by one.  Please drop each picture alone.", "OK");
  EXPECT_TRUE(no_dialog());
}

TEST_F(PictureStills, ToolThatFailsIsToldAndLeavesNoStill) {
  replace_tool("gm", "echo 'gm convert: no' >&2\nexit 1\n");
  open_by_drop(draw_circle("photo.png", 400, 300));
  click_control("make", dialog);
  answer_message(failure_text, "Cancel");
  EXPECT_FALSE(file_exists(folder_.path("photo.m2v")));
  EXPECT_FALSE(file_exists(folder_.path("photo.m2v.part")));
  EXPECT_FALSE(file_exists(folder_.path("program/still.jpg")));
}

TEST_F(PictureStills, StoppingLeavesNoFile) {
  replace_tool("jpeg2yuv", "echo $$ > '" + folder_.path("pid") + "'\nexec sleep 300\n");
  open_by_drop(draw_circle("photo.png", 400, 300));
  click_control("make", dialog);
  ASSERT_TRUE(wait_until([this] { return file_size(folder_.path("pid")).value_or(0) > 0; }));
  click_control("stop");
  answer_message("Stop making the still?  No video will be left.", "Yes");
  EXPECT_TRUE(wait_until([] { return control("List1")->IsEnabled(); }));
  EXPECT_FALSE(file_exists(folder_.path("photo.m2v")));
  EXPECT_FALSE(file_exists(folder_.path("photo.m2v.part")));
  EXPECT_FALSE(file_exists(folder_.path("program/still.jpg")));
}

TEST_F(PictureStills, PictureChosenForImportOpensTheSameWindow) {
  const std::string photo = draw_circle("photo.png", 400, 300);
  click_menu("file", "import...");
  answer_file("import films", photo);
  ASSERT_TRUE(window_comes(dialog));
  EXPECT_EQ(chosen("shape"), "4:3");
  press("Escape");
  ASSERT_TRUE(window_goes(dialog));
}

}  // namespace
}  // namespace corvane::testing_support
