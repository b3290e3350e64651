/// @file
/// The editor's colours, sizes and menu keys.
#include "editor/look.h"

#include <iterator>

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

    // Menu keys. An item is named by the letters and digits of its label.
    "*File.mnemonic: F",
    "*New.mnemonic: N",
    "*New.accelerator: Ctrl<Key>n",
    "*New.acceleratorText: Ctrl+N",
    "*Open.mnemonic: O",
    "*Open.accelerator: Ctrl<Key>o",
    "*Open.acceleratorText: Ctrl+O",
    "*Save.mnemonic: S",
    "*Save.accelerator: Ctrl<Key>s",
    "*Save.acceleratorText: Ctrl+S",
    "*SaveAs.mnemonic: A",
    "*SaveAs.accelerator: Shift Ctrl<Key>s",
    "*SaveAs.acceleratorText: Shift+Ctrl+S",
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
    "*Quit.accelerator: Ctrl<Key>q",
    "*Quit.acceleratorText: Ctrl+Q",
    "*Edit.mnemonic: E",
    "*EditMode.mnemonic: E",
    "*EditMode.accelerator: Ctrl<Key>e",
    "*EditMode.acceleratorText: Ctrl+E",
    "*DeleteLink.mnemonic: D",
    "*DeleteLink.accelerator: <Key>osfDelete",
    "*DeleteLink.acceleratorText: Del",
    "*Undo.mnemonic: U",
    "*Undo.accelerator: Ctrl<Key>z",
    "*Undo.acceleratorText: Ctrl+Z",
    "*Redo.mnemonic: R",
    "*Redo.accelerator: Shift Ctrl<Key>z, Ctrl<Key>y",
    "*Redo.acceleratorText: Shift+Ctrl+Z",
    "*LinkSelected.mnemonic: L",
    "*LinkSelected.accelerator: Ctrl<Key>l",
    "*LinkSelected.acceleratorText: Ctrl+L",
    "*Find.mnemonic: F",
    "*Find.accelerator: Ctrl<Key>f",
    "*Find.acceleratorText: Ctrl+F",
    "*View.mnemonic: V",
    "*Default.mnemonic: D",
    "*DisplayTextureImage.mnemonic: T",
    "*Layered.mnemonic: L",
    "*Compact.mnemonic: C",
    "*ArrangeAgain.mnemonic: A",
    "*ExpandAll.mnemonic: x",
    "*Collapse.mnemonic: C",
    "*Collapse.acceleratorText: -",
    "*Expand.mnemonic: E",
    "*Expand.acceleratorText: +",
    "*RecordNames.mnemonic: R",
    "*Overview.mnemonic: O",
    "*Overview.acceleratorText: M",
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
  return lines;
}
