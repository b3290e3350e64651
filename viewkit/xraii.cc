/// @file Between compound strings and plain text.
#include "viewkit/xraii.h"

namespace viewkit {

XmStr xmString(std::string text) { return XmStr(XmStringCreateLocalized(text.data())); }

std::string plainText(XmString string) {
  if (!string) return {};
  const XtText text(static_cast<char*>(
      XmStringUnparse(string, nullptr, XmCHARSET_TEXT, XmCHARSET_TEXT, nullptr, 0, XmOUTPUT_ALL)));
  return text ? text.get() : "";
}

std::string textResource(Widget widget, const char* resource) {
  XmString string = nullptr;
  XtVaGetValues(widget, resource, &string, nullptr);
  return plainText(XmStr(string).get());
}

}  // namespace viewkit
