// One loaded form as a real window: it shows what the form paints and
// passes the mouse to it in twips. The form never sees a message.
#pragma once

#include <memory>
#include <optional>

#include "ui/form.h"
#include "ui/win32/back_buffer.h"
#include "ui/win32/drop_target.h"
#include "ui/win32/base_window.h"
#include "ui/win32/gdi_painter.h"
#include "ui/win32/pixel_scale.h"
#include "ui/win32/theme.h"
#include "ui/win32/tool_tip_window.h"

namespace quillet::win32 {

class FormWindow final : public BaseWindow<FormWindow>, public FormPeer {
 public:
  static constexpr const wchar_t* kClassName = L"QuilletForm";
  static constexpr UINT kClassStyle = CS_DBLCLKS;

  // Throws std::runtime_error when the window cannot be made.
  FormWindow(Form& form, PixelScale scale, ThemeLibrary& theme);
  ~FormWindow() override;

  void BoundsChanged() override;
  void VisibleChanged() override;
  void WindowStateChanged() override;
  void Invalidate() override;
  void CaptionChanged() override;
  void LayeringChanged() override;
  void ShowToolTip(const TwipsRect& area, const ToolTip& tip) override;
  void HideToolTip() override;
  int TrackPopupMenu(const PopupMenu& menu, ScreenPoint at, int flags, const TwipsRect& exclude) override;
  std::optional<ScreenPoint> ClientOrigin() override;
  void AcceptFiles(bool accept) override;

  LRESULT OnMessage(UINT message, WPARAM wparam, LPARAM lparam) noexcept;

  // Styles of a window for a form's arguments.
  [[nodiscard]] static WindowArgs ArgsFor(const Form& form, const PixelScale& scale);

 private:
  void Paint() noexcept;
  void Mouse(MouseEventKind kind, int button, WPARAM wparam, LPARAM lparam) noexcept;
  void SyncStateFromWindow(WPARAM size_kind) noexcept;
  void SyncBoundsFromWindow() noexcept;
  bool Key(UINT message, WPARAM wparam) noexcept;
  bool SetHandCursor() noexcept;
  void Dropped(const FileDrop& drop) noexcept;

  Form& form_;
  PixelScale scale_;
  ThemeLibrary& theme_;
  FontCache fonts_;
  BackBuffer buffer_;
  ToolTipWindow tip_;
  FileDrops drops_;
  bool tracking_leave_ = false;
  // A handler may unload the form and so destroy this object while one of
  // its messages is being answered; the handler's caller checks this first.
  std::shared_ptr<bool> alive_ = std::make_shared<bool>(true);
  bool applying_bounds_ = false;
  // Drops are taken from the first idle moment after the first paint on.
  static constexpr UINT_PTR kAcceptFilesTimer = 1;
  bool painted_ = false;
  bool accept_files_ = false;
};

}  // namespace quillet::win32
