/// @file
/// Nodes on their way from where they were seen to where they are.
#pragma once

#include <chrono>
#include <optional>
#include <vector>

#include "picture/drawing.h"
#include "picture/frame.h"
#include "picture/paint.h"

namespace sggraph {

/// What was seen before places changed, and how far of the way from there to the new places has been gone.
/// Time begins with the first frame that is painted.
class Glide {
 public:
  /// Takes down where all nodes are seen now.
  void note(const picture::Drawing& drawing, const picture::Frame& frame);
  /// From there to where they are seen now; none of them where that would be too much to paint in time.
  void start(const picture::Drawing& drawing, const picture::Frame& frame);
  void stop() { ways_.clear(); }
  void forget(picture::NodeId node) { ways_.erase(node); }
  bool underWay() const { return !ways_.empty(); }

  /// How far the nodes are from their places in a frame that is painted now. At the end there are none, and
  /// it is not under way any more.
  const picture::Offsets& offsets();

 private:
  using Clock = std::chrono::steady_clock;
  /// What is left of the way, from 1 to 0.
  double left() const;

  struct Seen {
    picture::StableId node;
    SgPoint corner;  // in the window
  };
  std::vector<Seen> before_;
  double zoom_ = 0;        // of what was seen
  picture::Offsets ways_;  // from the new places to the old ones
  picture::Offsets offsets_;
  std::optional<Clock::time_point> begun_;
};

}  // namespace sggraph
