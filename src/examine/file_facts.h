// What is known of one file that a project names: from its beginning, in milliseconds, or from all
// of it, read in slices so that whoever waits can show progress and stop.
#pragma once

#include "examine/audio_facts.h"
#include "examine/program_stream_facts.h"
#include "examine/video_facts.h"

#include <cstdint>
#include <memory>
#include <optional>
#include <string>

namespace corvane {

/// What a file is by its bytes, whatever its name says.
enum class file_kind {
  unreadable,      ///< `why_unreadable` says why
  empty,           ///< it has no byte
  video,           ///< an elementary video stream
  audio,           ///< a sound stream, also of kinds that no disc takes
  program_stream,  ///< packets with streams inside
  unknown,         ///< nothing of these
};

struct file_facts {
  file_kind kind = file_kind::unreadable;
  std::string why_unreadable;  ///< a clause without a full stop: "No such file or directory"
  std::uint64_t size = 0;      ///< in bytes
  bool whole = false;          ///< all of the file was read, not only its beginning
  // The one of `kind` is set.
  std::optional<video_facts> video;
  std::optional<audio_facts> audio;
  std::optional<program_stream_facts> program;
};

/// The facts of a file's beginning (native path). What begins as video or sound and is nothing else
/// for 64 KiB is that, and no more of it is read; of others 256 KiB are.
file_facts read_file_head(const std::string& path);

/// Reads a whole file, a slice at a time.
class file_scan {
 public:
  /// Opens the file and reads its beginning.
  explicit file_scan(const std::string& path);
  ~file_scan();
  file_scan(file_scan&&) noexcept;
  file_scan& operator=(file_scan&&) noexcept;

  /// Reads the next slice, 4 MB. False when the file has been read to its end or can be read no
  /// further, as one that was shortened meanwhile; `facts` is complete then.
  bool read_slice();
  std::uint64_t bytes_read() const;
  const file_facts& facts() const;

 private:
  struct state;
  std::unique_ptr<state> state_;
};

}  // namespace corvane
