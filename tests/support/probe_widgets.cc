/// @file
/// Walking the widget tree from inside the program.
#include "tests/support/probe_widgets.h"

#include <X11/IntrinsicP.h>

#include <X11/CoreP.h>
#include <X11/Shell.h>
#include <Xm/XmAll.h>

#include <algorithm>
#include <cstdint>
#include <cstdio>
#include <functional>
#include <memory>
#include <span>
#include <stdexcept>
#include <string_view>

#include "viewkit/xraii.h"

namespace probe {

std::span<const Widget> children(Widget parent) {
  if (!XtIsComposite(parent)) return {};
  WidgetList list = nullptr;
  Cardinal count = 0;
  XtVaGetValues(parent, XmNchildren, &list, XmNnumChildren, &count, nullptr);
  return {list, count};
}

namespace {

std::span<const Widget> popups(Widget parent) {
  if (!XtIsWidget(parent)) return {};
  return {parent->core.popup_list, parent->core.num_popups};
}

void walk(Widget widget, const std::function<void(Widget)>& visit) {
  visit(widget);
  for (Widget child : children(widget)) {
    if (XtIsWidget(child) || XmIsGadget(child)) walk(child, visit);
  }
  for (Widget popup : popups(widget)) walk(popup, visit);
}

/// The shells from which every widget of the application can be reached.
std::vector<Widget> roots(XtAppContext app) {
  std::vector<Widget> result;
  Display** displays = nullptr;
  Cardinal display_count = 0;
  XtGetDisplays(app, &displays, &display_count);
  const std::unique_ptr<Display*, viewkit::FreeXt> owner(displays);
  for (Display* display : std::span(displays, display_count)) {
    WidgetList shells = nullptr;
    Cardinal count = 0;
    XtVaGetValues(XtHooksOfDisplay(display), XtNshells, &shells, XtNnumShells, &count, nullptr);
    for (Widget shell : std::span(shells, count)) {
      while (XtParent(shell) != nullptr) shell = XtParent(shell);
      if (std::find(result.begin(), result.end(), shell) == result.end()) result.push_back(shell);
    }
  }
  return result;
}

void walkAll(XtAppContext app, const std::function<void(Widget)>& visit) {
  for (Widget root : roots(app)) walk(root, visit);
}

std::string idOf(Widget widget) {
  char text[32];
  std::snprintf(text, sizeof text, "%p", static_cast<void*>(widget));
  return text;
}

std::string pathOf(Widget widget) {
  const Widget parent = XtParent(widget);
  return (parent != nullptr ? pathOf(parent) : "") + "/" + XtName(widget);
}

/// What a person reads on the widget: a label, a message, a title.
std::string labelOf(Widget widget) {
  if (XmIsLabel(widget) || XmIsLabelGadget(widget)) return viewkit::textResource(widget, XmNlabelString);
  if (XmIsMessageBox(widget)) return viewkit::textResource(widget, XmNmessageString);
  if (XtIsWMShell(widget)) {
    char* title = nullptr;
    XtVaGetValues(widget, XmNtitle, &title, nullptr);
    return title != nullptr ? title : "";
  }
  return "";
}

std::string textOf(Widget widget) {
  if (!XmIsText(widget) && !XmIsTextField(widget)) return "";
  const viewkit::XtText text(XmTextGetString(widget));
  return text.get();
}

bool isSet(Widget widget) {
  if (XmIsToggleButton(widget)) return XmToggleButtonGetState(widget) == XmSET;
  return XmIsToggleButtonGadget(widget) && XmToggleButtonGadgetGetState(widget) == XmSET;
}

bool isViewable(Widget widget) {
  if (XmIsGadget(widget)) return XtIsManaged(widget) && isViewable(XtParent(widget));
  if (!XtIsRealized(widget)) return false;
  XWindowAttributes attributes;
  return XGetWindowAttributes(XtDisplay(widget), XtWindow(widget), &attributes) != 0 &&
         attributes.map_state == IsViewable;
}

/// Where the widget's upper left corner lies on the root window. (The toolkit's own idea of it can be out of
/// date after a window manager moved the window.)
std::pair<int, int> onScreen(Widget widget) {
  int dx = 0, dy = 0;
  Widget window = widget;
  if (XmIsGadget(widget)) {
    dx = widget->core.x;
    dy = widget->core.y;
    window = XtParent(widget);
  }
  if (!XtIsRealized(window)) return {dx, dy};
  int x = 0, y = 0;
  ::Window ignored = 0;
  XTranslateCoordinates(XtDisplay(window), XtWindow(window), XRootWindowOfScreen(XtScreen(window)), dx, dy,
                        &x, &y, &ignored);
  return {x, y};
}

Widget shellOf(Widget widget) {
  while (!XtIsShell(widget)) widget = XtParent(widget);
  return widget;
}

/// Whether keys that are pressed now go to the widget's window. Without a window manager they go where the
/// pointer is.
bool isActive(Widget widget) {
  Display* display = XtDisplayOfObject(widget);
  ::Window focus = 0;
  int ignored = 0;
  XGetInputFocus(display, &focus, &ignored);
  if (focus == PointerRoot) return true;
  const Widget owner = XtWindowToWidget(display, focus);
  return owner != nullptr && shellOf(owner) == shellOf(widget);
}

Words describe(Widget widget) {
  const bool viewable = isViewable(widget);
  const auto [x, y] = viewable ? onScreen(widget) : std::pair{0, 0};
  std::string flags;
  if (XtIsManaged(widget)) flags += 'm';
  if (viewable) flags += 'v';
  if (XtIsSensitive(widget)) flags += 's';
  if (isSet(widget)) flags += 't';
  if (viewable && isActive(widget)) flags += 'a';
  if (XmGetFocusWidget(widget) == widget) flags += 'f';
  const auto number = [](int value) { return std::to_string(value); };
  return {"widget",
          idOf(widget),
          pathOf(widget),
          XtClass(widget)->core_class.class_name,
          number(x),
          number(y),
          number(widget->core.width),
          number(widget->core.height),
          flags,
          labelOf(widget),
          textOf(widget)};
}

/// The declared type and size of a resource, those that its parent adds included.
const XtResource* findResource(std::span<const XtResource> list, const std::string& name) {
  const auto found =
      std::find_if(list.begin(), list.end(), [&](const XtResource& r) { return name == r.resource_name; });
  return found != list.end() ? &*found : nullptr;
}

template <class Number>
std::string numberResource(Widget widget, const std::string& name) {
  Number value{};
  XtVaGetValues(widget, name.c_str(), &value, nullptr);
  return std::to_string(value);
}

}  // namespace

std::vector<Words> describeWidgets(XtAppContext app) {
  std::vector<Words> result;
  walkAll(app, [&](Widget widget) { result.push_back(describe(widget)); });
  return result;
}

Widget findWidget(XtAppContext app, const std::string& id) {
  Widget found = nullptr;
  walkAll(app, [&](Widget widget) {
    if (idOf(widget) == id) found = widget;
  });
  return found;
}

std::string resourceValue(Widget widget, const std::string& name) {
  using Getter = void (*)(WidgetClass, XtResourceList*, Cardinal*);
  const std::pair<Getter, Widget> places[] = {{&XtGetResourceList, widget},
                                              {&XtGetConstraintResourceList, XtParent(widget)}};
  for (const auto& [get, holder] : places) {
    if (holder == nullptr) continue;
    XtResourceList list = nullptr;
    Cardinal count = 0;
    get(XtClass(holder), &list, &count);
    const std::unique_ptr<XtResource, viewkit::FreeXt> owner(list);
    const XtResource* resource = findResource({list, count}, name);
    if (resource == nullptr) continue;
    const std::string_view type = resource->resource_type;
    if (type == XmRXmString) return viewkit::textResource(widget, name.c_str());
    if (type == XmRString) {
      char* text = nullptr;
      XtVaGetValues(widget, name.c_str(), &text, nullptr);
      return text != nullptr ? text : "";
    }
    switch (resource->resource_size) {
      case sizeof(std::int8_t):
        return numberResource<std::int8_t>(widget, name);
      case sizeof(std::int16_t):
        return numberResource<std::int16_t>(widget, name);
      case sizeof(std::int32_t):
        return numberResource<std::int32_t>(widget, name);
      default:
        return numberResource<std::int64_t>(widget, name);
    }
  }
  throw std::invalid_argument("no resource " + name);
}

}  // namespace probe
