#include "platform/settings/settings_store.h"
#include "platform/text/utf16_windows.h"

#include <cstddef>
#include <map>
#include <optional>
#include <utility>
#include <windows.h>

namespace corvane {
namespace {

/// An open registry key.
class registry_key {
 public:
  explicit registry_key(HKEY key) : key_(key) {}
  ~registry_key() {
    if (key_ != nullptr)
      ::RegCloseKey(key_);
  }
  registry_key(const registry_key&) = delete;
  registry_key& operator=(const registry_key&) = delete;

  std::optional<std::string> text(const std::wstring& name) const {
    DWORD type = 0;
    DWORD bytes = 0;
    if (key_ == nullptr ||
        ::RegQueryValueExW(key_, name.c_str(), nullptr, &type, nullptr, &bytes) != ERROR_SUCCESS ||
        (type != REG_SZ && type != REG_EXPAND_SZ))
      return std::nullopt;
    std::wstring value(bytes / sizeof(wchar_t), L'\0');
    auto* const buffer = reinterpret_cast<BYTE*>(value.data());
    if (::RegQueryValueExW(key_, name.c_str(), nullptr, &type, buffer, &bytes) != ERROR_SUCCESS)
      return std::nullopt;
    value.resize(bytes / sizeof(wchar_t));
    // Stored with the zero that ends it, unless another program left it out.
    if (!value.empty() && value.back() == L'\0')
      value.pop_back();
    return utf8_of_utf16(value);
  }

  bool set_text(const std::wstring& name, const std::wstring& value) const {
    const auto bytes = static_cast<DWORD>((value.size() + 1) * sizeof(wchar_t));
    return key_ != nullptr &&
           ::RegSetValueExW(key_, name.c_str(), 0, REG_SZ,
                            reinterpret_cast<const BYTE*>(value.c_str()), bytes) == ERROR_SUCCESS;
  }

 private:
  HKEY key_;
};

class registry_settings : public settings {
 public:
  explicit registry_settings(const std::string& place) : place_(utf16(place)) {}

  std::string get(std::string_view key) const override {
    if (const auto own = unwritten_.find(key); own != unwritten_.end())
      return own->second;
    HKEY handle = nullptr;
    if (::RegOpenKeyExW(HKEY_CURRENT_USER, place_.c_str(), 0, KEY_QUERY_VALUE, &handle) !=
        ERROR_SUCCESS)
      return {};
    return registry_key(handle).text(utf16(key)).value_or(std::string());
  }

  void set(std::string_view key, std::string_view value) override {
    HKEY handle = nullptr;
    if (::RegCreateKeyExW(HKEY_CURRENT_USER, place_.c_str(), 0, nullptr, 0, KEY_SET_VALUE, nullptr,
                          &handle, nullptr) != ERROR_SUCCESS)
      handle = nullptr;
    if (registry_key(handle).set_text(utf16(key), utf16(value)))
      unwritten_.erase(std::string(key));
    else
      unwritten_[std::string(key)] = value;
  }

 private:
  std::wstring place_;
  std::map<std::string, std::string, std::less<>> unwritten_;
};

}  // namespace

std::string user_settings_place() {
  return "Software\\Corvane\\preferences";
}

std::unique_ptr<settings> settings_at(const std::string& place) {
  return std::make_unique<registry_settings>(place);
}

std::unique_ptr<settings> user_settings() {
  return settings_at(user_settings_place());
}

}  // namespace corvane
