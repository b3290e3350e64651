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

constexpr DialogFacts kFacts{.name = "chrootDialog",
                             .kind_word = "Chainroot",
                             .kind = qi::kChainRootTag,
                             .lines = kLines,
                             .traces_node_index = true};

}  // namespace

const Dialog& chroot_dialog() {
  static const RecordDialog<qi::ChainRoot, &qi::ExtLists::chain_root_list> dialog(
      kFacts, {Rows<qi::ChainRoot>::title("chainroot", &qi::ChainRoot::Fixed::name)});
  return dialog;
}

}  // namespace values
