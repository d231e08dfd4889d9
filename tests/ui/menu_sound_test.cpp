// The sound of a menu in its editor. SDL's driver that writes into a file takes down what is heard,
// in the time that hearing it takes.
#include "platform/files/files.h"
#include "support/environment_variable.h"
#include "support/tone.h"
#include "ui/menu_editor_fixture.h"

#include <wx/checkbox.h>
#include <wx/slider.h>

#include <chrono>
#include <cstring>
#include <optional>
#include <thread>

namespace corvane::testing_support {
namespace {

const char* const a_button = " 100/ 100/ 300/ 160/exit/yellow/white";

class MenuSound : public menu_editor_test {
 protected:
  void open_with_sound(const std::string& audio) { open_with(real_video(), audio); }
  void open_long() { open_with(real_long_video(), real_changing_audio()); }
  void open_with(const std::string& video, const std::string& audio) {
    add_menu(video, {a_button}, audio);
    open();
    on_ui([] { control("MediaPlayer1")->SetFocus(); });
  }
  static void wait(int milliseconds) {
    std::this_thread::sleep_for(std::chrono::milliseconds(milliseconds));
  }
  static int picture() {
    return ask_ui([] { return dynamic_cast<wxSlider*>(control("position"))->GetValue(); });
  }
  static double seconds_of_picture(int number) { return number * 1001 / 30000.0; }
  static bool comes_to(int number) {
    return wait_until(
        [number] { return dynamic_cast<wxSlider*>(control("position"))->GetValue() >= number; });
  }
  static bool plays_on() { return comes_to(picture() + 5); }

  /// The left side of what was heard since it began last.
  std::vector<std::int16_t> heard() const {
    const auto bytes = read_file(file_, 64 << 20);
    std::vector<std::int16_t> samples(bytes ? bytes->size() / 2 : 0);
    if (!samples.empty())
      std::memcpy(samples.data(), bytes->data(), 2 * samples.size());
    return channel_of(samples, 0);
  }
  bool is_heard() const {
    return wait_until([this] { return loudest(heard()) > 2'000; }, 5);
  }
  bool goes_silent() const {
    wait(300);  // what was begun when it was stopped
    const std::size_t now = heard().size();
    wait(400);
    return heard().size() == now;
  }
  /// Hertz of the first tenth of a second that is heard.
  double first_tone() const {
    const std::vector<std::int16_t> all = heard();
    const std::size_t begin = first_loud(all);
    return begin + 4'800 <= all.size() ? frequency_of(std::span(all).subspan(begin, 4'800)) : 0;
  }
  static std::string tip() {
    return ask_ui([] { return std::string(control("sound")->GetToolTipText().utf8_str()); });
  }
  static bool is_ticked() {
    return ask_ui([] { return dynamic_cast<wxCheckBox*>(control("sound"))->GetValue(); });
  }

  std::string file_ = folder_.path("heard.raw");
  environment_variable driver_{"SDL_AUDIODRIVER", "disk"};
  environment_variable to_{"SDL_DISKAUDIOFILE", file_};
};

TEST_F(MenuSound, IsHeardAsLongAsTheMenuPlays) {
  open_with_sound(real_audio());
  EXPECT_TRUE(is_enabled("sound"));
  EXPECT_TRUE(is_ticked());
  wait(300);
  EXPECT_FALSE(file_exists(file_));
  press("space");
  EXPECT_TRUE(plays_on());
  EXPECT_TRUE(is_heard());
  press("space");
  EXPECT_TRUE(goes_silent());
  const std::vector<std::int16_t> all = heard();
  EXPECT_LT(first_loud(all), 4'800u);
  EXPECT_NEAR(frequency_of(all), 440, 2);
  screenshot("menu-sound");
}

TEST_F(MenuSound, BeginsWhereThePictureStands) {
  open_long();
  on_ui([] { control("position")->SetFocus(); });
  for (int i = 0; i < 5; ++i)
    press("Next");
  const double from = seconds_of_picture(picture());
  ASSERT_GT(from, 1.5);
  ASSERT_LT(from, 2.7);
  on_ui([] { control("MediaPlayer1")->SetFocus(); });
  press("space");
  EXPECT_TRUE(wait_until([this] { return heard().size() > 90'000; }));
  press("space");
  EXPECT_TRUE(goes_silent());
  const std::vector<std::int16_t> all = heard();
  const std::size_t begin = first_loud(all);
  EXPECT_LT(begin, 4'800u);
  EXPECT_NEAR(first_tone(), 440, 2);
  constexpr std::size_t window = 2'400;
  std::size_t change = begin;
  while (change + window < all.size() && frequency_of(std::span(all).subspan(change, window)) < 660)
    change += 240;
  const std::size_t middle = change - begin + window / 2;
  EXPECT_NEAR(static_cast<double>(middle) / 48'000, 3 - from, 0.1);
}

TEST_F(MenuSound, GoesOnFromThePictureAfterAPause) {
  open_long();
  press("space");
  EXPECT_TRUE(is_heard());
  EXPECT_TRUE(comes_to(95));
  press("space");
  EXPECT_TRUE(goes_silent());
  EXPECT_NEAR(first_tone(), 440, 2);
  press("space");
  EXPECT_TRUE(wait_until([this] { return first_tone() > 800; }));
  press("space");
  EXPECT_NEAR(first_tone(), 880, 4);
}

TEST_F(MenuSound, EndsWithTheFilm) {
  open_with_sound(real_audio());
  press("space");
  EXPECT_TRUE(is_heard());
  EXPECT_TRUE(comes_to(89));
  EXPECT_TRUE(goes_silent());
  // And again, from the beginning of both.
  press("space");
  EXPECT_TRUE(wait_until([this] { return heard().size() > 9'000; }));
  press("space");
  EXPECT_TRUE(goes_silent());
  EXPECT_LT(heard().size(), 120'000u);
  EXPECT_NEAR(first_tone(), 440, 2);
}

TEST_F(MenuSound, EndsWhenAButtonIsDragged) {
  open_with_sound(real_audio());
  press("space");
  EXPECT_TRUE(is_heard());
  drag(on_picture(200, 130), on_picture(260, 140));
  EXPECT_TRUE(goes_silent());
  discard();
}

TEST_F(MenuSound, EndsWhenTheEditorCloses) {
  open_with_sound(real_audio());
  press("space");
  EXPECT_TRUE(is_heard());
  close();
  EXPECT_TRUE(goes_silent());
}

TEST_F(MenuSound, IsTurnedOffAndOnWhileTheMenuPlays) {
  open_long();
  press("space");
  EXPECT_TRUE(is_heard());
  click_control("sound");
  EXPECT_TRUE(wait_until([] { return !dynamic_cast<wxCheckBox*>(control("sound"))->GetValue(); }));
  EXPECT_TRUE(plays_on());
  const std::size_t then = heard().size();
  EXPECT_TRUE(comes_to(95));
  EXPECT_EQ(heard().size(), then);
  click_control("sound");
  EXPECT_TRUE(wait_until([this] { return first_tone() > 800; }));
  EXPECT_NEAR(first_tone(), 880, 4);
}

TEST_F(MenuSound, StaysTurnedOff) {
  open_with_sound(real_audio());
  click_control("sound");
  EXPECT_FALSE(is_ticked());
  EXPECT_EQ(prefs_.get("menusound"), "no");
  close();
  open();
  EXPECT_FALSE(is_ticked());
  EXPECT_TRUE(is_enabled("sound"));
  on_ui([] { control("MediaPlayer1")->SetFocus(); });
  press("space");
  EXPECT_TRUE(plays_on());
  EXPECT_FALSE(file_exists(file_));
  click_control("sound");
  EXPECT_TRUE(is_heard());
  EXPECT_EQ(prefs_.get("menusound"), "yes");
}

TEST_F(MenuSound, IsTurnedOffByKeys) {
  open_with_sound(real_audio());
  const auto is_there = [] { return wxWindow::FindFocus() == control("sound"); };
  on_ui([] { control("position")->SetFocus(); });
  press("Tab");
  ASSERT_TRUE(wait_until(is_there));
  press("space");
  EXPECT_TRUE(wait_until([] { return !dynamic_cast<wxCheckBox*>(control("sound"))->GetValue(); }));
}

TEST_F(MenuSound, IsNotOfferedWhereTheMenuHasNone) {
  open_with_sound("");
  EXPECT_TRUE(is_shown("sound"));
  EXPECT_FALSE(is_enabled("sound"));
  EXPECT_FALSE(is_ticked());
  EXPECT_EQ(tip(), "the menu has no sound");
  press("space");
  EXPECT_TRUE(plays_on());
  EXPECT_FALSE(file_exists(file_));
}

TEST_F(MenuSound, ThatCannotBeDecodedIsToldQuietly) {
  open_with_sound(folder_.add("broken.ac3", "This is no sound.\n"));
  EXPECT_TRUE(wait_until([] { return !control("sound")->IsEnabled(); }));
  EXPECT_EQ(tip(), "the menu's sound is not heard: it is not a file with video or sound");
  press("space");
  EXPECT_TRUE(plays_on());
  EXPECT_TRUE(no_dialog());
}

class MenuSoundWithoutADevice : public MenuSound {
 protected:
  environment_variable none_{"SDL_AUDIODRIVER", "nonsense"};
};

TEST_F(MenuSoundWithoutADevice, PicturesPlay) {
  open_with_sound(real_audio());
  wait(500);  // it has been decoded by then
  press("space");
  EXPECT_TRUE(plays_on());
  EXPECT_TRUE(no_dialog());
  EXPECT_EQ(tip(), "the menu's sound is not heard: this computer can play no sound at the moment");
  EXPECT_TRUE(is_enabled("sound"));
}

TEST_F(MenuSound, IsHeardOnceTheDeviceIsThere) {
  open_with_sound(real_audio());
  {
    const environment_variable nowhere("SDL_DISKAUDIOFILE", folder_.path("no/such/folder/heard"));
    wait(500);  // it has been decoded by then
    press("space");
    EXPECT_TRUE(plays_on());
    EXPECT_EQ(tip(),
              "the menu's sound is not heard: this computer can play no sound at the moment");
    press("space");
  }
  press("space");
  EXPECT_TRUE(is_heard());
  EXPECT_EQ(tip(), "the menu's sound is heard while it plays");
}

}  // namespace
}  // namespace corvane::testing_support
