/// @file
/// The graph's text: measured at 100 %, drawn at any zoom.
#pragma once

#include <X11/Xft/Xft.h>
#include <X11/Xlib.h>
#include <Xm/Xm.h>

#include <map>
#include <memory>
#include <string_view>

#include "picture/cairosurface.h"
#include "viewkit/xraii.h"

namespace sggraph {

/// Draws with the first font of a render table: smoothed (Xft) or of the X server (a font set or a single
/// font), whichever the table names. Smoothed fonts are scaled, font sets replaced by the nearest smaller
/// size of the family, single fonts always drawn as they are.
class TextFont {
 public:
  /// @param table  must live as long as this; null, or one without a font, leaves a font that draws nothing.
  TextFont(Screen* screen, XmRenderTable table);
  TextFont(const TextFont&) = delete;
  TextFont& operator=(const TextFont&) = delete;
  ~TextFont();

  /// The smoothed font, or one about as large as that of the X server, for other surfaces than X's.
  picture::Font font() const;
  /// Of the text at 100 %, in pixels.
  double width(std::string_view text) const;
  double height() const;
  /// Of the text at the zoom set, in pixels.
  double zoomedWidth(std::string_view text) const { return measure(text, true); }

  /// The zoom to draw at from now on.
  void setZoom(double zoom);
  /// Where to draw; the font lets go of the target before it changes or goes.
  void setTarget(Drawable target, Visual* visual, Colormap colormap);
  /// Draws the text around a point in the target.
  void draw(GC gc, int middleX, int middleY, std::string_view text, Pixel pixel);

 private:
  struct CloseXft {
    Display* display;
    void operator()(XftFont* font) const { XftFontClose(display, font); }
  };
  struct DestroyDraw {
    void operator()(XftDraw* draw) const { XftDrawDestroy(draw); }
  };
  struct FreeSet {
    Display* display;
    void operator()(XFontSet set) const { XFreeFontSet(display, set); }
  };
  using XftPtr = std::unique_ptr<XftFont, CloseXft>;
  using SetPtr = std::unique_ptr<std::remove_pointer_t<XFontSet>, FreeSet>;

  int measure(std::string_view text, bool zoomed) const;
  XFontSet setOfHeight(int pixels);
  const XftColor& xftColor(Pixel pixel);

  Display* display_;
  // Of these three, owned by the render table, at most one is set.
  XftFont* xft_ = nullptr;
  XFontSet set_ = nullptr;
  XFontStruct* single_ = nullptr;

  double zoom_ = 1;
  XftPtr zoomedXft_{nullptr, CloseXft{nullptr}};
  XFontSet zoomedSet_ = nullptr;
  std::map<int, SetPtr> sets_;  // by height in pixels
  std::unique_ptr<XftDraw, DestroyDraw> target_;
  Drawable drawable_ = 0;
  Colormap colormap_ = 0;
  std::map<Pixel, XftColor> colors_;
};

}  // namespace sggraph
