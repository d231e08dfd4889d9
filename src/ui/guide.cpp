#include "ui/guide.h"

#include "platform/files/files.h"
#include "platform/files/paths.h"
#include "platform/files/program_folder.h"
#include "platform/processes/desktop.h"
#include "ui/widgets/wx_text.h"

#include <wx/event.h>
#include <wx/window.h>

#include <algorithm>
#include <array>
#include <filesystem>
#include <utility>

namespace corvane {
namespace {

constexpr const char* first_page = "index.html";

}  // namespace

const std::vector<guide_place>& guide_places() {
  static const std::vector<guide_place> places = {{"main", "main.html"},
                                                  {"chapter", "chapters.html"},
                                                  {"vchapters", "chapters-editor.html"},
                                                  {"Subtitles", "subtitles.html"},
                                                  {"cleansubtitles", "subtitles.html"},
                                                  {"language", "languages.html"},
                                                  {"menuselect", "menu-editor.html"},
                                                  {"tsmenu", "menu-editor.html"},
                                                  {"menumaker", "menu-maker.html"},
                                                  {"navcommands", "nav-commands.html"},
                                                  {"xmleditor", "xml-editor.html"},
                                                  {"log", "log.html"},
                                                  {"findings", "findings.html"},
                                                  {"findingsquestion", "findings.html"},
                                                  {"disc", "verify.html"},
                                                  {"discmap", "disc-map.html"},
                                                  {"import", "import.html"},
                                                  {"importlog", "import.html"},
                                                  {"still", "stills.html"}};
  return places;
}

const char* guide_page_about(const wxWindow* window) {
  for (; window != nullptr; window = window->GetParent()) {
    const std::string name = utf8_of(window->GetName());
    const auto found = std::ranges::find(guide_places(), name, &guide_place::window);
    if (window->IsTopLevel() && found != guide_places().end())
      return found->page;
  }
  return first_page;
}

std::string guide_folder() {
  const std::filesystem::path beside = path_of(own_executable()).parent_path();
  constexpr std::array places{"guide", "../share/doc/corvane/guide"};
  for (const char* const place : places) {
    const std::filesystem::path folder = (beside / place).lexically_normal();
    if (file_exists(text_of(folder / first_page)))
      return text_of(folder);
  }
  return {};
}

failure open_guide(desktop& user_desktop, const std::string& page) {
  const std::string folder = guide_folder();
  if (folder.empty())
    return "The user guide is not installed: the folder \"guide\" is neither beside the program "
           "nor among its documents.  Installing Corvane again brings it back.";
  const std::string file = join_path(folder, page);
  if (const failure why = user_desktop.show_page(file))
    return "The user guide could not be opened: " + *why +
           "\n\nPlease open this file in a web browser:\n" + file;
  return std::nullopt;
}

guide_key::guide_key(std::function<void(const char*)> open) : open_(std::move(open)) {
  wxEvtHandler::AddFilter(this);
}

guide_key::~guide_key() {
  wxEvtHandler::RemoveFilter(this);
}

// Each key comes first as one for the whole window.
int guide_key::FilterEvent(wxEvent& event) {
  if (event.GetEventType() != wxEVT_CHAR_HOOK)
    return Event_Skip;
  const auto& key = static_cast<const wxKeyEvent&>(event);
  const auto* const window = dynamic_cast<const wxWindow*>(event.GetEventObject());
  if (key.GetKeyCode() != WXK_F1 || key.HasAnyModifiers() || window == nullptr)
    return Event_Skip;
  open_(guide_page_about(window));
  return Event_Processed;
}

}  // namespace corvane
