// With the iconv that spumux reads subtitles with: the C library's, and on Windows our own with the
// C library's tables.
#include "platform/text/charset.h"

#include <array>
#include <cerrno>
#include <iconv.h>

namespace corvane {
namespace {

/// Closed at its end.
class converter {
 public:
  explicit converter(const std::string& charset)
      : handle_(::iconv_open("UTF-8", charset.c_str())) {}
  ~converter() {
    if (is_open())
      ::iconv_close(handle_);
  }
  converter(const converter&) = delete;
  converter& operator=(const converter&) = delete;

  // The system's own way to say that it failed.
  bool is_open() const {
    return handle_ != reinterpret_cast<iconv_t>(-1);  // NOLINT(performance-no-int-to-ptr)
  }

  /// How many bytes could be decoded; what they are goes to the end of `text`, unless it is null.
  std::size_t decode(std::string_view bytes, std::string* text = nullptr) {
    std::array<char, 4096> made{};
    char* from = const_cast<char*>(bytes.data());  // iconv does not write there
    std::size_t left = bytes.size();
    while (left > 0) {
      char* to = made.data();
      std::size_t room = made.size();
      const bool failed =
          ::iconv(handle_, &from, &left, &to, &room) == static_cast<std::size_t>(-1);
      const bool is_full = failed && errno == E2BIG;
      if (text != nullptr)
        text->append(made.data(), to);
      if (failed && !is_full)
        break;
    }
    return bytes.size() - left;
  }

 private:
  iconv_t handle_;
};

}  // namespace

decoded_bytes decode(std::string_view bytes, const std::string& charset) {
  converter c(charset);
  if (!c.is_open())
    return {};
  decoded_bytes d;
  d.is_known = true;
  const std::size_t good = c.decode(bytes);
  if (good < bytes.size())
    d.bad = good;
  return d;
}

std::optional<std::string> in_utf8(std::string_view bytes, const std::string& charset) {
  converter c(charset);
  std::string text;
  if (!c.is_open() || c.decode(bytes, &text) < bytes.size())
    return std::nullopt;
  return text;
}

}  // namespace corvane
