#include "authoring/disc_texts.h"

#include "formats/text.h"

namespace corvane {

std::vector<std::string> native_streams(const disc_title& title, path_style style) {
  std::vector<std::string> streams = title.streams;
  for (std::string& stream : streams)
    stream = native_from_stored(stream, style);
  return streams;
}

void add_line(std::string& text, std::string_view line) {
  text += line;
  text += crlf;
}

}  // namespace corvane
