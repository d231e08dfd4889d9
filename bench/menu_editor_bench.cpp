// Drags a button of the menu editor with a real pointer and counts how often the picture is drawn
// with the button at another place.
//
//   menu_editor_bench VIDEO [TIMES]
//
// TIMES: the picture is shown so many times as large as at 100 %, in a window as large as the
// screen. Prints redraws a second and the longest pause between two. Needs an X server at $DISPLAY
// with a window manager, and xdotool: scripts/bench.sh starts them.
#include "platform/files/files.h"
#include "platform/files/paths.h"
#include "platform/settings/settings.h"
#include "project/document.h"
#include "project/menu_rows.h"
#include "ui/editor/menu_editor_window.h"
#include "ui/lent_project.h"
#include "ui/wx_prompts.h"

#include <wx/app.h>
#include <wx/choice.h>
#include <wx/frame.h>
#include <wx/textctrl.h>

#include <algorithm>
#include <chrono>
#include <cstddef>
#include <cstdio>
#include <cstdlib>
#include <memory>
#include <string>
#include <thread>
#include <vector>

namespace {

using std::chrono::steady_clock;

constexpr int moves = 1000;          // of the pointer,
constexpr int moves_a_second = 250;  // twice as many as a common mouse tells

std::string video;
int times_as_large = 1;

/// A row of the most buttons that a menu has.
std::string all_buttons() {
  std::string records;
  for (int i = 0; i < 36; ++i) {
    const int x = 20 + i % 6 * 115;
    const int y = 20 + i / 6 * 75;
    const corvane::button_record b = {std::to_string(x),
                                      std::to_string(y),
                                      std::to_string(x + 90),
                                      std::to_string(y + 40),
                                      "exit",
                                      "yellow",
                                      "white"};
    records += (records.empty() ? "" : "|") + corvane::button_text(b);
  }
  return records;
}

class bench_app : public wxApp {
 public:
  bool OnInit() override {
    main_ = new wxFrame(nullptr, wxID_ANY, "main");
    ask_ = std::make_unique<corvane::wx_prompts>(*main_, prefs_, ".");
    bench_ = std::make_unique<corvane::document>(*ask_, prefs_);
    bench_->p.menulist = {corvane::stored_from_native(video) + "/"};
    bench_->p.moremenuoptions = {corvane::new_menu_options};
    bench_->p.menubuttons = {all_buttons()};
    bench_->p.indexer = 1;
    new corvane::tsmenu(main_, corvane::lent_project(*bench_, *ask_, "edit menu", draft_, [] {}),
                        true);
    picture_ = wxWindow::FindWindowByName("MediaPlayer1");
    leftpos_ = dynamic_cast<wxTextCtrl*>(wxWindow::FindWindowByName("leftpos"));
    if (times_as_large > 1)
      zoom();
    picture_->Bind(wxEVT_PAINT, [this](wxPaintEvent& event) {
      count();
      event.Skip();
    });
    user_ = std::thread([this] { drag(); });
    return true;
  }

  int OnExit() override {
    user_.join();
    return wxApp::OnExit();
  }

 private:
  static void zoom() {
    dynamic_cast<wxFrame*>(wxWindow::FindWindowByName("tsmenu"))->Maximize();
    auto* choice = dynamic_cast<wxChoice*>(wxWindow::FindWindowByName("zoom"));
    choice->SetSelection(times_as_large);
    wxCommandEvent chosen(wxEVT_CHOICE, choice->GetId());
    choice->ProcessWindowEvent(chosen);
  }

  void count() {
    const wxString place = leftpos_->GetValue();
    if (place == shown_)
      return;
    shown_ = place;
    times_.push_back(steady_clock::now());
  }

  // One xdotool for all of it: starting a program for each move would cost more than the move.
  void drag() {
    std::this_thread::sleep_for(std::chrono::seconds(2));
    const wxPoint corner = picture_->GetScreenPosition();
    std::string command = "xdotool mousemove " + at(corner, 60, 40) + " mousedown 1 sleep 0.2";
    for (int i = 1; i <= moves; ++i) {
      const int x = i % 1000 < 500 ? i % 500 : 500 - i % 500;
      command += " mousemove " + at(corner, 60 + x, 40 + i % 300) + " sleep " +
                 std::to_string(1.0 / moves_a_second);
    }
    command += " mouseup 1";
    status_ = std::system(command.c_str());
    CallAfter([this] { report(); });
  }

  static std::string at(wxPoint corner, int x, int y) {
    return std::to_string(corner.x + x * times_as_large) + " " +
           std::to_string(corner.y + y * times_as_large);
  }

  void report() {
    constexpr std::size_t before =
        2;  // the window's first, and the press shows the button's values
    if (status_ != 0 || times_.size() < before + 2) {
      std::fputs("menu_editor_bench: the button did not move\n", stderr);
      std::exit(1);
    }
    times_.erase(times_.begin(), times_.begin() + before);
    steady_clock::duration longest{};
    for (std::size_t i = 1; i < times_.size(); ++i)
      longest = std::max(longest, times_[i] - times_[i - 1]);
    const std::chrono::duration<double> whole = times_.back() - times_.front();
    const wxSize size = picture_->GetSize();
    std::printf("picture %dx%d\n", size.x, size.y);
    std::printf("redraws_per_second %.1f\n",
                static_cast<double>(times_.size() - 1) / whole.count());
    std::printf("longest_pause_ms %.1f\n",
                std::chrono::duration<double, std::milli>(longest).count());
    std::printf("moves_per_second %.1f\n", moves / whole.count());
    ExitMainLoop();
  }

  corvane::memory_settings prefs_;
  std::unique_ptr<corvane::wx_prompts> ask_;
  std::unique_ptr<corvane::document> bench_;
  corvane::lent_project::draft draft_;
  wxFrame* main_ = nullptr;
  wxWindow* picture_ = nullptr;
  wxTextCtrl* leftpos_ = nullptr;
  wxString shown_;
  std::vector<steady_clock::time_point> times_;
  std::thread user_;
  int status_ = 0;
};

}  // namespace

int main(int argc, char** argv) {
  if (argc != 2 && argc != 3) {
    std::fputs("usage: menu_editor_bench VIDEO [TIMES]\n", stderr);
    return 2;
  }
  video = corvane::absolute_path(argv[1]);
  if (argc == 3)
    times_as_large = std::clamp(std::atoi(argv[2]), 1, 4);
  argc = 1;
  wxApp::SetInstance(new bench_app);
  return wxEntry(argc, argv);
}
