// An empty wxWidgets window: what the main window's start is compared with.
#include <wx/app.h>
#include <wx/frame.h>

namespace {

class empty_app : public wxApp {
 public:
  bool OnInit() override {
    auto* const frame = new wxFrame(nullptr, wxID_ANY, "empty");
    frame->Show();
    return true;
  }
};

}  // namespace

wxIMPLEMENT_APP(empty_app);
