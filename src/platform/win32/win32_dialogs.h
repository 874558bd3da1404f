// The system's message box. The style bits of the interface are the system's own.
#pragma once

#include "platform/dialogs.h"

namespace quillet::win32 {

class Win32Dialogs : public DialogService {
 public:
  int MessageBox(std::string_view text, int style, std::string_view title) override;
};

}  // namespace quillet::win32
