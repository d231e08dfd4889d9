#include "examine/examination.h"

#include "examine/bitmap_files.h"
#include "examine/button_rules.h"
#include "examine/chapter_rules.h"
#include "examine/navigation_rules.h"
#include "examine/setting_rules.h"
#include "examine/space_rules.h"
#include "examine/subtitle_text_rules.h"
#include "platform/files/paths.h"

#include <algorithm>
#include <chrono>
#include <iterator>
#include <set>
#include <utility>

namespace corvane {

struct fact_store::entry {
  file_stamp stamp;
  std::shared_ptr<const file_facts> facts;
};

std::shared_ptr<const file_facts> fact_store::find(const std::string& path, bool whole) const {
  const auto known = entries_.find(path);
  if (known == entries_.end() || (whole && !known->second->facts->whole))
    return nullptr;
  if (stamp_of(path) != known->second->stamp)
    return nullptr;
  return known->second->facts;
}

std::shared_ptr<const file_facts> fact_store::beginning(const std::string& path) {
  if (std::shared_ptr<const file_facts> known = find(path, false))
    return known;
  const auto stamp = stamp_of(path);
  const auto read = std::make_shared<const file_facts>(read_file_head(path));
  if (stamp && read->kind != file_kind::unreadable)
    keep(path, *stamp, *read);
  return read;
}

void fact_store::keep(const std::string& path, const file_stamp& stamp, file_facts facts) {
  entries_[path] = std::make_shared<const entry>(
      entry{stamp, std::make_shared<const file_facts>(std::move(facts))});
}

std::vector<std::string> files_of(const disc_description& d) {
  std::vector<std::string> files;
  std::set<std::string> seen;
  const auto add = [&](const std::string& stored) {
    const std::string native = native_from_stored(stored, native_style());
    if (!stored.empty() && seen.insert(native).second)
      files.push_back(native);
  };
  for (const disc_title& t : d.titles)
    for (const title_file* const file : t.files())
      std::for_each(file->streams.begin(), file->streams.end(), add);
  for (const auto* const menus : {&d.menus, &d.disc_menus})
    for (const disc_menu& m : *menus) {
      add(m.video());
      add(m.audio());
    }
  return files;
}

namespace {

// The whole video of a title, or a menu, if it has been read to its end.
const video_facts* whole_video(const facts_by_path& facts, const std::string& stored) {
  const auto file = facts.find(native_from_stored(stored, native_style()));
  if (file == facts.end() || !file->second->whole)
    return nullptr;
  if (file->second->video)
    return &*file->second->video;
  const inner_stream* const inside =
      file->second->program ? file->second->program->video() : nullptr;
  return inside != nullptr && inside->video ? &*inside->video : nullptr;
}

std::optional<double> seconds_of_video(const facts_by_path& facts, const std::string& stored) {
  const video_facts* const video = whole_video(facts, stored);
  return video == nullptr ? std::nullopt : std::optional(video->seconds);
}

menu_facts facts_of_menu(const facts_by_path& facts, const std::string& stored) {
  const auto file = facts.find(native_from_stored(stored, native_style()));
  return file == facts.end() ? menu_facts() : menu_facts_of(*file->second);
}

// Of a ready file, by its time stamps and NAV packs, of which dvdauthor makes units; of what is
// multiplexed, mplex begins one with each I picture.
title_length length_of_video(const facts_by_path& facts, const std::string& stored) {
  const auto file = facts.find(native_from_stored(stored, native_style()));
  if (file == facts.end() || !file->second->whole)
    return {};
  const file_facts& f = *file->second;
  if (f.program && !f.program->unit_begins.empty())
    return {f.program->shown_until, f.program->unit_begins, {}};
  return {
      seconds_of_video(facts, stored), f.video ? f.video->unit_begins : std::vector<double>(), {}};
}

void append(std::vector<finding>& all, std::vector<finding> more) {
  std::move(more.begin(), more.end(), std::back_inserter(all));
}

std::chrono::steady_clock::time_point moment_in(int milliseconds) {
  return std::chrono::steady_clock::now() + std::chrono::milliseconds(milliseconds);
}

}  // namespace

examination::examination(disc_description disc, depth how_deep, fact_store& store,
                         examination_around around)
    : disc_(std::move(disc)), depth_(how_deep), store_(store), around_(std::move(around)) {
  for (std::string& file : files_of(disc_))
    unseen_.push_back(std::move(file));
}

void examination::look_at_next_beginning() {
  const std::string file = std::move(unseen_.front());
  unseen_.pop_front();
  std::shared_ptr<const file_facts> known = store_.beginning(file);
  if (depth_ == depth::whole_files && !known->whole && known->kind != file_kind::unreadable) {
    waiting_.push_back(file);
    bytes_to_read_ += known->size;
  }
  facts_[file] = std::move(known);
}

void examination::begin_next_file() {
  scanned_ = std::move(waiting_.front());
  waiting_.pop_front();
  stamp_ = stamp_of(scanned_);
  scan_.emplace(scanned_);
}

void examination::finish_file() {
  const file_facts& facts = scan_->facts();
  bytes_of_files_read_ += facts_[scanned_]->size;
  facts_[scanned_] = std::make_shared<const file_facts>(facts);
  // A file that was written to while it was read is read again the next time.
  if (stamp_ && facts.kind != file_kind::unreadable && stamp_ == stamp_of(scanned_))
    store_.keep(scanned_, *stamp_, facts);
  scan_.reset();
  scanned_.clear();
}

bool examination::step_beginnings(int milliseconds) {
  const auto end = moment_in(milliseconds);
  while (!unseen_.empty()) {
    look_at_next_beginning();
    if (std::chrono::steady_clock::now() >= end)
      break;
  }
  return !unseen_.empty();
}

bool examination::step(int milliseconds) {
  const auto end = moment_in(milliseconds);
  if (step_beginnings(milliseconds))
    return true;
  while (scan_ || !waiting_.empty()) {
    if (!scan_)
      begin_next_file();
    if (!scan_->read_slice())
      finish_file();
    if (std::chrono::steady_clock::now() >= end)
      break;
  }
  return scan_ || !waiting_.empty();
}

std::uint64_t examination::bytes_read() const {
  const std::uint64_t read = bytes_of_files_read_ + (scan_ ? scan_->bytes_read() : 0);
  return std::min(read, bytes_to_read_);
}

// What the files' beginnings do not tell is left out with them: texts of subtitles are read whole.
std::vector<finding> examination::findings(depth how_deep) const {
  std::vector<finding> all = stream_findings(disc_, facts_);
  std::vector<title_length> lengths;
  std::vector<std::optional<double>> title_seconds;
  std::vector<menu_facts> of_menus;
  for (const disc_title& t : disc_.titles) {
    title_seconds.push_back(seconds_of_video(facts_, t.video()));
    lengths.push_back(length_of_video(facts_, t.video()));
    for (const title_file& file : t.further)
      lengths.back().further.push_back(length_of_video(facts_, file.video()));
  }
  for (const disc_menu& m : disc_.menus)
    of_menus.push_back(facts_of_menu(facts_, m.video()));
  append(all, chapter_findings(disc_, lengths));
  append(all, setting_findings(disc_, title_seconds));
  if (how_deep == depth::whole_files)
    append(all, subtitle_findings(disc_, native_style(), title_seconds,
                                  around_.fonts ? &*around_.fonts : nullptr));
  if (around_.fonts)
    append(all, subtitle_font_findings(disc_, *around_.fonts));
  append(all, navigation_findings(disc_, around_.customxml));
  append(all, moved_command_findings(disc_, around_.led_to));
  append(all, button_findings(disc_, of_menus));
  append(all, bitmap_file_findings(disc_));
  append(all, space_findings(disc_, around_.output_folder, around_.program_folder));
  sort_by_severity(all);
  return all;
}

void sort_by_severity(std::vector<finding>& findings) {
  std::stable_sort(findings.begin(), findings.end(),
                   [](const finding& a, const finding& b) { return a.severity > b.severity; });
}

}  // namespace corvane
