/// @file
/// A picture of a graph as PostScript; nothing of the window system.
#pragma once

#include <span>
#include <string>
#include <string_view>

#include "picture/geometry.h"

namespace viewkit {

/// Parts of 0..1.
struct PrintColor {
  double red, green, blue;
};

/// Collects nodes and arcs in the coordinates of the graph's plane (y down), and writes them on one A4 page,
/// upright or lying, made smaller as needed but never larger than a point per unit.
class PostScriptPage {
 public:
  void addNode(const SgRectangle& box, std::string_view label, const PrintColor& color);
  /// @param path  from the parent to the child, where the head comes; less than two points draw nothing.
  void addArc(std::span<const SgPoint> path);

  /// The document, with comments that structure it and a bounding box. An empty page without nodes and arcs.
  std::string document(std::string_view title) const;
  /// @returns whether the document is in the file, completely.
  bool write(const char* path, std::string_view title) const;

 private:
  void include(const SgRectangle& area);

  std::string arcs_, nodes_;
  SgRectangle bounds_;
  bool empty_ = true;
};

}  // namespace viewkit
