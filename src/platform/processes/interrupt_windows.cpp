#include "platform/processes/interrupt.h"

#include <atomic>
#include <windows.h>

namespace corvane {
namespace {

std::atomic<int> first_request{0};

/// Set with the request; made once, before the handler that uses it.
HANDLE request_event() {
  static const HANDLE event = ::CreateEventW(nullptr, TRUE, FALSE, nullptr);
  return event;
}

/// Runs on a thread of the system's.
BOOL WINAPI note_request(DWORD kind) {
  const int number = kind == CTRL_C_EVENT ? 2 : kind == CTRL_CLOSE_EVENT ? 1 : 15;
  int none = 0;
  first_request.compare_exchange_strong(none, number);
  ::SetEvent(request_event());
  // The system ends the program as soon as this returns from a closed console, a log-off or a
  // shutdown: the main thread gets the time to stop its tools.
  if (kind != CTRL_C_EVENT && kind != CTRL_BREAK_EVENT)
    ::Sleep(4000);
  return TRUE;
}

}  // namespace

void catch_interrupts() {
  request_event();
  ::SetConsoleCtrlHandler(note_request, TRUE);
}

int interrupt_number() {
  return first_request;
}

void wait_or_interrupt(std::chrono::milliseconds time) {
  ::WaitForSingleObject(request_event(), static_cast<DWORD>(time.count()));
}

}  // namespace corvane
