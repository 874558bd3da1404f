// Controls that never show: they hold the program's shared values, and their
// change handlers run inside the assignment, before it returns.
#pragma once

#include <functional>
#include <string>
#include <utility>

namespace quillet {

class HiddenTextBox {
 public:
  explicit HiddenTextBox(std::string design_text = {}) : text_(std::move(design_text)) {}
  const std::string& Text() const { return text_; }
  // Like an edit control, every assignment reports a change, even of the
  // same text: start-up relies on it to write defaults back to the store.
  void SetText(std::string text) {
    text_ = std::move(text);
    if (on_change) on_change();
  }
  std::function<void()> on_change;

 private:
  std::string text_;
};

class HiddenCheckBox {
 public:
  int Value() const { return value_; }
  void SetValue(int value) {
    if (value == value_) return;
    value_ = value;
    if (on_click) on_click();
  }
  std::function<void()> on_click;

 private:
  int value_ = 0;
};

// An invisible button: pressing it runs its handler to its end.
class HiddenCommand {
 public:
  explicit HiddenCommand(std::string caption) : caption_(std::move(caption)) {}
  const std::string& Caption() const { return caption_; }
  void Press() {
    if (on_click) on_click();
  }
  std::function<void()> on_click;

 private:
  std::string caption_;
};

}  // namespace quillet
