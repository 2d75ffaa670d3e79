#include "cli/sequence/picture_budget.h"

#include <algorithm>

namespace vellumtide::cli {

PictureBudget::Share PictureBudget::take() {
  std::unique_lock lock(mutex_);
  changed_.wait(lock, [this] {
    return closed_ || frames_ == 0 || (largest_ > 0 && used_ + largest_ <= limit_);
  });
  if (closed_) return {};
  ++frames_;
  used_ += largest_;
  return {*this, largest_};
}

void PictureBudget::close() {
  const std::lock_guard lock(mutex_);
  closed_ = true;
  changed_.notify_all();
}

void PictureBudget::change(std::size_t from, std::size_t to, bool leaves) {
  const std::lock_guard lock(mutex_);
  used_ = used_ - from + to;
  largest_ = std::max(largest_, to);
  if (leaves) --frames_;
  changed_.notify_all();
}

PictureBudget::Share& PictureBudget::Share::operator=(Share&& other) noexcept {
  if (this == &other) return *this;
  release();
  budget_ = other.budget_;
  bytes_ = other.bytes_;
  other.budget_ = nullptr;
  return *this;
}

void PictureBudget::Share::resize(std::size_t bytes) {
  if (!budget_) return;
  budget_->change(bytes_, bytes, false);
  bytes_ = bytes;
}

void PictureBudget::Share::release() {
  if (budget_) budget_->change(bytes_, 0, true);
  budget_ = nullptr;
}

}  // namespace vellumtide::cli
