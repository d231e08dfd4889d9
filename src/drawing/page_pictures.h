// The real pictures for pages: of films at a title's start or a chapter's time, and of picture
// files.
//
// A disc's own streams are looked through as far as the picture asked for, so that it is the one on
// the screen at that time; one file's index is kept, for the next chapter. All else FFmpeg is asked
// about. Pictures that were had are kept.
//
// Owns the open film. Belongs to one thread.
#pragma once

#include "drawing/fitted_picture.h"
#include "media/video_file.h"
#include "platform/result.h"

#include <cstddef>
#include <list>
#include <memory>
#include <string>

namespace corvane {

class page_pictures {
 public:
  /// The picture of a film or picture file (native path) that is on the screen so many seconds from
  /// its beginning, the last one when that is behind the end: upright, at most 2048 pixels wide and
  /// high. Of a long film without an index of its own a late picture takes seconds, once. Fails, as
  /// a clause, where the file cannot be read or shown.
  result<std::shared_ptr<const shaped_picture>> at(const std::string& file, double seconds);

 private:
  struct kept_picture {
    std::string file;
    double seconds = 0;
    std::shared_ptr<const shaped_picture> shown;
  };

  result<shaped_picture> read(const std::string& file, double seconds);
  result<shaped_picture> in_film(double seconds);
  void keep(kept_picture picture);

  std::string open_file_;
  std::unique_ptr<video_file> open_;
  bool is_scanned_ = false;
  std::list<kept_picture> kept_;  ///< the last one used first
  std::size_t kept_bytes_ = 0;
};

/// A film's picture at a time, for a box of a page: `pictures.at`, scaled by `fitted`.
result<fitted_picture> thumbnail(page_pictures& pictures, const std::string& file, double seconds,
                                 int width, int height, double pixel_aspect,
                                 page_fit fit = page_fit::fill);

}  // namespace corvane
