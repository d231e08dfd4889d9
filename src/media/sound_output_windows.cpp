// Windows as what plays sound.
#include "media/sound_output.h"

#include <algorithm>
#include <cstdint>
#include <utility>
#include <vector>
#include <windows.h>
// After windows.h, which it needs.
#include <mmsystem.h>

namespace corvane {

namespace {

/// What is given to the device in one piece.
constexpr std::size_t samples_of_piece = std::size_t{sound_rate} * sound_channels;

class windows_sound_output : public sound_output {
 public:
  ~windows_sound_output() override { windows_sound_output::stop(); }

  failure open() override;
  void play(std::shared_ptr<const pcm_sound> sound, std::size_t from) override;
  void stop() override;

 private:
  void silence();

  HWAVEOUT device_ = nullptr;
  std::shared_ptr<const pcm_sound> sound_;
  std::vector<WAVEHDR> pieces_;  ///< the device's until it is silent
};

failure windows_sound_output::open() {
  if (device_ != nullptr)
    return std::nullopt;
  WAVEFORMATEX format{};
  format.wFormatTag = WAVE_FORMAT_PCM;
  format.nChannels = sound_channels;
  format.nSamplesPerSec = sound_rate;
  format.wBitsPerSample = 8 * sizeof(std::int16_t);
  format.nBlockAlign = sound_channels * sizeof(std::int16_t);
  format.nAvgBytesPerSec = format.nSamplesPerSec * format.nBlockAlign;
  if (waveOutOpen(&device_, WAVE_MAPPER, &format, 0, 0, CALLBACK_NULL) == MMSYSERR_NOERROR)
    return std::nullopt;
  device_ = nullptr;
  return no_sound_here;
}

// All of it is given at once: the device plays one piece after the other by itself.
void windows_sound_output::play(std::shared_ptr<const pcm_sound> sound, std::size_t from) {
  if (device_ == nullptr)
    return;
  silence();
  sound_ = std::move(sound);
  const std::vector<std::int16_t>& samples = sound_->samples;
  const std::size_t begin = std::min(from, sound_->frames()) * sound_channels;
  pieces_.reserve((samples.size() - begin) / samples_of_piece + 1);
  for (std::size_t at = begin; at < samples.size(); at += samples_of_piece) {
    const std::size_t count = std::min(samples_of_piece, samples.size() - at);
    WAVEHDR& piece = pieces_.emplace_back();
    // The device only reads it.
    piece.lpData = const_cast<char*>(reinterpret_cast<const char*>(samples.data() + at));
    piece.dwBufferLength = static_cast<DWORD>(count * sizeof(std::int16_t));
    if (waveOutPrepareHeader(device_, &piece, sizeof piece) == MMSYSERR_NOERROR)
      waveOutWrite(device_, &piece, sizeof piece);
  }
}

void windows_sound_output::silence() {
  waveOutReset(device_);
  for (WAVEHDR& piece : pieces_)
    waveOutUnprepareHeader(device_, &piece, sizeof piece);
  pieces_.clear();
}

void windows_sound_output::stop() {
  if (device_ == nullptr)
    return;
  silence();
  waveOutClose(std::exchange(device_, nullptr));
  sound_.reset();
}

}  // namespace

result<std::unique_ptr<sound_output>> make_sound_output() {
  return result<std::unique_ptr<sound_output>>::ok(std::make_unique<windows_sound_output>());
}

}  // namespace corvane
