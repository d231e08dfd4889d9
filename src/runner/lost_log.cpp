#include "runner/lost_log.h"

#include "formats/text.h"
#include "platform/files/files.h"
#include "platform/files/paths.h"
#include "runner/run_files.h"
#include "runner/run_log.h"

#include <algorithm>
#include <cstdint>
#include <filesystem>
#include <fstream>
#include <string_view>
#include <system_error>

namespace corvane {
namespace {

std::string log_of(const std::string& app) {
  return join_path(app, run_file::log);
}

/// The last characters of a file of this size.
std::string end_of(const std::string& file, std::uintmax_t size) {
  constexpr std::uintmax_t most = 4096;
  std::string end(static_cast<std::size_t>(std::min(size, most)), ' ');
  std::ifstream text(path_of(file), std::ios::binary);
  text.seekg(static_cast<std::streamoff>(size - end.size()));
  text.read(end.data(), static_cast<std::streamsize>(end.size()));
  return end;
}

/// Whether it is the log of a run that came to its end.
bool was_not_placed(std::string_view end) {
  end = end.substr(0, end.find_last_not_of(crlf) + 1);
  return end.substr(end.rfind('\n') + 1).starts_with(not_placed_mark);
}

}  // namespace

bool has_lost_log(const std::string& app) {
  return entry_exists(run_log::part_of(log_of(app)));
}

bool keep_lost_log(const std::string& app) {
  const std::string part = run_log::part_of(log_of(app));
  std::error_code error;
  const bool is_ours = std::filesystem::symlink_status(path_of(part), error).type() ==
                       std::filesystem::file_type::regular;
  const std::uintmax_t size = is_ours ? file_size(part).value_or(0) : 0;
  if (size > 0) {
    const std::string end = end_of(part, size);
    const bool is_lost = !was_not_placed(end);
    // A full disk may have no room for the line; the log is kept all the same.
    if (is_lost)
      std::ofstream(path_of(part), std::ios::binary | std::ios::app)
          << (end.ends_with("\n") ? "" : crlf)
          << "*** the program was gone before this run had ended" << crlf;
    std::filesystem::rename(path_of(part), path_of(log_of(app)), error);
    return is_lost && !error;  // if not, it waits for another start
  }
  std::filesystem::remove(path_of(part), error);
  return false;
}

}  // namespace corvane
