// Stands in for every outside tool: makes the files that the tool of its name would make, of what
// it was told and what it read, so that whoever calls it otherwise gets other files.
//
// A file "fails-NAME" beside it makes the tool of that name end with status 1, its work half done.
#include "formats/text.h"
#include "platform/files/files.h"
#include "platform/files/paths.h"
#include "platform/files/program_folder.h"
#include "platform/processes/spawn.h"

#include <cstdio>
#include <fcntl.h>
#include <fstream>
#include <io.h>
#include <string>
#include <vector>

namespace {

using corvane::file_exists;
using corvane::join_path;
using corvane::path_of;
using corvane::read_file;
using corvane::text_of;

std::vector<std::string> words;

std::string told() {
  std::string text;
  for (const std::string& word : words)
    text += "[" + word + "]";
  return text + "\n";
}

std::string contents(const std::string& file) {
  return file_exists(file) ? *read_file(file, 1u << 30) : "(no " + file + ")\n";
}

std::string standard_input() {
  std::string text;
  for (int c = std::getchar(); c != EOF; c = std::getchar())
    text += static_cast<char>(c);
  return text;
}

/// The word after this one.
std::string after(const std::string& word) {
  for (std::size_t i = 0; i + 1 < words.size(); ++i)
    if (words[i] == word)
      return words[i + 1];
  return {};
}

void write(const std::string& file, const std::string& text) {
  std::ofstream(path_of(file), std::ios::binary) << text;
}

/// The values of an attribute in a control file.
std::vector<std::string> values(const std::string& xml, const std::string& attribute) {
  std::vector<std::string> found;
  const std::string begin = " " + attribute + "=\"";
  for (auto at = xml.find(begin); at != std::string::npos; at = xml.find(begin, at)) {
    at += begin.size();
    found.push_back(corvane::replace_all(xml.substr(at, xml.find('"', at) - at), "&amp;", "&"));
  }
  return found;
}

/// A disc of one file: all streams of the navigation XML. It is none that a player would take.
void author(const std::string& navigation) {
  const std::string xml = contents(navigation);
  const std::string folder = join_path(values(xml, "dest").at(0), "VIDEO_TS");
  std::string vob = xml;
  for (const std::string& file : values(xml, "file"))
    vob += contents(file);
  corvane::make_folders(folder);
  write(join_path(folder, "VTS_01_1.VOB"), vob);
}

void act(const std::string& name) {
  if (name == "mplex" || name == "mpeg2enc")
    write(after("-o"), told() + standard_input());
  else if (name == "jpeg2yuv")
    corvane::write_output(told() + contents(after("-j")));
  else if (name == "gm")
    write(words.back(), contents(words.back()) + told());
  else if (name == "spumux")
    corvane::write_output(standard_input() + told() + contents(words.back()));
  else if (name == "dvdauthor")
    author(after("-x"));
  else if (name == "mkisofs")
    write(after("-o"), told() + contents(join_path(words.back(), "VIDEO_TS\\VTS_01_1.VOB")));
}

}  // namespace

int main(int argc, char** argv) {
  ::_setmode(0, _O_BINARY);
  words = corvane::utf8_arguments(argc, argv);
  const auto program = path_of(corvane::own_executable());
  const std::string name = text_of(program.stem());
  act(name);
  if (!file_exists(text_of(program.parent_path() / ("fails-" + name))))
    return 0;
  std::fputs("not today\n", stderr);
  return 1;
}
