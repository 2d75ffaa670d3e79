#include <windows.h>

#include <stdexcept>

#include "tests/support/small_stack.h"

namespace vellumtide::end_to_end {
namespace {

DWORD WINAPI callBody(void* body) {
  (*static_cast<const std::function<void()>*>(body))();
  return 0;
}

}  // namespace

void runOnSmallStack(const std::function<void()>& body) {
  HANDLE thread =
      CreateThread(nullptr, 1 << 20, callBody, const_cast<std::function<void()>*>(&body),
                   STACK_SIZE_PARAM_IS_A_RESERVATION, nullptr);
  if (!thread) throw std::runtime_error("no thread");
  WaitForSingleObject(thread, INFINITE);
  CloseHandle(thread);
}

}  // namespace vellumtide::end_to_end
