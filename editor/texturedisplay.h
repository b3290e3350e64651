/// @file
/// How the nodes of a graph show textures.
#pragma once

/// Asked by each node when it is built; what changes later shows in nodes that are built from then on.
struct TextureDisplay {
  /// 1: as pictures; 0: by their names.
  unsigned char _displayTexImg = 0;
  /// The pixel values for the 8-bit colours that the pictures consist of, see make256table.
  unsigned char c256[256] = {};
  /// Whether a TrueColor screen of depth 24, which has no pictures otherwise, shows them in their own
  /// colours: the application's resource "trueColorTextures".
  bool true_color_textures = false;
};
