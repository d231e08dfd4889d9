#include "media/source_probe.h"

#include "media/cut_short.h"
#include "media/source_file.h"
#include "media/source_reader.h"

#include <algorithm>
#include <array>
#include <span>
#include <string_view>
#include <utility>

namespace corvane {

namespace {

class file_bytes : public source_bytes {
 public:
  file_bytes(source_file file, std::stop_token stop)
      : file_(std::move(file)), stop_(std::move(stop)) {}

  std::int64_t size() const override { return static_cast<std::int64_t>(file_.size()); }

  std::optional<std::size_t> read(std::int64_t position, std::uint8_t* to,
                                  std::size_t count) override {
    if (position < 0 || stop_.stop_requested())
      return std::nullopt;
    if (file_.read(static_cast<std::uint64_t>(position), count, bytes_))
      return std::nullopt;
    std::copy(bytes_.begin(), bytes_.end(), to);
    return bytes_.size();
  }

 private:
  source_file file_;
  std::stop_token stop_;
  byte_vector bytes_;
};

using known_heads = std::span<const std::string_view>;

bool begins_with_one(std::string_view text, known_heads heads) {
  return std::any_of(heads.begin(), heads.end(),
                     [text](std::string_view head) { return text.starts_with(head); });
}

// Photographs as phones make them since 2017: in the container of films, but of a kind that FFmpeg
// does not put together.
constexpr auto photographs =
    std::to_array<std::string_view>({"ftypheic", "ftypheix", "ftyphevc", "ftypheim", "ftypmif1",
                                     "ftypmsf1", "ftypavif", "ftypavis"});

// Texts that name other files or places on a network: playlists, and descriptions of broadcasts.
constexpr auto lists = std::to_array<std::string_view>(
    {"#EXTM3U", "ffconcat version", "[playlist]", "[Reference]", "<asx", "<ASX", "<?wpl", "<smil",
     "<MPD", "v=0\r", "v=0\n", "RTSPtext"});

/// Behind the line that says that it is XML.
std::string_view without_xml_line(std::string_view text) {
  if (!text.starts_with("<?xml"))
    return text;
  text.remove_prefix(std::min(text.size(), text.find('>') + 1));
  text.remove_prefix(std::min(text.size(), text.find_first_not_of(" \t\r\n")));
  return text;
}

/// Why a file of a known kind is not read; not set for all others.
failure why_not_kind(source_bytes& bytes) {
  std::array<std::uint8_t, 512> head{};
  const auto count = bytes.read(0, head.data(), head.size());
  std::string_view text(reinterpret_cast<const char*>(head.data()), count.value_or(0));
  if (begins_with_one(text.substr(std::min<std::size_t>(text.size(), 4)), photographs))
    return "it is a picture of a kind that is not read here (HEIC or AVIF): save it as JPEG or PNG";
  if (text.starts_with("\xEF\xBB\xBF"))
    text.remove_prefix(3);
  if (begins_with_one(without_xml_line(text), lists))
    return "it only lists other files, or places on a network: choose the files themselves";
  return std::nullopt;
}

/// Does something with a reader and the bytes of a file.
template <typename Told, typename Ask>
result<Told> read_source(const std::string& path, const Ask& ask,
                         const std::stop_token& stop = {}) {
  using told = result<Told>;
  auto file = source_file::open(path);
  if (!file)
    return told::fail(file.error);
  file_bytes bytes(std::move(*file), stop);
  if (const failure why = why_not_kind(bytes))
    return told::fail(*why);
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

result<pcm_sound> source_sound(const std::string& path, double most_seconds,
                               const std::stop_token& stop) {
  auto sound = read_source<pcm_sound>(
      path,
      [=](source_reader& reader, source_bytes& bytes) {
        return reader.sound(bytes, source_limits(), std::min(most_seconds, longest_source_sound));
      },
      stop);
  return stop.stop_requested() ? result<pcm_sound>::fail("it was stopped") : std::move(sound);
}

}  // namespace corvane
