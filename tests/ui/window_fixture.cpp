#include "ui/window_fixture.h"

#include "platform/files/program_folder.h"
#include "project/menu_rows.h"
#include "project/project_file.h"
#include "project/subtitle_rows.h"
#include "ui/app.h"
#include "ui/gtk_sight.h"
#include "ui/main_window.h"
#include "ui/widgets/wx_text.h"

#include <wx/choice.h>
#include <wx/listbox.h>

#include <algorithm>
#include <chrono>
#include <cstdlib>
#include <filesystem>
#include <functional>
#include <thread>
#include <unistd.h>

namespace corvane::testing_support {
namespace {

/// Media that all window tests share stand beside the programs and are made once, by the test that
/// is first: it moves them there when they are whole, since others may run at the same time.
std::string made(const std::string& name, const std::string& ffmpeg_arguments) {
  const std::filesystem::path folder = path_of(own_executable()).parent_path() /
                                       "window-test-media" /
                                       std::to_string(std::hash<std::string>()(ffmpeg_arguments));
  const std::string path = text_of(folder / name);
  if (!file_exists(path)) {
    std::filesystem::create_directories(folder);
    const std::string begun = text_of(folder / (std::to_string(getpid()) + "-" + name));
    const std::string command =
        "ffmpeg -v error -nostdin " + ffmpeg_arguments + " '" + begun + "' </dev/null";
    EXPECT_EQ(std::system(command.c_str()), 0) << command;
    std::filesystem::rename(path_of(begun), path_of(path));
  }
  return path;
}

}  // namespace

std::string real_video() {
  return made("film.m2v",
              "-f lavfi -i testsrc=size=720x480:rate=30000/1001:duration=3 -c:v mpeg2video "
              "-b:v 3M -maxrate 6M -bufsize 1835k -g 15 -aspect 4:3 -f mpeg2video");
}

std::string real_pal_video() {
  return made("film-pal.m2v",
              "-f lavfi -i testsrc=size=720x576:rate=25:duration=3 -c:v mpeg2video "
              "-b:v 3M -maxrate 6M -bufsize 1835k -g 12 -aspect 4:3 -f mpeg2video");
}

std::string real_wide_video() {
  return made("film-wide.m2v",
              "-f lavfi -i testsrc=size=720x480:rate=30000/1001:duration=2 -c:v mpeg2video "
              "-b:v 3M -maxrate 6M -bufsize 1835k -g 15 -aspect 16:9 -f mpeg2video");
}

std::string real_audio() {
  return made("film.ac3", "-f lavfi -i sine=440:duration=3 -ar 48000 -ac 2 -c:a ac3 -b:a 192k");
}

std::string real_long_video() {
  return made("long.m2v",
              "-f lavfi -i testsrc=size=720x480:rate=30000/1001:duration=10 -c:v mpeg2video "
              "-b:v 3M -maxrate 6M -bufsize 1835k -g 15 -aspect 4:3 -f mpeg2video");
}

std::string real_changing_audio() {
  return made("change.ac3",
              "-f lavfi -i \"aevalsrc='0.3*sin(2*PI*if(lt(t,3),440,880)*t)':s=48000:d=10\" -ac 2 "
              "-c:a ac3 -b:a 192k");
}

void window_test::SetUp() {
  app_ = folder_.path("program");
  // What the window reads of its surroundings belongs to this test alone.
  setenv("CORVANE_HOME", app_.c_str(), 1);
  setenv("XDG_CONFIG_HOME", folder_.path("config").c_str(), 1);
  on_ui([this] {
    std::filesystem::current_path(folder_.path());
    window_ = start_main_window();
    window_->Show();
  });
  // Or a box of the start does, which the test answers.
  ASSERT_TRUE(wait_until([this] { return window_->IsActive() || look_at_dialog(); }))
      << "the window does not come up";
}

void window_test::TearDown() {
  while (const auto dialog = top_dialog()) {
    ADD_FAILURE() << "left open: " << dialog->title << " " << dialog->text;
    press("Escape");
    if (top_dialog())
      std::abort();
  }
  on_ui([] {
    if (wxWindow* window = wxWindow::FindWindowByName("main"))
      window->Close(true);
    std::filesystem::current_path("/");
  });
  EXPECT_TRUE(wait_until([] { return wxTopLevelWindows.empty(); }));
}

void window_test::add_title(const std::string& video, const std::string& audio) {
  click_tool("add title");
  answer_file("select video stream", video);
  if (!audio.empty())
    answer_file("select audio stream", audio);
  EXPECT_TRUE(no_dialog());
}

project window_test::project_with_menus(int titles) {
  project p;
  for (int i = 0; i < titles; ++i) {
    const std::string name(1, static_cast<char>('a' + i));
    file(name + ".m2v");
    file(name + ".ac3");
    p.List11.push_back(folder_.stored(name + ".m2v") + "/" + folder_.stored(name + ".ac3"));
    p.chapters.emplace_back("00:00:00.00");
    p.delay.emplace_back("0");
    p.subtitledata.emplace_back("<none>");
    p.subtitleoptions.push_back(default_subtitleoptions("NTSC"));
  }
  rebuild_List1(p);
  for (const char* name : {"intro.m2v", "second.m2v"})
    std::filesystem::copy_file(real_video(), path_of(folder_.path(name)),
                               std::filesystem::copy_options::overwrite_existing);
  file("intro.ac3");
  p.menulist = {folder_.stored("intro.m2v") + "/" + folder_.stored("intro.ac3"),
                folder_.stored("second.m2v") + "/"};
  p.moremenuoptions = {new_menu_options, new_menu_options};
  p.menubuttons = {" 0/ 0/ 100/ 3/exit/black/black| 0/ 50/ 100/ 53/jump title 1/black/black", ""};
  return p;
}

void window_test::load(const project& p) {
  const std::string path = folder_.add("disc.cvp", project_text(p));
  on_ui([this, path] { window_->CallAfter([this, path] { window_->load(path); }); });
  EXPECT_TRUE(wait_until([&] {
    const project& shown = window_->shown_project();
    return shown.List11 == p.List11 && shown.menulist == p.menulist &&
           shown.jumptable == p.jumptable;
  }));
}

void window_test::close(const std::string& name) {
  on_ui([&] {
    wxWindow* window = control(name);
    window->CallAfter([window] { window->Close(); });
  });
}

void window_test::close_and_wait(const std::string& name) {
  close(name);
  EXPECT_TRUE(window_goes(name));
}

void window_test::choose_entry(const std::string& list, int entry, const std::string& window) {
  on_ui([&] {
    auto* const choice = dynamic_cast<wxChoice*>(control(list, window));
    choice->SetSelection(entry);
    wxCommandEvent chosen(wxEVT_CHOICE, choice->GetId());
    chosen.SetEventObject(choice);
    chosen.SetInt(entry);
    choice->ProcessWindowEvent(chosen);
  });
}

std::vector<std::string> window_test::files_here() const {
  std::vector<std::string> names;
  for (const auto& entry : std::filesystem::directory_iterator(path_of(folder_.path())))
    if (entry.is_regular_file())
      names.push_back(entry.path().filename().string());
  std::sort(names.begin(), names.end());
  return names;
}

void window_test::end_session() {
  on_ui([this] { window_->CallAfter([this] { window_->Close(true); }); });
  std::this_thread::sleep_for(std::chrono::milliseconds(400));
  EXPECT_FALSE(ask_ui([] { return wxWindow::FindWindowByName("main") == nullptr; }));
  EXPECT_TRUE(top_dialog().has_value());
}

void window_test::replace_tool(const std::string& name, const std::string& script) {
  const std::filesystem::path tool = path_of(tool_path(app_, name));
  std::filesystem::remove(tool);
  folder_.add("program/bin/" + name + ".exe", "#!/bin/sh\n" + script);
  std::filesystem::permissions(tool, std::filesystem::perms::owner_all);
}

void window_test::leave_missing_files() {
  if (wait_for_dialog("files have moved"))
    click_button("leave them");
}

void window_test::find_missing_files(const std::string& folder) {
  if (wait_for_dialog("files have moved"))
    click_button("choose folder...");
  answer_file("the folder where the files are now", folder);
}

std::vector<std::string> window_test::rows() {
  return list_rows("main");
}

int window_test::selection() {
  return ask_ui([] { return dynamic_cast<wxListBox*>(control("List1"))->GetSelection(); });
}

}  // namespace corvane::testing_support
