/// @file
/// Forwards that exist for their names: members of GraphWindow whose work its parts do.
#include "dialogs/values/kinds.h"
#include "dialogs/values/optionvalues.h"
#include "editor/graphwindow.h"
#include "editor/model/currentscene.h"
#include "editor/model/tracedlinks.h"
#include "editor/structgraph.h"
#include "tools/shell.h"

namespace {

template <class Key>
int changed(VkPrefItem* top, unsigned long index) {
  return values::dialog_of<Key>().write_back(*qis, top->model(), static_cast<Word>(index));
}

/// Takes the options from their dialog, which says which of them the file can't give back. @returns the same.
std::string applied(const values::OptionsDialog& options, VkPrefDialog& dialog) {
  std::string lost;
  if (dialog.item())
    for (const std::string& label : options.apply(dialog.item()->model()))
      lost += (lost.empty() ? "The options file can't give back: " : ", ") + label;
  dialog.setNotice("lost", lost.empty() ? std::nullopt : std::optional(VkNotice{lost}));
  return lost;
}

}  // namespace

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

void GraphWindow::deleteLink(VkNode* parent, VkNode* child) { graph_->remove(parent, child); }

void GraphWindow::deleteDupChild(VkNode* parent, VkNode* child) {
  graph_->remove(parent, GraphGestures::displaced(parent, child));
}

int GraphWindow::sceneChanged(VkPrefItem* top) { return changed<qi::Scene>(top, 0); }
int GraphWindow::shapeChanged(VkPrefItem* top, unsigned long index) { return changed<qi::Shape>(top, index); }
int GraphWindow::texChanged(VkPrefItem* top, unsigned long index) { return changed<qi::Tex>(top, index); }
int GraphWindow::objChanged(VkPrefItem* top, unsigned long index) { return changed<qi::Obj>(top, index); }
int GraphWindow::matChanged(VkPrefItem* top, unsigned long index) { return changed<qi::Mat>(top, index); }
int GraphWindow::camChanged(VkPrefItem* top, unsigned long index) { return changed<qi::Cam>(top, index); }
int GraphWindow::envChanged(VkPrefItem* top, unsigned long index) { return changed<qi::Env>(top, index); }
int GraphWindow::lightChanged(VkPrefItem* top, unsigned long index) { return changed<qi::Light>(top, index); }
int GraphWindow::partChanged(VkPrefItem* top, unsigned long index) { return changed<qi::Part>(top, index); }
int GraphWindow::animChanged(VkPrefItem* top, unsigned long index) { return changed<qi::Anim>(top, index); }
int GraphWindow::lodChanged(VkPrefItem* top, unsigned long index) {
  return changed<LevelsOfDetail>(top, index);
}
int GraphWindow::chrootChanged(VkPrefItem* top, unsigned long index) {
  return changed<qi::ChainRoot>(top, index);
}
int GraphWindow::jointChanged(VkPrefItem* top, unsigned long index) { return changed<qi::Joint>(top, index); }
int GraphWindow::effectorChanged(VkPrefItem* top, unsigned long index) {
  return changed<qi::Effector>(top, index);
}

void GraphWindow::applyOptions(VkPrefDialog* dialog) { tell(applied(values::quil2gfx_dialog(), *dialog)); }
void GraphWindow::applyOptions2(VkPrefDialog* dialog) { tell(applied(values::quil2zex_dialog(), *dialog)); }

bool GraphWindow::print(const std::string& path) { return graph_->saveToFile(path.c_str()); }

void GraphWindow::killpbxsend() {
  for (const char* const line : kKillLoaders) run_shell(line);
}
