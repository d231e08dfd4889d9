#include "project/dialog_folders.h"

#include "formats/text.h"
#include "platform/files/files.h"
#include "platform/files/paths.h"

#include <utility>

namespace corvane {
namespace {

/// "folder-select-audio-stream": what stands in brackets does not make another kind.
std::string kind_of(const file_dialog& dialog) {
  std::string kind = "folder";
  bool between = true;
  for (const char c : lower(dialog.title.substr(0, dialog.title.find('(')))) {
    const bool letter = (c >= 'a' && c <= 'z') || (c >= '0' && c <= '9');
    if (letter && between)
      kind += '-';
    if (letter)
      kind += c;
    between = !letter;
  }
  return kind;
}

}  // namespace

dialog_folders::dialog_folders(settings& prefs, std::string first)
    : prefs_(prefs), last_(std::move(first)) {}

std::string dialog_folders::folder_for(const file_dialog& dialog) {
  const std::string kind = kind_of(dialog);
  const auto is_there = [](const std::string& folder) {
    return !folder.empty() && folder_exists(folder);
  };
  if (is_there(dialog.folder))
    return dialog.folder;
  if (const auto own = by_kind_.find(kind); own != by_kind_.end() && is_there(own->second))
    return own->second;
  if (moved_ && is_there(last_))
    return last_;
  // Looked at once: a disk that is not connected may take its time to say so.
  const auto [known, is_new] = earlier_.try_emplace(kind);
  if (is_new) {
    const std::string folder = prefs_.get(kind);
    known->second = is_there(folder) ? folder : std::string();
  }
  return known->second.empty() ? last_ : known->second;
}

void dialog_folders::left_at(const file_dialog& dialog, const std::string& path) {
  last_ = text_of(path_of(path).parent_path());
  moved_ = true;
  const std::string kind = kind_of(dialog);
  by_kind_[kind] = last_;
  prefs_.set(kind, last_);
}

}  // namespace corvane
