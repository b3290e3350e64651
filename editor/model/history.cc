/// @file
/// The steps that the user can take back and make again.
#include "editor/model/history.h"

#include <utility>

void History::add(Step step) {
  steps_.erase(steps_.begin() + static_cast<std::ptrdiff_t>(done_), steps_.end());
  const State after = step.changes_scene ? ++newest_ : state();
  steps_.push_back({std::move(step), after});
  if (steps_.size() > kMostSteps) {
    first_ = steps_.front().after;
    steps_.pop_front();
  }
  done_ = steps_.size();
  told_();
}

void History::clear() {
  steps_.clear();
  done_ = 0;
  first_ = ++newest_;
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
