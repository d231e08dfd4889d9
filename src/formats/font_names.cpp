#include "formats/font_names.h"

#include "formats/font_tag.h"
#include "formats/text.h"
#include "platform/text/utf8.h"

#include <algorithm>
#include <cstddef>
#include <cstdint>

namespace corvane {
namespace {

constexpr std::size_t most_names = 400, longest_name = 512, most_fonts = 64;

/// Big-endian numbers at a place in the file; 0 beyond its end.
class font_bytes {
 public:
  explicit font_bytes(std::string_view file) : file_(file) {}
  std::uint32_t u16(std::size_t at) const { return byte(at) << 8 | byte(at + 1); }
  std::uint32_t u32(std::size_t at) const { return u16(at) << 16 | u16(at + 2); }
  std::string_view text(std::size_t at, std::size_t size) const {
    return at > file_.size() || size > file_.size() - at ? std::string_view()
                                                         : file_.substr(at, size);
  }

 private:
  std::uint32_t byte(std::size_t at) const {
    return at < file_.size() ? static_cast<unsigned char>(file_[at]) : 0;
  }

  std::string_view file_;
};

std::string text_of_utf16(std::string_view bytes) {
  const font_bytes units(bytes);
  std::string text;
  for (std::size_t at = 0; at + 1 < bytes.size(); at += 2) {
    std::uint32_t code = units.u16(at);
    const std::uint32_t next = units.u16(at + 2);
    if (code >= 0xD800 && code < 0xDC00 && next >= 0xDC00 && next < 0xE000) {
      code = 0x10000 + ((code - 0xD800) << 10) + (next - 0xDC00);
      at += 2;
    }
    const bool is_none = code == 0 || (code >= 0xD800 && code < 0xE000);
    text += is_none ? "?" : utf8_text(code);
  }
  return text;
}

void add_names_of_table(const font_bytes& bytes, std::size_t table,
                        std::vector<std::string>& names) {
  constexpr std::uint32_t family = 1, full = 4, typographic_family = 16, macintosh = 1;
  const std::uint32_t count = bytes.u16(table + 2);
  const std::size_t texts = table + bytes.u16(table + 4);
  for (std::uint32_t i = 0; i < count && names.size() < most_names; ++i) {
    const std::size_t record = table + 6 + std::size_t{12} * i;
    const std::uint32_t platform = bytes.u16(record);
    const std::uint32_t kind = bytes.u16(record + 6);
    const std::size_t size = bytes.u16(record + 8);
    if ((kind != family && kind != full && kind != typographic_family) || size > longest_name)
      continue;
    const std::string_view text = bytes.text(texts + bytes.u16(record + 10), size);
    if (!text.empty())
      names.push_back(platform == macintosh ? std::string(text) : text_of_utf16(text));
  }
}

void add_names_of_font(const font_bytes& bytes, std::size_t font, std::vector<std::string>& names) {
  const std::uint32_t tables = bytes.u16(font + 4);
  for (std::uint32_t i = 0; i < tables; ++i) {
    const std::size_t entry = font + 12 + std::size_t{16} * i;
    if (bytes.u32(entry) == font_tag("name"))
      return add_names_of_table(bytes, bytes.u32(entry + 8), names);
  }
}

std::string folded(std::string_view name) {
  std::string text = lower(name);
  std::erase(text, ' ');
  return text;
}

}  // namespace

std::vector<std::string> font_names(std::string_view file) {
  const font_bytes bytes(file);
  std::vector<std::string> names;
  const std::uint32_t kind = bytes.u32(0);
  if (kind == 0x00010000 || kind == font_tag("OTTO") || kind == font_tag("true")) {
    add_names_of_font(bytes, 0, names);
  } else if (kind == font_tag("ttcf")) {
    const std::size_t count = std::min<std::size_t>(bytes.u32(8), most_fonts);
    for (std::size_t i = 0; i < count; ++i)
      add_names_of_font(bytes, bytes.u32(12 + 4 * i), names);
  }
  return names;
}

std::vector<std::string> families_asked_for(std::string_view name) {
  return split(name.substr(0, name.find(':')), ',');
}

bool is_font_name(std::string_view name, const std::vector<std::string>& names) {
  return std::any_of(names.begin(), names.end(), [wanted = folded(name)](const std::string& one) {
    return folded(one) == wanted;
  });
}

}  // namespace corvane
