/// @file
/// The effector dialog: name and type.
#include "dialogs/values/kinds.h"
#include "dialogs/values/recorddialog.h"
#include "dialogs/values/typedtitle.h"

namespace values {
namespace {

constexpr const char* kLines[] = {
    "*titleLabel.labelString:\tEffector",
    "*nodeNameLabel.labelString:Name:",
    "*typeLabel.labelString:Effector Type",
};

}  // namespace

const Dialog& dialog_of(std::type_identity<qi::Effector>) {
  static const RecordDialog<qi::Effector> dialog({.lines = kLines, .traces_node_index = true},
                                                 {typed_title<qi::Effector>("effector")});
  return dialog;
}

}  // namespace values
