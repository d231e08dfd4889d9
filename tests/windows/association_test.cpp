// "register .cvp extension" with the real registry editor: what its two scripts leave in the
// registry.
#include "tools/association.h"

#include "platform/processes/desktop.h"
#include "platform/text/utf16_windows.h"
#include "support/command_test.h"

#include <chrono>
#include <filesystem>
#include <functional>
#include <thread>
#include <windows.h>

namespace corvane {
namespace {

/// A default value or a named one; nothing when it is not there.
std::optional<std::string> value(const std::wstring& key, const std::wstring& name = L"") {
  std::wstring text(1024, L'\0');
  auto bytes = static_cast<DWORD>(text.size() * sizeof(wchar_t));
  if (::RegGetValueW(HKEY_CLASSES_ROOT, key.c_str(), name.c_str(), RRF_RT_REG_SZ, nullptr,
                     text.data(), &bytes) != ERROR_SUCCESS)
    return std::nullopt;
  text.resize(bytes / sizeof(wchar_t) - 1);
  return utf8_of_utf16(text);
}

std::optional<DWORD> number(const std::wstring& key, const std::wstring& name) {
  DWORD found = 0;
  DWORD bytes = sizeof found;
  if (::RegGetValueW(HKEY_CLASSES_ROOT, key.c_str(), name.c_str(), RRF_RT_REG_DWORD, nullptr,
                     &found, &bytes) != ERROR_SUCCESS)
    return std::nullopt;
  return found;
}

/// The registry editor works on after it was started.
bool comes(const std::function<bool()>& condition) {
  for (int i = 0; i < 300; ++i) {
    if (condition())
      return true;
    std::this_thread::sleep_for(std::chrono::milliseconds(100));
  }
  return false;
}

const std::wstring command_key = L"cvp_auto_file\\shell\\open\\command";

class RegistryEditor : public testing_support::command_test {
 protected:
  RegistryEditor() { std::filesystem::create_directories(path_of(app_)); }
  ~RegistryEditor() override {
    ::RegDeleteTreeW(HKEY_CLASSES_ROOT, L"cvp_auto_file");
    ::RegDeleteTreeW(HKEY_CLASSES_ROOT, L".cvp");
  }
  association_result associate() {
    return register_command(doc, {app_, join_path(app_, "corvane.exe"), "", {}, *desktop_});
  }
  std::string command() const { return "\"" + join_path(app_, "corvane.exe") + "\" %1"; }

  const std::string app_ = folder.path("Corvane ü & Söhne");
  const std::unique_ptr<desktop> desktop_ = make_desktop();
};

TEST_F(RegistryEditor, ImportsTheAssociation) {
  EXPECT_EQ(associate(), association_result::associated);
  EXPECT_TRUE(comes([&] { return value(command_key) == command(); }))
      << value(command_key).value_or("nothing");
  EXPECT_EQ(value(L".cvp"), "cvp_auto_file");
  EXPECT_EQ(value(L"cvp_auto_file"), "corvane project");
  EXPECT_EQ(number(L"cvp_auto_file", L"EditFlags"), 0u);
  EXPECT_EQ(number(L"cvp_auto_file", L"BrowserFlags"), 8u);
  EXPECT_EQ(value(L"cvp_auto_file\\DefaultIcon"), join_path(app_, "corvane.exe") + ",0");
  EXPECT_EQ(value(L"cvp_auto_file\\shell"), "");
}

TEST_F(RegistryEditor, ImportsTheSameValuesAgain) {
  EXPECT_EQ(associate(), association_result::associated);
  ASSERT_TRUE(comes([&] { return value(command_key) == command(); }));
  ::RegDeleteTreeW(HKEY_CLASSES_ROOT, L"cvp_auto_file");
  EXPECT_EQ(associate(), association_result::associated);
  EXPECT_TRUE(comes([&] { return value(command_key) == command(); }));
}

TEST_F(RegistryEditor, TakesTheAssociationBack) {
  EXPECT_EQ(associate(), association_result::associated);
  ASSERT_TRUE(comes([&] { return value(command_key) == command(); }));
  EXPECT_FALSE(desktop_->import_registry(join_path(app_, "removeextension.reg")));
  EXPECT_TRUE(comes([] { return !value(L".cvp") && !value(L"cvp_auto_file"); }));
  EXPECT_EQ(value(command_key), std::nullopt);
}

}  // namespace
}  // namespace corvane
