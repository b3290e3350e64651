/// @file
/// The `image` line of edit scripts: another picture in the place of a texture's texels.
#pragma once

#include <string>

#include "qilib/qis.h"

/// Puts the picture of a PNG file in the place of the (first) image of the texture with that node name, and
/// prints how far the texture is from the picture then.
/// @returns 1. Throws ValueError (setvalues.h), with nothing changed, when there is no such texture, or the
/// picture can't be read or can't become its image.
int put_image(Qis& scene, const std::string& node, const std::string& file);
