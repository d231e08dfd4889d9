// What stands in the Windows programs beside their code: what they need of the system, their
// manifest, what Explorer tells of them, their icon.
#include "platform/files/files.h"
#include "platform/files/paths.h"
#include "platform/files/program_folder.h"
#include "platform/text/utf16_windows.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <cstddef>
#include <cstring>
#include <filesystem>
#include <memory>
#include <string>
#include <type_traits>
#include <vector>
#include <windows.h>

namespace corvane {
namespace {

using testing::AllOf;
using testing::ElementsAre;
using testing::HasSubstr;

constexpr std::size_t largest_program = 64u << 20;

std::string path_of_program(const std::string& name) {
  return text_of(path_of(own_executable()).parent_path() / name);
}

/// A program file, read as the system's loader would.
class program_file {
 public:
  explicit program_file(const std::string& name)
      : bytes_(*read_file(path_of_program(name), largest_program)),
        headers_(
            at<IMAGE_NT_HEADERS64>(static_cast<std::size_t>(at<IMAGE_DOS_HEADER>(0).e_lfanew))) {}

  WORD subsystem() const { return headers_.OptionalHeader.Subsystem; }

  /// Names of the DLLs that are loaded with it.
  std::vector<std::string> needed() const {
    std::vector<std::string> names;
    std::size_t next =
        place(headers_.OptionalHeader.DataDirectory[IMAGE_DIRECTORY_ENTRY_IMPORT].VirtualAddress);
    for (;; next += sizeof(IMAGE_IMPORT_DESCRIPTOR)) {
      const auto one = at<IMAGE_IMPORT_DESCRIPTOR>(next);
      if (one.Name == 0)
        return names;
      names.emplace_back(bytes_.c_str() + place(one.Name));
    }
  }

 private:
  template <class part>
  part at(std::size_t offset) const {
    part value{};
    if (offset + sizeof value <= bytes_.size())
      std::memcpy(&value, bytes_.data() + offset, sizeof value);
    return value;
  }

  /// Where in the file what stands at an address of the loaded program is.
  std::size_t place(DWORD address) const {
    std::size_t section = static_cast<std::size_t>(at<IMAGE_DOS_HEADER>(0).e_lfanew) +
                          offsetof(IMAGE_NT_HEADERS64, OptionalHeader) +
                          headers_.FileHeader.SizeOfOptionalHeader;
    for (int i = 0; i < headers_.FileHeader.NumberOfSections; ++i) {
      const auto s = at<IMAGE_SECTION_HEADER>(section);
      if (address >= s.VirtualAddress && address - s.VirtualAddress < s.SizeOfRawData)
        return address - s.VirtualAddress + s.PointerToRawData;
      section += sizeof s;
    }
    return bytes_.size();
  }

  std::string bytes_;
  IMAGE_NT_HEADERS64 headers_;
};

/// A program loaded for its resources only.
class program_resources {
 public:
  explicit program_resources(const std::string& name)
      : module_(::LoadLibraryExW(utf16(path_of_program(name)).c_str(), nullptr,
                                 LOAD_LIBRARY_AS_DATAFILE)) {}

  std::string bytes(const wchar_t* name, const wchar_t* type) const {
    const HRSRC found = ::FindResourceW(module_.get(), name, type);
    if (found == nullptr)
      return {};
    const void* const data = ::LockResource(::LoadResource(module_.get(), found));
    return {static_cast<const char*>(data), ::SizeofResource(module_.get(), found)};
  }

  /// Names of all resources of a kind, in the order of the file; of a number "#1".
  std::vector<std::string> names(const wchar_t* type) const {
    std::vector<std::string> all;
    ::EnumResourceNamesW(
        module_.get(), type,
        [](HMODULE, const wchar_t*, wchar_t* name, LONG_PTR to) -> BOOL {
          auto* list = reinterpret_cast<std::vector<std::string>*>(to);
          list->push_back(IS_INTRESOURCE(name)
                              ? "#" + std::to_string(reinterpret_cast<std::uintptr_t>(name))
                              : utf8_of_utf16(name));
          return TRUE;
        },
        reinterpret_cast<LONG_PTR>(&all));
    return all;
  }

 private:
  struct unload {
    void operator()(HMODULE module) const { ::FreeLibrary(module); }
  };
  std::unique_ptr<std::remove_pointer_t<HMODULE>, unload> module_;
};

/// What Explorer shows of a program under a name such as "ProductName".
std::string told(const std::string& program, const std::string& what) {
  const std::wstring path = utf16(path_of_program(program));
  std::vector<char> block(::GetFileVersionInfoSizeW(path.c_str(), nullptr));
  void* text = nullptr;
  UINT length = 0;
  const std::wstring entry = utf16("\\StringFileInfo\\040904B0\\" + what);
  if (block.empty() ||
      ::GetFileVersionInfoW(path.c_str(), 0, static_cast<DWORD>(block.size()), block.data()) == 0 ||
      ::VerQueryValueW(block.data(), entry.c_str(), &text, &length) == 0)
    return {};
  return utf8_of_utf16(static_cast<const wchar_t*>(text));
}

class WindowsPrograms : public testing::TestWithParam<std::string> {};

INSTANTIATE_TEST_SUITE_P(Each, WindowsPrograms, testing::ValuesIn<std::string>({CORVANE_PROGRAMS}));

TEST_P(WindowsPrograms, NeedNoLibraryBesideTheSystemsOwn) {
  wchar_t folder[MAX_PATH] = {};
  ASSERT_NE(::GetSystemDirectoryW(folder, MAX_PATH), 0U);
  const std::vector<std::string> needed = program_file(GetParam()).needed();
  EXPECT_THAT(needed, testing::Contains(testing::StrCaseEq("KERNEL32.dll")));
  for (const std::string& name : needed) {
    EXPECT_TRUE(std::filesystem::exists(std::filesystem::path(folder) / path_of(name))) << name;
    EXPECT_FALSE(file_exists(path_of_program(name))) << name;
  }
}

TEST_P(WindowsPrograms, CarryOurManifestAndNoOther) {
  const program_resources resources(GetParam());
  EXPECT_THAT(resources.names(RT_MANIFEST), ElementsAre("#1"));
  EXPECT_THAT(resources.bytes(MAKEINTRESOURCEW(1), RT_MANIFEST),
              AllOf(HasSubstr(">UTF-8</activeCodePage>"), HasSubstr(">true</longPathAware>"),
                    HasSubstr(">PerMonitorV2, PerMonitor</dpiAwareness>"),
                    HasSubstr("name=\"Microsoft.Windows.Common-Controls\" version=\"6.0.0.0\""),
                    HasSubstr("level=\"asInvoker\"")));
}

TEST_P(WindowsPrograms, TellWhatTheyAre) {
  const std::string& program = GetParam();
  EXPECT_EQ(told(program, "ProductName"), "Corvane");
  EXPECT_EQ(told(program, "ProductVersion"), CORVANE_VERSION);
  EXPECT_EQ(told(program, "FileVersion"), CORVANE_VERSION);
  EXPECT_EQ(told(program, "OriginalFilename"), program);
  EXPECT_THAT(told(program, "FileDescription"), testing::StartsWith("Corvane, "));
  EXPECT_THAT(told(program, "LegalCopyright"), HasSubstr("The Corvane developers"));
}

TEST_P(WindowsPrograms, OnlyTheOneWithWindowsOpensNoConsole) {
  const bool windows = GetParam() == "corvane.exe";
  EXPECT_EQ(program_file(GetParam()).subsystem(),
            windows ? IMAGE_SUBSYSTEM_WINDOWS_GUI : IMAGE_SUBSYSTEM_WINDOWS_CUI);
}

#ifdef CORVANE_WITH_WINDOWS
// A directory of icons: six bytes, then fourteen for each, which begin with its edge (0: 256).
TEST(WindowsProgram, HasItsIconFirstInAllSizesThatWindowsAsksFor) {
  const program_resources resources("corvane.exe");
  const std::vector<std::string> names = resources.names(RT_GROUP_ICON);
  ASSERT_FALSE(names.empty());
  EXPECT_EQ(names[0], "APPLICATION");
  const std::string icons = resources.bytes(L"APPLICATION", RT_GROUP_ICON);
  std::vector<int> edges;
  for (std::size_t i = 6; i + 14 <= icons.size(); i += 14)
    edges.push_back(static_cast<unsigned char>(icons[i]));
  EXPECT_THAT(edges, ElementsAre(16, 24, 32, 48, 64, 0));
}
#endif

}  // namespace
}  // namespace corvane
