/// @file
/// Turns a member function into the plain function that Xt and Motif call back.
#pragma once

#include <X11/Intrinsic.h>

namespace viewkit {

/// `Forward<&C::member>::call` is an XtCallbackProc whose client data is the C object.
/// The object must be registered as exactly the class C. Nothing may be thrown: C frames are above.
template <auto Member>
struct Forward;

template <class C, void (C::*Member)(Widget, XtPointer)>
struct Forward<Member> {
  static void call(Widget widget, XtPointer self, XtPointer data) noexcept {
    (static_cast<C*>(self)->*Member)(widget, data);
  }
};

/// The same for a member that takes the call data as what they are.
template <class C, class CallData, void (C::*Member)(CallData&)>
struct Forward<Member> {
  static void call(Widget, XtPointer self, XtPointer data) noexcept {
    (static_cast<C*>(self)->*Member)(*static_cast<CallData*>(data));
  }
};

/// The same for a member that needs neither the widget nor the call data.
template <class C, void (C::*Member)()>
struct Forward<Member> {
  static void call(Widget, XtPointer self, XtPointer) noexcept { (static_cast<C*>(self)->*Member)(); }
};

}  // namespace viewkit
