#include "ui/video/video_strip.h"

#include "ui/editor/file_pictures.h"
#include "ui/widgets/control_name.h"
#include "ui/widgets/layout.h"
#include "ui/widgets/wheel.h"
#include "ui/widgets/wx_text.h"

#include <wx/checkbox.h>
#include <wx/gauge.h>
#include <wx/sizer.h>
#include <wx/slider.h>
#include <wx/stattext.h>

#include <algorithm>
#include <chrono>
#include <limits>
#include <utility>

namespace corvane {
namespace {

constexpr int tick_of_strip = 8;  // milliseconds: less than half a picture

/// In seconds.
double strip_clock() {
  using clock = std::chrono::steady_clock;
  return std::chrono::duration<double>(clock::now().time_since_epoch()).count();
}

}  // namespace

video_strip::video_strip(wxWindow* parent, std::function<void(const wxImage&)> show)
    : wxPanel(parent), show_(std::move(show)), sound_([this] { show_sound(); }) {
  label_ = new wxStaticText(this, wxID_ANY, "&picture");
  position_ = new wxSlider(this, wxID_ANY, 0, 0, 1);
  position_->SetToolTip("which picture of the video is shown; Space over the menu plays it");
  time_ = new wxStaticText(this, wxID_ANY, "0:00:00.0 of 0:00:00.0");
  progress_ = new wxGauge(this, wxID_ANY, progress_steps);
  progress_->SetToolTip("how much of the video has been looked through");
  hears_ = new wxCheckBox(this, wxID_ANY, "sound");
  name_control(*hears_, "sound");
  name_control(*position_, "position");
  let_wheel_pass(*position_);
  name_control(*time_, "positiontime");
  name_control(*progress_, "videoprogress");
  arrange();
  position_->Bind(wxEVT_SLIDER, [this](wxCommandEvent&) {
    pause();
    wanted_ = position_->GetValue();
  });
  timer_.Bind(wxEVT_TIMER, [this](wxTimerEvent&) { on_timer(); });
  Bind(wxEVT_IDLE, &video_strip::on_idle, this);
}

void video_strip::arrange() {
  auto* row = new wxBoxSizer(wxHORIZONTAL);
  const wxSizerFlags gap =
      wxSizerFlags().CentreVertical().Border(wxRIGHT, FromDIP(layout::control_gap));
  time_->SetMinSize(time_->GetBestSize());
  progress_->SetMinSize(wxSize(position_->GetBestSize().x, FromDIP(layout::control_gap)));
  row->Add(label_, gap);
  row->Add(position_, wxSizerFlags(gap).Proportion(1));
  row->Add(progress_, wxSizerFlags(gap).Proportion(1));
  row->Add(time_, wxSizerFlags().CentreVertical());
  row->Add(hears_, wxSizerFlags().CentreVertical().Border(wxLEFT, FromDIP(layout::group_gap)));
  SetSizer(row);
  hears_->Hide();
  progress_->Hide();
  position_->Disable();
  time_->SetLabel("");
}

result<wxSize> video_strip::open(const std::string& path) {
  const result<picture> first = loader_.open(path);
  if (!first)
    return result<wxSize>::fail(first.error);
  show_(image_of(*first));
  const video_shape& shape = loader_.video()->shape();
  return result<wxSize>::ok(wxSize(shape.width, shape.height));
}

wxSize video_strip::proportions() const {
  if (loader_.video() == nullptr)
    return {0, 0};
  const video_shape& shape = loader_.video()->shape();
  return {shape.aspect_width, shape.aspect_height};
}

void video_strip::offer_sound(const std::string& path, bool on, std::function<void(bool)> turned) {
  sound_file_ = path;
  sound_.turn(on);
  hears_->Bind(wxEVT_CHECKBOX, [this, turned = std::move(turned)](wxCommandEvent& event) {
    sound_.turn(event.IsChecked());
    turned(event.IsChecked());
  });
  hears_->Show();
  show_sound();
  Layout();
}

/// What can be turned on or off, and why nothing is heard.
void video_strip::show_sound() {
  const failure& trouble = sound_.trouble();
  const bool is_still = loader_.video() != nullptr && !loader_.scanning() && !can_play();
  const bool can_be_heard = !sound_file_.empty() && !is_still && !sound_.is_silent();
  wxString tip = "the menu's sound is heard while it plays";
  if (sound_file_.empty())
    tip = "the menu has no sound";
  else if (is_still)
    tip = "a menu of one picture is not played";
  else if (trouble)
    tip = "the menu's sound is not heard: " + wx_text(*trouble);
  hears_->SetToolTip(tip);
  hears_->SetValue(can_be_heard && sound_.is_on());
  hears_->Enable(can_be_heard);
}

bool video_strip::can_play() const {
  return loader_.video() != nullptr && !loader_.scanning() && loader_.video()->pictures() > 1;
}

// The sound begins first: what it takes to begin is not to be left out of the pictures.
void video_strip::play_or_pause() {
  if (playing()) {
    pause();
    return;
  }
  if (!can_play())
    return;
  if (!playback_)
    playback_.emplace(*loader_.video());
  playback_->go_to(wanted_, strip_clock());
  playback_->play(strip_clock());
  sound_.play(playback_->position());
  playback_->go_to(playback_->number(), strip_clock());
  timer_.StartOnce(tick_of_strip);
}

void video_strip::pause() {
  if (playback_)
    playback_->pause();
  sound_.stop();
  timer_.Stop();
}

// Not started again before the picture is there and everything else had its turn: what that takes
// longer is left out.
void video_strip::on_timer() {
  if (!playing())
    return;
  playback_->tick(strip_clock());
  wanted_ = playback_->number();
  if (wanted_ != shown_) {
    position_->SetValue(static_cast<int>(wanted_));
    show_wanted();
  }
  if (!playing())
    sound_.stop();
  CallAfter([this] {
    if (playing())
      timer_.StartOnce(tick_of_strip);
  });
}

void video_strip::release() {
  pause();
  playback_.reset();
  sound_.close();
  loader_.close();
}

void video_strip::on_idle(wxIdleEvent& event) {
  event.Skip();
  if (loader_.scanning()) {
    scan();
    event.RequestMore();
  } else if (loader_.video() != nullptr && wanted_ != shown_) {
    show_wanted();
  }
}

void video_strip::scan() {
  loader_.scan();
  if (loader_.unread())
    position_->SetToolTip(wx_text(*loader_.unread()));
  if (!loader_.scanning()) {
    scanned();
    return;
  }
  if (!progress_->IsShown() && loader_.takes_long()) {
    position_->Hide();
    progress_->Show();
    Layout();
  }
  progress_->SetValue(static_cast<int>(loader_.part() * progress_steps));
}

void video_strip::scanned() {
  progress_->Hide();
  position_->Show();
  const std::int64_t last =
      std::min<std::int64_t>(loader_.video()->pictures() - 1, std::numeric_limits<int>::max());
  if (last > 0) {
    position_->SetRange(0, static_cast<int>(last));
    position_->SetPageSize(std::max(1, static_cast<int>(last / 20)));
    position_->Enable();
  }
  if (!sound_file_.empty() && can_play())
    sound_.open(sound_file_);
  show_sound();
  show_time();
  Layout();
}

// The slider may have moved on over many pictures: only the one where it stands now is decoded.
void video_strip::show_wanted() {
  shown_ = wanted_;
  const result<picture> p = loader_.video()->picture_number(shown_);
  show_time();
  if (p)
    show_(image_of(*p));
  else
    time_->SetLabel(wx_text(p.error));
}

void video_strip::show_time() {
  time_->SetLabel(tenths_text(loader_.video()->time_of(shown_)) + " of " +
                  tenths_text(loader_.video()->length()));
  Layout();
}

}  // namespace corvane
