// The host a form runs in: windows, timers, the event queue, the screen.
#pragma once

#include <memory>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "core/units.h"
#include "ui/mouse.h"
#include "ui/popups.h"
#include "ui/text_metrics.h"
#include "ui/timer_service.h"

namespace quillet {

class Form;

// The host's side of one loaded form; the form tells it what changed.
class FormPeer {
 public:
  virtual ~FormPeer() = default;
  virtual void BoundsChanged() = 0;
  virtual void VisibleChanged() = 0;
  virtual void WindowStateChanged() = 0;
  virtual void Invalidate() = 0;
  // The title text changed; a host without titles may ignore it.
  virtual void CaptionChanged() {}
  // The colour key or alpha changed.
  virtual void LayeringChanged() {}
  // A tip over an area of the form (client twips); a host without tips may ignore it.
  virtual void ShowToolTip(const TwipsRect& /*area*/, const ToolTip& /*tip*/) {}
  virtual void HideToolTip() {}
  // Runs a pop-up menu to its end: the chosen id, or 0.
  virtual int TrackPopupMenu(const PopupMenu& /*menu*/, ScreenPoint /*at*/, int /*flags*/, const TwipsRect& /*exclude*/) {
    return 0;
  }
  // Whether the window takes files dropped on it; a host without drops may ignore it.
  virtual void AcceptFiles(bool /*accept*/) {}
  // The screen position of the client area's top left, where the window has a frame.
  virtual std::optional<ScreenPoint> ClientOrigin() { return std::nullopt; }
};

struct ScreenInfo {
  int width_twips = 0;
  int height_twips = 0;
  double twips_per_pixel = 15.0;
};

class Ui {
 public:
  virtual ~Ui() = default;
  virtual std::unique_ptr<FormPeer> CreatePeer(Form& form) = 0;
  virtual TimerService& Timers() = 0;
  // Text measured as the host will draw it.
  virtual TextMetrics& Metrics() = 0;
  // Runs the events that are waiting, then returns.
  virtual void DoEvents() = 0;
  virtual ScreenInfo Screen() = 0;
  // Shows an error that escaped a handler; the program goes on.
  virtual void ReportError(std::string_view what) = 0;
  // Where the pointer is, in screen twips.
  virtual ScreenPoint PointerPosition() = 0;
  // Whether the system draws controls with visual styles.
  virtual bool AppThemed() { return false; }
  // Closes a pop-up menu that stands open; its TrackPopupMenu returns 0.
  virtual void EndMenu() {}

  // Unloads every loaded form and ends the event loop.
  void EndProgram();
  // Ends the event loop at once: no form hears of it.
  void EndAtOnce();
  bool Ended() const { return ended_; }
  const std::vector<Form*>& OpenForms() const { return open_forms_; }

  // Runs a handler; an exception is reported and goes no further.
  template <class F>
  void Guard(F&& handler) noexcept {
    try {
      handler();
    } catch (const std::exception& e) {
      ReportNoThrow(e.what());
    } catch (...) {
      ReportNoThrow("Unknown error");
    }
  }

 protected:
  virtual void QuitEventLoop() = 0;

 private:
  friend class Form;
  void ReportNoThrow(std::string_view what) noexcept;
  std::vector<Form*> open_forms_;
  bool ended_ = false;
};

}  // namespace quillet
