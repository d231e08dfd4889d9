#include "project/title_commands.h"

namespace corvane {

bool carries_nav_packets(std::string_view block) {
  using namespace std::string_view_literals;
  constexpr auto presentation_control = "\x00\x00\x01\xBF\x03\xD4"sv;
  constexpr auto data_search = "\x00\x00\x01\xBF\x03\xFA"sv;
  return block.find(presentation_control) != std::string_view::npos &&
         block.find(data_search) != std::string_view::npos;
}

}  // namespace corvane
