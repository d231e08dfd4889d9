// What plays sound: the device that the system plays everything with.
//
// On Linux that is SDL's, in a module that is loaded with the first one (sound_module.h), on
// Windows the system's own. Belongs to one thread.
#pragma once

#include "media/pcm_sound.h"
#include "platform/result.h"

#include <cstddef>
#include <memory>

namespace corvane {

class sound_output {
 public:
  sound_output() = default;
  sound_output(const sound_output&) = delete;
  sound_output& operator=(const sound_output&) = delete;
  /// Stops.
  virtual ~sound_output() = default;

  /// Opens the device, so that `play` is heard at once; does nothing when it is open. Takes some
  /// hundredths of a second. Fails, with a sentence for a person, when there is no device, or
  /// another program keeps it.
  virtual failure open() = 0;

  /// Plays from a frame (0-based) to the end, instead of what it plays; nothing from behind the
  /// end. Returns at once. Does nothing when the device is not open.
  virtual void play(std::shared_ptr<const pcm_sound> sound, std::size_t from) = 0;

  /// Closes the device: nothing is heard any more.
  virtual void stop() = 0;
};

/// Why nothing can be heard where there is no device, or none that answers.
inline constexpr const char* no_sound_here = "this computer can play no sound at the moment";

/// Fails when the module is missing or cannot be loaded, and where nothing can play sound.
result<std::unique_ptr<sound_output>> make_sound_output();

}  // namespace corvane
