/// @file
/// The classes of the dialogs by their names.
#include "dialogs/propertydialogs.h"

#include <algorithm>
#include <string_view>

#include "dialogs/animdialog.h"
#include "dialogs/camdialog.h"
#include "dialogs/chrootdialog.h"
#include "dialogs/effectordialog.h"
#include "dialogs/envdialog.h"
#include "dialogs/jointdialog.h"
#include "dialogs/lightdialog.h"
#include "dialogs/loddialog.h"
#include "dialogs/matdialog.h"
#include "dialogs/objdialog.h"
#include "dialogs/partdialog.h"
#include "dialogs/scenedialog.h"
#include "dialogs/shapedialog.h"
#include "dialogs/texdialog.h"

namespace {

template <class Dialog>
std::unique_ptr<PropertyDialog> make(const char* name, unsigned long index) {
  return std::make_unique<Dialog>(name, index);
}

template <>
std::unique_ptr<PropertyDialog> make<SceneDialog>(const char* name, unsigned long) {
  return std::make_unique<SceneDialog>(name);
}

struct DialogClass {
  std::string_view name;
  std::unique_ptr<PropertyDialog> (*make)(const char* name, unsigned long index);
};

constexpr DialogClass kClasses[] = {
    {"sceneDialog", make<SceneDialog>}, {"shapeDialog", make<ShapeDialog>},
    {"texDialog", make<TexDialog>},     {"objDialog", make<ObjDialog>},
    {"matDialog", make<MatDialog>},     {"camDialog", make<CamDialog>},
    {"envDialog", make<EnvDialog>},     {"lightDialog", make<LightDialog>},
    {"partDialog", make<PartDialog>},   {"animDialog", make<AnimDialog>},
    {"lodDialog", make<LodDialog>},     {"chrootDialog", make<ChainrootDialog>},
    {"jointDialog", make<JointDialog>}, {"effectorDialog", make<EffectorDialog>},
};

}  // namespace

std::unique_ptr<PropertyDialog> makePropertyDialog(const values::DialogOn& on) {
  const auto& [dialog, number] = on;
  const auto found = std::ranges::find(kClasses, dialog->name(), &DialogClass::name);
  if (found == std::end(kClasses) || !dialog->items(number)) return nullptr;
  auto made = found->make(dialog->name(), number);
  made->setTitle(dialog->node_name(number).c_str());
  return made;
}
