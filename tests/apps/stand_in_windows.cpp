// Stands in for every outside tool: notes that it was called, and how it is to end is asked of the
// file "behaviour" beside it ("fail": status 1; "wait": not before the file is gone). As dvdauthor
// it makes the folder VIDEO_TS.
#include <filesystem>
#include <fstream>
#include <iterator>
#include <string>
#include <system_error>
#include <windows.h>

namespace {

// As dvdauthor makes it: the folder that the navigation XML in the current folder names.
void make_disc_folder() {
  std::ifstream xml("config.xml", std::ios::binary);
  const std::string text{std::istreambuf_iterator<char>(xml), {}};
  const std::string attribute = "dest=\"";
  const std::size_t begin = text.find(attribute);
  if (begin == std::string::npos)
    return;
  const std::size_t from = begin + attribute.size();
  const std::string name = text.substr(from, text.find('"', from) - from);
  std::error_code ignored;
  std::filesystem::create_directories(
      std::filesystem::path(std::u8string(name.begin(), name.end())) / "VIDEO_TS", ignored);
}

}  // namespace

int main() {
  std::wstring path(32768, L'\0');
  path.resize(::GetModuleFileNameW(nullptr, path.data(), static_cast<DWORD>(path.size())));
  const std::filesystem::path folder = std::filesystem::path(path).parent_path();
  std::ofstream(folder / "calls", std::ios::app)
      << std::filesystem::path(path).stem().string() << '\n';
  std::string behaviour;
  std::ifstream(folder / "behaviour") >> behaviour;
  while (behaviour == "wait" && std::filesystem::exists(folder / "behaviour"))
    ::Sleep(20);
  if (behaviour != "fail" && std::filesystem::path(path).stem() == "dvdauthor")
    make_disc_folder();
  return behaviour == "fail" ? 1 : 0;
}
