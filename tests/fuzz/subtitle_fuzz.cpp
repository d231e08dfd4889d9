// Any bytes as a text subtitle file, as its cues, and as the subpicture that is drawn in the
// preview. The first byte picks the character set.
#include "examine/subtitle_text_rules.h"
#include "platform/text/utf8.h"
#include "project/subtitle_file.h"
#include "tools/drawn_cue.h"
#include "tools/subtitles.h"

#include <cstddef>
#include <cstdint>
#include <cstdlib>
#include <string>

namespace {

void check(bool holds) {
  if (!holds)
    std::abort();
}

void look_at_file(const std::string& bytes, const std::string& charset) {
  const corvane::subtitle_file file("a.srt", bytes);
  check(file.unicode() != "UTF-8" || corvane::is_utf8(bytes));
  const auto why = file.why_not(charset);
  check(!why || (!why->empty() && corvane::is_utf8(*why)));
}

void examine(const std::string& bytes, const std::string& charset) {
  corvane::subtitle_settings settings = corvane::default_subtitle_settings("PAL");
  settings[corvane::subtitle_field::character_set] = charset;
  corvane::font_characters font;
  for (std::uint32_t c = 0x20; c < 0x7F; ++c)
    font.add(c);
  const auto findings = corvane::subtitle_text_findings(corvane::subtitle_file("a.srt", bytes),
                                                        settings, {}, "a.srt", 60.0, &font);
  for (const corvane::finding& f : findings)
    check(!f.found.empty() && !f.consequence.empty() && corvane::is_utf8(f.found));
}

void paint(const std::string& bytes) {
  corvane::drawn_cue cue;
  const bool painted = !corvane::paint_unit(bytes, {{16, 128, 128}, {235, 128, 128}}, cue);
  const bool whole = cue.rgba.size() == std::size_t{720} * 480 * 4;
  check(painted ? whole : whole || cue.rgba.empty());
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* bytes, std::size_t size) {
  if (size == 0)
    return 0;
  const std::string text(reinterpret_cast<const char*>(bytes) + 1, size - 1);
  const std::string charset(corvane::charact_items[bytes[0] % corvane::charact_items.size()]);
  look_at_file(text, charset);
  examine(text, charset);
  examine(text, "UTF-8");
  paint(text);
  return 0;
}
