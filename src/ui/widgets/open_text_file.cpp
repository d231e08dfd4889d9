#include "ui/widgets/open_text_file.h"

#ifdef _WIN32
#include "platform/processes/desktop.h"
#else
#include "ui/widgets/wx_text.h"

#include <wx/log.h>
#include <wx/process.h>
#include <wx/utils.h>

#include <chrono>
#include <utility>
#include <vector>
#endif

namespace corvane {

#ifdef _WIN32

bool open_text_file(const std::string& path, std::function<void()> /*none_came*/) {
  return !make_desktop()->edit_text(path);
}

#else

namespace {

using steady = std::chrono::steady_clock;

/// An editor may end as it likes, once somebody has used it.
constexpr auto time_to_come = std::chrono::seconds(10);

class started_editor : public wxProcess {
 public:
  explicit started_editor(std::function<void()> none_came) : none_came_(std::move(none_came)) {}
  void OnTerminate(int /*process*/, int status) override {
    if (status != 0 && steady::now() - began_ < time_to_come)
      none_came_();
    delete this;
  }

 private:
  std::function<void()> none_came_;
  steady::time_point began_ = steady::now();
};

}  // namespace

bool open_text_file(const std::string& path, std::function<void()> none_came) {
  const wxLogNull quiet;  // the caller tells the user, in its own words
  const wxString program = "xdg-open", file = wx_text(path);
  const std::vector<const wchar_t*> words{program.wc_str(), file.wc_str(), nullptr};
  auto* const editor = new started_editor(std::move(none_came));
  if (wxExecute(words.data(), wxEXEC_ASYNC, editor) != 0)
    return true;
  delete editor;
  return false;
}

#endif

}  // namespace corvane
