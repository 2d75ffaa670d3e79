// Results made ahead of time on threads and taken in order.
#pragma once

#include <condition_variable>
#include <cstddef>
#include <functional>
#include <map>
#include <mutex>
#include <optional>
#include <thread>
#include <utility>
#include <vector>

namespace vellumtide::cli {

// T is made by `make`(i), which must not throw, for i from 0 to `count` - 1.
template <typename T>
class ReadAhead {
 public:
  // `admit` is called before each make, in order of i, and may wait; what it gives is handed on.
  template <typename Admit, typename Make>
  ReadAhead(std::size_t count, int threads, Admit admit, Make make) : count_(count) {
    for (int i = 0; i < threads; ++i) {
      threads_.emplace_back([this, admit, make] {
        while (true) {
          std::unique_lock order(orderMutex_);
          const std::size_t index = started_;
          if (index == count_ || isStopped()) return;
          auto share = admit();
          ++started_;
          order.unlock();
          if (isStopped()) return;
          put(index, make(index, std::move(share)));
        }
      });
    }
  }
  // What `admit` waits for must have been ended before.
  ~ReadAhead() {
    stop();
    for (std::thread& thread : threads_)
      thread.join();
  }
  ReadAhead(const ReadAhead&) = delete;
  ReadAhead& operator=(const ReadAhead&) = delete;

  // The next result in order; nothing when stopped or at the end.
  std::optional<T> take() {
    std::unique_lock lock(mutex_);
    if (taken_ == count_) return {};
    arrived_.wait(lock, [this] { return stopped_ || ready_.count(taken_) != 0; });
    if (stopped_) return {};
    auto node = ready_.extract(taken_++);
    return std::move(node.mapped());
  }

  // Lets take() give nothing from now on; what is being made is finished for nothing.
  void stop() {
    const std::lock_guard lock(mutex_);
    stopped_ = true;
    arrived_.notify_all();
  }

 private:
  bool isStopped() {
    const std::lock_guard lock(mutex_);
    return stopped_;
  }
  void put(std::size_t index, T result) {
    const std::lock_guard lock(mutex_);
    ready_.emplace(index, std::move(result));
    arrived_.notify_all();
  }

  const std::size_t count_;
  std::mutex orderMutex_;  // held while waiting for admission, so that frames are begun in order
  std::size_t started_ = 0;
  std::mutex mutex_;
  std::condition_variable arrived_;
  std::map<std::size_t, T> ready_;
  std::size_t taken_ = 0;
  bool stopped_ = false;
  std::vector<std::thread> threads_;
};

}  // namespace vellumtide::cli
