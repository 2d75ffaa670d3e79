// Work that is left to threads while the caller goes on.
#pragma once

#include <condition_variable>
#include <deque>
#include <functional>
#include <mutex>
#include <thread>
#include <vector>

namespace vellumtide::cli {

class WriteBehind {
 public:
  explicit WriteBehind(int threads);
  // Finishes what was given.
  ~WriteBehind();
  WriteBehind(const WriteBehind&) = delete;
  WriteBehind& operator=(const WriteBehind&) = delete;

  // `task` must not throw. Begun in the order given; nothing bounds how many wait.
  void give(std::function<void()> task);
  // Waits until everything given has been done.
  void finish();
  // Drops what has not begun.
  void drop();

 private:
  void work();

  std::mutex mutex_;
  std::condition_variable changed_;
  std::deque<std::function<void()>> waiting_;
  int busy_ = 0;
  bool ended_ = false;
  std::vector<std::thread> threads_;
};

}  // namespace vellumtide::cli
