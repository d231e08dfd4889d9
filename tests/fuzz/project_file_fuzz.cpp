// Any bytes as a project file: they are refused with a reason, or they are a project whose own text
// reads back as the same.
#include "formats/numbers.h"
#include "must.h"
#include "project/project_file.h"
#include "project/project_text.h"

#include <cstddef>
#include <cstdint>
#include <string_view>

namespace {

corvane::project project_of(const corvane::loaded_project& l) {
  corvane::project p;
  p.List11 = l.List11;
  p.chapters = l.chapters;
  p.delay = l.delay;
  p.languagetags = l.languagetags;
  p.menulist = l.menulist;
  p.moremenuoptions = l.moremenuoptions;
  p.menubuttons = l.menubuttons;
  p.postinfo = l.postinfo;
  p.subtitledata = l.subtitledata;
  p.subtitleoptions = l.subtitleoptions;
  p.firstplay = l.firstplay;
  p.globalregion = l.globalregion;
  p.isocreate = l.isocreate;
  p.jumptable = l.jumptable;
  p.customxml = l.customxml;
  return p;
}

/// Elements that write no line come back only where a menu has them.
void drop_empty_end(corvane::loaded_project& l) {
  while (l.menubuttons.size() > 1 && l.menubuttons.back().empty())
    l.menubuttons.pop_back();
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  const std::string_view text(reinterpret_cast<const char*>(data), size);
  must(corvane::version_number(text).size() <= 110, "a version number fits into a message");
  auto loaded = corvane::parse_project(text);
  if (!loaded) {
    must(!loaded.error.empty() && loaded.error.size() < 200, "a refusal has a short reason");
    return 0;
  }
  const std::string written = corvane::project_text(project_of(*loaded));
  auto again = corvane::parse_project(written);
  must(static_cast<bool>(again), "what was read can be written and read again");
  must(corvane::project_text(project_of(*again)) == written, "the second save has the same bytes");
  drop_empty_end(*loaded);
  drop_empty_end(*again);
  must(*again == *loaded, "the second load has the same contents");
  return 0;
}
