/// @file
/// The editor's graph node: stands for one record of the scene, and shows a texture as its picture.
#pragma once

#include <span>
#include <string>

#include "editor/model/kinds.h"
#include "editor/texturedisplay.h"
#include "viewkit/vknode.h"
#include "viewkit/xraii.h"

/// A node whose name ("obj_3") carries the kind and number of its record.
class QuilVkNode : public VkNode {
 public:
  /// @param textures  outlives the node.
  QuilVkNode(const TextureDisplay& textures, const char* name, const char* label = nullptr);
  const char* className() const override { return "QuilVkNode"; }

  /// Makes the widget. When the node stands for a texture of the current scene and pictures are on, it shows
  /// the texture's picture, made once and kept, in place of the label. The label stays when the texture has
  /// no picture or the screen has another depth than 8, 16 and 32 (or 24, for pictures in their own colours).
  void build(Widget parent) override;

  /// The name that its record has in the scene.
  std::string title() const override;

  /// The prefix of its kind ("obj"), so that a graph tints its nodes by kind.
  const char* tintName() const override { return kind_ ? kind_->prefix.data() : ""; }

 private:
  const TextureDisplay& textures_;
  const NodeKind* kind_;      // null for a name of no kind
  viewkit::PixmapId pixmap_;  // none while no picture has been made
};

/// A pixmap of `depth` on the drawable's screen that holds the given pixels.
/// @param data  row by row without padding, `depth` / 8 bytes to a pixel (4 for depth 24), the most
/// significant byte first.
/// @returns none when it can't be made: no such depth, too little data, no memory in the server.
viewkit::PixmapId CreatePixmapFromQUILTexImg(Display* display, Drawable drawable, std::span<char> data,
                                             unsigned width, unsigned height, unsigned long foreground,
                                             unsigned long background, unsigned depth);
