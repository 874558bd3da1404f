// The drawing side of the self-drawn button: colour helpers, the colour
// schemes, the window region by style, the face of each style and the
// picture and caption on it. Sizes are the button's own pixels; a
// PixelCanvas puts them on a form's painter in twips.
#pragma once

#include <functional>
#include <string>
#include <vector>

#include "core/units.h"
#include "ui/painter.h"
#include "ui/text_metrics.h"

namespace quillet {

// What TranslateColor gives for a colour it cannot translate (-1 as 32 bits).
constexpr Colour kUntranslatable = 0xFFFFFFFF;

// A plain colour as it is; a system colour (top bit set, index 0 to 30)
// through the painter's host; anything else kUntranslatable.
Colour TranslateColor(Colour colour, const Painter& painter);

// Each channel moved by amount x 255, truncated; a positive amount is
// limited above by 255, zero or a negative one below by 0.
Colour ShiftColor(Colour colour, float amount);
// The rounded mean of each channel.
Colour BlendColors(Colour a, Colour b);
// v x 293 / 255, truncated, at most 255.
int LightenByte(int v);

// BackColor after a colour scheme is applied to a style; `current` where
// the scheme leaves it alone. `button_face` is the translated system face.
Colour SchemeBackColor(int button_style, int color_scheme, Colour current, Colour button_face);
// Whether a style draws the focus rectangle (ShowFocusRect after a scheme).
bool SchemeShowsFocusRect(int button_style);

// The corner size of the window region: 3 or 4 for the rounded styles, 0 for a plain rectangle.
int RegionCorner(int button_style);
// The pixels a region of that corner size cuts out of a w x h button.
struct PixelPoint {
  int x = 0, y = 0;
  bool operator==(const PixelPoint&) const = default;
};
std::vector<PixelPoint> RegionCutouts(int corner, int width, int height);

// Drawing in a button's pixels, with (0, 0) at the button's top left.
class PixelCanvas {
 public:
  PixelCanvas(Painter& painter, int left_twips, int top_twips, double twips_per_pixel)
      : painter_(painter), left_(left_twips), top_(top_twips), scale_(twips_per_pixel) {}

  // The same canvas, drawing nothing outside (0, 0, width, height), as a
  // window clips what is drawn into it.
  PixelCanvas ClippedTo(int width, int height) const;

  Painter& painter() { return painter_; }
  double Scale() const { return scale_; }
  // The twips rectangle of a pixel rectangle.
  TwipsRect ToTwips(int x, int y, int w, int h) const;

  void Fill(int x, int y, int w, int h, Colour colour);
  // DrawColorLine: from (x1, y1) up to, not including, (x2, y2).
  void Line(int x1, int y1, int x2, int y2, Colour colour);
  // DrawColorFrame: a one-pixel frame on (x, y, x + w, y + h).
  void Frame(int x, int y, int w, int h, Colour colour);
  void SetPixel(int x, int y, Colour colour);
  // DrawGradientBar: one picture of w x h pixels; direction 0 left to right,
  // 1 top to bottom, 2 right to left, 3 bottom to top.
  void GradientBar(int x, int y, int w, int h, Colour from, Colour to, int direction);
  // DrawFocusAt: the dotted focus rectangle.
  void FocusRect(int x, int y, int w, int h);
  void DrawPicture(const Picture& picture, int x, int y);
  void Text(int x, int y, std::string_view text, const Font& font, Colour colour);

 private:
  int EdgeX(int x) const;
  int EdgeY(int y) const;
  // Cuts a rectangle to the clip; false when nothing of it is left.
  bool Clip(int& x, int& y, int& w, int& h) const;

  Painter& painter_;
  int left_, top_;
  double scale_;
  int clip_width_ = -1, clip_height_ = -1;  // -1: no clip
};

// What a face routine needs to know of the button.
struct ButtonFace {
  int style = 0;            // ButtonStyle; 13 is drawn as 2 here (the themed look is the host's)
  int state = 0;            // 0 normal, 1 hot, 2 down: after RedrawButton's checked rule
  bool enabled = true;
  bool focused = false;     // has the focus, in an active window
  bool show_focus_rect = false;
  bool checked = false;     // Mode above 0 and Value true
  bool pointer_inside = false;
  Colour base = 0;          // BackColor, translated
  int width = 0, height = 0;  // pixels
};

// The background and frame of the face for its style and state; `content`
// runs where PaintContent belongs (after the bands, before the frames).
void DrawButtonFace(PixelCanvas& canvas, const ButtonFace& face, const std::function<void()>& content);

// What PaintContent puts on the face.
struct ButtonContent {
  std::string caption;
  Font font;
  Colour fore = 0;           // translated
  int caption_align = 2;     // 0 left, 1 right, 2 centre
  int caption_effects = 0;
  PicturePtr picture;        // the picture of the state, or null
  int picture_align = 1;     // 0 centre, 1 left, 2 right top, 3 right bottom, 4 right,
                             // 5 top, 6 top left, 7 bottom, 8 bottom left
  bool picture_shadow = false;
  int opacity = 255;         // the opacity of the state, 0 to 255
  int disabled_picture_mode = 0;
  Colour mask_color = 0xE0E0E0;
  bool use_mask_color = true;
  bool right_to_left = false;
  int drop_down_symbol = 0;  // 0 none
  bool drop_down_separator = false;
};

// Picture and caption on the face, each moved by (1, 1) while a pressed
// style 0, 1, 6, 7, 11 or 12 is down.
void PaintContent(PixelCanvas& canvas, TextMetrics& metrics, const ButtonFace& face, const ButtonContent& content);

// The picture as drawn: the mask colour see-through, the opacity applied,
// and for a disabled button the grey version, blended toward `face`.
Picture TreatPicture(const Picture& picture, const ButtonContent& content, bool enabled,
                     Colour face = 0xFFFFFF);

}  // namespace quillet
