#include "cli/sequence/write_behind.h"

#include <utility>

namespace vellumtide::cli {

WriteBehind::WriteBehind(int threads) {
  for (int i = 0; i < threads; ++i)
    threads_.emplace_back([this] { work(); });
}

WriteBehind::~WriteBehind() {
  {
    const std::lock_guard lock(mutex_);
    ended_ = true;
    changed_.notify_all();
  }
  for (std::thread& thread : threads_)
    thread.join();
}

void WriteBehind::give(std::function<void()> task) {
  const std::lock_guard lock(mutex_);
  waiting_.push_back(std::move(task));
  changed_.notify_all();
}

void WriteBehind::finish() {
  std::unique_lock lock(mutex_);
  changed_.wait(lock, [this] { return waiting_.empty() && busy_ == 0; });
}

void WriteBehind::drop() {
  const std::lock_guard lock(mutex_);
  waiting_.clear();
  changed_.notify_all();
}

void WriteBehind::work() {
  std::unique_lock lock(mutex_);
  while (true) {
    changed_.wait(lock, [this] { return ended_ || !waiting_.empty(); });
    if (waiting_.empty()) return;
    {
      const std::function<void()> task = std::move(waiting_.front());
      waiting_.pop_front();
      ++busy_;
      lock.unlock();
      task();
    }  // what the task holds is gone before it counts as done
    lock.lock();
    --busy_;
    changed_.notify_all();
  }
}

}  // namespace vellumtide::cli
