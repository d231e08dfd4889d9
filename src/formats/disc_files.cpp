#include "formats/disc_files.h"

#include "formats/text.h"
#include "platform/files/files.h"
#include "platform/files/paths.h"

#include <algorithm>
#include <cstring>
#include <fstream>
#include <limits>
#include <map>
#include <utility>

namespace corvane {

namespace {

class file_source : public byte_source {
 public:
  file_source(std::ifstream file, std::uint64_t size) : file_(std::move(file)), size_(size) {}
  std::uint64_t size() const override { return size_; }

  bool read(std::uint64_t at, std::span<std::uint8_t> buffer) override {
    if (at > size_ || buffer.size() > size_ - at)
      return false;
    file_.clear();
    // Seeking throws away what the stream has read ahead.
    if (at != next_ && !file_.seekg(static_cast<std::streamoff>(at)))
      return lost();
    if (!file_.read(reinterpret_cast<char*>(buffer.data()),
                    static_cast<std::streamsize>(buffer.size())))
      return lost();
    next_ = at + buffer.size();
    return true;
  }

 private:
  bool lost() {
    next_ = std::numeric_limits<std::uint64_t>::max();
    return false;
  }

  std::ifstream file_;
  std::uint64_t size_;
  std::uint64_t next_ = 0;  // where the stream stands
};

/// The folder's entry of that name in any case of letters; empty: none. A folder that has it in two
/// ways is read by the way that is as it stands in `name`, or the first.
std::string entry_of(const std::string& folder, std::string_view name,
                     bool (*is)(std::string_view)) {
  std::string exact = join_path(folder, name);
  if (is(exact))
    return exact;
  std::vector<std::string> found;
  std::error_code error;
  for (std::filesystem::directory_iterator at(path_of(folder), error), end; !error && at != end;
       at.increment(error)) {
    std::string path = text_of(at->path());
    if (upper(text_of(at->path().filename())) == name && is(path))
      found.push_back(std::move(path));
  }
  std::sort(found.begin(), found.end());
  return found.empty() ? std::string() : found.front();
}

/// Files that stand anywhere, each by its own path.
class native_files : public disc_files {
 public:
  void add(const std::string& path, const std::string& native) {
    files_.push_back({path, file_size(native).value_or(0), 0});
    native_.emplace(path, native);
  }
  void sort() { std::ranges::sort(files_, {}, &disc_file::path); }

  const std::vector<disc_file>& files() const override { return files_; }

  bool read(const disc_file& file, std::uint64_t at, std::span<std::uint8_t> buffer) override {
    if (!open_ || open_path_ != file.path) {
      auto known = native_.find(file.path);
      const disc_file* const same = known == native_.end() ? find(file.path) : nullptr;
      if (same != nullptr)
        known = native_.find(same->path);
      if (known == native_.end())
        return false;
      auto opened = open_bytes(known->second);
      if (!opened)
        return false;
      open_ = std::move(*opened);
      open_path_ = file.path;
    }
    return open_->read(at, buffer);
  }

 private:
  std::vector<disc_file> files_;
  std::map<std::string, std::string> native_;
  std::unique_ptr<byte_source> open_;  // the file that was read last
  std::string open_path_;
};

}  // namespace

bool memory_source::read(std::uint64_t at, std::span<std::uint8_t> buffer) {
  if (at > bytes_.size() || buffer.size() > bytes_.size() - at)
    return false;
  if (!buffer.empty())
    std::memcpy(buffer.data(), bytes_.data() + at, buffer.size());
  return true;
}

result<std::unique_ptr<byte_source>> open_bytes(std::string_view native_path) {
  using opened = result<std::unique_ptr<byte_source>>;
  const auto size = file_size(native_path);
  if (!size)
    return opened::fail("there is no file " + std::string(native_path));
  std::ifstream file(path_of(native_path), std::ios::binary);
  if (!file)
    return opened::fail(std::string(native_path) + " cannot be read");
  return opened::ok(std::make_unique<file_source>(std::move(file), *size));
}

const disc_file* disc_files::find(std::string_view path) const {
  const std::string wanted = upper(path);
  for (const disc_file& file : files())
    if (upper(file.path) == wanted)
      return &file;
  return nullptr;
}

result<std::vector<std::uint8_t>> read_whole(disc_files& from, std::string_view path,
                                             std::uint64_t limit) {
  using whole = result<std::vector<std::uint8_t>>;
  const disc_file* const file = from.find(path);
  if (file == nullptr)
    return whole::fail("there is no " + std::string(path));
  if (file->size > limit)
    return whole::fail(std::string(path) + " is larger than it can be");
  std::vector<std::uint8_t> bytes(static_cast<std::size_t>(file->size));
  if (!from.read(*file, 0, bytes))
    return whole::fail(std::string(path) + " cannot be read");
  return whole::ok(std::move(bytes));
}

result<std::unique_ptr<disc_files>> open_folder(std::string_view native_folder) {
  using opened = result<std::unique_ptr<disc_files>>;
  const std::string folder(native_folder);
  std::string video = entry_of(folder, "VIDEO_TS", folder_exists);
  if (video.empty() && !entry_of(folder, "VIDEO_TS.IFO", file_exists).empty())
    video = folder;
  if (video.empty())
    return opened::fail("there is no VIDEO_TS in " + folder);
  auto files = std::make_unique<native_files>();
  for (const std::string& name : files_in(video))
    files->add("VIDEO_TS/" + upper(name), join_path(video, name));
  files->sort();
  return opened::ok(std::move(files));
}

result<std::unique_ptr<disc_files>> open_tree(std::string_view native_folder) {
  using opened = result<std::unique_ptr<disc_files>>;
  namespace fs = std::filesystem;
  const fs::path root = path_of(native_folder);
  auto files = std::make_unique<native_files>();
  std::error_code error;
  for (fs::recursive_directory_iterator at(root, error), end; !error && at != end;
       at.increment(error)) {
    std::error_code unknown;
    if (at->is_symlink(unknown) || !at->is_regular_file(unknown))
      continue;
    std::string path;
    for (const fs::path& part : at->path().lexically_relative(root))
      path += (path.empty() ? "" : "/") + text_of(part);
    files->add(path, text_of(at->path()));
  }
  if (error)
    return opened::fail(error.message());
  files->sort();
  return opened::ok(std::move(files));
}

}  // namespace corvane
