/// @file
/// The strip under a graph: zoom buttons, the zoom in per cent, and a field that finds nodes.
#pragma once

#include <X11/Intrinsic.h>

#include <cstddef>
#include <optional>
#include <string>
#include <vector>

#include "viewkit/vkcomponent.h"

class VkGraph;
class VkNode;

/// Widgets, by name: push buttons "zoomOut", "zoomIn", "zoom100", "zoomFit", labels "zoomLevel", "findCount"
/// and "notFound", text field "find". Typing in the field goes to the first node that the text may mean (see
/// VkGraph::findAll), Return to the next one, Shift+Return to the one before; Ctrl+Return selects all of them
/// beside what is selected, Escape empties the field and goes back to the graph.
class GraphStrip : public VkComponent {
 public:
  /// @param graph  must live as long as the strip.
  GraphStrip(const char* name, Widget parent, VkGraph& graph);
  ~GraphStrip() override;
  const char* className() const override { return "GraphStrip"; }

  /// Takes the keyboard to the field.
  void startFind();
  void clearFind();

  /// A step in or out.
  void zoomOut();
  void zoomIn();

 private:
  void zoom100();
  void zoomFit();
  void findChanged();
  void findNext();
  void viewChanged();
  static void keyAction(Widget field, XEvent* event, String* words, Cardinal* count) noexcept;
  /// Goes to another of the nodes found, `step` after the one that is selected. 0: to the first.
  void goTo(std::ptrdiff_t step);
  void selectAll();
  std::vector<VkNode*> found() const;
  /// @param place  of the present node among those found; nothing: none is meant
  void showCount(std::optional<std::size_t> place, std::size_t count);

  VkGraph& graph_;
  std::vector<std::string> before_;  // what was selected when the typing began, by name
  bool typing_ = false;
  Widget find_ = nullptr, count_ = nullptr, notFound_ = nullptr, zoomLevel_ = nullptr;
};
