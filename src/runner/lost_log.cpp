#include "runner/lost_log.h"

#include "formats/text.h"
#include "platform/files/files.h"
#include "platform/files/paths.h"
#include "runner/run_files.h"
#include "runner/run_log.h"

#include <filesystem>
#include <fstream>
#include <system_error>

namespace corvane {
namespace {

std::string log_of(const std::string& app) {
  return join_path(app, run_file::log);
}

bool ends_a_line(const std::string& file, std::uintmax_t size) {
  std::ifstream text(path_of(file), std::ios::binary);
  text.seekg(static_cast<std::streamoff>(size) - 1);
  return text.get() == '\n';
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
    // A full disk may have no room for the line; the log is kept all the same.
    std::ofstream(path_of(part), std::ios::binary | std::ios::app)
        << (ends_a_line(part, size) ? "" : crlf)
        << "*** the program was gone before this run had ended" << crlf;
    std::filesystem::rename(path_of(part), path_of(log_of(app)), error);
    return !error;  // if not, it waits for another start
  }
  std::filesystem::remove(path_of(part), error);
  return false;
}

}  // namespace corvane
