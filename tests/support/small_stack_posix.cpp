#include <pthread.h>

#include <stdexcept>

#include "tests/support/small_stack.h"

namespace vellumtide::end_to_end {
namespace {

void* callBody(void* body) {
  (*static_cast<const std::function<void()>*>(body))();
  return nullptr;
}

}  // namespace

void runOnSmallStack(const std::function<void()>& body) {
  pthread_attr_t attributes;
  pthread_attr_init(&attributes);
  pthread_attr_setstacksize(&attributes, 1 << 20);
  pthread_t thread;
  const int failed =
      pthread_create(&thread, &attributes, callBody, const_cast<std::function<void()>*>(&body));
  pthread_attr_destroy(&attributes);
  if (failed) throw std::runtime_error("no thread");
  pthread_join(thread, nullptr);
}

}  // namespace vellumtide::end_to_end
