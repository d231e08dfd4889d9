#include "ui/subtitles/cue_preview.h"

#include "ui/video/video_picture.h"
#include "ui/widgets/control_name.h"
#include "ui/widgets/labelled.h"
#include "ui/widgets/layout.h"
#include "ui/widgets/wheel.h"
#include "ui/widgets/wrapped_text.h"
#include "ui/widgets/wx_text.h"

#include <wx/dcclient.h>
#include <wx/sizer.h>
#include <wx/spinctrl.h>
#include <wx/statbox.h>
#include <wx/stattext.h>

#include <cmath>
#include <cstddef>
#include <cstdint>

namespace corvane {
namespace {

constexpr int pause_milliseconds = 300;  // after what was changed last
constexpr int step_milliseconds = 60;    // after a step to another cue: it is drawn already, mostly
constexpr int look_milliseconds = 50;
constexpr int idle_look_milliseconds = 500;  // spumux draws some cues ahead, then it is stopped
constexpr int patience_with_drawing = 400;   // a note that comes and goes at once only flickers
constexpr int most_cues = 99'999;

wxString thousandths_text(double seconds) {
  const auto all = std::llround(seconds * 1000);
  return wxString::Format("%lld:%02lld:%02lld.%03lld", all / 3'600'000, all / 60'000 % 60,
                          all / 1000 % 60, all % 1000);
}

/// The frame of the disc with the video's picture, or grey.
wxImage frame_of(const wxImage& video, wxSize size) {
  if (video.IsOk())
    return video.GetSize() == size ? video : video.Scale(size.x, size.y, wxIMAGE_QUALITY_BILINEAR);
  wxImage grey(size, false);
  grey.SetRGB(wxRect(size), 112, 112, 112);
  return grey;
}

/// Lays the cue over a picture of its size.
void lay_over(wxImage& frame, const drawn_cue& cue) {
  std::uint8_t* to = frame.GetData();
  for (std::size_t from = 0; from + 3 < cue.rgba.size(); from += 4, to += 3) {
    const int opaque = cue.rgba[from + 3];
    for (std::size_t c = 0; c < 3; ++c)
      to[c] = static_cast<std::uint8_t>(
          (cue.rgba[from + c] * opaque + to[c] * (255 - opaque) + 127) / 255);
  }
}

}  // namespace

cue_preview::cue_preview(wxWindow* parent, const std::string& app, const font_list& fonts,
                         const std::string& video)
    : wxPanel(parent),
      engine_(std::make_unique<subtitle_preview>(app, fonts)),
      video_(std::make_unique<video_backdrop>(video)) {
  auto* box = new wxStaticBoxSizer(wxVERTICAL, this, "preview");
  picture_ = new video_picture(box->GetStaticBox());
  name_drawn_control(*picture_, "preview", control_role::picture);
  picture_->SetMinSize(FromDIP(wxSize(layout::preview_least_width, layout::preview_least_height)));
  const int border = FromDIP(layout::box_border);
  const wxSize proportions = video_->proportions();
  picture_->set_full_size(
      wxSize(layout::preview_width, layout::preview_width * proportions.y / proportions.x));
  box->Add(picture_, wxSizerFlags(1).Expand().Border(wxALL, border));
  box->Add(make_choice(box->GetStaticBox()),
           wxSizerFlags().Expand().Border(wxLEFT | wxRIGHT | wxBOTTOM, border));
  missing_ = new wxStaticText(box->GetStaticBox(), wxID_ANY, wxString());
  name_control(*missing_, "cuemissing");
  missing_->Hide();
  box->Add(missing_, wxSizerFlags().Border(wxLEFT | wxRIGHT | wxBOTTOM, border));
  SetSizer(box);
  number_->Bind(wxEVT_SPINCTRL, [this](wxSpinEvent&) {
    at_.reset();
    draw_soon(step_milliseconds);
  });
  draw_timer_.Bind(wxEVT_TIMER, [this](wxTimerEvent&) { draw(); });
  look_timer_.Bind(wxEVT_TIMER, [this](wxTimerEvent&) { look(); });
  Bind(wxEVT_IDLE, &cue_preview::on_idle, this);
}

cue_preview::~cue_preview() = default;

wxSizer* cue_preview::make_choice(wxWindow* inside) {
  wxStaticText* label = make_label(inside, "subtitle n&umber");
  number_ = new wxSpinCtrl(inside, wxID_ANY, "1", wxDefaultPosition, wxDefaultSize, wxSP_ARROW_KEYS,
                           1, most_cues, 1);
  number_->SetToolTip("which subtitle of the file is shown");
  note_ = new wxStaticText(inside, wxID_ANY, wxString(), wxDefaultPosition, wxDefaultSize,
                           wxST_NO_AUTORESIZE | wxALIGN_RIGHT);
  name_control(*number_, "cuenumber");
  let_wheel_pass(*number_);
  name_control(*note_, "cuetime");
  label_leads_to(label, number_);
  const int gap = FromDIP(layout::control_gap);
  auto* row = new wxBoxSizer(wxHORIZONTAL);
  row->Add(label, wxSizerFlags().CentreVertical());
  row->Add(number_, wxSizerFlags().CentreVertical().Border(wxLEFT, gap));
  row->Add(note_, wxSizerFlags(1).CentreVertical().Border(wxLEFT, gap));
  return row;
}

void cue_preview::show(const std::optional<std::string>& file, const subtitle_settings& settings,
                       const std::string& region) {
  std::optional<preview_request> wanted;
  if (file)
    wanted = preview_request{*file, settings, region, 1};
  const bool other_file = !shown_once_ || wanted.has_value() != request_.has_value() ||
                          (wanted && wanted->file != request_->file);
  if (!other_file && (!wanted || wanted->settings == request_->settings))
    return;
  if (other_file) {
    number_->SetValue(1);
    at_.reset();
  }
  number_->Enable(file.has_value());
  region_ = region;
  request_ = wanted;
  draw_soon(shown_once_ ? pause_milliseconds : step_milliseconds);
  shown_once_ = true;
}

void cue_preview::go_to(double seconds) {
  at_ = seconds;
  draw_soon(step_milliseconds);
}

void cue_preview::draw_soon(int milliseconds) {
  if (engine_)
    draw_timer_.StartOnce(milliseconds);
}

void cue_preview::draw() {
  waiting_ = request_.has_value();
  if (!request_) {
    cue_.reset();
    show_missing({});
    show_picture();
    note_->SetLabel("no subtitles");
    return;
  }
  request_->cue = number_->GetValue();
  request_->at = at_;
  engine_->want(*request_);
  drawing_for_.Start();
  look_timer_.Start(look_milliseconds);
}

void cue_preview::look() {
  const subtitle_preview::state now = engine_->poll();
  if (!waiting_) {
    show_missing(cue_ ? engine_->missing() : std::string());
    return;
  }
  if (now == subtitle_preview::state::drawing) {
    if (drawing_for_.Time() > patience_with_drawing)
      note_->SetLabel("drawing ...");
    return;
  }
  waiting_ = false;
  look_timer_.Start(idle_look_milliseconds);
  if (now == subtitle_preview::state::ready) {
    cue_ = engine_->cue();
    if (at_)
      number_->SetValue(cue_->number);
    at_.reset();
    show_picture();
    show_missing(engine_->missing());
    note_->SetLabel(thousandths_text(cue_->begin) + " - " + thousandths_text(cue_->end));
  } else {
    cue_.reset();
    show_missing({});
    searching_ = false;
    picture_->show_reason(wx_lines(engine_->reason()));
    note_->SetLabel("");
  }
}

// The picture makes room for it.
void cue_preview::show_missing(const std::string& what) {
  if (what == missing_text_)
    return;
  missing_text_ = what;
  wxClientDC dc(missing_);
  dc.SetFont(missing_->GetFont());
  missing_->SetLabelText(wrapped(dc, wx_text("On the disc " + what + "."), picture_->GetSize().x));
  missing_->Show(!what.empty());
  Layout();
}

void cue_preview::show_picture() {
  const wxSize size =
      cue_ ? wxSize(cue_->width, cue_->height) : wxSize(720, region_ == "PAL" ? 576 : 480);
  wxImage frame = frame_of(video_->at(time()), size);
  if (cue_)
    lay_over(frame, *cue_);
  picture_->show_picture(frame);
  searching_ = true;
}

// The picture of the video that was shown may have been its first one only.
void cue_preview::on_idle(wxIdleEvent& event) {
  event.Skip();
  if (!searching_ || !engine_)
    return;
  if (video_->search(time())) {
    searched_ = true;
    event.RequestMore();
    return;
  }
  if (searched_)
    show_picture();
  searching_ = searched_ = false;
}

void cue_preview::release() {
  draw_timer_.Stop();
  look_timer_.Stop();
  engine_.reset();
  video_.reset();
}

}  // namespace corvane
