#include "windows/keys_and_screen.h"

#include "platform/files/paths.h"
#include "platform/text/utf16_windows.h"

#include <gtest/gtest.h>

#include <cstdlib>
#include <fstream>
#include <iterator>

namespace corvane::testing_support {
namespace {

INPUT key(WORD code, WORD character, DWORD flags) {
  INPUT input{};
  input.type = INPUT_KEYBOARD;
  input.ki.wVk = code;
  input.ki.wScan = character;
  input.ki.dwFlags = flags;
  return input;
}

void send(std::vector<INPUT> inputs) {
  EXPECT_EQ(::SendInput(static_cast<UINT>(inputs.size()), inputs.data(), sizeof(INPUT)),
            inputs.size());
}

pixels pixels_at(RECT place) {
  pixels seen;
  seen.width = place.right - place.left;
  seen.height = place.bottom - place.top;
  BITMAPINFO how{};
  how.bmiHeader.biSize = sizeof how.bmiHeader;
  how.bmiHeader.biWidth = seen.width;
  how.bmiHeader.biHeight = -seen.height;  // from the top
  how.bmiHeader.biPlanes = 1;
  how.bmiHeader.biBitCount = 32;
  HDC screen = ::GetDC(nullptr);
  HDC memory = ::CreateCompatibleDC(screen);
  void* bits = nullptr;
  HBITMAP bitmap = ::CreateDIBSection(screen, &how, DIB_RGB_COLORS, &bits, nullptr, 0);
  if (bitmap != nullptr && seen.width > 0 && seen.height > 0) {
    HGDIOBJ before = ::SelectObject(memory, bitmap);
    ::BitBlt(memory, 0, 0, seen.width, seen.height, screen, place.left, place.top, SRCCOPY);
    ::GdiFlush();
    const auto* from = static_cast<const std::uint8_t*>(bits);
    for (int pixel = 0; pixel < seen.width * seen.height; ++pixel, from += 4)
      seen.rgb.insert(seen.rgb.end(), {from[2], from[1], from[0]});
    ::SelectObject(memory, before);
  }
  ::DeleteObject(bitmap);
  ::DeleteDC(memory);
  ::ReleaseDC(nullptr, screen);
  return seen;
}

struct wanted_controls {
  std::wstring kind;
  std::vector<HWND> found;
};

BOOL CALLBACK look_at(HWND control, LPARAM to) {
  auto* wanted = reinterpret_cast<wanted_controls*>(to);
  std::wstring kind(256, L'\0');
  kind.resize(static_cast<std::size_t>(
      ::GetClassNameW(control, kind.data(), static_cast<int>(kind.size()))));
  if (kind == wanted->kind && ::IsWindowVisible(control))
    wanted->found.push_back(control);
  return TRUE;
}

}  // namespace

std::vector<HWND> shown_controls(HWND window, const std::string& kind) {
  wanted_controls wanted{utf16(kind), {}};
  ::EnumChildWindows(window, look_at, reinterpret_cast<LPARAM>(&wanted));
  return wanted.found;
}

void press(std::initializer_list<WORD> keys) {
  std::vector<INPUT> inputs;
  for (const WORD code : keys)
    inputs.push_back(key(code, 0, 0));
  for (auto code = std::rbegin(keys); code != std::rend(keys); ++code)
    inputs.push_back(key(*code, 0, KEYEVENTF_KEYUP));
  send(inputs);
}

void type_text(const std::string& text) {
  std::vector<INPUT> inputs;
  for (const wchar_t character : utf16(text))
    for (const DWORD flag : {DWORD{0}, DWORD{KEYEVENTF_KEYUP}})
      inputs.push_back(key(0, static_cast<WORD>(character), KEYEVENTF_UNICODE | flag));
  send(inputs);
}

void answer_file(const window_program& program, const std::string& title, const std::string& path) {
  HWND dialog = program.window(title);
  press({VK_CONTROL, 'A'});
  type_text(path);
  wait_until([&] { return find_control(dialog, "Edit", path) != nullptr; }, "the path " + path);
  press({VK_RETURN});
  wait_until([&] { return !program.has_window(title); }, "the end of \"" + title + '"');
}

pixels picture_file(const std::string& path) {
  std::ifstream file(path_of(path), std::ios::binary);
  std::string kind;
  int largest = 0;
  pixels picture;
  file >> kind >> picture.width >> picture.height >> largest;
  file.get();
  picture.rgb.resize(std::size_t{3} * static_cast<std::size_t>(picture.width * picture.height));
  file.read(reinterpret_cast<char*>(picture.rgb.data()),
            static_cast<std::streamsize>(picture.rgb.size()));
  EXPECT_TRUE(file && kind == "P6" && largest == 255) << path;
  return picture;
}

double difference(const pixels& seen, const pixels& wanted) {
  if (seen.rgb.empty() || wanted.rgb.empty())
    return 255;
  double sum = 0;
  for (int y = 0; y < seen.height; ++y)
    for (int x = 0; x < seen.width; ++x) {
      const auto at = [](const pixels& p, int column, int row) {
        return p.rgb.data() + 3 * (row * p.width + column);
      };
      const auto* one = at(seen, x, y);
      const auto* other =
          at(wanted, x * wanted.width / seen.width, y * wanted.height / seen.height);
      for (int channel = 0; channel < 3; ++channel)
        sum += std::abs(one[channel] - other[channel]);
    }
  return sum / (3.0 * seen.width * seen.height);
}

pixels pixels_of(HWND control) {
  RECT place{};
  ::GetClientRect(control, &place);
  ::MapWindowPoints(control, nullptr, reinterpret_cast<POINT*>(&place), 2);
  return pixels_at(place);
}

void screenshot(const std::string& name) {
  const char* folder = std::getenv("CORVANE_SCREENSHOTS");
  if (folder == nullptr)
    return;
  ::Sleep(500);
  const pixels seen =
      pixels_at({0, 0, ::GetSystemMetrics(SM_CXSCREEN), ::GetSystemMetrics(SM_CYSCREEN)});
  std::ofstream file(std::string(folder) + "/" + name + ".ppm", std::ios::binary);
  file << "P6\n" << seen.width << ' ' << seen.height << "\n255\n";
  file.write(reinterpret_cast<const char*>(seen.rgb.data()),
             static_cast<std::streamsize>(seen.rgb.size()));
}

}  // namespace corvane::testing_support
