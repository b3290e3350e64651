/// @file
/// The strip under a graph: zoom buttons, the zoom in per cent, and a field that finds nodes.
#pragma once

#include <X11/Intrinsic.h>

#include <cstddef>
#include <optional>
#include <string>
#include <vector>

#include "viewkit/vkcomponent.h"
#include "viewkit/vkgraph.h"

/// Widgets, by name: push buttons "zoomOut", "zoomIn", "zoom100", "zoomFit", labels "zoomLevel", "findLabel",
/// "findCount" and "notFound", text field "find", push button "showAll" while only some nodes are shown.
/// Typing in the field goes to the first node that the text may mean (see VkGraph::findAll), Return and Down
/// to the next one, Shift+Return and Up to the one before; Ctrl+Return selects all of them beside what is
/// selected, Escape empties the field and goes back to the graph.
///
/// While a node is to be chosen (see VkGraph::choose), the field is labelled so, and Return takes the node
/// that is shown. What was selected before is selected again afterwards.
class GraphStrip : public VkComponent {
 public:
  /// @param graph  must live as long as the strip.
  GraphStrip(const char* name, Widget parent, VkGraph& graph);
  ~GraphStrip() override;
  const char* className() const override { return "GraphStrip"; }

  /// Takes the keyboard to the field.
  void startFind();
  /// See VkGraph::choose.
  void startChoice(VkNodeChoice choice);
  void clearFind();
  /// The text in the field, which is emptied; and such a text back in it, which finds nothing by itself.
  std::string putAside();
  void takeBack(const std::string& text);

  /// How many nodes are shown; nothing: all of them.
  void showHowMany(std::optional<std::size_t> shown, std::size_t all);

  /// A step in or out.
  void zoomOut();
  void zoomIn();

 private:
  void zoom100();
  void zoomFit();
  void findChanged();
  void showAll();
  void returnPressed();
  void viewChanged();
  /// A button that the pointer has pressed gives the keyboard to the graph, which the keys are for.
  static void pressedCallback(Widget button, XtPointer self, XtPointer data) noexcept;
  static void keyAction(Widget field, XEvent* event, String* words, Cardinal* count) noexcept;
  /// Goes to another of the nodes found, `step` after the one that is selected. 0: to the first.
  void goTo(std::ptrdiff_t step);
  void selectAll();
  std::vector<VkNode*> found() const;
  /// Notes what is selected.
  void remember();
  void selectRemembered();
  void toField();
  void label(const std::string& text);
  /// Tells the choice under way what it would be; null: nothing.
  void offer(VkNode* node);
  void choose();
  void endChoice();
  /// @param place  of the present node among those found; nothing: none is meant
  void showCount(std::optional<std::size_t> place, std::size_t count);

  VkGraph& graph_;
  std::vector<std::string> before_;  // what was selected when the typing began, by name
  bool typing_ = false;
  std::optional<VkNodeChoice> choice_;
  std::string offered_;    // the name of the node that would be chosen; empty: none
  std::string findLabel_;  // what stands before the field as a rule
  Widget labelWidget_ = nullptr, find_ = nullptr, count_ = nullptr, notFound_ = nullptr, zoomLevel_ = nullptr,
         showAll_ = nullptr;
};
