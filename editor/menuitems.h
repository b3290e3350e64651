/// @file
/// Short names for what the editor's tables of menu items consist of.
#pragma once

#include "viewkit/vkmenu.h"

inline constexpr auto kAction = VkMenuItemType::ACTION;
inline constexpr auto kToggle = VkMenuItemType::TOGGLE;
inline constexpr auto kRadio = VkMenuItemType::RADIO;
inline constexpr auto kSubmenu = VkMenuItemType::SUBMENU;
inline constexpr VkMenuDesc kSeparator = {VkMenuItemType::SEPARATOR};
inline constexpr VkMenuDesc kEnd = {VkMenuItemType::END};
