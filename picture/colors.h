/// @file
/// Colours by name, and those that a graph has when nobody chooses others.
#pragma once

#include <cstddef>
#include <cstdint>
#include <string_view>

#include "picture/surface.h"

namespace picture {

/// The colour that "#rrggbb" says.
constexpr Color colorOf(std::string_view text) {
  const auto digit = [](char c) {
    return static_cast<std::uint16_t>(c <= '9' ? c - '0' : (c | 0x20) - 'a' + 10);
  };
  const auto part = [&](std::size_t at) {
    return static_cast<std::uint16_t>((digit(text[at]) * 16 + digit(text[at + 1])) * 0x101);
  };
  return {part(1), part(3), part(5)};
}

inline constexpr const char* kTextColor = "#181c21";
inline constexpr const char* kArcColor = "#7b8694";
inline constexpr const char* kFarArcColor = "#b5c2ce";
inline constexpr const char* kNodeColor = "#eff3f7";
inline constexpr const char* kNodeBorderColor = "#7b8694";
inline constexpr const char* kSelectionColor = "#0865de";
inline constexpr const char* kHandleColor = "#ffffff";

}  // namespace picture
