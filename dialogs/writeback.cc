/// @file
/// The way of the values through the write-back.
#include "dialogs/writeback.h"

#include "dialogs/prefitems.h"

int writeBack(const values::Dialog& dialog, VkPrefItem& top, unsigned long index) {
  values::Item values = valuesOf(top);
  const int result = dialog.write_back(values, static_cast<Word>(index));
  if (auto* const group = dynamic_cast<VkPrefGroup*>(&top)) showActivation(*group, values);
  return result;
}
