/// @file
/// The rows of the lists, and what clicks and drags do with them.
#include "viewkit/linkspane.h"

#include <Xm/Form.h>
#include <Xm/Label.h>
#include <Xm/List.h>
#include <Xm/PanedW.h>

#include <algorithm>
#include <array>

#include "picture/utf8.h"
#include "viewkit/xraii.h"

using viewkit::Forward;

namespace {

/// Motif would select other rows while the pointer leaves the list with its button held.
constexpr char kListKeys[] =
    "<Btn1Motion>: LinksPaneDrag()\n"
    "<Btn1Up>: LinksPaneDrag() ListEndSelect()\n"
    "<Key>osfCancel: LinksPaneDrag() ListKbdCancel()\n"
    "<LeaveWindow>: LinksPaneDrag()";

std::string rowOf(const VkNode& node) {
  constexpr std::size_t kMost = 60;  // bytes of a title
  std::string row = node.name();
  if (row != node.label()) row += " (" + std::string(node.label()) + ")";
  const std::string title = node.title();
  const std::string_view begin = picture::beginning(title, kMost);
  if (!begin.empty()) row += "   " + std::string(begin) + (begin.size() < title.size() ? "..." : "");
  return row;
}

bool isInside(Widget widget, const XMotionEvent& event) {
  Dimension width = 0, height = 0;
  XtVaGetValues(widget, XmNwidth, &width, XmNheight, &height, nullptr);
  return event.x >= 0 && event.y >= 0 && event.x < width && event.y < height;
}

}  // namespace

LinksPane::LinksPane(const char* name, VkGraph& graph) : VkComponent(name), graph_(graph) {
  const Widget form =
      XtVaCreateWidget(name, xmFormWidgetClass, graph.side(), XmNskipAdjust, True, XmNallowResize, False,
                       XmNpaneMinimum, kLeast, XmNpaneMaximum, kMost, XmNfractionBase, 2, nullptr);
  setBaseWidget(form);
  static XtActionsRec actions[] = {{const_cast<char*>("LinksPaneDrag"), &LinksPane::dragAction}};
  XtAppAddActions(XtWidgetToApplicationContext(form), actions, XtNumber(actions));
  label_ = XtVaCreateManagedWidget("subject", xmLabelWidgetClass, form, XmNtopAttachment, XmATTACH_FORM,
                                   XmNleftAttachment, XmATTACH_FORM, XmNrightAttachment, XmATTACH_FORM,
                                   XmNalignment, XmALIGNMENT_BEGINNING, XmNrecomputeSize, False, nullptr);
  parents_ = makeSide("parents");
  children_ = makeSide("children");
  XtVaSetValues(parents_.label, XmNtopAttachment, XmATTACH_WIDGET, XmNtopWidget, label_, nullptr);
  XtVaSetValues(XtParent(parents_.list), XmNbottomAttachment, XmATTACH_POSITION, XmNbottomPosition, 1,
                nullptr);
  XtVaSetValues(children_.label, XmNtopAttachment, XmATTACH_POSITION, XmNtopPosition, 1, nullptr);
  XtVaSetValues(XtParent(children_.list), XmNbottomAttachment, XmATTACH_FORM, nullptr);
  constexpr int kLinesWide = 17;  // at least: large letters need more room
  XmRenderTable fonts = nullptr;
  XtVaGetValues(label_, XmNrenderTable, &fonts, nullptr);
  setWidth(std::max(width(), kLinesWide * XmStringHeight(fonts, viewkit::xmString("Links").get())));
  XtAddCallback(graph.graphWidget(), SgNcontentsCallback, contentsCallback, this);
  update();
}

LinksPane::~LinksPane() {
  if (graph_.graphWidget())
    XtRemoveCallback(graph_.graphWidget(), SgNcontentsCallback, contentsCallback, this);
}

LinksPane::Side LinksPane::makeSide(const std::string& name) {
  const Widget form = baseWidget();
  Side side;
  side.label = XtVaCreateManagedWidget((name + "Label").c_str(), xmLabelWidgetClass, form, XmNleftAttachment,
                                       XmATTACH_FORM, XmNrightAttachment, XmATTACH_FORM, XmNalignment,
                                       XmALIGNMENT_BEGINNING, XmNrecomputeSize, False, nullptr);
  std::string widgetName = name;
  std::array<Arg, 3> args{Arg{XmNselectionPolicy, XmBROWSE_SELECT}, Arg{XmNlistSizePolicy, XmCONSTANT},
                          Arg{XmNuserData, reinterpret_cast<XtArgVal>(this)}};
  side.list = XmCreateScrolledList(form, widgetName.data(), args.data(), static_cast<Cardinal>(args.size()));
  XtOverrideTranslations(side.list, XtParseTranslationTable(kListKeys));
  XtVaSetValues(XtParent(side.list), XmNtopAttachment, XmATTACH_WIDGET, XmNtopWidget, side.label,
                XmNleftAttachment, XmATTACH_FORM, XmNrightAttachment, XmATTACH_FORM, nullptr);
  XtAddCallback(side.list, XmNbrowseSelectionCallback, &Forward<&LinksPane::rowSelected>::call, this);
  XtAddCallback(side.list, XmNdefaultActionCallback, &Forward<&LinksPane::rowActivated>::call, this);
  XtManageChild(side.list);
  return side;
}

void LinksPane::widgetDestroyed() {
  parents_ = children_ = {};
  label_ = nullptr;
}

int LinksPane::width() const {
  Dimension width = 0;
  if (baseWidget()) XtVaGetValues(baseWidget(), XmNwidth, &width, nullptr);
  return width;
}

void LinksPane::setWidth(int pixels) {
  if (baseWidget())
    XtVaSetValues(baseWidget(), XmNwidth, static_cast<Dimension>(std::clamp(pixels, kLeast, kMost)), nullptr);
}

void LinksPane::update() {
  if (!label_ || !graph_.graphWidget() || !XtIsManaged(baseWidget())) return;
  const std::vector<Widget> selected = SgGraphGetSelectedNodes(graph_.graphWidget());
  const VkNode* const subject = selected.empty() ? nullptr : VkNode::of(selected.back());
  subject_ = subject ? subject->name() : "";
  const std::string text = subject ? rowOf(*subject) : "No node is selected";
  if (viewkit::textResource(label_, XmNlabelString) != text)
    XtVaSetValues(label_, XmNlabelString, viewkit::xmString(text).get(), nullptr);
  fill(parents_, "Referred to by", subject ? subject->nParents() : 0, &VkNode::parent, subject);
  fill(children_, "Refers to", subject ? subject->nChildren() : 0, &VkNode::child, subject);
}

void LinksPane::fill(Side& side, const std::string& heading, int count, VkNode* (VkNode::*other)(int) const,
                     const VkNode* subject) {
  const std::string text = heading + " " + std::to_string(count);
  if (viewkit::textResource(side.label, XmNlabelString) != text)
    XtVaSetValues(side.label, XmNlabelString, viewkit::xmString(text).get(), nullptr);
  std::vector<std::string> nodes, rows;
  for (int i = 0; i < std::min(count, kMostRows); ++i) {
    const VkNode* const node = (subject->*other)(i);
    nodes.emplace_back(node->name());
    rows.push_back(rowOf(*node));
  }
  if (count > kMostRows) rows.push_back("and " + std::to_string(count - kMostRows) + " more");
  side.nodes = std::move(nodes);
  if (rows == side.rows) return;
  side.rows = std::move(rows);
  std::vector<viewkit::XmStr> owned;
  std::vector<XmString> items;
  for (const std::string& row : side.rows) items.push_back(owned.emplace_back(viewkit::xmString(row)).get());
  XmListDeleteAllItems(side.list);
  if (!items.empty()) XmListAddItemsUnselected(side.list, items.data(), static_cast<int>(items.size()), 0);
}

VkNode* LinksPane::chosen(const Side& side) const {
  const int place = XmListGetKbdItemPos(side.list);  // while a button is held, nothing is selected yet
  const bool isNode = place > 0 && static_cast<std::size_t>(place) <= side.nodes.size();
  return isNode ? graph_.find(side.nodes[static_cast<std::size_t>(place) - 1]) : nullptr;
}

void LinksPane::rowSelected(Widget list, XtPointer) {
  Side& side = sideOf(list);
  XmListDeselectAllItems(&side == &parents_ ? children_.list : parents_.list);
  const VkNode *const subject = graph_.find(subject_), *const other = chosen(side);
  if (!subject || !other) return;
  const bool up = &side == &parents_;
  const Widget graph = graph_.graphWidget();
  const SgArc arc =
      SgGraphFindArc(graph, (up ? other : subject)->baseWidget(), (up ? subject : other)->baseWidget());
  SgGraphClearSelection(graph);
  SgGraphSelectNode(graph, subject->baseWidget());
  SgGraphSelectArc(graph, arc);
}

void LinksPane::rowActivated(Widget list, XtPointer) { graph_.reveal(chosen(sideOf(list))); }

void LinksPane::dragAction(Widget list, XEvent* event, String*, Cardinal*) noexcept {
  XtPointer self = nullptr;
  XtVaGetValues(list, XmNuserData, &self, nullptr);
  viewkit::callForToolkit([&] { static_cast<LinksPane*>(self)->drag(list, *event); });
}

void LinksPane::drag(Widget list, const XEvent& event) {
  const Widget graph = graph_.graphWidget();
  if (!graph) return;
  if (!dragging_ && event.type == MotionNotify && !isInside(list, event.xmotion)) {
    VkNode* const node = chosen(sideOf(list));
    Boolean editable = False;
    XtVaGetValues(graph, SgNeditableArcs, &editable, nullptr);
    if (!node || !editable) return;
    graph_.uncover({node});  // it may be hidden in the picture that is shown
    dragging_ = SgGraphBeginArc(graph, node->baseWidget());
  }
  if (!dragging_) return;
  dragging_ = event.type != ButtonRelease && event.type != KeyPress;
  SgGraphContinueArc(graph, event);
}
