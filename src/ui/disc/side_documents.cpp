#include "ui/disc/side_documents.h"

#include "authoring/avisynth_script.h"
#include "authoring/layout_report.h"
#include "platform/files/program_folder.h"
#include "tools/association.h"
#include "ui/main_window.h"
#include "ui/widgets/icons.h"

#include <string_view>

namespace corvane {
namespace {

std::string program_picture() {
  for (const embedded_icon& icon : embedded_icons())
    if (std::string_view(icon.name) == "corvane")
      return icon.svg;
  return {};
}

}  // namespace

void print_layout(main_window& main) {
  main.run([&main](document& doc) { layoutprint_command(doc, main.app(), main.user_desktop()); });
}

void create_avisynth_script(main_window& main) {
  main.run([&main](document& doc) { avisynth_command(doc, main.user_desktop()); });
}

void register_extension(main_window& main) {
  main.run([&main](document& doc) {
    register_command(doc, {main.app(), own_executable(), program_picture(), user_desktop_folders(),
                           main.user_desktop()});
  });
}

}  // namespace corvane
