/// @file
/// The editor's colours, sizes and the letters of the menus.
#include "editor/look.h"

#include <algorithm>
#include <iterator>

#include "editor/keys.h"
#include "editor/model/kinds.h"

namespace {

/// A tint for each kind of nodes, as the resource that QuilVkNode::tintName names.
std::vector<std::string> tintLines(bool smoothText) {
  std::vector<std::string> lines;
  for (const NodeKind& kind : kNodeKinds)
    lines.push_back("*" + std::string(kind.prefix) +
                    "Tint: " + std::string(smoothText ? kind.tint.smooth : kind.tint.plain));
  return lines;
}

constexpr const char* kLines[] = {
    "*graph.width: 1040",
    "*graph.height: 680",

    // The head of a property dialog.
    "*title.renderTable: bold",

    "*keysDialog*text.renderTable: mono",
    "*keysDialog*text.rows: 36",
    "*keysDialog*text.columns: 112",
    "*keysDialog.close.labelString: Close",

    // The letters that choose menu items. An item is named by the letters and digits of its label.
    "*File.mnemonic: F",
    "*New.mnemonic: N",
    "*Open.mnemonic: O",
    "*Save.mnemonic: S",
    "*SaveAs.mnemonic: A",
    "*OpenRecent.mnemonic: e",
    "*Recent1.mnemonic: 1",
    "*Recent2.mnemonic: 2",
    "*Recent3.mnemonic: 3",
    "*Recent4.mnemonic: 4",
    "*Recent5.mnemonic: 5",
    "*Recent6.mnemonic: 6",
    "*Recent7.mnemonic: 7",
    "*Recent8.mnemonic: 8",
    "*Recent9.mnemonic: 9",
    "*Recent10.mnemonic: 0",
    "*ExportPicture.mnemonic: x",
    "*Recover.mnemonic: R",
    "*Quit.mnemonic: Q",
    "*Edit.mnemonic: E",
    "*EditMode.mnemonic: E",
    "*DeleteLink.mnemonic: D",
    "*Undo.mnemonic: U",
    "*Redo.mnemonic: R",
    "*LinkSelected.mnemonic: L",
    "*Linkto.mnemonic: t",
    "*Find.mnemonic: F",
    "*View.mnemonic: V",
    "*Default.mnemonic: D",
    "*DisplayTextureImage.mnemonic: T",
    "*Layered.mnemonic: L",
    "*Compact.mnemonic: C",
    "*ArrangeAgain.mnemonic: A",
    "*ExpandAll.mnemonic: x",
    "*ShowAll.mnemonic: S",
    "*ShowOnlyThese.mnemonic: O",
    "*TheseAlone.mnemonic: A",
    "*With1StepAround.mnemonic: 1",
    "*With2StepsAround.mnemonic: 2",
    "*With3StepsAround.mnemonic: 3",
    "*Values.mnemonic: V",
    "*Collapse.mnemonic: C",
    "*Expand.mnemonic: E",
    "*GotoParent.mnemonic: P",
    "*GotoChild.mnemonic: h",
    "*SelectParents.mnemonic: a",
    "*SelectChildren.mnemonic: i",
    "*SelectEverythingAbove.mnemonic: b",
    "*SelectEverythingBelow.mnemonic: w",
    "*DeleteLinks.mnemonic: D",
    "*Fit.mnemonic: F",
    "*FitSelection.mnemonic: S",
    "*ZoomIn.mnemonic: I",
    "*ZoomOut.mnemonic: u",
    "*Zoomto100.mnemonic: 1",
    "*TopoftheGraph.mnemonic: G",
    "*SelectAll.mnemonic: A",
    "*KeysandGestures.mnemonic: K",
    "*About.mnemonic: b",
    "*RecordNames.mnemonic: R",
    "*HighlightNeighbours.mnemonic: H",
    "*Links.mnemonic: k",
    "*UnlinkedRecords.mnemonic: U",
    "*RebuildGraph.mnemonic: b",
    "*Overview.mnemonic: O",
    "*KAVOtool.mnemonic: K",
    "*KAVOQuickpreviewDXVIEWER.mnemonic: Q",
    "*KAVOQuickpreviewEmuBoard.mnemonic: E",
    "*KavopreviewDXVIEWER.mnemonic: K",
    "*KavopreviewEmuBoard.mnemonic: B",
    "*ConverttoKAVODL.mnemonic: C",
    "*QUIL2tool.mnemonic: Q",
    "*PreviewDXVIEWER.mnemonic: P",
    "*PreviewEmuBoard.mnemonic: E",
    "*ConverttoZEX.mnemonic: C",
    "*SetOptionsandGo.mnemonic: O",
    "*SetOutputDirectory.mnemonic: D",
    "*ExecuteScript.mnemonic: x",
    "*PreviewScript.mnemonic: S",
    "*PreviewFile.mnemonic: F",
    "*killpbxsend.mnemonic: l",
};

}  // namespace

std::vector<std::string> editorResources(bool smoothText) {
  std::vector<std::string> lines = tintLines(smoothText);
  lines.insert(lines.end(), std::begin(kLines), std::end(kLines));
  std::ranges::move(menu_key_lines(), std::back_inserter(lines));
  return lines;
}
