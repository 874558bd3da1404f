#include "ui/win32/gdi_painter.h"

#include <cmath>
#include <cstring>

#include "platform/win32/wide_text.h"

namespace quillet::win32 {

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

void GdiPainter::FillRect(const TwipsRect& rect, Colour colour) {
  const RECT r = scale_.ToPixelEdges(rect);
  const UniqueGdi<HBRUSH> brush(::CreateSolidBrush(colour));
  if (brush) ::FillRect(dc_, &r, brush.get());
}

void GdiPainter::DrawText(const TwipsRect& rect, std::string_view text, const Font& font, Colour colour,
                          TextAlign align) {
  if (text.empty()) return;
  RECT r = scale_.ToPixelEdges(rect);
  const HFONT handle = fonts_.Get(font, scale_.Dpi());
  const ScopedSelectObject select(dc_, handle != nullptr ? static_cast<HGDIOBJ>(handle)
                                                         : ::GetStockObject(DEFAULT_GUI_FONT));
  const int old_mode = ::SetBkMode(dc_, TRANSPARENT);
  const COLORREF old_colour = ::SetTextColor(dc_, colour);
  UINT format = DT_WORDBREAK | DT_NOPREFIX;
  if (align == TextAlign::kRight) format |= DT_RIGHT;
  if (align == TextAlign::kCenter) format |= DT_CENTER;
  std::wstring wide = Widen(text);
  ::DrawTextW(dc_, wide.data(), static_cast<int>(wide.size()), &r, format);
  ::SetTextColor(dc_, old_colour);
  ::SetBkMode(dc_, old_mode);
}

void GdiPainter::DrawPicture(const Picture& picture, const TwipsRect& dest) {
  if (picture.width <= 0 || picture.height <= 0 ||
      picture.pixels.size() < static_cast<std::size_t>(picture.width) * static_cast<std::size_t>(picture.height))
    return;
  const RECT r = scale_.ToPixelEdges(dest);
  if (r.right <= r.left || r.bottom <= r.top) return;
  BITMAPINFO info{};
  info.bmiHeader.biSize = sizeof info.bmiHeader;
  info.bmiHeader.biWidth = picture.width;
  info.bmiHeader.biHeight = -picture.height;  // rows from the top
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
  for (std::size_t i = 0; i < picture.pixels.size() && i < std::size_t(picture.width) * picture.height; ++i) {
    const std::uint32_t p = picture.pixels[i];
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
  ::AlphaBlend(dc_, r.left, r.top, r.right - r.left, r.bottom - r.top, source.get(), 0, 0, picture.width,
               picture.height, blend);
}

}  // namespace quillet::win32
