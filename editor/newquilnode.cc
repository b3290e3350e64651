/// @file
/// The widgets of nodes, and the pixmaps of textures.
#include "editor/newquilnode.h"

#include <X11/Xutil.h>
#include <Xm/Xm.h>

#include <cstdint>
#include <cstdio>
#include <utility>
#include <vector>

#include "editor/model/currentscene.h"
#include "editor/model/nodenames.h"
#include "editor/model/recordnames.h"
#include "editor/model/texturepicture.h"

namespace {

/// Bits that a pixel takes in the data of a pixmap.
unsigned bits_per_pixel(unsigned depth) { return depth == 24 ? 32 : depth; }

std::vector<char> pixel_bytes(const std::vector<std::uint32_t>& pixels, unsigned bits) {
  std::vector<char> bytes;
  bytes.reserve(pixels.size() * bits / 8);
  for (const std::uint32_t pixel : pixels)
    for (unsigned shift = bits; shift > 0; shift -= 8)
      bytes.push_back(static_cast<char>(pixel >> (shift - 8)));
  return bytes;
}

/// The picture's pixels for a screen that uses the colour table: each value of the table stands in the top
/// byte of its pixel. On screens with more than 8 bits these are not the texture's colours; that is intended.
std::vector<std::uint32_t> table_pixels(const TexturePicture& picture, const TextureDisplay& textures,
                                        unsigned depth) {
  const std::vector<std::uint8_t> indices = table_colors(picture, textures.c256);
  std::vector<std::uint32_t> pixels(indices.begin(), indices.end());
  for (std::uint32_t& pixel : pixels) pixel <<= depth - 8;
  return pixels;
}

/// The picture of the texture that a node name stands for; none when it has none or the screen can't show it.
viewkit::PixmapId texture_pixmap(Screen* screen, const TextureDisplay& textures, const char* node_name) {
  const auto depth = static_cast<unsigned>(DefaultDepthOfScreen(screen));
  const Visual* const visual = DefaultVisualOfScreen(screen);
  const bool by_table = depth == 8 || depth == 16 || depth == 32;
  const bool own = depth == 24 && visual->c_class == TrueColor && textures.true_color_textures;
  if (!by_table && !own) return {};
  const auto picture = texture_picture(*qis, indexofnd(node_name));
  if (!picture) return {};
  const ColorMasks masks{static_cast<std::uint32_t>(visual->red_mask),
                         static_cast<std::uint32_t>(visual->green_mask),
                         static_cast<std::uint32_t>(visual->blue_mask)};
  std::vector<char> data = pixel_bytes(
      own ? own_colors(*picture, masks) : table_pixels(*picture, textures, depth), bits_per_pixel(depth));
  Display* const display = DisplayOfScreen(screen);
  return CreatePixmapFromQUILTexImg(display, DefaultRootWindow(display), data, picture->width,
                                    picture->height, WhitePixelOfScreen(screen), BlackPixelOfScreen(screen),
                                    depth);
}

}  // namespace

QuilVkNode::QuilVkNode(const TextureDisplay& textures, const char* name, const char* label)
    : VkNode(name, label), textures_(textures), kind_(kind_of_node(name)) {}

std::string QuilVkNode::title() const { return record_name(*qis, name()); }

void QuilVkNode::build(Widget parent) {
  VkNode::build(parent);
  if (kind_ != &kNodeKind<qi::Tex>) return;
  std::printf("Here is in build();%s\n", name());
  if (textures_._displayTexImg == 0) return;
  if (!pixmap_) pixmap_ = texture_pixmap(XtScreen(parent), textures_, name());
  if (pixmap_) XtVaSetValues(baseWidget(), XmNlabelPixmap, pixmap_.get(), nullptr);
}

viewkit::PixmapId CreatePixmapFromQUILTexImg(Display* display, Drawable drawable, std::span<char> data,
                                             unsigned width, unsigned height, unsigned long foreground,
                                             unsigned long background, unsigned depth) {
  const unsigned bits = bits_per_pixel(depth);
  if (data.size() < std::size_t{width} * height * bits / 8) return {};
  const viewkit::QuietErrors quiet(display);
  viewkit::PixmapId pixmap(display, XCreatePixmap(display, drawable, width, height, depth));
  const viewkit::ImagePtr description(XCreateImage(display, DefaultVisual(display, DefaultScreen(display)),
                                                   depth, ZPixmap, 0, nullptr, width, height,
                                                   static_cast<int>(bits), 0));
  if (!description) return {};
  // A copy, which doesn't own the data. Its byte order is that of the data, whatever the machine and the
  // server have.
  XImage image = *description;
  image.data = data.data();
  image.xoffset = 0;
  image.byte_order = image.bitmap_bit_order = MSBFirst;
  image.bitmap_unit = image.bits_per_pixel = static_cast<int>(bits);
  image.bytes_per_line = static_cast<int>(width * bits / 8);
  XGCValues values{};
  values.foreground = foreground;
  values.background = background;
  const viewkit::Gc gc(display, XCreateGC(display, pixmap.get(), GCForeground | GCBackground, &values));
  if (!gc) return {};
  XPutImage(display, pixmap.get(), gc.get(), &image, 0, 0, 0, 0, width, height);
  return quiet.failed() ? viewkit::PixmapId{} : std::move(pixmap);
}
