/// @file
/// The way of the values through the write-back.
#include "dialogs/writeback.h"

int writeBack(const values::Dialog& dialog, VkPrefItem& top, unsigned long index) {
  return dialog.write_back(top.model(), static_cast<Word>(index));
}
