/// @file
/// Turns a member function into the plain function that Xt and Motif call back.
#pragma once

#include <X11/Intrinsic.h>

#include <new>

namespace viewkit {

/// Tells the user that what was asked for could not be done for want of memory.
void tellOutOfMemory() noexcept;

/// Calls something that may run out of memory, for the toolkit, which knows no exceptions.
template <class Call>
void callForToolkit(const Call& call) noexcept {
  try {
    call();
  } catch (const std::bad_alloc&) {
    tellOutOfMemory();
  }
}

/// `Forward<&C::member>::call` is an XtCallbackProc whose client data is the C object.
/// The object must be registered as exactly the class C. Nothing but
/// std::bad_alloc may be thrown, which the user is told of: C frames are above.
template <auto Member>
struct Forward;

template <class C, void (C::*Member)(Widget, XtPointer)>
struct Forward<Member> {
  static void call(Widget widget, XtPointer self, XtPointer data) noexcept {
    callForToolkit([&] { (static_cast<C*>(self)->*Member)(widget, data); });
  }
};

/// The same for a member that takes the call data as what they are.
template <class C, class CallData, void (C::*Member)(CallData&)>
struct Forward<Member> {
  static void call(Widget, XtPointer self, XtPointer data) noexcept {
    callForToolkit([&] { (static_cast<C*>(self)->*Member)(*static_cast<CallData*>(data)); });
  }
};

/// The same for a member that needs neither the widget nor the call data.
template <class C, void (C::*Member)()>
struct Forward<Member> {
  static void call(Widget, XtPointer self, XtPointer) noexcept {
    callForToolkit([&] { (static_cast<C*>(self)->*Member)(); });
  }
};

}  // namespace viewkit
