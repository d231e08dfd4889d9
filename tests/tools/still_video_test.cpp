// The whole conversation of the still video and its script, with a launcher that starts nothing.
#include "tools/still_video.h"

#include "platform/files/program_folder.h"
#include "project/missing_tools.h"
#include "support/command_test.h"
#include "support/recorded_start.h"

#include <filesystem>
#include <map>

namespace corvane {
namespace {

using testing_support::recording_launcher;
using testing_support::recording_listener;
using testing_support::rows;

class known_sizes : public picture_loader {
 public:
  result<pixel_size> size_of(const std::string& file) const override {
    const auto known = sizes.find(file);
    return known == sizes.end() ? result<pixel_size>::fail("it is no picture")
                                : result<pixel_size>::ok(known->second);
  }
  std::map<std::string, pixel_size> sizes;
};

/// The head of a JPEG file whose components have these sampling factors.
std::string jpeg_head(const std::string& factors) {
  std::string frame = {'\x08', '\x01', '\xE0', '\x02', '\xD0', static_cast<char>(factors.size())};
  for (const char f : factors)
    frame += {'\x01', f, '\0'};
  return std::string("\xFF\xD8\xFF\xC0\0", 5) + static_cast<char>(frame.size() + 2) + frame;
}

const std::string plain_jpeg = jpeg_head("\x22\x11\x11") + "\xFF\xD9";

class StillVideo : public testing_support::command_test {
 protected:
  StillVideo() {
    for (const char* const name : {"jpeg2yuv", "mpeg2enc"}) {
      const std::string file = folder.add(std::string("app/bin/") + name + ".exe");
      std::filesystem::permissions(path_of(file), std::filesystem::perms::all);
    }
    prefs.set("framecount", "1");
    out = folder.path("menu.m2v");
  }

  std::string add_jpeg(const std::string& name, int width, int height) {
    const std::string file = folder.add(name, plain_jpeg);
    pictures.sizes[file] = {width, height};
    return file;
  }
  void expect_jpeg(const std::string& native) {
    ask.expect_open(
        {"select a 720x480 or 720x576 jpeg image", "jpg still(*.jpg, *.jpeg)|*.jpg;*.jpeg", ""},
        native);
  }
  void expect_compliant() {
    ask.expect(box("image appears to be compliant.  Please select where to save the m2v still",
                   icon::information));
  }
  void expect_save(const std::string& native) {
    ask.expect_save({"save the mpeg2 still", "mpeg2 still(*.m2v)|*.m2v", ""}, native);
  }
  void expect_frames(const std::string& stored, const std::string& reply) {
    ask.expect_input({"m2v still framecount",
                      "Set the number of frames encoded for the m2v still creation.\r\nSee the "
                      "readme for more information.\r\ndefault is: 1",
                      stored},
                     reply);
  }
  /// The questions up to the frame count.
  void expect_questions(const std::string& jpeg, const std::string& m2v) {
    expect_jpeg(jpeg);
    expect_compliant();
    expect_save(m2v);
  }
  std::string script() { return folder.read("app/process.bat"); }
  bool script_written() { return file_exists(folder.path("app/process.bat")); }

  std::string app = folder.path("app");
  std::string out;
  bool made = (make_folders(app), true);
  known_sizes pictures;
  folder_lock lock{app};
  recording_listener listener;
  recording_launcher launcher;
  shelled runner{listener, ask, launcher, lock, app};
  still_equipment e{app, lock, runner, pictures};
};

/// The same, with a program that makes refused pictures right.
class RefusedStill : public StillVideo {
 protected:
  RefusedStill() {
    e.make_right = [this](const std::string& picture) {
      EXPECT_TRUE(ask.all_asked()) << "the refusal comes first";
      offered.push_back(picture);
    };
  }
  static std::string cannot_be_used(const std::string& file, const std::string& why) {
    return "\"" + file + "\" cannot be used: " + why + ".";
  }
  /// The command with this picture, which is refused with this message.
  void refuse(const std::string& file, const std::string& message) {
    expect_jpeg(file);
    expect_refusal(message);
    EXPECT_EQ(still_command(doc, e), still_result::refused);
    EXPECT_FALSE(script_written());
  }
  rows offered;
};

// The script -------------------------------------------------------------------------------------

TEST(StillScript, OfAnNtscPictureOnWindows) {
  EXPECT_EQ(
      still_script("C:\\Program Files\\Corvane",
                   {"D:\\my pictures\\menu.jpg", "D:\\out\\menu.m2v", 480, 1}, path_style::windows),
      "@echo off\r\n"
      "echo *creating m2v still\r\n"
      "\"C:\\Program Files\\Corvane\\bin\\jpeg2yuv.exe\" -n 1 -I p -f 29.97 -j "
      "\"D:\\my pictures\\menu.jpg\" | \"C:\\Program Files\\Corvane\\bin\\mpeg2enc.exe\" -f 8 "
      "-n n -o \"D:\\out\\menu.m2v\"\r\n"
      "echo *process complete\r\n");
}

TEST(StillScript, OfAPalPictureOnLinux) {
  EXPECT_EQ(
      still_script("/home/anna/.local/share/corvane",
                   {"/home/anna/men\xC3\xBC & more.jpeg", "/home/anna/men\xC3\xBC.m2v", 576, 15},
                   path_style::posix),
      "@echo off\r\n"
      "echo *creating m2v still\r\n"
      "\"/home/anna/.local/share/corvane/bin/jpeg2yuv.exe\" -n 15 -I p -f 25 -j "
      "\"/home/anna/men\xC3\xBC & more.jpeg\" | "
      "\"/home/anna/.local/share/corvane/bin/mpeg2enc.exe\" -f 8 -n p -o "
      "\"/home/anna/men\xC3\xBC.m2v\"\r\n"
      "echo *process complete\r\n");
}

TEST(StillScript, PercentSignOfThePicturesNameIsDoubledForJpeg2yuv) {
  const std::string text =
      still_script("/50%", {"/50% of %d.jpg", "/100%.m2v", 480, 1}, path_style::posix);
  EXPECT_NE(text.find(" -j \"/50%% of %%d.jpg\" | \"/50%/bin/"), std::string::npos) << text;
  EXPECT_NE(text.find(" -o \"/100%.m2v\"\r\n"), std::string::npos) << text;
}

// The conversation -------------------------------------------------------------------------------

TEST_F(StillVideo, WritesTheScriptClearsAndShowsTheLogAndRunsIt) {
  const std::string jpeg = add_jpeg("menu.jpg", 720, 480);
  expect_questions(jpeg, out);
  expect_frames("1", "1");
  EXPECT_EQ(still_command(doc, e), still_result::started);
  EXPECT_EQ(script(), still_script(app, {jpeg, out, 480, 1}));
  EXPECT_EQ(launcher.started, rows{"bin/conspawn.exe \"" + join_path(app, "process.bat") + "\""});
  ASSERT_EQ(listener.starts.size(), 1u);
  EXPECT_EQ(listener.starts[0].first_lines, "");
  EXPECT_EQ(listener.starts[0].steps, 2);
  EXPECT_TRUE(lock.held());
}

TEST_F(StillVideo, PalPictureWithFramecount15GivesItsArguments) {
  const std::string jpeg = add_jpeg("menu.jpg", 720, 576);
  expect_questions(jpeg, out);
  expect_frames("1", "15");
  EXPECT_EQ(still_command(doc, e), still_result::started);
  EXPECT_NE(script().find(" -n 15 -I p -f 25 -j "), std::string::npos);
  EXPECT_NE(script().find(" -f 8 -n p -o "), std::string::npos);
  EXPECT_EQ(prefs.get("framecount"), "15");
}

TEST_F(StillVideo, EarlierScriptIsReplaced) {
  folder.add("app/process.bat", std::string(10000, 'x'));
  expect_questions(add_jpeg("menu.jpg", 720, 480), out);
  expect_frames("1", "1");
  EXPECT_EQ(still_command(doc, e), still_result::started);
  EXPECT_TRUE(script().starts_with("@echo off\r\n"));
  EXPECT_TRUE(script().ends_with("echo *process complete\r\n"));
}

TEST_F(StillVideo, NoPictureChosenEndsInSilence) {
  expect_jpeg("");
  EXPECT_EQ(still_command(doc, e), still_result::cancelled);
  EXPECT_FALSE(script_written());
}

TEST_F(StillVideo, PicturesOfAnotherSizeAreRefused) {
  for (const auto& [width, height] :
       {std::pair{704, 480}, {720, 481}, {720, 540}, {480, 720}, {1440, 960}}) {
    expect_jpeg(add_jpeg("menu.jpg", width, height));
    expect_refusal("jpg is not 720x480 or 720x576");
    EXPECT_EQ(still_command(doc, e), still_result::refused);
    EXPECT_TRUE(ask.all_asked()) << width << "x" << height;
  }
  EXPECT_FALSE(script_written());
}

TEST_F(StillVideo, AFileThatIsNoPictureIsRefusedWithItsReason) {
  const std::string file = folder.add("menu.jpg");
  expect_jpeg(file);
  expect_refusal("\"" + file + "\" cannot be used: it is no picture.");
  EXPECT_EQ(still_command(doc, e), still_result::refused);
}

TEST_F(StillVideo, APictureThatJpeg2yuvCannotTakeIsRefusedBeforeTheRun) {
  const std::string advice =
      ", which jpeg2yuv cannot take.  Please save it as a plain JPEG (YCbCr colours, 4:2:0).";
  const std::pair<std::string, std::string> cases[] = {
      {jpeg_head("\x11\x11\x11\x11"), "it has CMYK colours"},
      {jpeg_head("\x41\x11\x11"), "it has the sampling factors 4x1, 1x1, 1x1"},
      {"\x89PNG", "it is not a JPEG file"}};
  for (const auto& [bytes, why] : cases) {
    const std::string file = folder.add("menu.jpg", bytes);
    pictures.sizes[file] = {720, 480};
    expect_jpeg(file);
    expect_refusal("\"" + file + "\" cannot be used: " + why + advice);
    EXPECT_EQ(still_command(doc, e), still_result::refused);
    EXPECT_TRUE(ask.all_asked()) << why;
  }
  EXPECT_FALSE(script_written());
}

TEST_F(StillVideo, APictureThatIsCutOffIsRefused) {
  const std::string file = folder.add("menu.jpg", jpeg_head("\x22\x11\x11"));
  pictures.sizes[file] = {720, 480};
  expect_jpeg(file);
  expect_refusal("\"" + file +
                 "\" cannot be used: it is cut off; the rest of the picture is missing.");
  EXPECT_EQ(still_command(doc, e), still_result::refused);
  EXPECT_FALSE(script_written());
}

TEST_F(StillVideo, CancellingTheSaveDialogStillAsksForAndStoresTheFrameCount) {
  expect_questions(add_jpeg("menu.jpg", 720, 480), "");
  expect_frames("1", "25");
  EXPECT_EQ(still_command(doc, e), still_result::cancelled);
  EXPECT_EQ(prefs.get("framecount"), "25");
  EXPECT_FALSE(script_written());
  EXPECT_TRUE(launcher.started.empty());
  EXPECT_FALSE(lock.held());
}

TEST_F(StillVideo, AnEmptyFrameCountIsAskedForAgainWithTheStoredOne) {
  prefs.set("framecount", "12");
  expect_questions(add_jpeg("menu.jpg", 720, 480), out);
  expect_frames("12", "");
  expect_frames("12", "  ");
  expect_frames("12", "30");
  EXPECT_EQ(still_command(doc, e), still_result::started);
  EXPECT_EQ(prefs.get("framecount"), "30");
}

TEST_F(StillVideo, WhenTheProgramEndsNothingIsAskedAgain) {
  expect_questions(add_jpeg("menu.jpg", 720, 480), out);
  expect_frames("1", "");
  ask.leave_after_last();
  EXPECT_EQ(still_command(doc, e), still_result::cancelled);
  EXPECT_FALSE(script_written());
  EXPECT_EQ(prefs.get("framecount"), "1");
}

TEST_F(StillVideo, AFrameCountThatIsNoSaneNumberIsToldAndAskedForAgain) {
  expect_questions(add_jpeg("menu.jpg", 720, 480), out);
  for (const char* const text : {"ten", "0", "-3", "1.5", "1 -o x", "100000", "99999999999999"}) {
    expect_frames("1", text);
    expect_refusal("The frame count \"" + std::string(text) +
                   "\" is not a whole number from 1 to 99999.");
  }
  expect_frames("1", " 007 ");
  EXPECT_EQ(still_command(doc, e), still_result::started);
  EXPECT_NE(script().find(" -n 7 -I p "), std::string::npos);
  EXPECT_EQ(prefs.get("framecount"), "7");
}

TEST_F(StillVideo, AnOutputNameThatScriptsCannotHoldIsToldAndAskedForAgain) {
  expect_questions(add_jpeg("menu.jpg", 720, 480), folder.path("a|b.m2v"));
  expect_refusal("\"" + folder.path("a|b.m2v") +
                 "\" cannot be used: its name contains a vertical bar (|).  Please rename it.");
  expect_save(out);
  expect_frames("1", "1");
  EXPECT_EQ(still_command(doc, e), still_result::started);
}

TEST_F(StillVideo, AnExistingFileIsReplacedOnlyWhenTheUserAgrees) {
  const std::string kept = folder.add("kept.m2v", "kept"), replaced = folder.add("replaced.m2v");
  expect_questions(add_jpeg("menu.jpg", 720, 480), kept);
  ask.expect(box("File exists.  Overwrite?", icon::exclamation, buttons::yes_no), answer::no);
  expect_save(replaced);
  ask.expect(box("File exists.  Overwrite?", icon::exclamation, buttons::yes_no), answer::yes);
  expect_frames("1", "1");
  EXPECT_EQ(still_command(doc, e), still_result::started);
  EXPECT_NE(script().find(replaced), std::string::npos);
  EXPECT_EQ(script().find(kept), std::string::npos);
}

TEST_F(StillVideo, ThePictureItselfIsNeverTheOutput) {
  const std::string jpeg = add_jpeg("menu.jpg", 720, 480);
  expect_questions(jpeg, jpeg);
  expect_refusal("The video cannot be written over the picture it is made of.");
  expect_save("");
  expect_frames("1", "1");
  EXPECT_EQ(still_command(doc, e), still_result::cancelled);
  EXPECT_EQ(folder.read("menu.jpg"), plain_jpeg);
}

TEST_F(StillVideo, MissingToolsAreToldBeforeAnythingIsAsked) {
  std::filesystem::remove(path_of(folder.path("app/bin/jpeg2yuv.exe")));
  std::filesystem::remove(path_of(folder.path("app/bin/mpeg2enc.exe")));
  // In the words of the system.
  expect_error(missing_tools(app, {"jpeg2yuv", "mpeg2enc"}));
  EXPECT_EQ(still_command(doc, e), still_result::tool_missing);
}

TEST_F(StillVideo, WhileAnotherRunUsesTheProgramFolderNothingIsWritten) {
  folder_lock other(app);
  ASSERT_TRUE(other.take());
  expect_questions(add_jpeg("menu.jpg", 720, 480), out);
  expect_frames("1", "1");
  expect_error("Another run is using the program folder \"" + app +
               "\".  Please wait until it has finished.");
  EXPECT_EQ(still_command(doc, e), still_result::folder_in_use);
  EXPECT_FALSE(script_written());
}

TEST_F(StillVideo, AScriptThatCannotBeWrittenIsTold) {
  make_folders(folder.path("app/process.bat/in the way"));
  expect_questions(add_jpeg("menu.jpg", 720, 480), out);
  expect_frames("1", "1");
  const failure why = write_file(join_path(app, "process.bat"), "x");
  ASSERT_TRUE(why);
  expect_error("The file \"" + join_path(app, "process.bat") + "\" could not be written: " + *why +
               ".");
  EXPECT_EQ(still_command(doc, e), still_result::not_written);
  EXPECT_FALSE(lock.held());
  EXPECT_TRUE(launcher.started.empty());
}

TEST_F(StillVideo, ARunThatDoesNotStartLetsTheProgramFolderGo) {
  launcher.works = false;
  expect_questions(add_jpeg("menu.jpg", 720, 480), out);
  expect_frames("1", "1");
  expect_error("Binaries not found, please reinstall the program.");
  EXPECT_EQ(still_command(doc, e), still_result::not_started);
  EXPECT_FALSE(lock.held());
}

// Pictures that can be made right ----------------------------------------------------------------

TEST_F(RefusedStill, PictureOfAnotherSizeIsOfferedBehindTheRefusal) {
  const std::string jpeg = add_jpeg("menu.jpg", 4000, 3000);
  refuse(jpeg, "jpg is not 720x480 or 720x576");
  EXPECT_EQ(offered, rows{jpeg});
}

TEST_F(RefusedStill, CmykPictureIsOffered) {
  const std::string file = folder.add("menu.jpg", jpeg_head("\x11\x11\x11\x11"));
  pictures.sizes[file] = {720, 480};
  refuse(file, cannot_be_used(file,
                              "it has CMYK colours, which jpeg2yuv cannot take.  Please save it as "
                              "a plain JPEG (YCbCr colours, 4:2:0)"));
  EXPECT_EQ(offered, rows{file});
}

TEST_F(RefusedStill, PngIsRefusedWithoutAFurtherQuestionAndOffered) {
  const std::string file = folder.add("menu.png", "\x89PNG\r\n\x1A\n");
  refuse(file, cannot_be_used(file, "it is no picture"));
  EXPECT_EQ(offered, rows{file});
}

TEST_F(RefusedStill, WhatIsNoPictureOrIsCutOffIsNotOffered) {
  const std::string text = folder.add("menu.jpg", "a text");
  refuse(text, cannot_be_used(text, "it is no picture"));
  const std::string cut = folder.add("cut.jpg", jpeg_head("\x22\x11\x11"));
  pictures.sizes[cut] = {720, 480};
  refuse(cut, cannot_be_used(cut, "it is cut off; the rest of the picture is missing"));
  EXPECT_EQ(offered, rows());
}

TEST_F(RefusedStill, PictureThatIsRightIsNotOffered) {
  expect_questions(add_jpeg("menu.jpg", 720, 480), "");
  expect_frames("1", "1");
  EXPECT_EQ(still_command(doc, e), still_result::cancelled);
  EXPECT_EQ(offered, rows());
}

// The frame count alone --------------------------------------------------------------------------

TEST(StillFrames, AreKeptAndLimitedToWhatCanBe) {
  memory_settings prefs;
  EXPECT_EQ(stored_still_frames(prefs), 1);
  keep_still_frames(prefs, 25);
  EXPECT_EQ(prefs.get("framecount"), "25");
  EXPECT_EQ(stored_still_frames(prefs), 25);
  for (const auto& [kept, frames] :
       {std::pair("0", 1), {"-3", 1}, {"many", 1}, {"100000", most_still_frames}}) {
    prefs.set("framecount", kept);
    EXPECT_EQ(stored_still_frames(prefs), frames) << kept;
  }
}

TEST_F(StillVideo, FramecountIsAskedForAndStored) {
  expect_frames("1", "ten");
  expect_refusal("The frame count \"ten\" is not a whole number from 1 to 99999.");
  expect_frames("1", "10");
  framecount_command(doc);
  EXPECT_EQ(prefs.get("framecount"), "10");
}

TEST_F(StillVideo, FramecountWithoutAnAnswerStaysAsItIs) {
  prefs.set("framecount", "12");
  expect_frames("12", "");
  framecount_command(doc);
  EXPECT_EQ(prefs.get("framecount"), "12");
}

}  // namespace
}  // namespace corvane
