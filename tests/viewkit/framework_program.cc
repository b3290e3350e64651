/// @file
/// A small application on the framework that says on standard output what happens to it; driven by tests.
#include <Xm/Form.h>
#include <Xm/PushB.h>
#include <Xm/TextF.h>
#include <Xm/ToggleBG.h>

#include <cstdio>
#include <cstdlib>
#include <string>
#include <tuple>
#include <vector>

#include "viewkit/forward.h"
#include "viewkit/vkapp.h"
#include "viewkit/vkfileselectiondialog.h"
#include "viewkit/vkmessagedialogs.h"
#include "viewkit/vkwindow.h"

namespace {

using viewkit::Forward;
using enum VkMenuItemType;

const char* answerName(VkDialogReason reason) {
  return reason == VkDialogReason::OK ? "OK" : reason == VkDialogReason::CANCEL ? "CANCEL" : "APPLY";
}

class TestWindow : public VkWindow {
 public:
  explicit TestWindow(const char* name) : VkWindow(name) {
    const VkMenuDesc more[] = {{ACTION, "Set Output Directory", &sayName}, {}};
    const VkMenuDesc file[] = {{ACTION, "New", &Forward<&TestWindow::ask>::call},
                               {ACTION, "Open", &Forward<&TestWindow::choose>::call},
                               {ACTION, "Save", &sayName},
                               {ACTION, "Save As...", &sayName},
                               {SEPARATOR},
                               {ACTION, "Quit", &Forward<&TestWindow::quit>::call},
                               {}};
    const VkMenuDesc edit[] = {
        {TOGGLE, "Edit Mode", &Forward<&TestWindow::edit>::call}, {ACTION, "Delete Link", &sayName}, {}};
    const VkMenuDesc tool[] = {{ACTION, "Warn", &Forward<&TestWindow::warn>::call},
                               {ACTION, "Grey", &Forward<&TestWindow::grey>::call},
                               {ACTION, "Busy", &Forward<&TestWindow::work>::call},
                               {ACTION, "Quit inside", &Forward<&TestWindow::quitInside>::call},
                               {SUBMENU, "Convert to KAVO DL", nullptr, more},
                               {}};
    addMenuPane("File", file, this);
    addMenuPane("Edit", edit, this);
    addMenuPane("KAVO tool", tool, this);
    const Widget form = XtVaCreateWidget("form", xmFormWidgetClass, mainWindowWidget(), XmNwidth, 560,
                                         XmNheight, 360, nullptr);
    XtVaCreateManagedWidget("text", xmTextFieldWidgetClass, form, XmNleftAttachment, XmATTACH_FORM,
                            XmNrightAttachment, XmATTACH_FORM, nullptr);
    XtVaCreateManagedWidget("button", xmPushButtonWidgetClass, form, XmNbottomAttachment, XmATTACH_FORM,
                            nullptr);
    addView(form);
    setStatus("Ready.");
    theApplication->addCallback(VkApp::displayLostCallback, this, &TestWindow::displayLost);
  }
  ~TestWindow() override { std::puts("window destroyed"); }
  const char* className() const override { return "TestWindow"; }

 private:
  static void sayName(Widget widget, XtPointer, XtPointer) { std::puts(XtName(widget)); }

  void ask() {
    std::printf("question %s\n", answerName(getTheQuestionDialog()->postAndWait("All data is deleted. OK?")));
  }
  void choose() {
    auto* const dialog = getTheFileSelectionDialog();
    dialog->setFilterPattern("*.quil");
    const auto answer = dialog->postAndWait();
    std::printf("file %s %s\n", answerName(answer), dialog->fileName());
  }
  void warn() {
    std::printf("warning %s\n", answerName(getTheWarningDialog()->postAndWait("Can't write QUIL data!")));
  }
  void edit() {
    const auto* toggle = menu()->findNamedItem<VkMenuToggle>("Edit Mode");
    std::printf("Edit Mode %d\n", XmToggleButtonGadgetGetState(toggle->baseWidget()));
  }
  void grey() {
    auto* const pane = menu()->findNamedItem("File");
    const bool active = XtIsSensitive(pane->baseWidget());
    if (active)
      pane->deactivate();
    else
      pane->activate();
    std::printf("File %d\n", !active);
  }
  void work() {
    theApplication->busy("making KAVO data...");
    theApplication->busy();
    theApplication->notBusy();
    // Blocks as a converter would, until the test lets go.
    std::ignore = std::system("touch blocked; until test -e go; do sleep 0.02; done");
    theApplication->notBusy();
    std::puts("worked");
  }
  void quitInside() {
    XtAppAddTimeOut(
        theApplication->appContext(), 0, [](XtPointer, XtIntervalId*) { theApplication->quitYourself(); },
        nullptr);
    ask();
  }
  void quit() { theApplication->quitYourself(); }
  void displayLost(VkApp*, void*, void*) { std::puts("display lost"); }
};

std::vector<std::string> menuKeys(bool) {
  return {"*Save.accelerator: Ctrl<Key>s",
          "*Save.acceleratorText: Ctrl+S",
          "*SaveAs.accelerator: Shift Ctrl<Key>s",
          "*SaveAs.acceleratorText: Shift+Ctrl+S",
          "*Edit.mnemonic: E",
          "*EditMode.mnemonic: E",
          "*EditMode.accelerator: Ctrl<Key>e",
          "*DeleteLink.mnemonic: D",
          "*DeleteLink.accelerator: <Key>osfDelete"};
}

}  // namespace

int main(int argc, char** argv) {
  std::setvbuf(stdout, nullptr, _IOLBF, 0);
  VkApp app("frameworktest", &argc, argv, nullptr, 0, &menuKeys);
  TestWindow window("TestWindow");
  window.show();
  const int status = app.run();
  std::printf("run returned %d\n", status);
  return status;
}
