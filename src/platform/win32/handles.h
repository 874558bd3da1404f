// Move-only owners of Win32 handles: each closes its handle once, copying is
// deleted so no two owners can close the same handle.
#pragma once

#include <utility>

#include "platform/win32/win32.h"

namespace quillet::win32 {

template <class Traits>
class UniqueAny {
 public:
  using pointer = typename Traits::pointer;

  UniqueAny() noexcept = default;
  explicit UniqueAny(pointer value) noexcept : value_(value) {}
  ~UniqueAny() { reset(); }
  UniqueAny(UniqueAny&& other) noexcept : value_(other.release()) {}
  UniqueAny& operator=(UniqueAny&& other) noexcept {
    if (this != &other) reset(other.release());
    return *this;
  }
  UniqueAny(const UniqueAny&) = delete;
  UniqueAny& operator=(const UniqueAny&) = delete;

  [[nodiscard]] pointer get() const noexcept { return value_; }
  explicit operator bool() const noexcept { return value_ != Traits::Invalid(); }
  [[nodiscard]] pointer release() noexcept { return std::exchange(value_, Traits::Invalid()); }
  void reset(pointer value = Traits::Invalid()) noexcept {
    const pointer old = std::exchange(value_, value);
    if (old != Traits::Invalid()) Traits::Close(old);
  }
  // For APIs that return the handle through an out parameter.
  [[nodiscard]] pointer* put() noexcept {
    reset();
    return &value_;
  }

 private:
  pointer value_ = Traits::Invalid();
};

template <class T, auto CloseFunction>
struct NullInvalidTraits {
  using pointer = T;
  static pointer Invalid() noexcept { return nullptr; }
  static void Close(pointer value) noexcept { CloseFunction(value); }
};

// CreateFile reports failure as INVALID_HANDLE_VALUE, not null.
struct FileHandleTraits {
  using pointer = HANDLE;
  static pointer Invalid() noexcept { return INVALID_HANDLE_VALUE; }
  static void Close(pointer value) noexcept { ::CloseHandle(value); }
};

using UniqueWindow = UniqueAny<NullInvalidTraits<HWND, &::DestroyWindow>>;
using UniqueDc = UniqueAny<NullInvalidTraits<HDC, &::DeleteDC>>;  // CreateCompatibleDC
using UniqueIcon = UniqueAny<NullInvalidTraits<HICON, &::DestroyIcon>>;
using UniqueKey = UniqueAny<NullInvalidTraits<HKEY, &::RegCloseKey>>;
using UniqueHandle = UniqueAny<NullInvalidTraits<HANDLE, &::CloseHandle>>;  // null on failure
using UniqueFile = UniqueAny<FileHandleTraits>;
template <class T>
using UniqueGdi = UniqueAny<NullInvalidTraits<T, &::DeleteObject>>;
using UniqueBitmap = UniqueGdi<HBITMAP>;
using UniqueFont = UniqueGdi<HFONT>;

// A window's DC from GetDC, given back with ReleaseDC.
class WindowDc {
 public:
  explicit WindowDc(HWND window) noexcept : window_(window), dc_(::GetDC(window)) {}
  ~WindowDc() {
    if (dc_ != nullptr) ::ReleaseDC(window_, dc_);
  }
  WindowDc(const WindowDc&) = delete;
  WindowDc& operator=(const WindowDc&) = delete;
  [[nodiscard]] HDC get() const noexcept { return dc_; }

 private:
  HWND window_;
  HDC dc_;
};

// BeginPaint ... EndPaint.
class PaintDc {
 public:
  explicit PaintDc(HWND window) noexcept : window_(window) { dc_ = ::BeginPaint(window, &ps_); }
  ~PaintDc() { ::EndPaint(window_, &ps_); }
  PaintDc(const PaintDc&) = delete;
  PaintDc& operator=(const PaintDc&) = delete;
  [[nodiscard]] HDC get() const noexcept { return dc_; }
  [[nodiscard]] const RECT& dirty() const noexcept { return ps_.rcPaint; }

 private:
  HWND window_;
  PAINTSTRUCT ps_{};
  HDC dc_ = nullptr;
};

// Selects an object into a DC and puts the old one back, so the object can
// be deleted afterwards without leaving the DC holding it.
class ScopedSelectObject {
 public:
  ScopedSelectObject(HDC dc, HGDIOBJ object) noexcept : dc_(dc), old_(::SelectObject(dc, object)) {}
  ~ScopedSelectObject() {
    if (old_ != nullptr && old_ != HGDI_ERROR) ::SelectObject(dc_, old_);
  }
  ScopedSelectObject(const ScopedSelectObject&) = delete;
  ScopedSelectObject& operator=(const ScopedSelectObject&) = delete;

 private:
  HDC dc_;
  HGDIOBJ old_;
};

}  // namespace quillet::win32
