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

std::string dialog_folders::folder_for(const file_dialog& dialog) const {
  const std::string kind = kind_of(dialog);
  const auto own = by_kind_.find(kind);
  const std::string in_order[] = {dialog.folder, own == by_kind_.end() ? "" : own->second,
                                  moved_ ? last_ : "", prefs_.get(kind)};
  for (const std::string& folder : in_order)
    if (!folder.empty() && folder_exists(folder))
      return folder;
  return last_;
}

void dialog_folders::left_at(const file_dialog& dialog, const std::string& path) {
  last_ = text_of(path_of(path).parent_path());
  moved_ = true;
  const std::string kind = kind_of(dialog);
  by_kind_[kind] = last_;
  prefs_.set(kind, last_);
}

}  // namespace corvane
