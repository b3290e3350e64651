/// @file
/// Between compound strings and plain text.
#include "viewkit/xraii.h"

#include <string_view>

namespace viewkit {

XmStr xmString(std::string text) { return XmStr(XmStringCreateLocalized(text.data())); }

std::string plainText(XmString string) {
  std::string result;
  XmStringContext context = nullptr;
  if (!string || !XmStringInitContext(&context, string)) return result;
  for (;;) {
    unsigned int length = 0;
    XtPointer value = nullptr;
    const XmStringComponentType type = XmStringGetNextTriple(context, &length, &value);
    const XtText text(static_cast<char*>(value));
    if (type == XmSTRING_COMPONENT_END) break;
    if (type == XmSTRING_COMPONENT_TEXT || type == XmSTRING_COMPONENT_LOCALE_TEXT) {
      const std::string_view part(text.get(), length);
      result += part.substr(0, part.find('\0'));
    } else if (type == XmSTRING_COMPONENT_SEPARATOR) {
      result += '\n';
    } else if (type == XmSTRING_COMPONENT_TAB) {
      result += '\t';
    }
  }
  XmStringFreeContext(context);
  return result;
}

std::string textResource(Widget widget, const char* resource) {
  XmString string = nullptr;
  XtVaGetValues(widget, resource, &string, nullptr);
  return plainText(XmStr(string).get());
}

}  // namespace viewkit
