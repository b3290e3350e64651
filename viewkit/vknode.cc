/// @file
/// Nodes and their widgets.
#include "viewkit/vknode.h"

#include <Xm/Xm.h>

#include <array>

#include "viewkit/sggraph/Graph.h"
#include "viewkit/xraii.h"

VkNode::VkNode(const char* name, const char* label) : VkComponent(name), label_(label ? label : name) {}

VkNode::~VkNode() = default;

void VkNode::build(Widget parent) {
  if (baseWidget()) return;
  std::array<Arg, 3> args{};
  Cardinal count = 0;
  XtSetArg(args[count], XmNuserData, this), ++count;
  viewkit::XmStr labelString;
  if (label_ != name()) {  // the node's name is what it shows by itself
    labelString = viewkit::xmString(label_);
    XtSetArg(args[count], XmNlabelString, labelString.get()), ++count;
  }
  std::string tintResource = SgNtint;
  if (*tintName() != '\0')
    XtSetArg(args[count], tintResource.data(), SgGraphTint(parent, tintName())), ++count;
  setBaseWidget(SgGraphCreateNode(parent, name(), args.data(), count));
}

bool VkNode::hasOtherParent(const VkNode* parent) const {
  for (int i = 0; i < nParents(); ++i)
    if (this->parent(i) != parent) return true;
  return false;
}

VkNode* VkNode::of(Widget nodeWidget) {
  return nodeWidget ? static_cast<VkNode*>(SgNodeUserData(nodeWidget)) : nullptr;
}
