// A place to draw text subtitles in: a program folder with the real tools, and files of a test's
// own.
#pragma once

#include "platform/files/files.h"
#include "platform/files/program_folder.h"
#include "support/temporary_folder.h"
#include "tools/subtitle_preview.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <chrono>
#include <cstddef>
#include <filesystem>
#include <string>
#include <string_view>
#include <thread>

namespace corvane::disc {

class text_studio {
 public:
  text_studio() { EXPECT_EQ(enter_program_folder(app()), std::nullopt); }
  ~text_studio() { std::filesystem::current_path(before_); }
  text_studio(const text_studio&) = delete;
  text_studio& operator=(const text_studio&) = delete;

  std::string app() const { return folder_.path("home"); }
  const testing_support::temporary_folder& folder() const { return folder_; }

  /// Default settings with a font that is installed.
  static preview_request request(const std::string& file, int cue = 1,
                                 const std::string& region = "NTSC") {
    preview_request r{file, default_subtitle_settings(region), region, cue};
    r.settings[subtitle_field::font_file] = "dejavusans.ttf";
    return r;
  }

  /// Polls until it is ready or has failed.
  static subtitle_preview::state settle(subtitle_preview& preview) {
    const auto until = std::chrono::steady_clock::now() + std::chrono::seconds(60);
    while (preview.poll() == subtitle_preview::state::drawing &&
           std::chrono::steady_clock::now() < until)
      std::this_thread::sleep_for(std::chrono::milliseconds(2));
    return preview.poll();
  }

  /// The cue drawn; a reason fails the test.
  drawn_cue drawn(const preview_request& r) {
    preview_.want(r);
    EXPECT_EQ(settle(preview_), subtitle_preview::state::ready) << preview_.reason();
    return preview_.cue();
  }
  drawn_cue drawn(std::string_view text, const std::string& name = "text.srt") {
    return drawn(request(folder_.add(name, text)));
  }

  /// Why it is not drawn.
  std::string refused(const preview_request& r) {
    preview_.want(r);
    EXPECT_EQ(settle(preview_), subtitle_preview::state::failed);
    return preview_.reason();
  }
  std::string refused(std::string_view text, const std::string& name = "text.srt") {
    return refused(request(folder_.add(name, text)));
  }

  subtitle_preview& preview() { return preview_; }

 private:
  std::filesystem::path before_ = std::filesystem::current_path();
  testing_support::temporary_folder folder_;
  subtitle_preview preview_{folder_.path("home"), system_fonts()};
};

/// Where something is to be seen in a frame; x1 < x0: nowhere.
struct seen_area {
  int x0 = 720, y0 = 576, x1 = -1, y1 = -1;  ///< pixels, right and bottom edge included
};

inline seen_area seen(const drawn_cue& cue) {
  seen_area area;
  for (int y = 0; y < cue.height; ++y)
    for (int x = 0; x < cue.width; ++x)
      if (cue.rgba[(static_cast<std::size_t>(y) * static_cast<std::size_t>(cue.width) +
                    static_cast<std::size_t>(x)) *
                       4 +
                   3] != 0)
        area = {std::min(area.x0, x), std::min(area.y0, y), std::max(area.x1, x),
                std::max(area.y1, y)};
  return area;
}

}  // namespace corvane::disc
