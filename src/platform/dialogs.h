// Dialogs the system shows for the program.
#pragma once

#include <string_view>

namespace quillet {

// Buttons, icons and answers of a message box, with the values the platform uses.
enum MsgBoxStyle : int {
  kOkOnly = 0,
  kOkCancel = 1,
  kYesNo = 4,
  kCritical = 16,
  kQuestion = 32,
  kExclamation = 48,
  kInformation = 64,
};
enum MsgBoxAnswer : int { kAnswerOk = 1, kAnswerCancel = 2, kAnswerYes = 6, kAnswerNo = 7 };

class DialogService {
 public:
  virtual ~DialogService() = default;
  virtual int MessageBox(std::string_view text, int style, std::string_view title) = 0;
};

}  // namespace quillet
