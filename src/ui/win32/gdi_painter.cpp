#include "ui/win32/gdi_painter.h"

#include <cmath>
#include <cstring>

#include "platform/win32/wide_text.h"
#include "ui/resample.h"
#include "ui/retained_picture.h"
#include "ui/win32/retained_bitmaps.h"

namespace quillet::win32 {
namespace {

// Lines of a text as drawn by DrawTextAt: CR LF, CR or LF end a line.
std::vector<std::wstring> Lines(std::string_view text) {
  std::vector<std::wstring> lines;
  std::size_t start = 0;
  for (std::size_t i = 0; i <= text.size(); ++i) {
    if (i < text.size() && text[i] != '\r' && text[i] != '\n') continue;
    lines.push_back(Widen(text.substr(start, i - start)));
    if (i + 1 < text.size() && text[i] == '\r' && text[i + 1] == '\n') ++i;
    start = i + 1;
  }
  return lines;
}

HGDIOBJ FontOrDefault(HFONT font) noexcept {
  return font != nullptr ? static_cast<HGDIOBJ>(font) : ::GetStockObject(DEFAULT_GUI_FONT);
}

}  // namespace

COLORREF HostColour(Colour colour) noexcept {
  if ((colour & 0x80000000u) != 0) return ::GetSysColor(static_cast<int>(colour & 0xFF));
  return colour & 0xFFFFFF;
}

HFONT FontCache::Get(const Font& font, int dpi) {
  auto key = std::make_tuple(font.name, font.size, font.bold, dpi);
  auto it = fonts_.find(key);
  if (it != fonts_.end()) return it->second.get();
  LOGFONTW lf{};
  lf.lfHeight = -static_cast<LONG>(std::lround(font.size * dpi / 72.0));
  lf.lfWeight = font.bold ? FW_BOLD : FW_NORMAL;
  lf.lfCharSet = DEFAULT_CHARSET;
  // Smoothed edges would blend towards the key colour and leave a magenta fringe.
  lf.lfQuality = NONANTIALIASED_QUALITY;
  const std::wstring face = Widen(font.name).substr(0, LF_FACESIZE - 1);
  std::memcpy(lf.lfFaceName, face.c_str(), (face.size() + 1) * sizeof(wchar_t));
  UniqueFont created(::CreateFontIndirectW(&lf));
  const HFONT handle = created.get();
  if (handle != nullptr) fonts_.emplace(std::move(key), std::move(created));
  return handle;
}

GdiPainter::~GdiPainter() {
  // A layer left open is dropped, not drawn: the DC must get its bitmap back.
  while (!layers_.empty()) {
    ::SelectObject(layers_.back().dc.get(), layers_.back().old_bitmap);
    dc_ = layers_.back().outer;
    layers_.pop_back();
  }
}

void GdiPainter::FillRect(const TwipsRect& rect, Colour colour) {
  const RECT r = scale_.ToPixelEdges(rect);
  const UniqueGdi<HBRUSH> brush(::CreateSolidBrush(HostColour(colour)));
  if (brush) ::FillRect(dc_, &r, brush.get());
}

void GdiPainter::DrawText(const TwipsRect& rect, std::string_view text, const Font& font, Colour colour,
                          TextAlign align) {
  if (text.empty()) return;
  RECT r = scale_.ToPixelEdges(rect);
  const ScopedSelectObject select(dc_, FontOrDefault(fonts_.Get(font, scale_.Dpi())));
  const int old_mode = ::SetBkMode(dc_, TRANSPARENT);
  const COLORREF old_colour = ::SetTextColor(dc_, HostColour(colour));
  UINT format = DT_WORDBREAK | DT_NOPREFIX;
  if (align == TextAlign::kRight) format |= DT_RIGHT;
  if (align == TextAlign::kCenter) format |= DT_CENTER;
  std::wstring wide = Widen(text);
  ::DrawTextW(dc_, wide.data(), static_cast<int>(wide.size()), &r, format);
  ::SetTextColor(dc_, old_colour);
  ::SetBkMode(dc_, old_mode);
}

void GdiPainter::DrawTextAt(int x, int y, std::string_view text, const Font& font, Colour colour) {
  if (text.empty()) return;
  const ScopedSelectObject select(dc_, FontOrDefault(fonts_.Get(font, scale_.Dpi())));
  TEXTMETRICW tm{};
  ::GetTextMetricsW(dc_, &tm);
  const int old_mode = ::SetBkMode(dc_, TRANSPARENT);
  const COLORREF old_colour = ::SetTextColor(dc_, HostColour(colour));
  const UINT old_align = ::SetTextAlign(dc_, TA_LEFT | TA_TOP | TA_NOUPDATECP);
  int top = scale_.ToPixels(y);
  for (const std::wstring& line : Lines(text)) {
    ::TextOutW(dc_, scale_.ToPixels(x), top, line.c_str(), static_cast<int>(line.size()));
    top += tm.tmHeight;
  }
  ::SetTextAlign(dc_, old_align);
  ::SetTextColor(dc_, old_colour);
  ::SetBkMode(dc_, old_mode);
}

void GdiPainter::DrawLine(int x1, int y1, int x2, int y2, Colour colour) {
  const UniqueGdi<HPEN> pen(::CreatePen(PS_SOLID, 1, HostColour(colour)));
  if (!pen) return;
  const ScopedSelectObject select(dc_, pen.get());
  ::MoveToEx(dc_, scale_.ToPixels(x1), scale_.ToPixels(y1), nullptr);
  ::LineTo(dc_, scale_.ToPixels(x2), scale_.ToPixels(y2));
}

void GdiPainter::DrawPicture(const Picture& picture, const TwipsRect& dest) {
  if (picture.width <= 0 || picture.height <= 0 ||
      picture.pixels.size() < static_cast<std::size_t>(picture.width) * static_cast<std::size_t>(picture.height))
    return;
  const RECT r = scale_.ToPixelEdges(dest);
  if (r.right <= r.left || r.bottom <= r.top) return;
  // AlphaBlend stretches by repeating and dropping pixels; scale here, blit 1:1.
  const int width = r.right - r.left, height = r.bottom - r.top;
  Picture resampled;
  if (width != picture.width || height != picture.height) resampled = ResamplePicture(picture, width, height);
  const Picture& shown = resampled.pixels.empty() ? picture : resampled;
  if (shown.width != width || shown.height != height) return;
  BITMAPINFO info{};
  info.bmiHeader.biSize = sizeof info.bmiHeader;
  info.bmiHeader.biWidth = width;
  info.bmiHeader.biHeight = -height;  // rows from the top
  info.bmiHeader.biPlanes = 1;
  info.bmiHeader.biBitCount = 32;
  info.bmiHeader.biCompression = BI_RGB;
  void* bits = nullptr;
  UniqueBitmap bitmap(::CreateDIBSection(dc_, &info, DIB_RGB_COLORS, &bits, nullptr, 0));
  const UniqueDc source(::CreateCompatibleDC(dc_));
  if (!bitmap || !source || bits == nullptr) return;
  // 0xAARRGGBB is BGRA in memory; AlphaBlend wants the colour premultiplied,
  // and a pixel of alpha 0 then leaves what is under it.
  auto* out = static_cast<std::uint32_t*>(bits);
  const std::size_t count = static_cast<std::size_t>(width) * static_cast<std::size_t>(height);
  for (std::size_t i = 0; i < count; ++i) {
    const std::uint32_t p = shown.pixels[i];
    const std::uint32_t a = p >> 24;
    if (a == 255) {
      out[i] = p;
      continue;
    }
    const auto scale = [a](std::uint32_t c) { return (c * a + 127) / 255; };
    out[i] = (a << 24) | (scale((p >> 16) & 0xFF) << 16) | (scale((p >> 8) & 0xFF) << 8) | scale(p & 0xFF);
  }
  const ScopedSelectObject select(source.get(), bitmap.get());
  const BLENDFUNCTION blend{AC_SRC_OVER, 0, 255, AC_SRC_ALPHA};
  ::AlphaBlend(dc_, r.left, r.top, width, height, source.get(), 0, 0, width, height, blend);
}

void GdiPainter::DrawIndexed(const IndexedPicture& picture, const PictureRect& source, const Palette& colours,
                             int transparent, const TwipsRect& dest) {
  const RECT r = scale_.ToPixelEdges(dest);
  if (r.right - r.left != source.width || r.bottom - r.top != source.height) {
    Painter::DrawIndexed(picture, source, colours, transparent, dest);
    return;
  }
  DibCopy* copy = CurrentCopy(picture);
  if (copy == nullptr || source.Empty()) return;
  const auto blit = [&](DWORD rop) {
    ::BitBlt(dc_, r.left, r.top, source.width, source.height, copy->dc(), source.left, source.top, rop);
  };
  if (transparent < 0 || transparent > 255) {
    copy->SetColours(colours);
    blit(SRCCOPY);
    return;
  }
  // A mask first (see-through white, the rest black) ANDed on, then the
  // colours with the see-through index black ORed on.
  Palette mask{};
  mask[static_cast<std::size_t>(transparent)] = 0xFFFFFF;
  copy->SetColours(mask);
  blit(SRCAND);
  Palette shown = colours;
  shown[static_cast<std::size_t>(transparent)] = 0;
  copy->SetColours(shown);
  blit(SRCPAINT);
}

void GdiPainter::DrawSurface(const ArgbSurface& surface, const PictureRect& source, const TwipsRect& dest) {
  const RECT r = scale_.ToPixelEdges(dest);
  if (r.right - r.left != source.width || r.bottom - r.top != source.height) {
    Painter::DrawSurface(surface, source, dest);
    return;
  }
  DibCopy* copy = CurrentCopy(surface);
  if (copy == nullptr || source.Empty()) return;
  if (surface.Opaque()) {
    ::BitBlt(dc_, r.left, r.top, source.width, source.height, copy->dc(), source.left, source.top, SRCCOPY);
    return;
  }
  // The surface's pixels are premultiplied as they are (alpha 0 or 255).
  const BLENDFUNCTION blend{AC_SRC_OVER, 0, 255, AC_SRC_ALPHA};
  ::AlphaBlend(dc_, r.left, r.top, source.width, source.height, copy->dc(), source.left, source.top, source.width,
               source.height, blend);
}

bool GdiPainter::DrawThemedButton(const TwipsRect& rect, int state) {
  return theme_ != nullptr && theme_->DrawPushButton(dc_, scale_.ToPixelEdges(rect), state);
}

void GdiPainter::PushLayer(const TwipsRect& rect, Colour fill) {
  Layer layer{dc_, scale_.ToPixelEdges(rect), UniqueDc(::CreateCompatibleDC(dc_)), UniqueBitmap(), nullptr};
  const int w = layer.rect.right - layer.rect.left, h = layer.rect.bottom - layer.rect.top;
  if (layer.dc && w > 0 && h > 0) layer.bitmap.reset(::CreateCompatibleBitmap(dc_, w, h));
  if (!layer.bitmap) {
    // No layer to be had: draw on with no effect on the surface.
    layer.dc.reset(::CreateCompatibleDC(dc_));
    layer.bitmap.reset(::CreateCompatibleBitmap(dc_, 1, 1));
    layer.rect = RECT{0, 0, 0, 0};
  }
  layer.old_bitmap = ::SelectObject(layer.dc.get(), layer.bitmap.get());
  ::SetViewportOrgEx(layer.dc.get(), -layer.rect.left, -layer.rect.top, nullptr);
  dc_ = layer.dc.get();
  layers_.push_back(std::move(layer));
  FillRect(rect, fill);
}

void GdiPainter::PopLayer(std::optional<Colour> key) {
  if (layers_.empty()) return;
  Layer layer = std::move(layers_.back());
  layers_.pop_back();
  dc_ = layer.outer;
  const RECT& r = layer.rect;
  const int w = r.right - r.left, h = r.bottom - r.top;
  ::SetViewportOrgEx(layer.dc.get(), 0, 0, nullptr);
  if (w > 0 && h > 0) {
    if (key) ::TransparentBlt(dc_, r.left, r.top, w, h, layer.dc.get(), 0, 0, w, h, HostColour(*key));
    else ::BitBlt(dc_, r.left, r.top, w, h, layer.dc.get(), 0, 0, SRCCOPY);
  }
  ::SelectObject(layer.dc.get(), layer.old_bitmap);
}

TwipsSize GdiTextMetrics::Measure(const Font& font, std::string_view text) {
  if (!dc_) dc_.reset(::CreateCompatibleDC(nullptr));
  const HDC dc = dc_.get();
  if (dc == nullptr) return {};
  const ScopedSelectObject select(dc, FontOrDefault(fonts_.Get(font, scale_.Dpi())));
  TEXTMETRICW tm{};
  ::GetTextMetricsW(dc, &tm);
  int widest = 0, lines = 0;
  for (const std::wstring& line : Lines(text)) {
    SIZE size{};
    ::GetTextExtentPoint32W(dc, line.c_str(), static_cast<int>(line.size()), &size);
    if (size.cx > widest) widest = size.cx;
    ++lines;
  }
  return {scale_.ToTwips(widest), scale_.ToTwips(tm.tmHeight * lines)};
}

}  // namespace quillet::win32
