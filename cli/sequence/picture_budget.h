// A bound on the memory that the pictures between reading and writing take.
#pragma once

#include <condition_variable>
#include <cstddef>
#include <mutex>

namespace vellumtide::cli {

class PictureBudget {
 public:
  explicit PictureBudget(std::size_t bytes) : limit_(bytes) {}

  // What one frame has of the budget; given back when it is destroyed.
  class Share {
   public:
    Share() = default;
    Share(Share&& other) noexcept : budget_(other.budget_), bytes_(other.bytes_) {
      other.budget_ = nullptr;
    }
    Share& operator=(Share&& other) noexcept;
    ~Share() { release(); }
    // What the frame really takes, once that is known.
    void resize(std::size_t bytes);

   private:
    friend class PictureBudget;
    Share(PictureBudget& budget, std::size_t bytes) : budget_(&budget), bytes_(bytes) {}
    void release();

    PictureBudget* budget_ = nullptr;
    std::size_t bytes_ = 0;
  };

  // A share as large as the largest frame so far; waits until there is room. One frame always finds
  // room, however large it is, and until its size is known no other does. Nothing waits, and the
  // share is empty, after close().
  Share take();
  void close();

 private:
  void change(std::size_t from, std::size_t to, bool leaves);

  const std::size_t limit_;
  std::mutex mutex_;
  std::condition_variable changed_;
  std::size_t used_ = 0, largest_ = 0;
  int frames_ = 0;
  bool closed_ = false;
};

}  // namespace vellumtide::cli
