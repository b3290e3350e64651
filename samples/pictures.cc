/// @file
/// Patterns of brick, wood, water and sky.
#include "samples/pictures.h"

#include <algorithm>
#include <cmath>
#include <map>

namespace samples {

namespace {

constexpr Word kSide = 32;

QisRGBA mix(QisRGBA a, QisRGBA b, float share) {
  const auto between = [share](float from, float to) { return from + (to - from) * share; };
  return {between(a.red, b.red), between(a.green, b.green), between(a.blue, b.blue),
          between(a.alpha, b.alpha)};
}

/// A value between 0 and 1 that looks random, the same for the same numbers.
float grain(Word x, Word y) {
  Word n = x * 374761393u + y * 668265263u;
  n = (n ^ (n >> 13)) * 1274126177u;
  return static_cast<float>(n >> 16) / 65535.0f;
}

Word to_byte(float value) { return static_cast<Word>(std::lround(std::clamp(value, 0.0f, 1.0f) * 255.0f)); }

Word cell(float position, Word count) { return static_cast<Word>(position * static_cast<float>(count)); }

/// 0xRRGGBBAA to 5-5-5-1.
Word to_5551(Word rgba) {
  const Word red = rgba >> 27, green = (rgba >> 19) & 31, blue = (rgba >> 11) & 31, alpha = (rgba >> 7) & 1;
  return red << 11 | green << 6 | blue << 1 | alpha;
}

int distance(Word a, Word b) {
  int sum = 0;
  for (const int shift : {11, 6, 1}) {
    const int d = static_cast<int>((a >> shift) & 31) - static_cast<int>((b >> shift) & 31);
    sum += d * d;
  }
  return sum;
}

}  // namespace

Picture picture(Word width, Word height, const std::function<QisRGBA(float, float)>& color) {
  Picture result{width, height, {}};
  result.texels.reserve(std::size_t{width} * height);
  for (Word y = 0; y < height; ++y) {
    for (Word x = 0; x < width; ++x) {
      const QisRGBA c = color((static_cast<float>(x) + 0.5f) / static_cast<float>(width),
                              (static_cast<float>(y) + 0.5f) / static_cast<float>(height));
      result.texels.push_back(to_byte(c.red) << 24 | to_byte(c.green) << 16 | to_byte(c.blue) << 8 |
                              to_byte(c.alpha));
    }
  }
  return result;
}

Picture bricks(QisRGBA brick, QisRGBA mortar, Word rows) {
  return picture(kSide, kSide, [=](float u, float v) {
    const Word row = cell(v, rows);
    const float across = u * static_cast<float>(rows) / 2 + (row % 2 != 0 ? 0.5f : 0.0f);
    const float along = across - std::floor(across),
                up = v * static_cast<float>(rows) - static_cast<float>(row);
    if (along < 0.08f || up < 0.16f) return mortar;
    return mix(brick, mortar, 0.35f * grain(static_cast<Word>(across), row));
  });
}

Picture planks(QisRGBA wood, Word boards) {
  return picture(kSide, kSide, [=](float u, float v) {
    const Word board = cell(u, boards);
    const float rings =
        0.5f + 0.5f * std::sin(40.0f * u + 6.0f * std::sin(5.0f * v + static_cast<float>(board)));
    const float shade = 0.55f + 0.25f * rings + 0.2f * grain(board, 7);
    return QisRGBA{wood.red * shade, wood.green * shade, wood.blue * shade, 1};
  });
}

Picture stripes(QisRGBA one, QisRGBA other, Word count) {
  return picture(kSide, kSide, [=](float, float v) { return cell(v, count) % 2 == 0 ? one : other; });
}

Picture waves(QisRGBA deep, QisRGBA crest) {
  constexpr float kTurn = 6.2831853f;
  return picture(kSide, kSide, [=](float u, float v) {
    const float height = std::sin(kTurn * (2 * v + 0.15f * std::sin(kTurn * u)));
    return mix(deep, crest, std::max(0.0f, height * height * height));
  });
}

Picture sky(QisRGBA horizon, QisRGBA zenith) {
  return picture(kSide, 2 * kSide, [=](float, float v) { return mix(horizon, zenith, std::sqrt(v)); });
}

Picture glow(QisRGBA color) {
  return picture(kSide, kSide, [=](float u, float v) {
    const float away = 2 * std::hypot(u - 0.5f, v - 0.5f);
    return QisRGBA{color.red, color.green, color.blue, std::max(0.0f, 1 - away)};
  });
}

IndexedPicture indexed(const Picture& picture, Word bits) {
  std::map<Word, std::size_t> frequency;
  for (const Word texel : picture.texels) ++frequency[to_5551(texel)];
  std::vector<std::pair<Word, std::size_t>> colors(frequency.begin(), frequency.end());
  std::stable_sort(colors.begin(), colors.end(), [](auto a, auto b) { return a.second > b.second; });
  colors.resize(std::min<std::size_t>(colors.size(), std::size_t{1} << bits));

  IndexedPicture result{picture.width, picture.height, bits, {}, {}};
  for (const auto& [color, count] : colors) result.palette.push_back(color);
  std::map<Word, Word> nearest;
  for (const auto& [color, count] : frequency) {
    const auto best =
        std::min_element(result.palette.begin(), result.palette.end(),
                         [color = color](Word a, Word b) { return distance(a, color) < distance(b, color); });
    nearest[color] = static_cast<Word>(best - result.palette.begin());
  }
  for (const Word texel : picture.texels) result.indices.push_back(nearest[to_5551(texel)]);
  return result;
}

}  // namespace samples
