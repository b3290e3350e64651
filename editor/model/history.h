/// @file
/// The steps that the user can take back and make again.
#pragma once

#include <cstddef>
#include <cstdint>
#include <deque>
#include <functional>
#include <memory>
#include <string>
#include <utility>

#include "qilib/change.h"

/// What a step changed of what the user sees, where that doesn't follow from the scene.
class StepPicture {
 public:
  virtual ~StepPicture() = default;

  virtual void undo() = 0;
  virtual void redo() = 0;
  /// The memory that it takes.
  virtual std::size_t bytes() const = 0;
};

/// One thing that the user did.
struct Step {
  std::string label;                          ///< what it did, such as "link obj_1 to mat_0"
  qi::Change change = {};                     ///< empty: it changed only the picture
  std::unique_ptr<StepPicture> picture = {};  ///< null: it changed only the scene
  bool picture_forgotten = false;             ///< it had one, see History::forget_pictures

  std::size_t bytes() const;
};

/// What was done since the scene was opened, and what of it was taken back. Holds the steps; whoever asks
/// for one carries it out.
class History {
 public:
  /// Stands for the contents of the scene: equal states mean equal contents, also when the one was reached by
  /// taking back what led away from it.
  using State = std::uint64_t;

  /// The oldest steps go when there are more, or when they take more memory.
  static constexpr std::size_t kMostSteps = 1000;
  static constexpr std::size_t kMostBytes = std::size_t{64} << 20;

  /// Has somebody told of every change of this history, right after it: what the change stands for may not
  /// have been carried out yet.
  void on_change(std::function<void()> told) { told_ = std::move(told); }

  /// A step that was just done. What had been taken back can't be made again any more. Without memory for it,
  /// all is forgotten: what came before it can't be taken back without it.
  void add(Step step);
  /// Forgets everything: another scene was opened.
  void clear();
  /// Forgets what the steps changed of the picture, which shows something else now, and the steps that
  /// changed nothing else.
  void forget_pictures();

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
  std::size_t bytes_ = 0;  ///< of all steps
  State first_ = 0;        ///< before all steps
  State newest_ = 0;       ///< the last one given out
  std::function<void()> told_ = [] {};
};
