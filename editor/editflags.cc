/// @file
/// What a double-click on a node does.
#include <cstdio>

#include "editor/graphwindow.h"

void GraphWindow::defaultAction(Widget, XtPointer data) {
  std::printf("In defaultActionCallback\n");
  nodeAction(*static_cast<const SgGraphCallbackStruct*>(data));
}

void GraphWindow::nodeAction(const SgGraphCallbackStruct& action) {
  if (action.reason != SgCR_DEFAULT_ACTION) return;
  if (const VkNode* const node = VkNode::of(action.node)) std::printf("%s\n", node->label());
}
