/// @file
/// The steps that the user can take back and make again.
#include "editor/model/history.h"

#include <new>
#include <utility>

std::size_t Step::bytes() const {
  return sizeof(Step) + label.size() + change.bytes() + (picture ? picture->bytes() : 0);
}

void History::add(Step step) {
  while (steps_.size() > done_) {
    bytes_ -= steps_.back().step.bytes();
    steps_.pop_back();
  }
  const State after = step.change.empty() ? state() : ++newest_;
  const std::size_t bytes = step.bytes();
  try {
    steps_.push_back({std::move(step), after});
  } catch (const std::bad_alloc&) {
    clear();
    return;
  }
  bytes_ += bytes;
  while (steps_.size() > kMostSteps || bytes_ > kMostBytes) {
    first_ = steps_.front().after;
    bytes_ -= steps_.front().step.bytes();
    steps_.pop_front();
  }
  done_ = steps_.size();
  told_();
}

void History::clear() {
  steps_.clear();
  done_ = bytes_ = 0;
  first_ = ++newest_;
  told_();
}

void History::forget_pictures() {
  const std::size_t done = std::exchange(done_, 0);
  bytes_ = 0;
  std::deque<Entry> kept;
  for (std::size_t i = 0; i < steps_.size(); ++i) {
    Step& step = steps_[i].step;
    if (step.change.empty()) continue;
    if (std::exchange(step.picture, nullptr)) step.picture_forgotten = true;
    bytes_ += step.bytes();
    if (i < done) ++done_;
    kept.push_back(std::move(steps_[i]));
  }
  steps_ = std::move(kept);
  told_();
}

const Step* History::undo() {
  const Step* const step = to_undo();
  if (!step) return nullptr;
  --done_;
  told_();
  return step;
}

const Step* History::redo() {
  const Step* const step = to_redo();
  if (!step) return nullptr;
  ++done_;
  told_();
  return step;
}
