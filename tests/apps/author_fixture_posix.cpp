#include "apps/author_fixture_posix.h"

#include "platform/files/files.h"
#include "platform/files/paths.h"
#include "platform/files/program_folder.h"
#include "project/project_file.h"
#include "project/subtitle_rows.h"
#include "support/small_streams.h"

#include <gtest/gtest.h>

#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <sstream>

namespace corvane::testing_support {
namespace {

namespace fs = std::filesystem;

std::string quoted(const std::string& path) {
  std::string text = "'";
  for (const char c : path)
    text += c == '\'' ? std::string("'\\''") : std::string(1, c);
  return text + "'";
}

}  // namespace

AuthorProgram::AuthorProgram() {
  folder_.add("movie.m2v", small_video());
  folder_.add("movie.ac3", small_sound());
  // A disc is read back before it is called complete: only a real one is.
  add_tool("mplex", real("mplex"));
  add_tool("dvdauthor", "echo \"VIDEO_FORMAT=$VIDEO_FORMAT\"\n" + real("dvdauthor"));
  add_tool("mkisofs", real("mkisofs"));
  // So that none is told to be missing.
  for (const char* const name : {"gm", "spumux", "mpeg2enc", "jpeg2yuv"})
    add_tool(name, "");
  project_ = save(one_title(folder_));
}

std::string AuthorProgram::real(const std::string& tool) {
  const char* const path = std::getenv("PATH");
  std::istringstream folders(path == nullptr ? "" : path);
  for (std::string folder; std::getline(folders, folder, ':');)
    for (const std::string& name : {tool, tool == "mkisofs" ? std::string("genisoimage") : tool})
      if (file_exists(join_path(folder, name)))
        return "exec " + quoted(join_path(folder, name)) + " \"$@\"\n";
  ADD_FAILURE() << tool << " is not installed";
  return "exit 127\n";
}

void AuthorProgram::expect_a_disc() const {
  EXPECT_EQ(folder_.read("disc/VIDEO_TS/VIDEO_TS.IFO").substr(0, 12), "DVDVIDEO-VMG");
}

project AuthorProgram::one_title(const temporary_folder& folder) {
  project p;
  p.List11 = {folder.stored("movie.m2v") + "/" + folder.stored("movie.ac3")};
  p.chapters = {"0"};
  p.delay = {"0"};
  p.subtitledata = {"<none>"};
  p.subtitleoptions = {default_subtitleoptions("NTSC")};
  rebuild_List1(p);
  return p;
}

std::string AuthorProgram::save(const project& p, const std::string& name) const {
  return folder_.add(name, project_text(p));
}

void AuthorProgram::add_tool(const std::string& name, const std::string& body) const {
  const std::string notes = folder_.path("notes");
  fs::create_directories(notes);
  const std::string tool =
      folder_.add("tools/" + name, "#!/bin/sh\necho " + name + " >>" + quoted(notes + "/calls") +
                                       "\necho $$ >" + quoted(notes + "/" + name) + "\n" + body);
  fs::permissions(tool, fs::perms::owner_all);
}

void AuthorProgram::remove_tool(const std::string& name) const {
  fs::remove(folder_.path("tools/" + name));
}

program_start AuthorProgram::start(const std::vector<std::string>& arguments) const {
  program_start how;
  how.program = text_of(path_of(own_executable()).parent_path() / "corvane-author");
  how.arguments = arguments;
  how.environment = {{"PATH", folder_.path("tools")},
                     {"CORVANE_HOME", folder_.path("app")},
                     {"XDG_CONFIG_HOME", folder_.path("config")},
                     {"TEST_OUT", out()}};
  return how;
}

int AuthorProgram::run(const std::vector<std::string>& arguments) {
  return run_as(start(arguments));
}

int AuthorProgram::run_as(const program_start& how) {
  running_program program(how);
  const int status = program.wait();
  stdout_ = program.out();
  stderr_ = program.err();
  return status;
}

std::vector<std::string> AuthorProgram::calls() const {
  std::ifstream file(folder_.path("notes/calls"));
  std::vector<std::string> names;
  for (std::string name; std::getline(file, name);)
    names.push_back(name);
  return names;
}

pid_t AuthorProgram::tool_process(const std::string& name) const {
  std::ifstream file(folder_.path("notes/" + name));
  pid_t process = -1;
  file >> process;
  return file ? process : -1;
}

bool AuthorProgram::started(const std::string& name) const {
  return wait_until([&] { return tool_process(name) > 0; });
}

}  // namespace corvane::testing_support
