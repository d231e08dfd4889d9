#include "ui/disc/verified_window.h"

#include "tools/finding_list.h"
#include "ui/disc/reading_box.h"
#include "ui/main_window.h"
#include "ui/widgets/control_name.h"
#include "ui/widgets/icons.h"
#include "ui/widgets/layout.h"
#include "ui/widgets/screen_fit.h"
#include "ui/widgets/wx_text.h"

#include <wx/button.h>
#include <wx/dialog.h>
#include <wx/font.h>
#include <wx/sizer.h>
#include <wx/statbmp.h>
#include <wx/stattext.h>
#include <wx/textctrl.h>

#include <functional>
#include <optional>
#include <utility>

namespace corvane {
namespace {

const char* picture_of_all(const finding_list& findings) {
  if (findings.count(finding_severity::error) > 0)
    return "found-error";
  return findings.count(finding_severity::warning) > 0 ? "found-warning" : "found-nothing";
}

class verified_window : public wxDialog {
 public:
  verified_window(wxWindow& owner, const verified_disc& disc, std::function<void()> save)
      : wxDialog(&owner, wxID_ANY, "disc", wxDefaultPosition, wxDefaultSize,
                 wxDEFAULT_DIALOG_STYLE | wxRESIZE_BORDER, "disc"),
        text_(wx_lines(verified_text(disc))) {
    const int border = FromDIP(layout::window_border), gap = FromDIP(layout::control_gap);
    auto* const whole = new wxBoxSizer(wxVERTICAL);
    whole->Add(make_summary(disc), wxSizerFlags().Expand().Border(wxALL, border));
    whole->Add(make_text(), wxSizerFlags(1).Expand().Border(wxLEFT | wxRIGHT, border));
    auto* const row = new wxBoxSizer(wxHORIZONTAL);
    auto* const copy = new wxButton(this, wxID_ANY, "&copy");
    auto* const save_as = new wxButton(this, wxID_ANY, "&save as text...");
    auto* const close = new wxButton(this, wxID_CANCEL, "close");
    name_control(*copy, "copy");
    name_control(*save_as, "save");
    name_control(*close, "close");
    row->Add(copy);
    row->Add(save_as, wxSizerFlags().Border(wxLEFT, gap));
    row->AddStretchSpacer();
    row->Add(close);
    whole->Add(row, wxSizerFlags().Expand().Border(wxALL, border));
    SetSizer(whole);
    SetMinClientSize(whole->CalcMin());
    set_size_on_screen(*this, FromDIP(wxSize(layout::xml_width, layout::xml_height)));
    CentreOnParent();
    close->SetFocus();
    copy->Bind(wxEVT_BUTTON, [this](wxCommandEvent&) { copy_to_clipboard(text_); });
    save_as->Bind(wxEVT_BUTTON, [save = std::move(save)](wxCommandEvent&) { save(); });
  }

 private:
  wxSizer* make_summary(const verified_disc& disc) {
    const finding_list findings(disc.findings, files_read::whole);
    auto* const row = new wxBoxSizer(wxHORIZONTAL);
    auto* const picture = new wxStaticBitmap(
        this, wxID_ANY, icon_picture(picture_of_all(findings), layout::button_icon));
    auto* const summary = new wxStaticText(this, wxID_ANY, wx_text(findings.summary()),
                                           wxDefaultPosition, wxDefaultSize, wxST_ELLIPSIZE_END);
    name_control(*summary, "summary");
    row->Add(picture, wxSizerFlags().CentreVertical());
    row->Add(summary,
             wxSizerFlags(1).CentreVertical().Border(wxLEFT, FromDIP(layout::control_gap)));
    return row;
  }

  wxTextCtrl* make_text() {
    auto* const text = new wxTextCtrl(this, wxID_ANY, text_, wxDefaultPosition,
                                      FromDIP(wxSize(layout::list_height, layout::list_height)),
                                      wxTE_MULTILINE | wxTE_READONLY | wxTE_DONTWRAP);
    text->SetFont(
        wxFont(wxFontInfo(text->GetFont().GetFractionalPointSize()).Family(wxFONTFAMILY_TELETYPE)));
    name_control(*text, "text");
    text->SetInsertionPoint(0);
    return text;
  }

  wxString text_;
};

}  // namespace

void verify_disc(main_window& main) {
  main.run("verify disc", [&main](document& doc) {
    verification_equipment e{main.app(), main.material(), {}};
    e.material.examine = [&main](examination& look) {
      const bool whole = read_with_box(main,
                                       {"Reading the files of the project...", "&Skip",
                                        "Hold the disc against what is known of the files so far"},
                                       look);
      return whole ? look_end::whole : look_end::skipped;
    };
    e.read = [&main](verification& look) {
      return read_with_box(main, {"Reading the disc...", "&Stop", "Read no more of the disc"},
                           look);
    };
    const std::optional<verified_disc> disc = verify_command(doc, e);
    if (disc)
      verified_window(main, *disc, [&doc, &disc] { save_verified(doc, *disc); }).ShowModal();
  });
}

}  // namespace corvane
