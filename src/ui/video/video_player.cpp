#include "ui/video/video_player.h"

#include "formats/time_text.h"
#include "ui/editor/file_pictures.h"
#include "ui/video/time_line.h"
#include "ui/video/video_picture.h"
#include "ui/widgets/control_name.h"
#include "ui/widgets/icons.h"
#include "ui/widgets/layout.h"
#include "ui/widgets/wx_text.h"

#include <wx/bmpbuttn.h>
#include <wx/gauge.h>
#include <wx/sizer.h>
#include <wx/stattext.h>
#include <wx/textctrl.h>

#include <algorithm>
#include <chrono>
#include <utility>

namespace corvane {
namespace {

constexpr int tick_milliseconds = 8;  // less than half a picture

double clock_now() {
  using clock = std::chrono::steady_clock;
  return std::chrono::duration<double>(clock::now().time_since_epoch()).count();
}

/// The proportions in which a video is to be shown, at the height that it has.
wxSize shown_size(const video_shape& shape) {
  if (shape.aspect_width == 0 || shape.aspect_height == 0)
    return {shape.width, shape.height};
  return {shape.height * shape.aspect_width / shape.aspect_height, shape.height};
}

}  // namespace

video_player::video_player(wxWindow* parent, std::function<void()> ready)
    : wxPanel(parent), ready_(std::move(ready)) {
  make_controls();
  Bind(wxEVT_IDLE, &video_player::on_idle, this);
  timer_.Bind(wxEVT_TIMER, [this](wxTimerEvent&) { on_timer(); });
}

// A field that goes may still tell that it loses the focus: it must find everything in its place.
video_player::~video_player() {
  release();
  DestroyChildren();
}

void video_player::make_controls() {
  MediaPlayer1_ = new video_picture(this);
  line_ = new time_line(this, [this](double seconds) {
    act([seconds](playback& p) { p.seek(seconds, clock_now()); });
  });
  progress_ = new wxGauge(this, wxID_ANY, progress_steps);
  progress_->SetToolTip("how much of the video has been looked through");
  name_drawn_control(*MediaPlayer1_, "MediaPlayer1", control_role::picture);
  name_drawn_control(*line_, "position", control_role::slider);
  name_control(*progress_, "videoprogress");
  controls_.push_back(line_);
  wxSizer* transport = make_transport();
  wxSizer* landing = make_landing();
  note_ = new wxStaticText(this, wxID_ANY, wxString(), wxDefaultPosition, wxDefaultSize,
                           wxST_NO_AUTORESIZE | wxST_ELLIPSIZE_END);
  name_control(*note_, "note");
  arrange(transport, landing);
  for (wxWindow* control : controls_)
    control->Disable();
}

wxButton* video_player::make_step(const char* name, const char* icon, const wxString& tip,
                                  const std::function<void(playback&)>& step) {
  auto* button = new wxBitmapButton(this, wxID_ANY, icon_picture(icon, layout::button_icon));
  button->SetToolTip(tip);
  name_control(*button, name);
  button->Bind(wxEVT_BUTTON, [this, step](wxCommandEvent&) { act(step); });
  controls_.push_back(button);
  return button;
}

wxSizer* video_player::make_transport() {
  auto* row = new wxBoxSizer(wxHORIZONTAL);
  const wxSizerFlags next =
      wxSizerFlags().CentreVertical().Border(wxRIGHT, FromDIP(layout::control_gap));
  row->Add(make_step("gopback", "gop-back", "back to the beginning of the GOP (Ctrl+Left)",
                     [](playback& p) { p.previous_gop(); }),
           next);
  row->Add(make_step("pictureback", "picture-back", "one picture back (Left)",
                     [](playback& p) { p.step(-1); }),
           next);
  play_ = new wxButton(this, wxID_ANY, "pause");
  play_->SetBitmap(icon_picture("pause", layout::button_icon));
  play_->SetMinSize(play_->GetBestSize());  // of the longer label
  show_play_label();
  play_->SetToolTip("play or pause (Space)");
  name_control(*play_, "play");
  play_->Bind(wxEVT_BUTTON, [this](wxCommandEvent&) { toggle(); });
  controls_.push_back(play_);
  row->Add(play_, next);
  row->Add(make_step("pictureforward", "picture-forward", "one picture forward (Right)",
                     [](playback& p) { p.step(1); }),
           next);
  row->Add(make_step("gopforward", "gop-forward", "forward to the next GOP (Ctrl+Right)",
                     [](playback& p) { p.next_gop(); }),
           next);
  row->AddStretchSpacer();
  time_ = new wxTextCtrl(this, wxID_ANY, "00:00:00.00", wxDefaultPosition, wxDefaultSize,
                         wxTE_PROCESS_ENTER | wxTE_CENTRE);
  time_->SetInitialSize(time_->GetSizeFromTextSize(time_->GetTextExtent("000:00:00.00").x));
  time_->SetToolTip("type a time (HH:MM:SS.ss) and press Enter to go there");
  name_control(*time_, "time");
  time_->Bind(wxEVT_TEXT, [this](wxCommandEvent&) { typing_ = true; });
  time_->Bind(wxEVT_TEXT_ENTER, [this](wxCommandEvent&) { jump_to_typed(); });
  time_->Bind(wxEVT_KILL_FOCUS, [this](wxFocusEvent& event) {
    forget_typed();
    event.Skip();
  });
  controls_.push_back(time_);
  row->Add(time_, next);
  length_ = new wxStaticText(this, wxID_ANY, "of 00:00:00.00");
  length_->SetMinSize(length_->GetBestSize());
  length_->SetLabel("");
  name_control(*length_, "length");
  row->Add(length_, wxSizerFlags().CentreVertical());
  return row;
}

wxSizer* video_player::make_landing() {
  landing_ = new wxStaticText(this, wxID_ANY, "A player lands at 00:00:00.00");
  landing_->SetMinSize(landing_->GetBestSize());
  landing_->SetLabel("");
  landing_->SetToolTip(
      "A chapter begins with a group of pictures (GOP), the one nearest to its time.");
  name_control(*landing_, "landing");
  auto* go = new wxButton(this, wxID_ANY, "&go there");
  go->SetToolTip("shows the picture with which a player begins");
  name_control(*go, "gotolanding");
  go->Bind(wxEVT_BUTTON, [this](wxCommandEvent&) {
    act([](playback& p) {
      p.pause();
      p.go_to(p.landing(), clock_now());
    });
  });
  controls_.push_back(go);
  controls_.push_back(landing_);
  auto* row = new wxBoxSizer(wxHORIZONTAL);
  row->Add(landing_, wxSizerFlags(1).CentreVertical());
  row->Add(go, wxSizerFlags().CentreVertical().Border(wxLEFT, FromDIP(layout::control_gap)));
  return row;
}

void video_player::arrange(wxSizer* transport, wxSizer* landing) {
  const wxSizerFlags below = wxSizerFlags().Expand().Border(wxTOP, FromDIP(layout::control_gap));
  auto* whole = new wxBoxSizer(wxVERTICAL);
  whole->Add(MediaPlayer1_, wxSizerFlags(1).Expand());
  auto* line = new wxBoxSizer(wxHORIZONTAL);  // of one height, whichever of the two it shows
  line->SetMinSize(wxSize(-1, line_->GetBestSize().y));
  line->Add(line_, wxSizerFlags(1).Expand());
  line->Add(progress_, wxSizerFlags(1).CentreVertical());
  whole->Add(line, below);
  whole->Add(transport, below);
  whole->Add(landing, below);
  whole->Add(note_, below);
  SetSizer(whole);
  progress_->Hide();
}

void video_player::open(const std::string& path) {
  const result<picture> first = loader_.open(path);
  if (!first) {
    MediaPlayer1_->show_reason("The video cannot be shown.\n\n" + wx_text(path) + "\n" +
                               wx_text(first.error));
    return;
  }
  MediaPlayer1_->set_full_size(shown_size(loader_.video()->shape()));
  MediaPlayer1_->show_picture(image_of(*first));
}

void video_player::release() {
  timer_.Stop();
  playback_.reset();
  loader_.close();
}

std::optional<double> video_player::position() const {
  if (!playback_)
    return std::nullopt;
  return playback_->position();
}

void video_player::on_idle(wxIdleEvent& event) {
  event.Skip();
  if (loader_.scanning()) {
    scan();
    event.RequestMore();
  } else if (playback_ && playback_->number() != shown_) {
    show_picture();
  }
}

void video_player::scan() {
  loader_.scan();
  if (!loader_.scanning()) {
    scanned();
    return;
  }
  if (!progress_->IsShown() && loader_.takes_long()) {
    line_->Hide();
    progress_->Show();
    Layout();
  }
  progress_->SetValue(static_cast<int>(loader_.part() * progress_steps));
}

void video_player::scanned() {
  progress_->Hide();
  line_->Show();
  if (loader_.unread())
    note("The video cannot be read to its end: " + wx_text(*loader_.unread()));
  if (loader_.video()->pictures() == 0)
    return;
  playback_.emplace(*loader_.video());
  line_->set_length(loader_.video()->length());
  length_->SetLabel("of " + wx_text(time_text(loader_.video()->length())));
  for (wxWindow* control : controls_)
    control->Enable();
  show_state();
  Layout();
  ready_();
}

/// Does what the user asked for; the picture follows when nothing else is to do.
void video_player::act(const std::function<void(playback&)>& action) {
  if (!playback_)
    return;
  note("");
  action(*playback_);
  show_state();
}

void video_player::toggle() {
  act([](playback& p) {
    if (p.playing())
      p.pause();
    else
      p.play(clock_now());
  });
  if (playing())
    timer_.StartOnce(tick_milliseconds);
}

// Not started again before the picture is there: what decoding takes longer is left out.
void video_player::on_timer() {
  if (!playing())
    return;
  playback_->tick(clock_now());
  if (playback_->number() != shown_)
    show_picture();
  show_state();
  if (playing())
    timer_.StartOnce(tick_milliseconds);
}

void video_player::seek(double seconds) {
  act([seconds](playback& p) { p.seek(seconds, clock_now()); });
  if (playback_ && seconds >= loader_.video()->length())
    note("The video ends at " + wx_text(time_text(loader_.video()->length())) + ".");
}

void video_player::set_marks(const std::vector<double>& chapters) {
  line_->set_marks(chapters);
}

void video_player::jump_to_typed() {
  const std::string typed = utf8_of(time_->GetValue());
  const std::optional<double> seconds = typed_time(typed);
  time_->SelectAll();
  if (seconds) {
    typing_ = false;
    seek(*seconds);
  } else
    note("\"" + wx_text(typed) + "\" is no time; the format is HH:MM:SS.ss");
}

void video_player::forget_typed() {
  typing_ = false;
  CallAfter([this] {  // the field still counts as having the focus
    if (playback_)
      show_state();
  });
}

bool video_player::use_key(const wxKeyEvent& event) {
  if (!playback_ || event.AltDown())
    return false;
  const bool by_gop = event.ControlDown() || event.ShiftDown();
  switch (event.GetKeyCode()) {
    case WXK_SPACE:
      toggle();
      break;
    case WXK_LEFT:
      act([by_gop](playback& p) { by_gop ? p.previous_gop() : p.step(-1); });
      break;
    case WXK_RIGHT:
      act([by_gop](playback& p) { by_gop ? p.next_gop() : p.step(1); });
      break;
    case WXK_PAGEUP:
      act([](playback& p) { p.previous_gop(); });
      break;
    case WXK_PAGEDOWN:
      act([](playback& p) { p.next_gop(); });
      break;
    case WXK_HOME:
      act([](playback& p) { p.go_to(0, clock_now()); });
      break;
    case WXK_END:
      act([this](playback& p) { p.go_to(loader_.video()->pictures() - 1, clock_now()); });
      break;
    default:
      return false;
  }
  return true;
}

wxSize video_player::picture_size() const {
  return MediaPlayer1_->GetBestSize();
}

void video_player::let_shrink() {
  MediaPlayer1_->SetMinSize(wxSize(1, 1));
}

void video_player::focus() {
  if (line_->IsEnabled())
    line_->SetFocus();
}

void video_player::show_state() {
  const double position = playback_->position();
  const double landing = loader_.video()->time_of(playback_->landing());
  line_->set_position(position, landing);
  show_time(wx_text(time_text(position)));
  const wxString lands = "A player lands at " + wx_text(time_text(landing));
  if (landing_->GetLabel() != lands)
    landing_->SetLabel(lands);
  show_play_label();
}

// Nothing changes under the hands of somebody who is about to type; a text that is selected as a
// whole stays so.
void video_player::show_time(const wxString& now) {
  const bool focus = time_->HasFocus();
  const bool all = time_->GetStringSelection() == time_->GetValue();
  if (typing_ || (focus && !all) || time_->GetValue() == now)
    return;
  time_->ChangeValue(now);
  if (focus)
    time_->SelectAll();
}

void video_player::show_play_label() {
  const wxString label = playing() ? "pause" : "play";
  if (play_->GetLabel() == label)
    return;
  play_->SetLabel(label);
  play_->SetBitmap(icon_picture(utf8_of(label), layout::button_icon));
}

void video_player::show_picture() {
  shown_ = playback_->number();
  const result<picture> p = loader_.video()->picture_number(shown_);
  if (p)
    MediaPlayer1_->show_picture(image_of(*p));
  else
    note("This picture cannot be shown: " + wx_text(p.error));
}

void video_player::note(const wxString& text) {
  if (note_->GetLabel() != text) {
    note_->SetLabelText(text);
    note_->SetToolTip(text);
  }
}

}  // namespace corvane
