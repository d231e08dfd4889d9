// main() of the window tests: the toolkit in the main thread, the tests in one of their own.
#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <wx/app.h>
#include <wx/log.h>

#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <thread>

namespace {

class test_app : public wxApp {
 public:
  bool OnInit() override {
    SetAppName("corvane");
    SetExitOnFrameDelete(false);
    tests_ = std::thread([this] {
      status_ = RUN_ALL_TESTS();
      CallAfter([this] { ExitMainLoop(); });
    });
    return true;
  }

  int OnRun() override {
    wxApp::OnRun();
    tests_.join();
    return status_;
  }

  void OnAssertFailure(const wxChar* file, int line, const wxChar* /*function*/,
                       const wxChar* condition, const wxChar* message) override {
    std::fprintf(stderr, "wxWidgets: %s:%d: %s: %s\n",
                 static_cast<const char*>(wxString(file).utf8_str()), line,
                 static_cast<const char*>(wxString(condition).utf8_str()),
                 static_cast<const char*>(wxString(message).utf8_str()));
    std::abort();
  }

 private:
  std::thread tests_;
  int status_ = 1;
};

}  // namespace

int main(int argc, char** argv) {
  testing::InitGoogleMock(&argc, argv);
  if (GTEST_FLAG_GET(list_tests))
    return RUN_ALL_TESTS();
  if (std::getenv("DISPLAY") == nullptr) {
    std::fputs("no display: start these tests with run_under_xvfb.sh\n", stderr);
    return 2;
  }
  wxApp::SetInstance(new test_app);
  return wxEntry(argc, argv);
}
