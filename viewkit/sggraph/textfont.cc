/// @file
/// The fonts of a render table, and the same ones in other sizes.
#include "viewkit/sggraph/textfont.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <cstdlib>
#include <vector>

namespace sggraph {

namespace {

// Numbers of the fields of an X font name "-foundry-family-...", counted from its first dash.
constexpr std::size_t kPixelSizeField = 7, kPointSizeField = 8, kAverageWidthField = 12;

std::vector<std::string> fieldsOf(const std::string& fontName) {
  std::vector<std::string> fields;
  std::size_t start = 0;
  for (std::size_t dash = fontName.find('-'); dash != std::string::npos; dash = fontName.find('-', start)) {
    fields.push_back(fontName.substr(start, dash - start));
    start = dash + 1;
  }
  fields.push_back(fontName.substr(start));
  return fields;
}

std::string withPixelSize(std::vector<std::string> fields, const std::string& size) {
  fields[kPixelSizeField] = size;
  fields[kPointSizeField] = fields[kAverageWidthField] = "*";
  std::string fontName = fields[0];
  for (std::size_t i = 1; i < fields.size(); ++i) fontName += '-' + fields[i];
  return fontName;
}

int sizeOf(const std::string& fontName) {
  const std::vector<std::string> fields = fieldsOf(fontName);
  return fields.size() > kAverageWidthField ? std::atoi(fields[kPixelSizeField].c_str()) : 0;
}

struct FreeFontNames {
  void operator()(char** names) const { XFreeFontNames(names); }
};
struct FreeStringList {
  void operator()(char** strings) const { XFreeStringList(strings); }
};
struct FreeRendition {
  void operator()(XmRendition rendition) const { XmRenditionFree(rendition); }
};

int length(std::string_view text) { return static_cast<int>(std::min<std::size_t>(text.size(), 4096)); }

const FcChar8* utf8(std::string_view text) { return reinterpret_cast<const FcChar8*>(text.data()); }

}  // namespace

TextFont::TextFont(Screen* screen, XmRenderTable table) : display_(DisplayOfScreen(screen)) {
  if (!table) return;
  XmStringTag* tagList = nullptr;
  const int count = XmRenderTableGetTags(table, &tagList);
  const std::unique_ptr<XmStringTag, viewkit::FreeXt> tags(tagList);
  for (int i = 0; i < count; ++i) {
    const viewkit::XtText tag(tagList[i]);
    const std::unique_ptr<std::remove_pointer_t<XmRendition>, FreeRendition> rendition(
        XmRenderTableGetRendition(table, tag.get()));
    if (!rendition || xft_ || set_ || single_) continue;
    XtPointer font = nullptr;
    XtPointer xft = nullptr;
    int type = XmFONT_IS_FONT;  // or XmAS_IS, which is no XmFontType
    std::array<Arg, 3> args{Arg{XmNfontType, reinterpret_cast<XtArgVal>(&type)},
                            Arg{XmNfont, reinterpret_cast<XtArgVal>(&font)},
                            Arg{XmNxftFont, reinterpret_cast<XtArgVal>(&xft)}};
    XmRenditionRetrieve(rendition.get(), args.data(), static_cast<Cardinal>(args.size()));
    const auto loaded = [](XtPointer p) { return p && p != reinterpret_cast<XtPointer>(XmAS_IS); };
    if (type == XmFONT_IS_XFT && loaded(xft)) xft_ = static_cast<XftFont*>(xft);
    if (type == XmFONT_IS_FONTSET && loaded(font)) set_ = static_cast<XFontSet>(font);
    if (type == XmFONT_IS_FONT && loaded(font)) single_ = static_cast<XFontStruct*>(font);
  }
  zoomedSet_ = set_;
}

TextFont::~TextFont() = default;

picture::Font TextFont::font() const {
  constexpr double kSizeOfHeight = 0.7;
  char* family = nullptr;
  double size = 0;
  if (xft_ && XftPatternGetString(xft_->pattern, XFT_FAMILY, 0, &family) == XftResultMatch &&
      XftPatternGetDouble(xft_->pattern, XFT_PIXEL_SIZE, 0, &size) == XftResultMatch)
    return {family, size};
  picture::Font like;
  like.size = kSizeOfHeight * height();
  return like;
}

double TextFont::width(std::string_view text) const { return measure(text, false); }

double TextFont::height() const {
  if (xft_) return xft_->ascent + xft_->descent;
  if (set_) return XExtentsOfFontSet(set_)->max_logical_extent.height;
  if (single_) return single_->ascent + single_->descent;
  return 10;
}

int TextFont::measure(std::string_view text, bool zoomed) const {
  if (xft_) {
    XGlyphInfo extents{};
    XftTextExtentsUtf8(display_, zoomed && zoomedXft_ ? zoomedXft_.get() : xft_, utf8(text), length(text),
                       &extents);
    return extents.xOff;
  }
  if (set_) return Xutf8TextEscapement(zoomed ? zoomedSet_ : set_, text.data(), length(text));
  if (single_) return XTextWidth(single_, text.data(), length(text));
  return 0;
}

void TextFont::setZoom(double zoom) {
  if (zoom == zoom_) return;
  zoom_ = zoom;
  zoomedXft_.reset();
  if (xft_) {
    double size = 0;
    if (zoom == 1 || XftPatternGetDouble(xft_->pattern, XFT_PIXEL_SIZE, 0, &size) != XftResultMatch) return;
    XftPattern* pattern = XftPatternDuplicate(xft_->pattern);
    XftPatternDel(pattern, XFT_PIXEL_SIZE);
    XftPatternDel(pattern, XFT_SIZE);
    XftPatternAddDouble(pattern, XFT_PIXEL_SIZE, size * zoom);
    zoomedXft_ = XftPtr(XftFontOpenPattern(display_, pattern), CloseXft{display_});
    if (!zoomedXft_) XftPatternDestroy(pattern);  // an opened font has taken it over
  }
  if (set_) zoomedSet_ = zoom == 1 ? set_ : setOfHeight(static_cast<int>(std::lround(height() * zoom)));
}

XFontSet TextFont::setOfHeight(int pixels) {
  const std::string base = XBaseFontNameListOfFontSet(set_);
  const std::vector<std::string> fields = fieldsOf(base.substr(0, base.find(',')));
  if (fields.size() <= kAverageWidthField) return set_;
  int count = 0;
  const std::unique_ptr<char*, FreeFontNames> names(
      XListFonts(display_, withPixelSize(fields, "*").c_str(), 1000, &count));
  int best = 0, smallest = 0;
  for (int i = 0; i < count; ++i) {
    const int size = sizeOf(names.get()[i]);  // 0: a font that the server would scale, which looks bad
    if (size <= 0) continue;
    if (size <= pixels) best = std::max(best, size);
    smallest = smallest == 0 ? size : std::min(smallest, size);
  }
  if (best == 0) best = smallest;
  if (best == 0 || best == sizeOf(base)) return set_;
  if (const auto known = sets_.find(best); known != sets_.end()) return known->second.get();
  char** missing = nullptr;
  int missingCount = 0;
  char* defaultString = nullptr;
  SetPtr made(XCreateFontSet(display_, withPixelSize(fields, std::to_string(best)).c_str(), &missing,
                             &missingCount, &defaultString),
              FreeSet{display_});
  const std::unique_ptr<char*, FreeStringList> missingNames(missing);
  if (!made) return set_;
  return sets_.emplace(best, std::move(made)).first->second.get();
}

void TextFont::setTarget(Drawable target, Visual* visual, Colormap colormap) {
  drawable_ = target;
  colormap_ = colormap;
  target_.reset(xft_ && target ? XftDrawCreate(display_, target, visual, colormap) : nullptr);
}

void TextFont::draw(GC gc, int middleX, int middleY, std::string_view text, Pixel pixel) {
  if (text.empty() || !drawable_) return;
  const int left = middleX - measure(text, true) / 2;
  const auto baseline = [&](int ascent, int descent) { return middleY + (ascent - descent) / 2; };
  if (xft_) {
    XftFont* font = zoomedXft_ ? zoomedXft_.get() : xft_;
    if (target_)
      XftDrawStringUtf8(target_.get(), &xftColor(pixel), font, left, baseline(font->ascent, font->descent),
                        utf8(text), length(text));
    return;
  }
  XSetForeground(display_, gc, pixel);
  if (set_) {
    const XRectangle box = XExtentsOfFontSet(zoomedSet_)->max_logical_extent;
    Xutf8DrawString(display_, drawable_, zoomedSet_, gc, left, baseline(-box.y, box.height + box.y),
                    text.data(), length(text));
  } else if (single_) {
    XSetFont(display_, gc, single_->fid);
    XDrawString(display_, drawable_, gc, left, baseline(single_->ascent, single_->descent), text.data(),
                length(text));
  }
}

const XftColor& TextFont::xftColor(Pixel pixel) {
  const auto known = colors_.find(pixel);
  if (known != colors_.end()) return known->second;
  XColor color{};
  color.pixel = pixel;
  XQueryColor(display_, colormap_, &color);
  return colors_.emplace(pixel, XftColor{pixel, {color.red, color.green, color.blue, 0xffff}}).first->second;
}

}  // namespace sggraph
