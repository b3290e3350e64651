/// @file
/// Calls functions that the toolkit exports but doesn't declare: no public one does this.
#include "viewkit/textdrawing.h"

#include <X11/IntrinsicP.h>

#include <X11/CoreP.h>
#include <X11/StringDefs.h>

#include <span>

extern "C" {
struct _XftDraw;
// The toolkit's; each is null if it lacks them. The first one finds or makes the record of a window.
[[gnu::weak]] _XftDraw* _XmXftDrawCreate(Display* display, ::Window window);
[[gnu::weak]] void _XmXftDrawDestroy(Display* display, ::Window window, _XftDraw* draw);
}

namespace viewkit {

void releaseTextDrawing(Widget top) {
  if (!_XmXftDrawCreate || !_XmXftDrawDestroy || !XtIsWidget(top)) return;
  if (XtIsRealized(top)) {
    Display* const display = XtDisplay(top);
    _XmXftDrawDestroy(display, XtWindow(top), _XmXftDrawCreate(display, XtWindow(top)));
  }
  if (XtIsComposite(top)) {
    WidgetList children = nullptr;
    Cardinal count = 0;
    XtVaGetValues(top, XtNchildren, &children, XtNnumChildren, &count, nullptr);
    for (const Widget child : std::span(children, count)) releaseTextDrawing(child);
  }
  for (const Widget popup : std::span(top->core.popup_list, top->core.num_popups)) releaseTextDrawing(popup);
}

}  // namespace viewkit
