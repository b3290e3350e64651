/// @file
/// The strip under a graph: zoom buttons, the zoom in per cent, and a field that finds nodes.
#pragma once

#include <X11/Intrinsic.h>

#include "viewkit/vkcomponent.h"

class VkGraph;

/// Widgets, by name: push buttons "zoomOut", "zoomIn", "zoom100", "zoomFit", labels "zoomLevel" and
/// "notFound", text field "find". Typing in the field goes to the first node whose name or label contains the
/// text, Return to the next one.
class GraphStrip : public VkComponent {
 public:
  /// @param graph  must live as long as the strip.
  GraphStrip(const char* name, Widget parent, VkGraph& graph);
  ~GraphStrip() override;
  const char* className() const override { return "GraphStrip"; }

 private:
  void zoomOut();
  void zoomIn();
  void zoom100();
  void zoomFit();
  void findChanged();
  void findNext();
  void viewChanged();
  void goTo(bool next);

  VkGraph& graph_;
  Widget find_ = nullptr, notFound_ = nullptr, zoomLevel_ = nullptr;
};
