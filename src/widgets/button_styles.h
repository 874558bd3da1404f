// The face routines of the button styles, shared by DrawButtonFace. Each
// draws its bands, then `content` (picture and caption), then its frames,
// lines and corner pixels, on a canvas clipped to the button.
#pragma once

#include <functional>

#include "widgets/button_paint.h"

namespace quillet {

using FaceContent = std::function<void()>;

// Styles 0, 1, 11 and 12: the system's 3-D edges.
void DrawEdged(PixelCanvas& canvas, const ButtonFace& face, const FaceContent& content);
// The glass look.
void DrawStyle3(PixelCanvas& canvas, const ButtonFace& face, const FaceContent& content);
// The tool bar look.
void DrawStyle5(PixelCanvas& canvas, const ButtonFace& face, const FaceContent& content);
// The soft look.
void DrawStyle9(PixelCanvas& canvas, const ButtonFace& face, const FaceContent& content);
// Styles 2 (and 13), 4, 6, 7, 8 and 10: two bands and up to two frames by a table.
void DrawTabledStyle(PixelCanvas& canvas, const ButtonFace& face, const FaceContent& content);

}  // namespace quillet
