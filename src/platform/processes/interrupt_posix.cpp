#include "platform/processes/interrupt.h"

#include <csignal>
#include <ctime>

namespace corvane {
namespace {

volatile std::sig_atomic_t first_request = 0;

extern "C" void note_request(int number) {
  if (first_request == 0)
    first_request = number;
}

extern "C" void pass_over(int) {}

void handle(int number, void (*handler)(int)) {
  struct sigaction old {};
  ::sigaction(number, nullptr, &old);
  // "nohup" and shells that start a job in the background want it left alone.
  if (old.sa_handler == SIG_IGN)
    return;
  struct sigaction wanted {};
  wanted.sa_handler = handler;
  ::sigemptyset(&wanted.sa_mask);
  // Calls that wait go on; the sleep below does not, whatever the flags.
  wanted.sa_flags = SA_RESTART;
  ::sigaction(number, &wanted, nullptr);
}

}  // namespace

void catch_interrupts() {
  handle(SIGINT, note_request);
  handle(SIGTERM, note_request);
  handle(SIGHUP, note_request);
  // A handler instead of SIG_IGN: the tools, which inherit the latter only, keep their own ways.
  handle(SIGPIPE, pass_over);
}

int interrupt_number() {
  return first_request;
}

void wait_or_interrupt(std::chrono::milliseconds time) {
  if (first_request != 0)
    return;
  const std::timespec span{static_cast<std::time_t>(time.count() / 1000),
                           static_cast<long>(time.count() % 1000) * 1'000'000};
  ::nanosleep(&span, nullptr);
}

}  // namespace corvane
