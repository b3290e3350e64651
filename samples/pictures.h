/// @file
/// Small pictures for textures, drawn by formula.
#pragma once

#include <functional>
#include <vector>

#include "qilib/words.h"

namespace samples {

/// Rows of texels from the bottom up, each 0xRRGGBBAA.
struct Picture {
  Word width = 0, height = 0;
  Words texels;
};

/// @param color  the colour at (u, v), both 0..1, from the left and from the bottom.
Picture picture(Word width, Word height, const std::function<QisRGBA(float u, float v)>& color);

Picture bricks(QisRGBA brick, QisRGBA mortar, Word rows);
Picture planks(QisRGBA wood, Word boards);
Picture stripes(QisRGBA one, QisRGBA other, Word count);
Picture waves(QisRGBA deep, QisRGBA crest);
Picture sky(QisRGBA horizon, QisRGBA zenith);
/// A round spot that fades to nothing at the edge.
Picture glow(QisRGBA color);

/// What a picture needs as a colour-indexed one: each texel's palette entry, and at most `2^bits` colours of
/// 5-5-5-1 bits, the most frequent ones.
struct IndexedPicture {
  Word width = 0, height = 0, bits = 0;
  std::vector<Word> indices;
  std::vector<Word> palette;
};
/// @param bits  per index, 4 or 8.
IndexedPicture indexed(const Picture& picture, Word bits);

}  // namespace samples
