/// @file
/// Looking at windows and pixels from outside the program.
#include "tests/window/screen.h"

#include <X11/Xlib.h>
#include <X11/Xutil.h>

#include <memory>
#include <stdexcept>

namespace {

struct CloseDisplay {
  void operator()(Display* display) const noexcept { XCloseDisplay(display); }
};
struct DestroyImage {
  void operator()(XImage* image) const noexcept { XDestroyImage(image); }
};
struct FreeX {
  void operator()(void* data) const noexcept { XFree(data); }
};
using Connection = std::unique_ptr<Display, CloseDisplay>;

Connection connect(const std::string& name) {
  Connection display(XOpenDisplay(name.c_str()));
  if (!display) throw std::runtime_error("no display " + name);
  return display;
}

std::vector<::Window> childrenOf(Display* display, ::Window window) {
  ::Window root = 0, parent = 0, *list = nullptr;
  unsigned count = 0;
  if (!XQueryTree(display, window, &root, &parent, &list, &count)) return {};
  const std::unique_ptr<::Window, FreeX> owner(list);
  return {list, list + count};
}

std::string titleOf(Display* display, ::Window window) {
  char* name = nullptr;
  if (!XFetchName(display, window, &name)) return "";
  const std::unique_ptr<char, FreeX> owner(name);
  return name;
}

/// The window with this title, below `window`; 0 when there is none.
::Window find(Display* display, ::Window window, const std::string& title) {
  if (titleOf(display, window) == title) return window;
  for (const ::Window child : childrenOf(display, window))
    if (const ::Window found = find(display, child, title)) return found;
  return 0;
}

/// The pixels inside the box, or those outside; the others black.
Picture kept(Picture picture, const support::Box& box, bool inside) {
  for (std::size_t i = 0; i < picture.pixels.size(); ++i) {
    const int x = static_cast<int>(i) % picture.width - box.x,
              y = static_cast<int>(i) / picture.width - box.y;
    if ((x >= 0 && x < box.width && y >= 0 && y < box.height) != inside) picture.pixels[i] = 0;
  }
  return picture;
}

}  // namespace

Picture Picture::within(const support::Box& box) const { return kept(*this, box, true); }

Picture Picture::without(const support::Box& box) const { return kept(*this, box, false); }

Picture pictureOf(const std::string& name) {
  const Connection display = connect(name);
  const int screen = DefaultScreen(display.get());
  const int width = DisplayWidth(display.get(), screen), height = DisplayHeight(display.get(), screen);
  const std::unique_ptr<XImage, DestroyImage> image(
      XGetImage(display.get(), RootWindow(display.get(), screen), 0, 0, static_cast<unsigned>(width),
                static_cast<unsigned>(height), AllPlanes, ZPixmap));
  if (!image) throw std::runtime_error("no picture of the screen");
  Picture picture{.width = width, .pixels = {}};
  for (int y = 0; y < height; ++y)
    for (int x = 0; x < width; ++x) picture.pixels.push_back(XGetPixel(image.get(), x, y));
  return picture;
}

unsigned shownColor(const std::string& name, unsigned long pixel) {
  const Connection display = connect(name);
  XColor color{};
  color.pixel = pixel;
  XQueryColor(display.get(), DefaultColormap(display.get(), DefaultScreen(display.get())), &color);
  return static_cast<unsigned>((color.red >> 8) << 16 | (color.green >> 8) << 8 | color.blue >> 8);
}

bool inputIsKeptFrom(const std::string& name, const std::string& title) {
  const Connection display = connect(name);
  const ::Window window = find(display.get(), DefaultRootWindow(display.get()), title);
  if (window == 0) throw std::runtime_error("no window " + title);
  // The topmost comes last.
  const auto children = childrenOf(display.get(), window);
  XWindowAttributes attributes{};
  return !children.empty() && XGetWindowAttributes(display.get(), children.back(), &attributes) &&
         attributes.c_class == InputOnly && attributes.map_state == IsViewable;
}
