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
#include <map>
#include <memory>
#include <span>
#include <stdexcept>
#include <string_view>
#include <tuple>
#include <utility>

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

/// The rows of a list, one on each line.
std::string rowsOf(Widget list) {
  XmStringTable items = nullptr;
  int count = 0;
  XtVaGetValues(list, XmNitems, &items, XmNitemCount, &count, nullptr);
  std::string rows;
  for (const XmString item : std::span(items, static_cast<std::size_t>(count)))
    rows += viewkit::plainText(item) + "\n";
  return rows;
}

std::string textOf(Widget widget) {
  if (XmIsList(widget)) return rowsOf(widget);
  if (!XmIsText(widget) && !XmIsTextField(widget)) return "";
  const viewkit::XtText text(XmTextGetString(widget));
  return text.get();
}

bool isSet(Widget widget) {
  if (XmIsToggleButton(widget)) return XmToggleButtonGetState(widget) == XmSET;
  return XmIsToggleButtonGadget(widget) && XmToggleButtonGadgetGetState(widget) == XmSET;
}

/// What is asked of the X server about a window; nothing where there is none yet.
bool isMappedWindow(Widget widget) {
  XWindowAttributes attributes;
  return XtIsRealized(widget) &&
         XGetWindowAttributes(XtDisplay(widget), XtWindow(widget), &attributes) != 0 &&
         attributes.map_state == IsViewable;
}

/// Where a shell lies on the root window. (The toolkit's own idea of it can be out of date after a window
/// manager moved the window.)
std::pair<int, int> onScreen(Widget shell) {
  int x = 0, y = 0;
  ::Window ignored = 0;
  XTranslateCoordinates(XtDisplay(shell), XtWindow(shell), XRootWindowOfScreen(XtScreen(shell)), 0, 0, &x, &y,
                        &ignored);
  return {x, y};
}

/// Asks for every widget what a person sees of it, with as few questions to the X server as will do: tests
/// ask often.
class Describer {
 public:
  /// @param name that of the widgets to describe; empty: of all
  explicit Describer(std::string_view name) : name_(name) {}

  std::vector<Words> of(XtAppContext app) {
    for (Widget root : roots(app)) describeShell(root, "");
    return std::move(lines_);
  }

 private:
  /// A widget that may hold others.
  struct Holder {
    std::string path;
    bool viewable = false;
    bool active = false;     ///< whether keys that are pressed now go to its shell
    Widget focus = nullptr;  ///< the widget of the shell that they go to then
    int x = 0, y = 0;        ///< of its window's inner corner, on the screen
  };

  /// Whether keys that are pressed now go to the shell's window. Without a window manager they go where the
  /// pointer is.
  bool isActive(Widget shell) {
    Display* display = XtDisplay(shell);
    const auto [known, first] = focus_.try_emplace(display);
    if (first) {
      int ignored = 0;
      XGetInputFocus(display, &known->second, &ignored);
    }
    if (known->second == PointerRoot) return true;
    Widget owner = XtWindowToWidget(display, known->second);
    while (owner != nullptr && !XtIsShell(owner)) owner = XtParent(owner);
    return owner == shell;
  }

  void describeShell(Widget shell, const std::string& parent) {
    Holder self{.path = parent + "/" + XtName(shell), .viewable = isMappedWindow(shell)};
    if (self.viewable) {
      std::tie(self.x, self.y) = onScreen(shell);
      self.active = isActive(shell);
    }
    self.focus = XmGetFocusWidget(shell);
    describe(shell, self);
  }

  void describeChild(Widget widget, const Holder& parent) {
    Holder self = parent;
    self.path += std::string("/") + XtName(widget);
    if (XmIsGadget(widget)) {
      self.viewable = parent.viewable && XtIsManaged(widget);
    } else {
      self.viewable = parent.viewable && isMappedWindow(widget);
    }
    self.active = parent.active && self.viewable;
    self.x += widget->core.x + widget->core.border_width;
    self.y += widget->core.y + widget->core.border_width;
    describe(widget, self);
  }

  /// Adds the line of a widget, and those of all that it holds.
  void describe(Widget widget, const Holder& self) {
    if (name_.empty() || name_ == XtName(widget)) lines_.push_back(line(widget, self));
    for (Widget child : children(widget)) {
      if (XtIsWidget(child) || XmIsGadget(child)) describeChild(child, self);
    }
    for (Widget popup : popups(widget)) describeShell(popup, self.path);
  }

  static Words line(Widget widget, const Holder& self) {
    std::string flags;
    if (XtIsManaged(widget)) flags += 'm';
    if (self.viewable) flags += 'v';
    if (XtIsSensitive(widget)) flags += 's';
    if (isSet(widget)) flags += 't';
    if (self.active) flags += 'a';
    if (self.focus == widget) flags += 'f';
    const auto number = [](int value) { return std::to_string(value); };
    return {"widget",
            idOf(widget),
            self.path,
            XtClass(widget)->core_class.class_name,
            number(self.viewable ? self.x : 0),
            number(self.viewable ? self.y : 0),
            number(widget->core.width),
            number(widget->core.height),
            flags,
            labelOf(widget),
            textOf(widget)};
  }

  std::string_view name_;
  std::vector<Words> lines_;
  std::map<Display*, ::Window> focus_;
};

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

std::vector<Words> describeWidgets(XtAppContext app, const std::string& name) {
  return Describer(name).of(app);
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
