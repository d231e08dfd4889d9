// The fonts that text subtitles can be drawn in: what is offered, and where the file is that a
// settings row names.
#pragma once

#include "platform/files/paths.h"
#include "platform/text/fonts.h"

#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace corvane {

struct offered_font {
  std::string name;  ///< as a person knows it
  std::string file;  ///< as settings rows hold it: the file's name in lower case
  std::string path;  ///< native
};

class font_list {
 public:
  font_list() = default;

  /// Of the installed fonts the TrueType ones (the file's name ends in "ttf" or "ttc", whatever its
  /// case), by name. Left out are files whose names a settings row cannot hold, and of two files of
  /// one name in different folders the second: it could not be told from the first. `style`
  /// is that of the paths.
  explicit font_list(std::vector<installed_font> installed, path_style style = native_style());

  const std::vector<offered_font>& fonts() const { return fonts_; }

  /// The first font of a file, whatever the case of the name; nullopt if there is none.
  std::optional<std::size_t> index_of(std::string_view file) const;

  /// Native path of a file; nullopt if it is not installed.
  std::optional<std::string> path_of_file(std::string_view file) const;

 private:
  std::vector<offered_font> fonts_;
};

/// What this system has.
font_list system_fonts();

}  // namespace corvane
