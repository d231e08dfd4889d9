// Prints what a screen reader is told of a program: a line for each accessible object of the
// process whose number is the argument, "<role>\t<name>", and for one that holds a text another
// one, "holds\t<text>", with "|" for its line ends. Ends with 1 when the process does not come up
// on the accessibility bus.
#include <atspi/atspi.h>
#include <cstdio>
#include <cstdlib>
#include <unistd.h>

namespace {

void tell_text(AtspiAccessible* object) {
  AtspiText* const text = atspi_accessible_get_text_iface(object);
  if (text == nullptr)
    return;
  if (gchar* held = atspi_text_get_text(text, 0, -1, nullptr)) {
    std::printf("holds\t%s\n", g_strdelimit(held, "\n", '|'));
    g_free(held);
  }
  g_object_unref(text);
}

void tell(AtspiAccessible* object) {
  gchar* role = atspi_accessible_get_role_name(object, nullptr);
  gchar* name = atspi_accessible_get_name(object, nullptr);
  std::printf("%s\t%s\n", role == nullptr ? "" : role, name == nullptr ? "" : name);
  g_free(role);
  g_free(name);
  tell_text(object);
  const gint children = atspi_accessible_get_child_count(object, nullptr);
  for (gint i = 0; i < children; ++i)
    if (AtspiAccessible* child = atspi_accessible_get_child_at_index(object, i, nullptr)) {
      tell(child);
      g_object_unref(child);
    }
}

bool tell_process(guint process) {
  AtspiAccessible* desktop = atspi_get_desktop(0);
  const gint programs = atspi_accessible_get_child_count(desktop, nullptr);
  for (gint i = 0; i < programs; ++i) {
    AtspiAccessible* program = atspi_accessible_get_child_at_index(desktop, i, nullptr);
    if (program == nullptr || atspi_accessible_get_process_id(program, nullptr) != process)
      continue;
    tell(program);
    return true;
  }
  return false;
}

}  // namespace

int main(int argc, char** argv) {
  if (argc != 2 || atspi_init() > 1)
    return 2;
  const auto process = static_cast<guint>(std::strtoul(argv[1], nullptr, 10));
  for (int tries = 0; tries < 50; ++tries) {
    if (tell_process(process))
      return 0;
    usleep(100'000);
  }
  return 1;
}
