// SDL as what plays sound: the file of the module.
#include "media/sound_module.h"

#define SDL_MAIN_HANDLED
#include <SDL.h>
#include <algorithm>
#include <cstdint>
#include <cstring>
#include <utility>

namespace corvane {

namespace {

/// How much the device asks for at a time, frames: what is heard comes so much later, and what is
/// played so much longer.
constexpr Uint16 frames_at_a_time = 1024;

class sdl_sound_output : public sound_output {
 public:
  ~sdl_sound_output() override;

  /// The first call of all.
  bool begin();

  failure open() override;
  void play(std::shared_ptr<const pcm_sound> sound, std::size_t from) override;
  void stop() override;

 private:
  static void SDLCALL fill(void* of, Uint8* to, int bytes);
  void give(Uint8* to, std::size_t bytes);

  bool begun_ = false;
  SDL_AudioDeviceID device_ = 0;
  // Shared with the device's thread: only for who has locked the device, or while there is none.
  std::shared_ptr<const pcm_sound> sound_;
  std::size_t next_ = 0;  ///< of its samples
};

sdl_sound_output::~sdl_sound_output() {
  sdl_sound_output::stop();
  if (begun_)
    SDL_QuitSubSystem(SDL_INIT_AUDIO);
}

bool sdl_sound_output::begin() {
  // Signals end this program as they would without it.
  SDL_SetHint(SDL_HINT_NO_SIGNAL_HANDLERS, "1");
  SDL_SetHint(SDL_HINT_AUDIO_DEVICE_APP_NAME, "Corvane");
  begun_ = SDL_InitSubSystem(SDL_INIT_AUDIO) == 0;
  return begun_;
}

failure sdl_sound_output::open() {
  if (device_ != 0)
    return std::nullopt;
  SDL_AudioSpec wanted{};
  wanted.freq = sound_rate;
  wanted.format = AUDIO_S16SYS;
  wanted.channels = sound_channels;
  wanted.samples = frames_at_a_time;
  wanted.callback = fill;
  wanted.userdata = this;
  device_ = SDL_OpenAudioDevice(nullptr, 0, &wanted, nullptr, 0);
  return device_ != 0 ? failure() : failure(no_sound_here);
}

void sdl_sound_output::play(std::shared_ptr<const pcm_sound> sound, std::size_t from) {
  if (device_ == 0)
    return;
  SDL_LockAudioDevice(device_);
  sound_ = std::move(sound);
  next_ = std::min(from, sound_->frames()) * sound_channels;
  SDL_UnlockAudioDevice(device_);
  SDL_PauseAudioDevice(device_, 0);
}

void sdl_sound_output::stop() {
  if (device_ != 0)
    SDL_CloseAudioDevice(std::exchange(device_, 0));
  sound_.reset();
}

void SDLCALL sdl_sound_output::fill(void* of, Uint8* to, int bytes) {
  static_cast<sdl_sound_output*>(of)->give(to, static_cast<std::size_t>(bytes));
}

// Called in the device's thread, with the device locked.
void sdl_sound_output::give(Uint8* to, std::size_t bytes) {
  constexpr std::size_t bytes_of_sample = sizeof(std::int16_t);
  const std::size_t left = sound_ ? sound_->samples.size() - next_ : 0;
  const std::size_t given = std::min(bytes / bytes_of_sample, left);
  if (given > 0)
    std::memcpy(to, sound_->samples.data() + next_, given * bytes_of_sample);
  std::memset(to + given * bytes_of_sample, 0, bytes - given * bytes_of_sample);
  next_ += given;
}

}  // namespace

}  // namespace corvane

corvane::sound_output* corvane_make_sound_output() {
  auto output = std::make_unique<corvane::sdl_sound_output>();
  return output->begin() ? output.release() : nullptr;
}
