#include "import/short_film.h"

#include "formats/time_text.h"
#include "import/import_bits.h"
#include "platform/files/files.h"

#include <algorithm>
#include <cmath>
#include <filesystem>
#include <system_error>

namespace corvane {
namespace {

/// Files state their lengths no better than this; the last of uneven pictures may be shown long.
constexpr double least_missing = 2;

failure shorten_sound(const std::string& file, const sound_work& work, double seconds) {
  const auto size = file_size(file);
  const auto wanted = static_cast<std::uintmax_t>(bytes_of_sound(work, seconds));
  if (!size || *size <= wanted)
    return std::nullopt;
  std::error_code error;
  std::filesystem::resize_file(path_of(file), wanted, error);
  return error ? failure(error.message()) : std::nullopt;
}

}  // namespace

double missing_seconds(const import_job& job, const file_facts& made) {
  if (job.plan.seconds <= 0 || !made.video)
    return 0;
  const double missing = job.plan.seconds - made.video->seconds;
  return missing > least_missing ? missing : 0;
}

failure end_earlier(import_job& job, double missing) {
  import_plan& plan = job.plan;
  plan.seconds -= missing;
  std::erase_if(plan.chapters, [&](double at) { return at >= plan.seconds; });
  for (std::size_t i = 0; i < plan.sound.streams.size(); ++i) {
    const sound_work& work = plan.sound.streams[i];
    if (work.fate != stream_fate::encoded)
      continue;
    const std::string& file = job.files.sounds[i];
    if (const failure why = shorten_sound(temporary_name(file), work,
                                          plan.seconds - std::max(0.0, plan.sound.begin)))
      return file + ": " + *why;
  }
  return std::nullopt;
}

bool source_has_changed(const import_job& job) {
  const auto size = file_size(job.source);
  return !size ||
         (job.plan.source_bytes > 0 && *size != static_cast<std::uintmax_t>(job.plan.source_bytes));
}

std::string missing_text(const import_plan& plan, double missing) {
  if (plan.may_end_earlier)
    return "the picture ends " + clock_text(missing) +
           " before the file does; what is heard after it is left out";
  return "the last " + clock_text(missing) + " of it could not be read and are missing";
}

}  // namespace corvane
