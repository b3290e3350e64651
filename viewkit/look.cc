/// @file
/// The fallback X resources of every application on this framework, in one table.
#include "viewkit/look.h"

#include <X11/Xutil.h>

#include <algorithm>
#include <iterator>

#include "viewkit/xraii.h"

namespace viewkit {
namespace {

/// A resource and its value where text is smoothed, and where it isn't; null for a value that is not set. On
/// a screen with a colour map, smoothed text comes out as black boxes.
struct Line {
  const char* resource;
  const char* smooth;
  const char* plain = smooth;
};

constexpr Line kLines[] = {
    // Fonts. A widget takes the rendition "bold" or "mono" by naming it as its render table.
    {"*labelRenderTable", "rt"},
    {"*buttonRenderTable", "rt"},
    {"*textRenderTable", "rt"},
    {"*rt.fontType", "FONT_IS_XFT", "FONT_IS_FONTSET"},
    {"*rt.fontName", "DejaVu Sans", "-misc-fixed-medium-r-normal--13-*-*-*-c-70-*-*"},
    {"*rt.fontSize", "9", nullptr},
    {"*bold.fontType", "FONT_IS_XFT", "FONT_IS_FONTSET"},
    {"*bold.fontName", "DejaVu Sans", "-misc-fixed-bold-r-normal--13-*-*-*-c-70-*-*"},
    {"*bold.fontStyle", "Bold", nullptr},
    {"*bold.fontSize", "9", nullptr},
    {"*mono.fontType", "FONT_IS_XFT", "FONT_IS_FONTSET"},
    {"*mono.fontName", "DejaVu Sans Mono", "-misc-fixed-medium-r-normal--13-*-*-*-c-70-*-*"},
    {"*mono.fontSize", "9", nullptr},

    // Colours. The smooth ones are exact at 5-6-5 bits, so that 16 and 24 bits look alike; the plain ones are
    // cells that the server's standard palette already holds, so none is allocated.
    {"*background", "#e6ebef", "#d5d5d5"},
    {"*foreground", "#181c21", "#000000"},
    {"*topShadowColor", "#ffffff"},
    {"*bottomShadowColor", "#a5aaad", "#808080"},
    {"*highlightColor", "#3a79c5", "#0055aa"},
    {"*troughColor", "#d6dade", "#bfbfbf"},
    {"*armColor", "#c4c8cb", "#bfbfbf"},
    {"*selectColor", "#3a79c5", "#0055aa"},
    {"*XmList.selectColor", "#bdd2ef", "#aaaaff"},
    {"*XmText.background", "#ffffff"},
    {"*XmTextField.background", "#ffffff"},
    {"*XmList.background", "#ffffff"},
    {"*XmText.topShadowColor", "#c5cace", "#bfbfbf"},
    {"*XmTextField.topShadowColor", "#c5cace", "#bfbfbf"},
    {"*XmList.topShadowColor", "#c5cace", "#bfbfbf"},
    {"*XmText.bottomShadowColor", "#8c9294", "#6a6a6a"},
    {"*XmTextField.bottomShadowColor", "#8c9294", "#6a6a6a"},
    {"*XmList.bottomShadowColor", "#8c9294", "#6a6a6a"},
    {"*XmScrollBar.bottomShadowColor", "#8c9294", nullptr},
    {"*XmComboBox.topShadowColor", "#c5cace", "#bfbfbf"},
    {"*XmComboBox.bottomShadowColor", "#8c9294", nullptr},
    {"*XmSpinBox.topShadowColor", "#8c9294", "#808080"},
    {"*XmSpinBox.bottomShadowColor", "#636563", "#555555"},

    // The graph, a clean sheet, and the strip under it.
    {"*SgGraph.background", "#ffffff"},
    {"*strip.marginHeight", "2"},
    {"*strip.marginWidth", "4"},
    {"*strip.spacing", "4"},
    {"*strip.zoomOut.labelString", "-"},
    {"*strip.zoomIn.labelString", "+"},
    {"*strip.zoom100.labelString", "100 %"},
    {"*strip.zoomFit.labelString", "Fit"},
    {"*strip.findLabel.labelString", "Find:"},
    {"*strip.findLabel.marginLeft", "12"},
    {"*strip.find.columns", "20"},
    {"*strip.notFound.labelString", "not found"},
    {"*strip.findCount.labelString", " "},
    {"*strip.notFound.foreground", "#bd1010", "#aa0000"},

    {"*split.marginWidth", "0"},
    {"*split.marginHeight", "0"},
    {"*split.spacing", "6"},
    {"*split.separatorOn", "False"},
    {"*links.marginWidth", "4"},
    {"*links.marginHeight", "4"},
    {"*links.width", "280"},
    {"*links.subject.renderTable", "bold"},

    {"*tooltip.borderWidth", "1"},
    {"*tooltip.tip.background", "#fff3c6", "#d5d5d5"},
    {"*tooltip.tip.marginWidth", "6"},
    {"*tooltip.tip.marginHeight", "4"},

    // Shadows, focus, default button.
    {"*enableThinThickness", "True"},
    {"*enableEtchedInMenu", "True"},
    {"*enableToggleVisual", "True"},
    {"*shadowThickness", "1"},
    {"*highlightThickness", "1"},
    {"*defaultButtonShadowThickness", "0"},
    {"*XmDialogShell*defaultButtonShadowThickness", "1"},
    {"*XmDialogShell*XmMenuShell*defaultButtonShadowThickness", "0"},

    // Buttons, menus, toggles.
    {"*XmPushButton.marginWidth", "8"},
    {"*XmPushButton.marginHeight", "3"},
    {"*menuBar.marginHeight", "2"},
    {"*menuBar.spacing", "2"},
    {"*XmMenuShell*XmPushButtonGadget.marginWidth", "6"},
    {"*XmMenuShell*XmPushButtonGadget.marginHeight", "3"},
    {"*XmMenuShell*XmToggleButtonGadget.marginHeight", "3"},
    {"*XmMenuShell*XmToggleButtonGadget.visibleWhenOff", "True"},
    {"*XmMenuShell*XmCascadeButtonGadget.marginHeight", "3"},
    {"*XmMenuShell*XmToggleButtonGadget.selectColor", "#c4c8cb", nullptr},
    {"*XmToggleButton.shadowThickness", "0"},
    {"*XmToggleButton.indicatorSize", "13"},
    {"*XmToggleButton.spacing", "6"},
    {"*XmToggleButton.unselectColor", "#ffffff"},
    {"*XmToggleButton.topShadowColor", "#636563", "#555555"},
    {"*XmToggleButton.bottomShadowColor", "#636563", "#555555"},

    // Text, lists, scrolling.
    {"*XmTextField.marginHeight", "3"},
    {"*XmTextField.marginWidth", "4"},
    {"*XmText.marginHeight", "4"},
    {"*XmText.marginWidth", "4"},
    {"*XmList.listMarginWidth", "4"},
    {"*XmList.listMarginHeight", "2"},
    {"*XmList.listSpacing", "1"},
    {"*XmScrolledWindow.spacing", "0"},
    {"*XmScrollBar.width", "15"},
    {"*XmScrollBar.height", "15"},
    {"*XmScrollBar.highlightThickness", "0"},
    {"*XmSpinBox.marginHeight", "0"},
    {"*XmSpinBox.marginWidth", "0"},
    {"*XmSpinBox.shadowThickness", "0"},
    {"*XmSpinBox.arrowSize", "14"},
    {"*XmComboBox.marginHeight", "0"},
    {"*XmComboBox.marginWidth", "0"},
    {"*XmComboBox.arrowSpacing", "0"},

    // What a dialog has to say about itself.
    {"*notices.marginWidth", "6"},
    {"*notices.marginHeight", "4"},
    {"*notices.spacing", "4"},
    {"*notices.XmForm.marginWidth", "6"},
    {"*notices.XmForm.marginHeight", "3"},
    {"*notices.XmForm.background", "#fff3c6", "#d5d5d5"},
    {"*notices.XmForm.XmLabel.background", "#fff3c6", "#d5d5d5"},

    // Windows and dialogs.
    {"*status.marginHeight", "4"},
    {"*status.marginWidth", "6"},
    {"*XmMessageBox.marginWidth", "14"},
    {"*XmMessageBox.marginHeight", "12"},
    {"*XmMessageBox.XmPushButtonGadget.marginWidth", "16"},
    {"*XmMessageBox.XmPushButtonGadget.marginHeight", "3"},
    {"*XmFileSelectionBox.XmPushButtonGadget.marginWidth", "12"},
    {"*XmFileSelectionBox.XmPushButtonGadget.marginHeight", "3"},
    {"*questionDialog.dialogTitle", "Question"},
    {"*warningDialog.dialogTitle", "Warning"},
    {"*fileSelectionDialog.dialogTitle", "Choose a File"},
    {"*informationDialog.dialogTitle", "About"},
    {"*listDialog.listVisibleItemCount", "10"},
    {"*listDialog*ItemsList.listSizePolicy", "XmRESIZE_IF_POSSIBLE"},
    {"*listDialog.marginWidth", "8"},
    {"*listDialog.marginHeight", "8"},
    {"*listDialog.XmPushButtonGadget.marginWidth", "12"},
    {"*listDialog.XmPushButtonGadget.marginHeight", "3"},
    {"*XmFileSelectionBox.pathMode", "XmPATH_MODE_RELATIVE"},
    {"*XmFileSelectionBox.fileFilterStyle", "XmFILTER_HIDDEN_FILES"},
    {"*XmFileSelectionBox.noMatchString", "(no files)"},
    {"*XmFileSelectionBox.listVisibleItemCount", "14"},
    {"*XmFileSelectionBox.textColumns", "52"},
    {"*XmFileSelectionBox.marginWidth", "8"},
    {"*XmFileSelectionBox.marginHeight", "8"},
    {"*showAll.labelString", "Show all files"},
    {"*showAll.alignment", "ALIGNMENT_BEGINNING"},
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
  for (const auto& [resource, smooth, plain] : kLines)
    if (const char* value = smoothText ? smooth : plain)
      lines.push_back(std::string(resource) + ": " + value);
  for (const char* text : {"*XmText", "*XmTextField"}) lines.push_back(std::string(text) + kEditingKeys);
  if (application) std::ranges::move(application(smoothText), std::back_inserter(lines));
  return lines;
}

}  // namespace viewkit
