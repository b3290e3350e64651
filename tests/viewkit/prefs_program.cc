/// @file
/// Preference dialogs that say on standard output what happens to them; driven by tests.
#include <cstdio>
#include <string>
#include <vector>

#include "viewkit/forward.h"
#include "viewkit/vkapp.h"
#include "viewkit/vkprefdialog.h"
#include "viewkit/vkwindow.h"

namespace {

using viewkit::Forward;
using enum VkMenuItemType;

constexpr const char* kLines[] = {
    "*titleLabel.labelString:\tTest",     "*dialogNameBase.labelString:\t",
    "*nodeNameLabel.labelString:Name:",   "*formLabel.labelString: Form",
    "*oneBase.labelString:\tONE",         "*twoBase.labelString:\tTWO",
    "*threeBase.labelString:\tTHREE",     "*plainBase.labelString:  Plain",
    "*forcedLabel.labelString: Forced",   "*choiceLabel.labelString: Choice",
    "placeLabel.labelString:no asterisk", "*xLable.labelString:misspelt",
    "*yLabel.labelString:the y",          "*noteBase.labelString:Note",
};
constexpr const char* kOtherLines[] = {"*titleLabel.labelString:\tOther",
                                       "*nodeNameLabel.labelString:Other name:"};

std::unique_ptr<VkPrefGroup> title() {
  auto title = std::make_unique<VkPrefGroup>("title", true);
  title->addItem(std::make_unique<VkPrefLabel>("dialogName"));
  title->addItem(std::make_unique<VkPrefText>("nodeName", 20)).setValue("old name");
  return title;
}

/// Every sort of item.
std::unique_ptr<VkPrefGroup> allItems() {
  auto list = std::make_unique<VkPrefList>("prefList");
  list->addItem(title());
  list->addItem(std::make_unique<VkPrefSeparator>("sep1"));
  auto& form = list->addItem(std::make_unique<VkPrefRadio>("form", true));
  for (const char* name : {"one", "two", "three"}) form.addItem(std::make_unique<VkPrefToggle>(name));
  list->addItem(std::make_unique<VkPrefToggle>("plain"));
  list->addItem(std::make_unique<VkPrefToggle>("forced", true));
  auto& choice = list->addItem(std::make_unique<VkPrefOption>("choice", 3));
  const char* const entries[] = {"SHORT", "THE LONGEST ENTRY", "LAST"};
  for (int i = 0; i < 3; ++i) choice.setLabel(i, entries[i]);
  auto& place = list->addItem(std::make_unique<VkPrefGroup>("place"));
  for (const char* name : {"x", "y"}) place.addItem(std::make_unique<VkPrefText>(name, 5));
  list->addItem(std::make_unique<VkPrefLabel>("note"));
  return list;
}

/// More than fits on a screen.
std::unique_ptr<VkPrefGroup> manyItems() {
  auto list = std::make_unique<VkPrefList>("prefList");
  for (int i = 0; i < 80; ++i) {
    const std::string name = "text" + std::to_string(i);
    list->addItem(std::make_unique<VkPrefText>(name.c_str(), 10));
  }
  return list;
}

std::string shown(const VkPrefItem& item) {
  if (const auto* text = dynamic_cast<const VkPrefText*>(&item)) return text->getValue();
  if (const auto* toggle = dynamic_cast<const VkPrefToggle*>(&item)) return toggle->getValue() ? "1" : "0";
  if (const auto* option = dynamic_cast<const VkPrefOption*>(&item)) return option->label(option->getValue());
  return "";
}

void printChanged(const VkPrefGroup& group) {
  for (int i = 0; i < group.size(); ++i) {
    const VkPrefItem& item = *group.item(i);
    if (!item.changed()) continue;
    if (const auto* inner = dynamic_cast<const VkPrefGroup*>(&item)) {
      std::printf("%s changed\n", item.name());
      printChanged(*inner);
    } else {
      std::printf("%s = %s\n", item.name(), shown(item).c_str());
    }
  }
}

class TestDialog : public VkPrefDialog {
 public:
  TestDialog(const char* name, std::unique_ptr<VkPrefGroup> top, std::span<const char* const> lines)
      : VkPrefDialog(name, std::move(top)), lines_(lines) {}

 private:
  Widget createDialog(Widget parent) override {
    setDefaultResources(parent, lines_);
    return VkPrefDialog::createDialog(parent);
  }

  std::span<const char* const> lines_;
};

class PrefsWindow : public VkWindow {
 public:
  explicit PrefsWindow(const char* name) : VkWindow(name) {
    const VkMenuDesc open[] = {{ACTION, "All", &Forward<&PrefsWindow::openAll>::call},
                               {ACTION, "Again", &Forward<&PrefsWindow::openAgain>::call},
                               {ACTION, "Two", &Forward<&PrefsWindow::openTwo>::call},
                               {ACTION, "Many", &Forward<&PrefsWindow::openMany>::call},
                               {ACTION, "Wait", &Forward<&PrefsWindow::wait>::call},
                               {ACTION, "Beyond", &Forward<&PrefsWindow::openBeyond>::call},
                               {TOGGLE, "Refuse", &Forward<&PrefsWindow::refuse>::call},
                               {}};
    addMenuPane("Dialogs", open, this);
    const Widget view =
        XtVaCreateWidget("view", coreWidgetClass, mainWindowWidget(), XtNwidth, 300, XtNheight, 100, nullptr);
    addView(view);
  }

 private:
  TestDialog& add(const char* name, std::unique_ptr<VkPrefGroup> top, std::span<const char* const> lines) {
    auto& dialog = *dialogs_.emplace_back(std::make_unique<TestDialog>(name, std::move(top), lines));
    dialog.addCallback(VkPrefDialog::prefCallback, this, &PrefsWindow::told);
    return dialog;
  }
  void openAll() { add("testDialog", allItems(), kLines).show(); }
  void openAgain() { dialogs_.back()->show(); }
  void openTwo() {
    openAll();
    add("otherDialog", allItems(), kOtherLines).show();
  }
  void openMany() { add("manyDialog", manyItems(), {}).show(); }
  void openBeyond() {
    auto items = allItems();
    dynamic_cast<VkPrefOption*>(items->item(std::string("choice")))->setValue(77);
    add("testDialog", std::move(items), kLines).show();
  }
  void wait() {
    const auto answer = add("testDialog", allItems(), kLines).postAndWait();
    std::printf("waited: %d\n", static_cast<int>(answer));
  }
  void refuse() { refuse_ = !refuse_; }

  void told(VkPrefDialog* dialog, void*, void* reason) {
    const auto told = *static_cast<const VkDialogReason*>(reason);
    std::printf("%s told %d\n", dialog->name(), static_cast<int>(told));
    printChanged(*dialog->item());
    if (told == VkDialogReason::APPLY && refuse_) dialog->setOutcome(VkPrefDialog::Outcome::refused);
  }

  std::vector<std::unique_ptr<TestDialog>> dialogs_;
  bool refuse_ = false;
};

}  // namespace

int main(int argc, char** argv) {
  std::setvbuf(stdout, nullptr, _IOLBF, 0);
  VkApp app("prefstest", &argc, argv);
  PrefsWindow window("PrefsWindow");
  window.show();
  return app.run();
}
