/// @file
/// From an applied property dialog to the write-back of its kind.
#include <algorithm>
#include <utility>

#include "dialogs/values/dispatch.h"
#include "dialogs/values/kinds.h"
#include "dialogs/writeback.h"
#include "editor/graphwindow.h"

int GraphWindow::applyChanges(VkPrefDialog* dialog, int, int) {
  if (!dialog->item()) return 0;
  const auto* const property = dynamic_cast<const PropertyDialog*>(dialog);
  const unsigned long index = property ? property->index() : 0;
  const values::Dialog* const kind = values::applied_dialog(dialog->name(), static_cast<Word>(index));
  if (kind == &values::scene_dialog()) return sceneChanged(dialog->item());

  using Changed = int (GraphWindow::*)(VkPrefItem*, unsigned long);
  static const std::pair<const values::Dialog*, Changed> kWriteBacks[] = {
      {&values::shape_dialog(), &GraphWindow::shapeChanged},
      {&values::tex_dialog(), &GraphWindow::texChanged},
      {&values::obj_dialog(), &GraphWindow::objChanged},
      {&values::mat_dialog(), &GraphWindow::matChanged},
      {&values::cam_dialog(), &GraphWindow::camChanged},
      {&values::env_dialog(), &GraphWindow::envChanged},
      {&values::light_dialog(), &GraphWindow::lightChanged},
      {&values::part_dialog(), &GraphWindow::partChanged},
      {&values::anim_dialog(), &GraphWindow::animChanged},
      {&values::lod_dialog(), &GraphWindow::lodChanged},
      {&values::chroot_dialog(), &GraphWindow::chrootChanged},
      {&values::joint_dialog(), &GraphWindow::jointChanged},
      {&values::effector_dialog(), &GraphWindow::effectorChanged}};
  const auto found = std::ranges::find(kWriteBacks, kind, [](const auto& entry) { return entry.first; });
  return found == std::end(kWriteBacks) ? 0 : (this->*found->second)(dialog->item(), index);
}

int GraphWindow::sceneChanged(VkPrefItem* top) { return writeBack(values::scene_dialog(), *top, 0); }

int GraphWindow::shapeChanged(VkPrefItem* top, unsigned long index) {
  return writeBack(values::shape_dialog(), *top, index);
}

int GraphWindow::texChanged(VkPrefItem* top, unsigned long index) {
  return writeBack(values::tex_dialog(), *top, index);
}

int GraphWindow::objChanged(VkPrefItem* top, unsigned long index) {
  return writeBack(values::obj_dialog(), *top, index);
}

int GraphWindow::matChanged(VkPrefItem* top, unsigned long index) {
  return writeBack(values::mat_dialog(), *top, index);
}

int GraphWindow::camChanged(VkPrefItem* top, unsigned long index) {
  return writeBack(values::cam_dialog(), *top, index);
}

int GraphWindow::envChanged(VkPrefItem* top, unsigned long index) {
  return writeBack(values::env_dialog(), *top, index);
}

int GraphWindow::lightChanged(VkPrefItem* top, unsigned long index) {
  return writeBack(values::light_dialog(), *top, index);
}

int GraphWindow::partChanged(VkPrefItem* top, unsigned long index) {
  return writeBack(values::part_dialog(), *top, index);
}

int GraphWindow::animChanged(VkPrefItem* top, unsigned long index) {
  return writeBack(values::anim_dialog(), *top, index);
}

int GraphWindow::lodChanged(VkPrefItem* top, unsigned long index) {
  return writeBack(values::lod_dialog(), *top, index);
}

int GraphWindow::chrootChanged(VkPrefItem* top, unsigned long index) {
  return writeBack(values::chroot_dialog(), *top, index);
}

int GraphWindow::jointChanged(VkPrefItem* top, unsigned long index) {
  return writeBack(values::joint_dialog(), *top, index);
}

int GraphWindow::effectorChanged(VkPrefItem* top, unsigned long index) {
  return writeBack(values::effector_dialog(), *top, index);
}
