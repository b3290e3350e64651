/// @file
/// The fallback X resources of every application on this framework, in one table.
#include "viewkit/look.h"

#include <X11/Xutil.h>

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
    {ALL, "*title.renderTable: bold"},

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

    // The graph: a clean sheet, and a tint per kind of node.
    {ALL, "*SgGraph.background: #ffffff"},
    {ALL, "*graph.width: 1040"},
    {ALL, "*graph.height: 680"},
    {SMOOTH, "*sceneTint: #ffe7a5"},
    {SMOOTH, "*objTint: #c6def7"},
    {SMOOTH, "*lodTint: #dedede"},
    {SMOOTH, "*shapeTint: #ceefc6"},
    {SMOOTH, "*partTint: #e7f7de"},
    {SMOOTH, "*matTint: #ffd6b5"},
    {SMOOTH, "*texTint: #f7c6de"},
    {SMOOTH, "*animTint: #decef7"},
    {SMOOTH, "*camTint: #ced6de"},
    {SMOOTH, "*lightTint: #fff7bd"},
    {SMOOTH, "*envTint: #bdefef"},
    {SMOOTH, "*ChainRootTint: #f7bdb5"},
    {SMOOTH, "*jointTint: #efd6bd"},
    {SMOOTH, "*effectorTint: #ded6a5"},
    {PLAIN, "*sceneTint: #ffff55"},
    {PLAIN, "*objTint: #aaaaff"},
    {PLAIN, "*lodTint: #d5d5d5"},
    {PLAIN, "*shapeTint: #aaffaa"},
    {PLAIN, "*partTint: #aaffff"},
    {PLAIN, "*matTint: #ffaa55"},
    {PLAIN, "*texTint: #ffaaff"},
    {PLAIN, "*animTint: #aaaaaa"},
    {PLAIN, "*camTint: #bfbfbf"},
    {PLAIN, "*lightTint: #ffffaa"},
    {PLAIN, "*envTint: #55ffff"},
    {PLAIN, "*ChainRootTint: #ffaaaa"},
    {PLAIN, "*jointTint: #55aaaa"},
    {PLAIN, "*effectorTint: #aaaa55"},

    // The strip under it.
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
    {ALL, "*XmMenuShell*XmLabelGadget.alignment: ALIGNMENT_BEGINNING"},
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

    // Menu keys. An item is named by the letters and digits of its label.
    {ALL, "*File.mnemonic: F"},
    {ALL, "*New.mnemonic: N"},
    {ALL, "*New.accelerator: Ctrl<Key>n"},
    {ALL, "*New.acceleratorText: Ctrl+N"},
    {ALL, "*Open.mnemonic: O"},
    {ALL, "*Open.accelerator: Ctrl<Key>o"},
    {ALL, "*Open.acceleratorText: Ctrl+O"},
    {ALL, "*Save.mnemonic: S"},
    {ALL, "*Save.accelerator: Ctrl<Key>s"},
    {ALL, "*Save.acceleratorText: Ctrl+S"},
    {ALL, "*SaveAs.mnemonic: A"},
    {ALL, "*SaveAs.accelerator: Shift Ctrl<Key>s"},
    {ALL, "*SaveAs.acceleratorText: Shift+Ctrl+S"},
    {ALL, "*Quit.mnemonic: Q"},
    {ALL, "*Quit.accelerator: Ctrl<Key>q"},
    {ALL, "*Quit.acceleratorText: Ctrl+Q"},
    {ALL, "*Edit.mnemonic: E"},
    {ALL, "*EditMode.mnemonic: E"},
    {ALL, "*EditMode.accelerator: Ctrl<Key>e"},
    {ALL, "*EditMode.acceleratorText: Ctrl+E"},
    {ALL, "*DeleteLink.mnemonic: D"},
    {ALL, "*DeleteLink.accelerator: <Key>osfDelete"},
    {ALL, "*DeleteLink.acceleratorText: Del"},
    {ALL, "*View.mnemonic: V"},
    {ALL, "*Default.mnemonic: D"},
    {ALL, "*DisplayTextureImage.mnemonic: T"},
    {ALL, "*KAVOtool.mnemonic: K"},
    {ALL, "*KAVOQuickpreviewDXVIEWER.mnemonic: Q"},
    {ALL, "*KAVOQuickpreviewEmuBoard.mnemonic: E"},
    {ALL, "*KavopreviewDXVIEWER.mnemonic: K"},
    {ALL, "*KavopreviewEmuBoard.mnemonic: B"},
    {ALL, "*ConverttoKAVODL.mnemonic: C"},
    {ALL, "*QUIL2tool.mnemonic: Q"},
    {ALL, "*PreviewDXVIEWER.mnemonic: P"},
    {ALL, "*PreviewEmuBoard.mnemonic: E"},
    {ALL, "*ConverttoZEX.mnemonic: C"},
    {ALL, "*SetOptionsandGo.mnemonic: O"},
    {ALL, "*SetOutputDirectory.mnemonic: D"},
    {ALL, "*ExecuteScript.mnemonic: x"},
    {ALL, "*PreviewScript.mnemonic: S"},
    {ALL, "*PreviewFile.mnemonic: F"},
    {ALL, "*killpbxsend.mnemonic: l"},
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

std::vector<std::string> fallbackResources(bool smoothText) {
  std::vector<std::string> lines;
  for (const auto& [on, text] : kLines)
    if (on == ALL || (on == SMOOTH) == smoothText) lines.emplace_back(text);
  for (const char* text : {"*XmText", "*XmTextField"}) lines.push_back(std::string(text) + kEditingKeys);
  return lines;
}

}  // namespace viewkit
