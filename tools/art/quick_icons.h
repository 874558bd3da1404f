// The side bar's small pictures: the quick buttons' icons (15 x 15, drawn
// centred on 17 x 17 buttons whose face is grey-blue, or light orange under
// the pointer) and the side controls shown straight on the desktop. Every
// icon has a dark edge, so it reads on light and dark grounds alike.
#pragma once

#include "canvas.h"

namespace quillet::art {

// Quick buttons, 15 x 15.
Picture Lock();
Picture Search();
Picture Folder();
Picture TaskManager();
Picture Run();

// Side controls, 16 x 16 unless said.
enum class PinColour { kGray, kBlue, kRed };
Picture Pin(PinColour colour);
Picture Power();  // 13 x 13
Picture WindowsFolder();
Picture AutoShutdown();
Picture Magnifier();
Picture RunExternal();

}  // namespace quillet::art
