/// @file
/// A small Motif program for the tests of the test support: a menu, a text field, a drawing area that prints
/// what it is told, and a question asked in an event loop of its own.
#include <X11/Shell.h>
#include <Xm/XmAll.h>
#include <unistd.h>

#include <cstdio>
#include <cstdlib>

namespace {

XtAppContext app;
bool asking = false;

/// Sets a string resource of a widget.
void setText(Widget widget, const char* resource, const char* text) {
  const XmString string = XmStringCreateLtoR(const_cast<char*>(text), XmFONTLIST_DEFAULT_TAG);
  XtVaSetValues(widget, resource, string, nullptr);
  XmStringFree(string);
}

Widget menuPane(Widget bar, const char* name, const char* label) {
  const Widget pane = XmCreatePulldownMenu(bar, const_cast<char*>(name), nullptr, 0);
  setText(XtVaCreateManagedWidget(name, xmCascadeButtonGadgetClass, bar, XmNsubMenuId, pane, nullptr),
          XmNlabelString, label);
  return pane;
}

void ask(Widget widget, XtPointer, XtPointer) {
  Widget parent = widget;
  while (!XtIsWMShell(parent) || XmIsMenuShell(parent)) parent = XtParent(parent);
  const Widget box = XmCreateQuestionDialog(parent, const_cast<char*>("question"), nullptr, 0);
  XtVaSetValues(box, XmNdialogStyle, XmDIALOG_FULL_APPLICATION_MODAL, nullptr);
  setText(box, XmNmessageString, "Really?\nTwo lines.");
  const auto answer = [](Widget, XtPointer text, XtPointer) {
    std::printf("%s\n", static_cast<const char*>(text));
    asking = false;
  };
  XtAddCallback(box, XmNokCallback, answer, const_cast<char*>("yes"));
  XtAddCallback(box, XmNcancelCallback, answer, const_cast<char*>("no"));
  XtManageChild(box);
  asking = true;
  while (asking) XtAppProcessEvent(app, XtIMAll);
  XtDestroyWidget(XtParent(box));
}

void tell(Widget, XtPointer, XEvent* event, Boolean*) {
  const XButtonEvent& b = event->xbutton;
  std::printf("%s %u at %d,%d state %u\n", event->type == ButtonPress ? "press" : "release", b.button, b.x,
              b.y, b.state & (ShiftMask | ControlMask));
}

void addMenus(Widget bar) {
  const Widget file = menuPane(bar, "file", "File");
  const Widget question = XtVaCreateManagedWidget("Ask...", xmPushButtonGadgetClass, file, nullptr);
  XtAddCallback(question, XmNactivateCallback, &ask, nullptr);
  const Widget more = XmCreatePulldownMenu(file, const_cast<char*>("more"), nullptr, 0);
  XtVaCreateManagedWidget("More", xmCascadeButtonGadgetClass, file, XmNsubMenuId, more, nullptr);
  XtVaCreateManagedWidget("Deep", xmToggleButtonGadgetClass, more, nullptr);
  XtVaCreateManagedWidget("Grey", xmPushButtonGadgetClass, file, XmNsensitive, False, nullptr);
  const Widget crash = XtVaCreateManagedWidget("Crash", xmPushButtonGadgetClass, file, nullptr);
  XtAddCallback(
      crash, XmNactivateCallback,
      [](Widget, XtPointer, XtPointer) {
        std::fputs("going down\n", stderr);
        std::_Exit(3);
      },
      nullptr);
  const Widget quit = XtVaCreateManagedWidget("Quit", xmPushButtonGadgetClass, file, nullptr);
  XtAddCallback(
      quit, XmNactivateCallback, [](Widget, XtPointer, XtPointer) { XtAppSetExitFlag(app); }, nullptr);
}

}  // namespace

int main(int argc, char** argv) {
  const char* login = getlogin();
  std::printf("started as %s in %s by %s\n", argv[0], std::getenv("HOME"),
              login != nullptr ? login : "nobody");
  const Widget shell = XtVaOpenApplication(&app, "Tiny", nullptr, 0, &argc, argv, nullptr,
                                           applicationShellWidgetClass, XmNtitle, "A tiny program", nullptr);
  const Widget window = XtVaCreateManagedWidget("window", xmMainWindowWidgetClass, shell, nullptr);
  const Widget bar = XmCreateMenuBar(window, const_cast<char*>("bar"), nullptr, 0);
  addMenus(bar);
  const Widget form = XtVaCreateManagedWidget("form", xmRowColumnWidgetClass, window, nullptr);
  XtVaCreateManagedWidget("field", xmTextFieldWidgetClass, form, XmNcolumns, 30, nullptr);
  const Widget area =
      XtVaCreateManagedWidget("area", xmDrawingAreaWidgetClass, form, XmNwidth, 300, XmNheight, 200, nullptr);
  XtAddEventHandler(area, ButtonPressMask | ButtonReleaseMask, False, &tell, nullptr);
  XtManageChild(bar);
  XtRealizeWidget(shell);
  XtAppMainLoop(app);
  return std::system("test -z \"$LD_PRELOAD$QUIL_PROBE_FD\"") == 0 ? 0 : 1;
}
