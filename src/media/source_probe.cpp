#include "media/source_probe.h"

#include "media/cut_short.h"
#include "media/source_file.h"
#include "media/source_reader.h"

#include <algorithm>
#include <array>
#include <string_view>
#include <utility>

namespace corvane {

namespace {

class file_bytes : public source_bytes {
 public:
  explicit file_bytes(source_file file) : file_(std::move(file)) {}

  std::int64_t size() const override { return static_cast<std::int64_t>(file_.size()); }

  std::optional<std::size_t> read(std::int64_t position, std::uint8_t* to,
                                  std::size_t count) override {
    if (position < 0)
      return std::nullopt;
    if (file_.read(static_cast<std::uint64_t>(position), count, bytes_))
      return std::nullopt;
    std::copy(bytes_.begin(), bytes_.end(), to);
    return bytes_.size();
  }

 private:
  source_file file_;
  byte_vector bytes_;
};

/// Whether it is a photograph as phones make them since 2017: in the container of films, but of a
/// kind that FFmpeg does not put together.
bool is_photograph(source_bytes& bytes) {
  constexpr std::array<std::string_view, 8> brands = {"ftypheic", "ftypheix", "ftyphevc",
                                                      "ftypmif1", "ftypmsf1", "ftypheim",
                                                      "ftypavif", "ftypavis"};
  std::array<std::uint8_t, 12> head{};
  const auto count = bytes.read(0, head.data(), head.size());
  return count && *count == head.size() &&
         std::any_of(brands.begin(), brands.end(), [&](std::string_view brand) {
           return std::equal(brand.begin(), brand.end(), head.begin() + 4);
         });
}

/// Does something with a reader and the bytes of a file.
template <typename Told, typename Ask>
result<Told> read_source(const std::string& path, const Ask& ask) {
  using told = result<Told>;
  auto file = source_file::open(path);
  if (!file)
    return told::fail(file.error);
  file_bytes bytes(std::move(*file));
  if (is_photograph(bytes))
    return told::fail(
        "it is a picture of a kind that is not read here (HEIC or AVIF): save it as JPEG or PNG");
  const auto reader = make_source_reader();
  if (!reader)
    return told::fail(reader.error);
  auto answer = ask(**reader, bytes);
  if (!answer && answer.error == damaged_source && is_cut_short(bytes))
    return told::fail("it ends in the middle: what is needed to read it stood in the rest");
  return answer;
}

}  // namespace

result<source_facts> probe_source(const std::string& path) {
  return read_source<source_facts>(path, [](source_reader& reader, source_bytes& bytes) {
    auto facts = reader.facts(bytes, source_limits());
    if (facts)
      facts->cut_short = is_cut_short(bytes);
    return facts;
  });
}

result<picture> source_picture(const std::string& path, double seconds, int most_width,
                               int most_height) {
  return read_source<picture>(path, [=](source_reader& reader, source_bytes& bytes) {
    return reader.picture_at(bytes, source_limits(), seconds, most_width, most_height);
  });
}

}  // namespace corvane
