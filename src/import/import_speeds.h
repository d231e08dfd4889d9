// How fast this machine imports: kept between runs in a small file of the program folder, so that
// the next import's time is known before it begins.
//
// Films are measured in pixels: those of the disc's pictures, which cost the most, and those of the
// source's, which have to be decoded and scaled, in each pass. What is only copied is measured in
// bytes.
#pragma once

#include "import/import_script.h"

#include <map>
#include <string>
#include <string_view>

namespace corvane {

/// Seconds for a unit of work, by its kind: "copy", or the codec that is decoded ("h264").
using import_speeds = std::map<std::string, double>;

/// Of a file "h264 2.1e-08", a line for each kind; what is no likely time is left out.
import_speeds parse_import_speeds(std::string_view text);
std::string import_speeds_text(const import_speeds& speeds);

/// Those that the program folder (native) keeps; none where there is no file.
import_speeds read_import_speeds(const std::string& app);

/// The kind of work of a job, and how much of it there is, in pixels or bytes.
std::string kind_of_import(const import_job& job);
double work_of_import(const import_job& job);

/// How long an import will take, in seconds. Where nothing is known of its kind, by other kinds;
/// where nothing is known at all, by the number of the processor's cores.
double expected_seconds(const import_job& job, const import_speeds& speeds);

/// An import has taken so long. Of one that was over at once nothing is learned.
void learn_speed(import_speeds& speeds, const import_job& job, double seconds);

/// "about 25 min", "a few seconds".
std::string duration_text(double seconds);

}  // namespace corvane
