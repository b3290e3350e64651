/// @file
/// The steps that the user can take back and make again.
#pragma once

#include <cstddef>
#include <cstdint>
#include <deque>
#include <functional>
#include <string>
#include <utility>

/// One thing that the user did.
struct Step {
  std::string label;           ///< what it did, such as "link obj_1 to mat_0"
  bool changes_scene = false;  ///< false: only the picture, as when a node was moved by hand
};

/// What was done since the scene was opened, and what of it was taken back. Holds the steps; whoever asks
/// for one carries it out.
class History {
 public:
  /// Stands for the contents of the scene: equal states mean equal contents, also when the one was reached by
  /// taking back what led away from it.
  using State = std::uint64_t;

  static constexpr std::size_t kMostSteps = 1000;

  /// Has somebody told of every change of this history, right after it: what the change stands for may not
  /// have been carried out yet.
  void on_change(std::function<void()> told) { told_ = std::move(told); }

  /// A step that was just done. What had been taken back can't be made again any more.
  void add(Step step);
  /// Forgets everything: another scene was opened.
  void clear();

  /// The step to take back, which counts as taken back from now on; null when there is none.
  const Step* undo();
  /// The step to make again, which counts as done from now on; null when there is none.
  const Step* redo();
  /// The step that undo or redo would give.
  const Step* to_undo() const { return done_ == 0 ? nullptr : &steps_[done_ - 1].step; }
  const Step* to_redo() const { return done_ == steps_.size() ? nullptr : &steps_[done_].step; }

  /// The state of the scene as it is now.
  State state() const { return done_ == 0 ? first_ : steps_[done_ - 1].after; }

 private:
  struct Entry {
    Step step;
    State after;
  };

  std::deque<Entry> steps_;  ///< those that are done, then those that were taken back
  std::size_t done_ = 0;
  State first_ = 0;   ///< before all steps
  State newest_ = 0;  ///< the last one given out
  std::function<void()> told_ = [] {};
};
