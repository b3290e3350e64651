/// @file
/// Forwards that exist for their names: members of GraphWindow whose work its parts do.
#include "dialogs/prefitems.h"
#include "dialogs/values/optionvalues.h"
#include "editor/graphwindow.h"
#include "editor/model/currentscene.h"
#include "editor/model/tracedlinks.h"
#include "editor/structgraph.h"
#include "tools/shell.h"

void GraphWindow::struct_graph(VkGraph* graph) { ::struct_graph(*qis, *graph, *this); }

VkNode* GraphWindow::getQuilVkNode(VkGraph* graph, const std::string& name) const {
  return quil_node(*graph, name, *this);
}

void GraphWindow::addChild(VkNode* parent, const std::string& child_name) {
  graph_->add(parent, getQuilVkNode(graph_.get(), child_name));
}

int GraphWindow::quilAddLink(const VkNode* parent, const VkNode* child) {
  return ::quilAddLink(*qis, parent->name(), child->name());
}

int GraphWindow::quilDeleteLink(const VkNode* parent, const VkNode* child) {
  return ::quilDeleteLink(*qis, parent->name(), child->name());
}

int GraphWindow::quilModifyLink(const VkNode* old_parent, const VkNode* old_child, const VkNode* new_parent,
                                const VkNode* new_child) {
  return ::quilModifyLink(*qis, old_parent->name(), old_child->name(), new_parent->name(), new_child->name());
}

void GraphWindow::deleteLink(VkNode* parent, VkNode* child) { gestures_.removeArc(parent, child); }

void GraphWindow::deleteDupChild(VkNode* parent, VkNode* child) { gestures_.removeDisplaced(parent, child); }

void GraphWindow::applyOptions(VkPrefDialog* dialog) {
  if (dialog->item()) values::quil2gfx_dialog().apply(valuesOf(*dialog->item()));
}

void GraphWindow::applyOptions2(VkPrefDialog* dialog) {
  if (dialog->item()) values::quil2zex_dialog().apply(valuesOf(*dialog->item()));
}

bool GraphWindow::print(const std::string& path) { return graph_->saveToFile(path.c_str()); }

void GraphWindow::killpbxsend() {
  for (const char* const line : kKillLoaders) run_shell(line);
}
