#include "platform/settings/settings.h"

namespace corvane {

std::string memory_settings::get(std::string_view key) const {
  const auto found = values_.find(key);
  return found == values_.end() ? std::string() : found->second;
}

void memory_settings::set(std::string_view key, std::string_view value) {
  values_.insert_or_assign(std::string(key), std::string(value));
}

}  // namespace corvane
