/// @file
/// A patch that shows the colour which an item stands for.
#pragma once

#include "qilib/words.h"
#include "viewkit/vkprefitem.h"

/// Follows what is entered in the item, before it is applied. It is no item itself.
class ColorSwatch : public VkComponent {
 public:
  /// The colour that an item, or those in it, stand for just now; components outside 0..1 are shown as the
  /// nearest.
  using Read = QisRGBA (*)(const items::Item& item);

  /// @param item  after which the patch stands; it has its widgets, and outlives the patch.
  ColorSwatch(VkPrefItem& item, Read read);
  ~ColorSwatch() override;
  const char* className() const override { return "ColorSwatch"; }

 private:
  void showColor(VkPrefItem* item, void* clientData, void* callData);
  void paint();
  void freeColor();
  void widgetDestroyed() override;

  const items::Item& item_;
  Read read_;
  Widget patch_ = nullptr;
  unsigned long pixel_ = 0;
  bool allocated_ = false;
};
