// A file looked through by two threads that take turns: while one works on its bytes, the other
// gets the next ones from the system, and what a thread has read it works on itself. To copy a file
// from the system takes as long as to look through it, and to carry the bytes from one processor to
// another takes a good part of that again.
#pragma once

#include "platform/result.h"

#include <array>
#include <atomic>
#include <condition_variable>
#include <cstddef>
#include <cstdint>
#include <exception>
#include <fstream>
#include <functional>
#include <memory>
#include <mutex>
#include <span>
#include <string>
#include <thread>

namespace corvane {

class file_relay {
 public:
  /// Called with bytes in their order, by one thread at a time, until the relay is destroyed.
  using taker = std::function<void(std::span<const std::uint8_t>)>;

  /// Bytes that a call of the taker gets; the last one gets fewer.
  static constexpr std::size_t block_size = std::size_t{256} << 10;

  /// Begins at once with byte `from` of the file (native path), and ends before byte `end`. Fails
  /// if it cannot be opened, with the system's reason.
  static result<std::unique_ptr<file_relay>> begin(const std::string& path, std::uint64_t from,
                                                   std::uint64_t end, taker take);
  /// The taker gets no more than the block that it has.
  ~file_relay();
  file_relay(const file_relay&) = delete;
  file_relay& operator=(const file_relay&) = delete;

  enum class state : std::uint8_t {
    going_on,
    ended,   ///< the taker has got all bytes
    failed,  ///< those behind cannot be read, or the file has become shorter
  };

  /// Waits until the taker has got `bytes` in all, or no more will come. Throws what the taker
  /// threw. What the taker made may be used once this is no longer `going_on`.
  state wait_for(std::uint64_t bytes);
  /// That the taker has got.
  std::uint64_t taken() const;

 private:
  static constexpr std::size_t threads = 2;

  file_relay(std::array<std::ifstream, threads> files, std::uint64_t from, std::uint64_t end,
             taker take);
  void run(std::size_t thread);
  bool wait_for_turn(std::uint64_t block);
  bool take(std::span<const std::uint8_t> bytes);
  void end_turn(std::uint64_t bytes, bool well);
  std::uint64_t place_of(std::uint64_t block) const;

  const std::uint64_t from_, end_, blocks_;
  const taker take_;
  std::array<std::ifstream, threads> files_;

  // Of all threads.
  mutable std::mutex mutex_;
  std::condition_variable turn_changed_, reached_;
  std::atomic<std::uint64_t> turn_ = 0;  ///< the block that the taker has, or gets next
  std::atomic<bool> stopped_ = false;
  std::uint64_t taken_ = 0;   ///< bytes
  std::uint64_t wanted_ = 0;  ///< whoever waits, waits for so many
  bool failed_ = false;
  std::exception_ptr thrown_;

  std::array<std::thread, threads> running_;
};

}  // namespace corvane
