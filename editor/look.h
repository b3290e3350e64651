/// @file
/// How the editor looks and which keys its menus answer to.
#pragma once

#include <string>
#include <vector>

/// The X resource lines that the editor adds to those of the framework, for VkApp.
/// @param smoothText  whether the screen has smoothed text, and so colours to spare.
std::vector<std::string> editorResources(bool smoothText);
