// Stands in for every outside tool: notes that it was called, and how it is to end is asked of the
// file "behaviour" beside it ("fail": status 1; "wait": not before the file is gone).
#include <filesystem>
#include <fstream>
#include <string>
#include <windows.h>

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
  return behaviour == "fail" ? 1 : 0;
}
