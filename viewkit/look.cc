/// @file
/// The fallback X resources of every application on this framework, in one table.
#include "viewkit/look.h"

#include <X11/Xutil.h>

#include <algorithm>
#include <iterator>

#include "viewkit/xraii.h"

namespace viewkit {
namespace {

enum class On { ALL, SMOOTH, PLAIN };

struct Line {
  On on;
  const char* text;
};

using enum On;

/// SMOOTH lines are for screens on which text can be smoothed, PLAIN ones for all others: on a screen with a
/// colour map, smoothed text comes out as black boxes.
constexpr Line kLines[] = {
    // Fonts. A widget takes the rendition "bold" or "mono" by naming it as its render table.
    {ALL, "*labelRenderTable: rt"},
    {ALL, "*buttonRenderTable: rt"},
    {ALL, "*textRenderTable: rt"},
    {SMOOTH, "*rt.fontType: FONT_IS_XFT"},
    {SMOOTH, "*rt.fontName: DejaVu Sans"},
    {SMOOTH, "*rt.fontSize: 9"},
    {SMOOTH, "*bold.fontType: FONT_IS_XFT"},
    {SMOOTH, "*bold.fontName: DejaVu Sans"},
    {SMOOTH, "*bold.fontStyle: Bold"},
    {SMOOTH, "*bold.fontSize: 9"},
    {SMOOTH, "*mono.fontType: FONT_IS_XFT"},
    {SMOOTH, "*mono.fontName: DejaVu Sans Mono"},
    {SMOOTH, "*mono.fontSize: 9"},
    {PLAIN, "*rt.fontType: FONT_IS_FONTSET"},
    {PLAIN, "*rt.fontName: -misc-fixed-medium-r-normal--13-*-*-*-c-70-*-*"},
    {PLAIN, "*bold.fontType: FONT_IS_FONTSET"},
    {PLAIN, "*bold.fontName: -misc-fixed-bold-r-normal--13-*-*-*-c-70-*-*"},
    {PLAIN, "*mono.fontType: FONT_IS_FONTSET"},
    {PLAIN, "*mono.fontName: -misc-fixed-medium-r-normal--13-*-*-*-c-70-*-*"},

    // Colours for TrueColor; each is exact at 5-6-5 bits, so that 16 and 24 bits look alike.
    {SMOOTH, "*background: #e6ebef"},
    {SMOOTH, "*foreground: #181c21"},
    {SMOOTH, "*topShadowColor: #ffffff"},
    {SMOOTH, "*bottomShadowColor: #a5aaad"},
    {SMOOTH, "*highlightColor: #3a79c5"},
    {SMOOTH, "*troughColor: #d6dade"},
    {SMOOTH, "*armColor: #c4c8cb"},
    {SMOOTH, "*selectColor: #3a79c5"},
    {SMOOTH, "*XmList.selectColor: #bdd2ef"},
    {SMOOTH, "*XmText.background: #ffffff"},
    {SMOOTH, "*XmTextField.background: #ffffff"},
    {SMOOTH, "*XmList.background: #ffffff"},
    {SMOOTH, "*XmText.topShadowColor: #c5cace"},
    {SMOOTH, "*XmTextField.topShadowColor: #c5cace"},
    {SMOOTH, "*XmList.topShadowColor: #c5cace"},
    {SMOOTH, "*XmText.bottomShadowColor: #8c9294"},
    {SMOOTH, "*XmTextField.bottomShadowColor: #8c9294"},
    {SMOOTH, "*XmList.bottomShadowColor: #8c9294"},
    {SMOOTH, "*XmScrollBar.bottomShadowColor: #8c9294"},
    {SMOOTH, "*XmComboBox.topShadowColor: #c5cace"},
    {SMOOTH, "*XmComboBox.bottomShadowColor: #8c9294"},
    {SMOOTH, "*XmSpinBox.topShadowColor: #8c9294"},
    {SMOOTH, "*XmSpinBox.bottomShadowColor: #636563"},

    // Colours for the others: cells that the server's standard palette already holds, so none is allocated.
    {PLAIN, "*background: #d5d5d5"},
    {PLAIN, "*foreground: #000000"},
    {PLAIN, "*topShadowColor: #ffffff"},
    {PLAIN, "*bottomShadowColor: #808080"},
    {PLAIN, "*highlightColor: #0055aa"},
    {PLAIN, "*troughColor: #bfbfbf"},
    {PLAIN, "*armColor: #bfbfbf"},
    {PLAIN, "*selectColor: #0055aa"},
    {PLAIN, "*XmList.selectColor: #aaaaff"},
    {PLAIN, "*XmText.background: #ffffff"},
    {PLAIN, "*XmTextField.background: #ffffff"},
    {PLAIN, "*XmList.background: #ffffff"},
    {PLAIN, "*XmText.topShadowColor: #bfbfbf"},
    {PLAIN, "*XmTextField.topShadowColor: #bfbfbf"},
    {PLAIN, "*XmList.topShadowColor: #bfbfbf"},
    {PLAIN, "*XmText.bottomShadowColor: #6a6a6a"},
    {PLAIN, "*XmTextField.bottomShadowColor: #6a6a6a"},
    {PLAIN, "*XmList.bottomShadowColor: #6a6a6a"},
    {PLAIN, "*XmComboBox.topShadowColor: #bfbfbf"},
    {PLAIN, "*XmSpinBox.topShadowColor: #808080"},
    {PLAIN, "*XmSpinBox.bottomShadowColor: #555555"},

    // The graph, a clean sheet, and the strip under it.
    {ALL, "*SgGraph.background: #ffffff"},
    {ALL, "*strip.marginHeight: 2"},
    {ALL, "*strip.marginWidth: 4"},
    {ALL, "*strip.spacing: 4"},
    {ALL, "*strip.zoomOut.labelString: -"},
    {ALL, "*strip.zoomIn.labelString: +"},
    {ALL, "*strip.zoom100.labelString: 100 %"},
    {ALL, "*strip.zoomFit.labelString: Fit"},
    {ALL, "*strip.findLabel.labelString: Find:"},
    {ALL, "*strip.findLabel.marginLeft: 12"},
    {ALL, "*strip.find.columns: 20"},
    {ALL, "*strip.notFound.labelString: not found"},
    {SMOOTH, "*strip.notFound.foreground: #bd1010"},
    {PLAIN, "*strip.notFound.foreground: #aa0000"},

    // Shadows, focus, default button.
    {ALL, "*enableThinThickness: True"},
    {ALL, "*enableEtchedInMenu: True"},
    {ALL, "*enableToggleVisual: True"},
    {ALL, "*shadowThickness: 1"},
    {ALL, "*highlightThickness: 1"},
    {ALL, "*defaultButtonShadowThickness: 0"},
    {ALL, "*XmDialogShell*defaultButtonShadowThickness: 1"},
    {ALL, "*XmDialogShell*XmMenuShell*defaultButtonShadowThickness: 0"},

    // Buttons, menus, toggles.
    {ALL, "*XmPushButton.marginWidth: 8"},
    {ALL, "*XmPushButton.marginHeight: 3"},
    {ALL, "*menuBar.marginHeight: 2"},
    {ALL, "*menuBar.spacing: 2"},
    {ALL, "*XmMenuShell*XmPushButtonGadget.marginWidth: 6"},
    {ALL, "*XmMenuShell*XmPushButtonGadget.marginHeight: 3"},
    {ALL, "*XmMenuShell*XmToggleButtonGadget.marginHeight: 3"},
    {ALL, "*XmMenuShell*XmToggleButtonGadget.visibleWhenOff: True"},
    {ALL, "*XmMenuShell*XmCascadeButtonGadget.marginHeight: 3"},
    {SMOOTH, "*XmMenuShell*XmToggleButtonGadget.selectColor: #c4c8cb"},
    {ALL, "*XmToggleButton.shadowThickness: 0"},
    {ALL, "*XmToggleButton.indicatorSize: 13"},
    {ALL, "*XmToggleButton.spacing: 6"},
    {ALL, "*XmToggleButton.unselectColor: #ffffff"},

    // Text, lists, scrolling.
    {ALL, "*XmTextField.marginHeight: 3"},
    {ALL, "*XmTextField.marginWidth: 4"},
    {ALL, "*XmText.marginHeight: 4"},
    {ALL, "*XmText.marginWidth: 4"},
    {ALL, "*XmList.listMarginWidth: 4"},
    {ALL, "*XmList.listMarginHeight: 2"},
    {ALL, "*XmList.listSpacing: 1"},
    {ALL, "*XmScrolledWindow.spacing: 0"},
    {ALL, "*XmScrollBar.width: 15"},
    {ALL, "*XmScrollBar.height: 15"},
    {ALL, "*XmScrollBar.highlightThickness: 0"},
    {ALL, "*XmSpinBox.marginHeight: 0"},
    {ALL, "*XmSpinBox.marginWidth: 0"},
    {ALL, "*XmSpinBox.shadowThickness: 0"},
    {ALL, "*XmSpinBox.arrowSize: 14"},
    {ALL, "*XmComboBox.marginHeight: 0"},
    {ALL, "*XmComboBox.marginWidth: 0"},
    {ALL, "*XmComboBox.arrowSpacing: 0"},

    // Windows and dialogs.
    {ALL, "*status.marginHeight: 4"},
    {ALL, "*status.marginWidth: 6"},
    {ALL, "*XmMessageBox.marginWidth: 14"},
    {ALL, "*XmMessageBox.marginHeight: 12"},
    {ALL, "*XmMessageBox.XmPushButtonGadget.marginWidth: 16"},
    {ALL, "*XmMessageBox.XmPushButtonGadget.marginHeight: 3"},
    {ALL, "*XmFileSelectionBox.XmPushButtonGadget.marginWidth: 12"},
    {ALL, "*XmFileSelectionBox.XmPushButtonGadget.marginHeight: 3"},
    {ALL, "*questionDialog.dialogTitle: Question"},
    {ALL, "*warningDialog.dialogTitle: Warning"},
    {ALL, "*fileSelectionDialog.dialogTitle: Choose a File"},
    {ALL, "*XmFileSelectionBox.pathMode: XmPATH_MODE_RELATIVE"},
    {ALL, "*XmFileSelectionBox.fileFilterStyle: XmFILTER_HIDDEN_FILES"},
    {ALL, "*XmFileSelectionBox.noMatchString: (no files)"},
    {ALL, "*XmFileSelectionBox.listVisibleItemCount: 14"},
    {ALL, "*XmFileSelectionBox.textColumns: 52"},
    {ALL, "*XmFileSelectionBox.marginWidth: 8"},
    {ALL, "*XmFileSelectionBox.marginHeight: 8"},
    {ALL, "*showAll.labelString: Show all files"},
    {ALL, "*showAll.alignment: ALIGNMENT_BEGINNING"},
};

/// The keys that people know; by itself Motif writes most of them into the text, as boxes.
constexpr const char* kEditingKeys =
    ".translations: #override\\n"
    "Ctrl<Key>a: select-all()\\n"
    "Ctrl<Key>c: copy-clipboard()\\n"
    "Ctrl<Key>x: cut-clipboard()\\n"
    "Ctrl<Key>v: paste-clipboard()";

}  // namespace

bool hasSmoothText(Display* display) {
  const int screen = DefaultScreen(display);
  XVisualInfo wanted{};
  wanted.visualid = XVisualIDFromVisual(DefaultVisual(display, screen));
  int count = 0;
  const XMem<XVisualInfo> found(XGetVisualInfo(display, VisualIDMask, &wanted, &count));
  return count > 0 && found->c_class == TrueColor && DefaultDepth(display, screen) >= 15;
}

std::vector<std::string> fallbackResources(bool smoothText, ResourceLines application) {
  std::vector<std::string> lines;
  for (const auto& [on, text] : kLines)
    if (on == ALL || (on == SMOOTH) == smoothText) lines.emplace_back(text);
  for (const char* text : {"*XmText", "*XmTextField"}) lines.push_back(std::string(text) + kEditingKeys);
  if (application) std::ranges::move(application(smoothText), std::back_inserter(lines));
  return lines;
}

}  // namespace viewkit
