#include "examine/verification.h"

#include "examine/disc_rules.h"
#include "examine/examination.h"
#include "examine/found_disc.h"
#include "examine/image_comparison.h"
#include "examine/told_before.h"
#include "formats/disc_files.h"
#include "formats/disc_image.h"
#include "formats/text.h"
#include "platform/files/files.h"
#include "platform/files/paths.h"
#include "platform/files/read_buffer.h"

#include <algorithm>
#include <atomic>
#include <chrono>
#include <cstddef>
#include <filesystem>
#include <future>
#include <iterator>
#include <map>
#include <span>
#include <utility>

namespace corvane {
namespace {

constexpr std::size_t slice = std::size_t{128} << 10;
using slice_buffer = read_buffer<slice>;

}  // namespace

disc_place place_of_disc(const std::string& path) {
  return folder_exists(path) ? disc_place{path, {}} : disc_place{{}, path};
}

disc_place place_with_image(const std::string& path) {
  disc_place where = place_of_disc(path);
  if (where.folder.empty())
    return where;
  std::filesystem::path folder = path_of(path);
  if (!folder.has_filename())  // "film/"
    folder = folder.parent_path();
  if (upper(text_of(folder.filename())) == "VIDEO_TS")
    folder = folder.parent_path();
  const std::string image = text_of(folder) + ".iso";
  if (file_exists(image))
    where.image = image;
  return where;
}

struct verification::state {
  disc_place where;
  std::shared_ptr<const foreseen_run> asked;

  bool begun = false, done = false;
  std::unique_ptr<disc_files> disc, image;  // with a folder the image is beside it
  std::optional<disc_contents> contents;
  std::unique_ptr<disc_stream_reader> streams;
  std::size_t file = 0;
  std::uint64_t at = 0;       // in that file
  std::uint64_t earlier = 0;  // bytes of the files before it
  std::uint64_t to_read = 0;  // of the image, too
  std::string current;
  std::unique_ptr<slice_buffer> bytes;
  std::unique_ptr<image_comparison> comparison;

  std::vector<finding> findings;
  disc_traits found, foreseen;

  // Tables and navigation packs lie all over the disc; a drive takes minutes for them, in which
  // whoever waits wants to see that, and to stop it.
  struct tables_read {
    result<disc_contents> disc;
    std::optional<result<disc_contents>> image;
  };
  std::atomic<bool> stopped = false;
  std::future<tables_read> reading;

  void tell(std::string_view rule, const std::string& path, std::string what) {
    findings.push_back(disc_file_finding(rule, path, std::move(what)));
  }

  // Opening -------------------------------------------------------------------------------------

  void begin() {
    begun = true;
    if (!where.image.empty())
      open_image_file();
    if (!where.folder.empty()) {
      auto opened = open_folder(where.folder);
      if (opened)
        disc = std::move(*opened);
      else
        tell("disc-missing", where.folder, opened.error);
    } else {
      disc = std::move(image);
    }
    if (!disc)
      return end();
    for (const disc_file& one : disc->files())
      to_read += one.size * (image ? 2 : 1);
    reading = std::async(std::launch::async, [this] {
      const auto go_on = [this] { return !stopped; };
      return tables_read{read_disc(*disc, go_on),
                         image ? std::optional(read_disc(*image, go_on)) : std::nullopt};
    });
  }

  void take(tables_read tables) {
    if (!tables.disc) {
      tell("disc-missing", where.folder.empty() ? where.image : where.folder, tables.disc.error);
      return end();
    }
    contents = std::move(*tables.disc);
    streams = std::make_unique<disc_stream_reader>(*contents);
    find_parts();
    if (tables.image)
      look_at_image_tables(*tables.image);
    bytes = std::make_unique<slice_buffer>();
    if (image)
      begin_comparison();
  }

  void open_image_file() {
    auto source = open_bytes(where.image);
    if (!source)
      return tell("image-missing", where.image, source.error);
    const disc_image volumes = read_disc_image(**source);
    for (const image_volume* volume : {&volumes.iso9660, &volumes.udf}) {
      const std::string name = volume == &volumes.udf ? "UDF" : "ISO 9660";
      if (!volume->found)
        tell("image-volume", where.image, "there is no " + name + " volume in it");
      for (const table_trouble& trouble : volume->troubles)
        tell("image-volume", where.image, name + ": " + trouble.text());
    }
    for (const std::string& difference : volumes.differences)
      tell("image-volume", where.image, difference);
    auto opened = open_image(std::move(*source));
    if (opened)
      image = std::move(*opened);
    else
      tell("image-missing", where.image, opened.error);
  }

  /// What the tables in the image say of places; the rest is that of the folder.
  void look_at_image_tables(const result<disc_contents>& in_image) {
    if (!in_image)
      return tell("image-files", where.image, in_image.error);
    for (const disc_trouble& trouble : in_image->troubles)
      if (std::find(contents->troubles.begin(), contents->troubles.end(), trouble) ==
          contents->troubles.end())
        tell("image-files", trouble.file, trouble.what);
  }

  /// The files of the folder that goes into the image, VIDEO_TS and what stands beside it. Of a
  /// folder that is VIDEO_TS itself, those alone.
  result<std::unique_ptr<disc_files>> files_beside_image() const {
    auto tree = open_tree(where.folder);
    const bool is_above = tree && std::ranges::all_of(disc->files(), [&](const disc_file& one) {
                            return (*tree)->find(one.path) != nullptr;
                          });
    return is_above ? std::move(tree) : open_folder(where.folder);
  }

  bool is_newer_than_image(const std::string& path) const {
    std::error_code error;
    const auto time_of = [&](const std::string& native) {
      return std::filesystem::last_write_time(path_of(native), error);
    };
    return time_of(join_path(where.folder, path)) > time_of(where.image) && !error;
  }

  void begin_comparison() {
    auto files = files_beside_image();
    if (!files)
      return tell("disc-missing", where.folder, files.error);
    image_files_matched matched =
        match_files(*disc, **files, *image,
                    [this](const std::string& path) { return is_newer_than_image(path); });
    for (image_files_matched::difference& one : matched.differences)
      tell("image-files", one.path, std::move(one.what));
    comparison =
        std::make_unique<image_comparison>(std::move(*files), *image, std::move(matched.pairs));
  }

  // Reading -------------------------------------------------------------------------------------

  /// A piece of the work; false when there is no more, or none before `until`.
  bool work(std::chrono::steady_clock::time_point until) {
    if (reading.valid()) {
      if (reading.wait_until(until) != std::future_status::ready)
        return false;
      take(reading.get());
      return !done;
    }
    if (comparison && !comparison->keep_with(earlier + at, until))
      return false;
    if (read_slice())
      return true;
    if (comparison) {
      const auto differing = comparison->differing(until);
      if (!differing)
        return false;
      for (const std::string& path : *differing)
        tell("image-files", path, "is not the same in the image as in the folder");
    }
    end();
    return false;
  }

  /// The next slice; false at the end.
  bool read_slice() {
    const std::vector<disc_file>& files = disc->files();
    while (file < files.size() && at >= files[file].size) {
      earlier += files[file++].size;
      at = 0;
    }
    if (file == files.size())
      return false;
    const disc_file& one = files[file];
    current = one.path;
    const auto size = static_cast<std::size_t>(std::min<std::uint64_t>(slice, one.size - at));
    const std::span<std::uint8_t> part = bytes->first(size);
    if (!disc->read(one, at, part)) {
      tell("disc-file", one.path, "cannot be read from byte " + std::to_string(at) + " on");
      at = one.size;
      return true;
    }
    feed(one, part);
    at += size;
    return true;
  }

  /// Where the bytes of a file lie in its VOBs.
  struct part_of_vobs {
    const disc_vobs* vobs = nullptr;
    std::uint64_t before = 0;  // bytes of the files before it
  };
  std::map<const disc_file*, part_of_vobs> parts;

  void find_parts() {
    for (const disc_vobs& vobs : contents->vobs) {
      std::uint64_t before = 0;
      for (const std::string& name : vobs.files)
        if (const disc_file* const of_vobs = disc->find(name)) {
          parts.emplace(of_vobs, part_of_vobs{&vobs, before});
          before += of_vobs->size;
        }
    }
  }

  void feed(const disc_file& one, std::span<const std::uint8_t> part) {
    const auto of = parts.find(&one);
    if (of != parts.end() && part.size() % disc_sector_size == 0)
      streams->feed(*of->second.vobs,
                    static_cast<std::uint32_t>((of->second.before + at) / disc_sector_size), part);
  }

  // Judging -------------------------------------------------------------------------------------

  void end() {
    done = true;
    current.clear();
    if (!contents)
      return;
    const disc_streams all = streams->finish();
    found = found_disc(*contents, all);
    const std::vector<finding> own = disc_findings(*contents, all);
    findings.insert(findings.end(), own.begin(), own.end());
    if (asked) {
      foreseen = asked->disc;
      for (const disc_title_contents& title : contents->titles)
        if (title.number <= static_cast<int>(asked->chapters.size())) {
          foresee_chapters(title, asked->chapters[static_cast<std::size_t>(title.number) - 1],
                           foreseen);
          find_landed_chapters(title, foreseen, found);
        }
      for (finding& one : differences(foreseen, found, asked->told))
        findings.push_back(std::move(one));
      soften_what_was_told(findings, *asked);
    }
    sort_by_severity(findings);
  }
};

verification::verification(disc_place where, std::shared_ptr<const foreseen_run> foreseen)
    : state_(std::make_unique<state>()) {
  state_->where = std::move(where);
  state_->asked = std::move(foreseen);
}

verification::~verification() {
  state_->stopped = true;
}

bool verification::step(int milliseconds) {
  const auto end = std::chrono::steady_clock::now() + std::chrono::milliseconds(milliseconds);
  if (!state_->begun)
    state_->begin();
  while (!state_->done && std::chrono::steady_clock::now() < end && state_->work(end)) {
  }
  return !state_->done;
}

std::uint64_t verification::bytes_to_read() const {
  return state_->to_read;
}

std::uint64_t verification::bytes_read() const {
  return (state_->earlier + state_->at) * (state_->image ? 2 : 1);
}

const std::string& verification::current_file() const {
  return state_->current;
}

const std::vector<finding>& verification::findings() const {
  return state_->findings;
}

const disc_traits& verification::found() const {
  return state_->found;
}

const disc_traits& verification::foreseen() const {
  return state_->foreseen;
}

}  // namespace corvane
