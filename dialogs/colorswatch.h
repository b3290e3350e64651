/// @file
/// A patch that shows the colour which the items beside it stand for.
#pragma once

#include <functional>
#include <vector>

#include "qilib/words.h"
#include "viewkit/vkprefitem.h"

/// Follows what is entered in the items, before it is applied. It is no item itself.
class ColorSwatch : public VkComponent {
 public:
  /// The colour that the items stand for just now; components outside 0..1 are shown as the nearest.
  using Read = std::function<QisRGBA()>;

  /// @param behind  the item behind which the patch stands; it has its widgets.
  /// @param components  the items that `read` looks at.
  ColorSwatch(VkPrefItem& behind, const std::vector<VkPrefItem*>& components, Read read);
  ~ColorSwatch() override;
  const char* className() const override { return "ColorSwatch"; }

 private:
  void showColor(VkPrefItem* item, void* clientData, void* callData);
  void paint();
  void freeColor();
  void widgetDestroyed() override;

  Read read_;
  Widget patch_ = nullptr;
  unsigned long pixel_ = 0;
  bool allocated_ = false;
};
