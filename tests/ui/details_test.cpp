// What the main window tells of the selected title or menu, and its list of menus.
#include "project/project_file.h"
#include "project/title_rows.h"
#include "ui/findings_fixture.h"
#include "ui/first_pictures.h"
#include "ui/gtk_sight.h"
#include "ui/main_window.h"
#include "ui/project_view.h"
#include "ui/video/video_picture.h"
#include "ui/widgets/layout.h"
#include "ui/widgets/wx_text.h"

#include <gmock/gmock.h>
#include <wx/listbox.h>
#include <wx/textctrl.h>

#include <atomic>
#include <chrono>
#include <filesystem>
#include <memory>
#include <thread>

namespace corvane::testing_support {
namespace {

using testing::ElementsAre;
using testing::HasSubstr;
using testing::IsEmpty;
using testing::Not;
using testing::StartsWith;

class Details : public findings_test {
 protected:
  static std::string told() {
    return ask_ui([] {
      const auto* const text = dynamic_cast<wxTextCtrl*>(wxWindow::FindWindowByName("itemdetails"));
      return text == nullptr ? std::string() : utf8_of(text->GetValue());
    });
  }
  static bool tells(const std::string& piece) {
    return eventually([&] { return told().find(piece) != std::string::npos; });
  }
  static const video_picture& picture() {
    return dynamic_cast<const video_picture&>(*control("itempicture"));
  }
  /// Size of the picture that is shown; 0 x 0 when there is none.
  static wxSize picture_size() {
    return ask_ui([] {
      return picture().IsShown() && picture().shown_picture().IsOk()
                 ? picture().shown_picture().GetSize()
                 : wxSize(0, 0);
    });
  }
  static bool picture_becomes(wxSize size) {
    return eventually([size] { return picture_size() == size; });
  }
  static wxListBox& menus() { return dynamic_cast<wxListBox&>(*control("menuslist")); }
  static std::vector<std::string> menu_rows() {
    return ask_ui([] {
      std::vector<std::string> all;
      for (const wxString& row : menus().GetStrings())
        all.push_back(utf8_of(row));
      return all;
    });
  }
  static int selected_menu() {
    return ask_ui([] { return menus().GetSelection(); });
  }
  static wxPoint middle_of_menu(int row) {
    const wxRect place = ask_ui([] { return menus().GetScreenRect(); });
    const int height = ask_ui([] { return list_row_height(menus()); });
    return {place.x + 40, place.y + 3 + height * row + height / 2};
  }
  static std::string focus() {
    return ask_ui([] {
      const wxWindow* const focus = wxWindow::FindFocus();
      return focus == nullptr ? std::string() : utf8_of(focus->GetName());
    });
  }
  /// A title of real streams, and the menus of `project_with_menus`.
  project real_project() {
    project p = project_with_menus(2);
    p.List11[0] = stored_from_native(real_video()) + "/" + stored_from_native(real_audio());
    p.languagetags = {"Audio tag:\tENGLISH EN"};
    p.postinfo = {"call menu 2              ", "<none>                   "};
    rebuild_List1(p);
    return p;
  }
  /// Until the files have been looked at: the line of what was found moves the lists.
  void load_and_wait(const project& p) {
    load(p);
    EXPECT_TRUE(wait_until([] { return is_seen("findingstext"); }));
    EXPECT_TRUE(wait_until([] { return wxWindow::FindWindowByName("itemdetails") != nullptr; }));
  }
};

TEST_F(Details, WithoutATitleSayWhatToDo) {
  EXPECT_TRUE(tells("Add a title: click \"add title\""));
  EXPECT_EQ(picture_size(), wxSize(0, 0));
  EXPECT_TRUE(ask_ui([] { return wxWindow::FindWindowByName("menuslist") == nullptr; }));
}

TEST_F(Details, OfTheSelectedTitleAreToldWithItsPicture) {
  load_and_wait(real_project());
  EXPECT_TRUE(tells("Select a title or a menu")) << told();
  click_row(0, "main");
  EXPECT_TRUE(tells("picture: 720x480, NTSC, 4:3")) << told();
  EXPECT_THAT(told(), StartsWith("title 1\nlength: about 3 s, "));
  EXPECT_THAT(told(), HasSubstr("\naudio: English, AC-3, 48 kHz, 2 channels, 192 kb/s\n"));
  EXPECT_THAT(told(), HasSubstr("\nchapters: none but the beginning\nthen: menu 2"));
  EXPECT_TRUE(picture_becomes({720, 480}));
  screenshot("details-title");
  click_row(1, "main");
  EXPECT_TRUE(tells("the file b.m2v is in no format that is known")) << told();
  EXPECT_TRUE(picture_becomes({0, 0})) << "a file that is no video has none";
}

TEST_F(Details, FollowTheKeysFromTitleToTitle) {
  load_and_wait(real_project());
  click_row(0, "main");
  ASSERT_TRUE(tells("title 1"));
  press("Down");
  EXPECT_TRUE(tells("title 2"));
  press("Up");
  EXPECT_TRUE(tells("title 1"));
  press("alt+Down");
  EXPECT_TRUE(tells("title 2\nlength: about 3 s")) << "it moved, and is still selected";
  press("ctrl+z");
  EXPECT_TRUE(tells("title 1\nlength: about 3 s")) << told();
}

TEST_F(Details, ShowTheListOfMenusOnlyWhenThereAreSome) {
  load_and_wait(real_project());
  EXPECT_THAT(menu_rows(),
              ElementsAre("menu 1: intro.m2v, 2 buttons", "menu 2: second.m2v, no buttons"));
  EXPECT_TRUE(ask_ui([] { return menus().IsShownOnScreen(); }));
  for (const char* const name : {"menuslist", "itempanel", "itempicture", "itemdetails"})
    EXPECT_EQ(ask_ui([name] { return accessible_name(*control(name)); }), name);
  on_ui(
      [this] { window_->CallAfter([this] { window_->run("new project", newproject_command); }); });
  EXPECT_TRUE(eventually([] { return menu_rows().empty(); }));
  EXPECT_FALSE(ask_ui([] { return menus().IsShown(); }));
}

TEST_F(Details, OfTheSelectedMenuAreToldWithItsPicture) {
  load_and_wait(real_project());
  click_at(middle_of_menu(0));
  EXPECT_TRUE(tells("buttons: 2: exit; title 1")) << told();
  EXPECT_THAT(told(), StartsWith("menu 1\n"));
  EXPECT_TRUE(picture_becomes({720, 480}));
  screenshot("details-menu");
  press("Down");
  EXPECT_TRUE(tells("menu 2"));
  EXPECT_THAT(told(), HasSubstr("audio: none\n"));
  click_row(1, "main");
  EXPECT_TRUE(tells("title 2")) << "the list that has the keys";
  press("Tab");
  press("Tab");
  press("Tab");
  EXPECT_EQ(focus(), "menuslist");
  EXPECT_TRUE(tells("menu 2"));
  press("Tab");
  EXPECT_EQ(focus(), "itemdetails");
  EXPECT_TRUE(tells("menu 2"));
}

TEST_F(Details, ADoubleClickOnAMenuOpensItAndTheKeysComeBack) {
  load_and_wait(real_project());
  double_click_at(middle_of_menu(1));
  ASSERT_TRUE(window_comes("tsmenu"));
  EXPECT_EQ(window_->shown_project().indexer, 2);
  close("tsmenu");
  EXPECT_TRUE(window_goes("tsmenu"));
  EXPECT_TRUE(eventually([] { return focus() == "menuslist"; })) << focus();
  EXPECT_TRUE(tells("menu 2"));
  press("Up");
  press("Return");
  ASSERT_TRUE(window_comes("tsmenu"));
  EXPECT_EQ(window_->shown_project().indexer, 1);
  close("tsmenu");
  EXPECT_TRUE(window_goes("tsmenu"));
}

TEST_F(Details, DeleteRemovesTheSelectedMenuAndUndoBringsItBack) {
  load_and_wait(real_project());
  click_at(middle_of_menu(0));
  press("Delete");
  EXPECT_TRUE(eventually([] { return menu_rows().size() == 1; }));
  EXPECT_THAT(menu_rows(), ElementsAre("menu 1: second.m2v, no buttons"));
  EXPECT_EQ(selected_menu(), 0) << "the next one is selected";
  EXPECT_TRUE(tells("menu 1\n"));
  EXPECT_THAT(told(), HasSubstr("buttons: none"));
  press("Delete");
  EXPECT_TRUE(eventually([] { return menu_rows().empty(); }));
  EXPECT_TRUE(eventually([] { return focus() == "List1"; })) << "the list of menus has gone";
  const std::size_t titles = rows().size();
  press("Delete");  // as one that is held goes on
  EXPECT_FALSE(top_dialog()) << "no title is to be removed";
  EXPECT_EQ(rows().size(), titles);
  press("ctrl+z");
  press("ctrl+z");
  EXPECT_TRUE(eventually([] { return menu_rows().size() == 2; }));
}

TEST_F(Details, AMenuHasAMenuOfItsOwn) {
  load_and_wait(real_project());
  right_click_at(middle_of_menu(1));
  EXPECT_TRUE(tells("menu 2"));
  for (const char* const item : {"edit menu...", "add menu...", "remove menu"})
    EXPECT_TRUE(wait_until([item] { return find_label(item, label_place::menu).has_value(); }))
        << item;
  click_menu_item("remove menu");
  EXPECT_TRUE(eventually([] { return menu_rows().size() == 1; }));
  EXPECT_EQ(window_->shown_project().menulist.size(), 1u);
}

TEST_F(Details, AreExactOnceTheFilesWereRead) {
  load_and_wait(real_project());
  click_row(0, "main");
  ASSERT_TRUE(tells("length: about 3 s"));
  press("ctrl+k");
  ASSERT_TRUE(window_comes(dialog));
  EXPECT_TRUE(tells("length: 3")) << told();
  EXPECT_TRUE(tells(" on average")) << told();
  close(dialog);
  EXPECT_TRUE(window_goes(dialog));
}

TEST_F(Details, TellOfAFileThatHasGoneAndComesBack) {
  project p = real_project();
  const std::string video = folder_.path("own.m2v");
  std::filesystem::copy_file(real_video(), video);
  p.List11[0] = stored_from_native(video) + "/" + stored_from_native(real_audio());
  rebuild_List1(p);
  load_and_wait(p);
  click_row(0, "main");
  ASSERT_TRUE(tells("picture: 720x480, NTSC, 4:3"));
  ASSERT_TRUE(picture_becomes({720, 480}));
  std::filesystem::rename(video, folder_.path("elsewhere.m2v"));
  press("Down");
  press("Up");
  EXPECT_TRUE(tells("picture: the file own.m2v is missing")) << told();
  EXPECT_TRUE(picture_becomes({0, 0}));
  std::filesystem::copy_file(real_pal_video(), video);
  press("Down");
  press("Up");
  EXPECT_TRUE(tells("picture: 720x576, PAL, 4:3")) << told();
  EXPECT_TRUE(picture_becomes({720, 576})) << "the picture is that of the new file";
}

TEST_F(Details, GiveWayWhenThereIsLittleWidth) {
  load_and_wait(real_project());
  click_row(0, "main");
  ASSERT_TRUE(tells("title 1"));
  const auto width_of = [](const char* name) {
    return ask_ui([name] { return control(name)->GetSize().x; });
  };
  const int view = ask_ui([] { return control("itempanel")->GetParent()->GetSize().x; });
  EXPECT_GE(width_of("Frame1") * 2, view - 40) << "the lists keep half";
  EXPECT_GT(width_of("itempanel"), view / 3);
  on_ui([] {
    wxWindow* const inner = control("itempanel")->GetParent();
    inner->SetSize(inner->FromDIP(layout::details_from_width) - 1, inner->GetSize().y);
    inner->Layout();
  });
  EXPECT_FALSE(ask_ui([] { return control("itempanel")->IsShown(); }));
  const int narrow = ask_ui([] { return control("itempanel")->GetParent()->GetSize().x; });
  EXPECT_GT(width_of("Frame1"), narrow - 40);
}

// Pictures, without the window around them; in its thread.
class FirstPictures : public Details {
 protected:
  void SetUp() override {
    Details::SetUp();
    on_ui([this] { pictures_ = std::make_unique<first_pictures>([this] { ++came_; }); });
  }
  void TearDown() override {
    on_ui([this] { pictures_.reset(); });
    Details::TearDown();
  }
  std::string copy_of_video(const std::string& name) const {
    std::filesystem::copy_file(real_video(), folder_.path(name));
    return folder_.path(name);
  }
  bool is_known(const std::string& path) const {
    return ask_ui([&] { return pictures_->find(path) != nullptr; });
  }
  void want(const std::string& path) const {
    on_ui([&] { pictures_->want(path); });
  }
  void get(const std::string& path) const {
    const int before = came_;
    want(path);
    EXPECT_TRUE(eventually([&] { return ask_ui([this] { return came_.load(); }) > before; }));
  }

  std::unique_ptr<first_pictures> pictures_;
  std::atomic<int> came_ = 0;
};

TEST_F(FirstPictures, OfWhatIsPassedByAreNotDecoded) {
  const std::string first = copy_of_video("1.m2v"), second = copy_of_video("2.m2v");
  on_ui([&] {
    pictures_->want(first);
    pictures_->want(second);
  });
  EXPECT_TRUE(eventually([&] { return is_known(second); }));
  EXPECT_FALSE(is_known(first));
  EXPECT_EQ(came_, 1);
}

TEST_F(FirstPictures, AreKeptForTheLastFewAsLongAsTheirFilesStay) {
  std::vector<std::string> files;
  for (int i = 0; i < 7; ++i)
    files.push_back(copy_of_video(std::to_string(i) + ".m2v"));
  for (const std::string& file : files)
    get(file);
  EXPECT_FALSE(is_known(files[0])) << "six are kept";
  EXPECT_TRUE(is_known(files[1]));
  std::filesystem::resize_file(files[1], 100'000);
  EXPECT_TRUE(is_known(files[1])) << "one that is being written is not decoded again and again";
  on_ui([this] { pictures_->look_again(); });
  EXPECT_FALSE(is_known(files[1])) << "it may show another picture now";
}

TEST_F(FirstPictures, OfAFileWithoutThereIsNone) {
  const std::string text = folder_.add("text.m2v", "no video");
  get(text);
  ASSERT_TRUE(is_known(text));
  EXPECT_FALSE(ask_ui([&] { return pictures_->find(text)->image.IsOk(); }));
}

TEST_F(FirstPictures, ThatAreBeingDecodedAreWaitedForAtTheEnd) {
  want(copy_of_video("1.m2v"));
  std::this_thread::sleep_for(std::chrono::milliseconds(155));
  on_ui([this] { pictures_.reset(); });
  EXPECT_EQ(came_, 0);
}

}  // namespace
}  // namespace corvane::testing_support
