/// @file
/// The chain-root dialog: just the name.
#include "dialogs/values/kinds.h"
#include "dialogs/values/recorddialog.h"

namespace values {
namespace {

constexpr const char* kLines[] = {
    "*titleLabel.labelString:\tChainRoot",
    "*dialogNameBase.labelString:\t",
    "*nodeNameLabel.labelString:Name:",
    "*tabLable.background: white",
};

}  // namespace

const Dialog& dialog_of(std::type_identity<qi::ChainRoot>) {
  static const RecordDialog<qi::ChainRoot> dialog(
      {.lines = kLines, .traces_node_index = true},
      {Rows<qi::ChainRoot>::title("chainroot", &qi::ChainRoot::Fixed::name)});
  return dialog;
}

}  // namespace values
