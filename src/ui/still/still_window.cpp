#include "ui/still/still_window.h"

#include "formats/numbers.h"
#include "formats/sanitized.h"
#include "import/import_batch.h"
#include "import/import_names.h"
#include "media/source_probe.h"
#include "platform/files/files.h"
#include "project/messages.h"
#include "project/missing_tools.h"
#include "project/picked_file.h"
#include "tools/still_video.h"
#include "ui/editor/file_pictures.h"
#include "ui/main_window.h"
#include "ui/video/video_picture.h"
#include "ui/widgets/control_name.h"
#include "ui/widgets/controls.h"
#include "ui/widgets/dialog_buttons.h"
#include "ui/widgets/icons.h"
#include "ui/widgets/labelled.h"
#include "ui/widgets/layout.h"
#include "ui/widgets/screen_fit.h"
#include "ui/widgets/wrapped_text.h"
#include "ui/widgets/wx_text.h"

#include <wx/button.h>
#include <wx/choice.h>
#include <wx/dcclient.h>
#include <wx/sizer.h>
#include <wx/spinctrl.h>
#include <wx/stattext.h>
#include <wx/textctrl.h>
#include <wx/utils.h>

#include <algorithm>
#include <chrono>
#include <cmath>
#include <optional>
#include <utility>

namespace corvane {
namespace {

constexpr int poll_picture_milliseconds = 30;
constexpr int decoded_width = 960, decoded_height = 720;
constexpr int ntsc_entry = 0, pal_entry = 1, narrow_entry = 0, wide_entry = 1, bars_entry = 0,
              cropped_entry = 1;

/// The picture, if nothing stands against making a still of it; else that is told.
std::optional<still_source> look_at_picture(const main_window& main, document& doc,
                                            const std::string& picture, bool refused) {
  if (const std::string missing = missing_tools(main.app(), {"gm", "jpeg2yuv", "mpeg2enc"});
      !missing.empty()) {
    say(doc, icon::critical, missing);
    return std::nullopt;
  }
  if (!stored_or_told(doc, picture))
    return std::nullopt;
  bool can_be_read = true;
  const result<still_source> source = [&] {
    const wxBusyCursor busy;
    return still_source_at(picture, [&can_be_read](const std::string& file) {
      result<source_facts> facts = probe_source(file);
      can_be_read = static_cast<bool>(facts);
      return facts;
    });
  }();
  if (source)
    return *source;
  if (!can_be_read && refused)
    return std::nullopt;
  say(doc, icon::exclamation,
      "No still can be made of \"" + sanitized(picture) + "\": " + sanitized(source.error) + ".");
  return std::nullopt;
}

/// What the disc's picture will hold, in this size.
wxImage composed(const wxImage& image, const picture_size& shown, const picture_geometry& g,
                 wxSize canvas) {
  const auto scaled = [](int length, int to, int from) {
    return static_cast<int>(std::lround(static_cast<double>(length) * to / from));
  };
  const auto part = [&](int at, int length, int to, int from) {
    const int begin = std::clamp(scaled(at, to, from), 0, to - 1);
    return std::pair(begin, std::clamp(scaled(at + length, to, from), begin + 1, to) - begin);
  };
  const auto [left, width] = part(g.crop_left, g.cropped.width, image.GetWidth(), shown.width);
  const auto [top, height] = part(g.crop_top, g.cropped.height, image.GetHeight(), shown.height);
  const auto [x, across] = part(g.left, g.scaled.width, canvas.x, g.disc.width);
  const auto [y, down] = part(g.top, g.scaled.height, canvas.y, g.disc.height);
  wxImage made(canvas.x, canvas.y);
  made.Paste(
      image.GetSubImage({left, top, width, height}).Scale(across, down, wxIMAGE_QUALITY_BILINEAR),
      x, y);
  return made;
}

}  // namespace

void open_still_window(main_window& main, const std::string& picture, bool refused) {
  std::optional<still_source> source;
  still_choices preset;
  main.run("create m2v still", [&](document& doc) {
    source = look_at_picture(main, doc, picture, refused);
    if (!source)
      return;
    preset = preset_choices(*source, demands_of_project(doc.p), standard_named(doc.p.globalregion));
    preset.frames = stored_still_frames(doc.prefs);
  });
  if (!source)
    return;
  main.open_editor("create m2v still", [&](lent_project lent) -> wxTopLevelWindow* {
    auto* const window =
        new still_window(&main, std::move(lent), std::move(*source), preset,
                         [&main](const picture_still& still) { main.make_still(still); });
    window->Show();
    return window;
  });
}

still_window::still_window(wxWindow* main, lent_project lent, still_source source,
                           const still_choices& preset,
                           std::function<void(const picture_still&)> closed)
    : wxDialog(main, wxID_ANY, "Corvane - still of a picture", wxDefaultPosition, wxDefaultSize,
               wxDEFAULT_DIALOG_STYLE | wxRESIZE_BORDER, "still"),
      lent_(std::move(lent)),
      still_{std::move(source), preset, {}, false},
      closed_(std::move(closed)),
      life_(*this, *main, lent_.ask(), {{}, {}, [this] {
                                          lent_.give_back();
                                          if (proceed_)
                                            closed_(still_);
                                        }}) {
  still_.m2v = still_name(still_.source.file, [](const std::string& f) { return entry_exists(f); });
  name_control(*this, "still");
  SetIcons(program_icon());
  const wxSizerFlags next = wxSizerFlags().Expand().Border(wxTOP, FromDIP(layout::group_gap));
  auto* const both = new wxBoxSizer(wxHORIZONTAL);
  both->Add(make_preview(), wxSizerFlags(1).Expand());
  both->AddSpacer(FromDIP(layout::column_gap));
  both->Add(make_choices());
  auto* const groups = new wxBoxSizer(wxVERTICAL);
  groups->Add(make_heading(), wxSizerFlags().Expand());
  groups->Add(both, wxSizerFlags(next).Proportion(1));
  groups->Add(make_place(), next);
  groups->Add(make_buttons(), next);
  auto* const whole = new wxBoxSizer(wxVERTICAL);
  whole->Add(groups, wxSizerFlags(1).Expand().Border(wxALL, FromDIP(layout::window_border)));
  SetSizerAndFit(whole);
  set_size_on_screen(*this, GetClientSize());
  bind_controls();
  show_preview();
  show_place();
  CentreOnParent();
  life_.begin();
  decoding_ = std::async(std::launch::async, [file = still_.source.file] {
    return source_picture(file, 0, decoded_width, decoded_height);
  });
  poll_.Start(poll_picture_milliseconds);
  aspect_->SetFocus();
}

wxSizer* still_window::make_heading() {
  const still_source& source = still_.source;
  auto* const text = new wxStaticText(this, wxID_ANY, wxString());
  wxClientDC dc(text);
  const int width = layout::still_width - 2 * layout::window_border;
  text->SetLabelText(wrapped(
      dc,
      wx_text("\"" + sanitized(native_file_name(source.file)) + "\", " +
              trimmed(source.shown.size.width) + "x" + trimmed(source.shown.size.height) +
              " pixels, becomes a still of the size that a disc has.  The picture itself stays as "
              "it is."),
      FromDIP(width)));
  name_control(*text, "summary");
  auto* const row = new wxBoxSizer(wxHORIZONTAL);
  row->Add(text, wxSizerFlags(1));
  return row;
}

// The disc's picture has an edge that is seen, also where it has bars; so it has its own
// proportions in a place that keeps its size.
wxSizer* still_window::make_preview() {
  const wxSize room(layout::still_picture_width, layout::still_picture_height);
  preview_ = new video_picture(this);
  preview_->set_full_size(room);
  name_drawn_control(*preview_, "preview", control_role::picture);
  auto* const column = new wxBoxSizer(wxVERTICAL);
  column->AddStretchSpacer();
  column->Add(preview_, wxSizerFlags().CentreHorizontal());
  described_ = new wxStaticText(this, wxID_ANY, wxString());
  name_control(*described_, "described");
  column->Add(described_,
              wxSizerFlags().CentreHorizontal().Border(wxTOP, FromDIP(layout::control_gap)));
  column->AddStretchSpacer();
  column->SetMinSize(FromDIP(room) +
                     wxSize(0, described_->GetBestSize().y + FromDIP(layout::control_gap)));
  return column;
}

wxSizer* still_window::make_choices() {
  const int gap = FromDIP(layout::control_gap);
  auto* const grid = new wxFlexGridSizer(2, wxSize(gap, gap));
  const still_choices& now = still_.choices;
  aspect_ = make_labelled_choice(this, "&shape", "shape",
                                 "the proportions in which the disc's picture is shown",
                                 {"4:3", "16:9"}, *grid);
  aspect_->SetSelection(now.aspect == disc_aspect::sixteen_nine ? wide_entry : narrow_entry);
  fit_ =
      make_labelled_choice(this, "&picture", "picture",
                           "what is done when the picture is wider or narrower than the disc's",
                           {"all of it, with black bars", "fill the screen, cut the rest"}, *grid);
  fit_->SetSelection(now.fit == picture_fit::cropped ? cropped_entry : bars_entry);
  standard_ = make_labelled_choice(this, "&DVD format", "standard", "the standard of the disc",
                                   {"NTSC (720x480)", "PAL (720x576)"}, *grid);
  standard_->SetSelection(now.standard == video_standard::pal ? pal_entry : ntsc_entry);
  wxStaticText* const words = make_label(this, "&frames");
  frames_ = make_spin(this, "frames", 1, most_still_frames,
                      "how many pictures long the still is; one is enough for a menu");
  frames_->SetValue(now.frames);
  label_leads_to(words, frames_);
  grid->Add(words, wxSizerFlags().CentreVertical());
  grid->Add(frames_, wxSizerFlags().Expand());
  return grid;
}

wxSizer* still_window::make_place() {
  wxStaticText* const label = make_label(this, "save &as:");
  place_ =
      new wxTextCtrl(this, wxID_ANY, wxString(), wxDefaultPosition, wxDefaultSize, wxTE_READONLY);
  name_control(*place_, "place");
  label_leads_to(label, place_);
  wxButton* const choose =
      make_button(this, "chooseplace", "c&hoose...", "choose another folder or name for the still",
                  [this] { choose_place(); });
  return labelled_row(label, place_, choose);
}

wxSizer* still_window::make_buttons() {
  auto* const make = new wxButton(this, wxID_OK, "&make the still");
  name_control(*make, "make");
  make->SetToolTip("write the video; the log shows how it goes");
  make->SetDefault();
  auto* const cancel = new wxButton(this, wxID_CANCEL, "ca&ncel");
  name_control(*cancel, "cancel");
  auto* const row = new wxBoxSizer(wxHORIZONTAL);
  row->AddStretchSpacer();
  row->Add(dialog_buttons(make, cancel));
  return row;
}

void still_window::bind_controls() {
  for (wxChoice* const choice : {standard_, aspect_, fit_})
    choice->Bind(wxEVT_CHOICE, [this](wxCommandEvent&) { take_choices(); });
  poll_.Bind(wxEVT_TIMER, [this](wxTimerEvent&) { take_picture(); });
  Bind(
      wxEVT_BUTTON, [this](wxCommandEvent&) { make(); }, wxID_OK);
  Bind(
      wxEVT_BUTTON, [this](wxCommandEvent&) { Close(); }, wxID_CANCEL);
}

void still_window::take_choices() {
  still_choices& now = still_.choices;
  now.standard =
      standard_->GetSelection() == pal_entry ? video_standard::pal : video_standard::ntsc;
  now.aspect =
      aspect_->GetSelection() == wide_entry ? disc_aspect::sixteen_nine : disc_aspect::four_three;
  now.fit = fit_->GetSelection() == cropped_entry ? picture_fit::cropped : picture_fit::bars;
  now.frames = frames_->GetValue();
  show_preview();
}

void still_window::show_preview() {
  const picture_geometry g = geometry_of(still_.source, still_.choices);
  const wxSize shape = g.aspect == disc_aspect::sixteen_nine ? wxSize(16, 9) : wxSize(4, 3);
  const wxSize size(layout::still_picture_width, layout::still_picture_width * shape.y / shape.x);
  preview_->set_full_size(size);
  preview_->SetMinSize(FromDIP(size));
  if (image_.IsOk())
    preview_->show_picture(
        composed(image_, still_.source.shown.size, g, FromDIP(size) * GetContentScaleFactor()));
  described_->SetLabelText(wx_text(described(still_.source, g)));
  Layout();
}

void still_window::take_picture() {
  if (decoding_.wait_for(std::chrono::seconds(0)) != std::future_status::ready)
    return;
  poll_.Stop();
  const result<picture> got = decoding_.get();
  if (got && got->width > 0)
    image_ = image_of(*got);
  else
    preview_->show_reason(wx_text("The picture cannot be shown: " + got.error + "."));
  show_preview();
}

void still_window::show_place() {
  place_->ChangeValue(wx_text(still_.m2v));
  place_->SetToolTip(wx_text(still_.m2v));
}

void still_window::choose_place() {
  life_.during([this] {
    file_dialog dialog = still_file_dialog();
    dialog.preset = native_file_name(still_.m2v);
    dialog.folder = text_of(path_of(still_.m2v).parent_path());
    const std::string file = choose_still_file(lent_.doc(), dialog, still_.source.file);
    if (file.empty())
      return;
    still_.m2v = file;
    still_.replaces = entry_exists(file);
    show_place();
  });
}

void still_window::make() {
  life_.during([this] {
    take_choices();
    document& doc = lent_.doc();
    const std::string part = temporary_name(still_.m2v);
    if (entry_exists(part)) {
      say(doc, icon::exclamation,
          "The file \"" + sanitized(part) +
              "\" is in the way.  Please remove it, or choose another name for the still.");
      return;
    }
    keep_still_frames(doc.prefs, still_.choices.frames);
    proceed_ = true;
  });
  if (proceed_)
    life_.leave();
}

}  // namespace corvane
