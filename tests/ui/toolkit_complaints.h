// What the toolkit complains of while windows come, change and go.
#pragma once

#include <atomic>
#include <glib.h>
#include <mutex>

namespace corvane::testing_support {

/// Counts what the toolkit calls critical since the last of these began. GLib lets its writer be
/// set once in a process, and only the writer hears all ways to complain.
class toolkit_complaints {
 public:
  toolkit_complaints() {
    static std::once_flag once;
    std::call_once(once, [] { g_log_set_writer_func(note, nullptr, nullptr); });
    count_ = 0;
  }

  static int count() { return count_; }

 private:
  static GLogWriterOutput note(GLogLevelFlags level, const GLogField* fields, gsize field_count,
                               gpointer data) {
    if ((level & G_LOG_LEVEL_CRITICAL) != 0)
      ++count_;
    return g_log_writer_default(level, fields, field_count, data);
  }
  static inline std::atomic<int> count_{0};
};

}  // namespace corvane::testing_support
