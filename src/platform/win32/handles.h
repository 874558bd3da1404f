// Move-only owners of Win32 handles: each closes its handle once, copying is
// deleted so no two owners can close the same handle.
//
// The owners also keep a live count of the handles they hold, by kind,
// because Wine's own counters (GetGuiResources, GetProcessHandleCount) read 0:
// a handle counts from when an owner takes it until the owner closes it or
// hands it over with release(), so owners that pile up show as a count that
// grows. Relaxed atomics: cheap enough to stay on in every build.
#pragma once

#include <array>
#include <atomic>
#include <cstddef>
#include <utility>

#include "platform/win32/win32.h"

namespace quillet::win32 {

enum class HandleKind : std::size_t {
  kGdi,     // bitmaps, brushes, pens, fonts, regions, DCs
  kUser,    // windows, icons, cursors, menus
  kKernel,  // files, events, mutexes, threads, registry keys
};

struct HandleCounts {
  long gdi = 0;
  long user = 0;
  long kernel = 0;
  bool operator==(const HandleCounts&) const = default;
};

namespace handle_count {

inline std::array<std::atomic<long>, 3>& Counters() noexcept {
  static constinit std::array<std::atomic<long>, 3> counters{};
  return counters;
}
inline void Taken(HandleKind kind) noexcept {
  Counters()[static_cast<std::size_t>(kind)].fetch_add(1, std::memory_order_relaxed);
}
inline void Closed(HandleKind kind) noexcept {
  Counters()[static_cast<std::size_t>(kind)].fetch_sub(1, std::memory_order_relaxed);
}

}  // namespace handle_count

// Handles the owners below hold now, by kind.
[[nodiscard]] inline HandleCounts LiveHandles() noexcept {
  const auto& c = handle_count::Counters();
  return {c[0].load(std::memory_order_relaxed), c[1].load(std::memory_order_relaxed),
          c[2].load(std::memory_order_relaxed)};
}

template <class Traits>
class UniqueAny {
 public:
  using pointer = typename Traits::pointer;

  UniqueAny() noexcept = default;
  explicit UniqueAny(pointer value) noexcept : value_(value) { CountTaken(value_); }
  ~UniqueAny() { reset(); }
  // A move hands the handle over: it stays counted once.
  UniqueAny(UniqueAny&& other) noexcept : value_(std::exchange(other.value_, Traits::Invalid())) {}
  UniqueAny& operator=(UniqueAny&& other) noexcept {
    if (this != &other) {
      reset();
      value_ = std::exchange(other.value_, Traits::Invalid());
    }
    return *this;
  }
  UniqueAny(const UniqueAny&) = delete;
  UniqueAny& operator=(const UniqueAny&) = delete;

  [[nodiscard]] pointer get() const noexcept { return value_; }
  explicit operator bool() const noexcept { return value_ != Traits::Invalid(); }
  // The caller owns the handle now and answers for closing it; it leaves the
  // count, which is of handles that owners hold.
  [[nodiscard]] pointer release() noexcept {
    const pointer value = std::exchange(value_, Traits::Invalid());
    if (value != Traits::Invalid()) handle_count::Closed(Traits::kKind);
    return value;
  }
  void reset(pointer value = Traits::Invalid()) noexcept {
    const pointer old = std::exchange(value_, value);
    CountTaken(value_);
    if (old != Traits::Invalid()) {
      Traits::Close(old);
      handle_count::Closed(Traits::kKind);
    }
  }

  // For APIs that return the handle through an out parameter: what the call
  // wrote is counted once the call's full expression ends.
  class OutParameter {
   public:
    explicit OutParameter(UniqueAny& owner) noexcept : owner_(owner) {}
    ~OutParameter() { owner_.CountTaken(owner_.value_); }
    OutParameter(const OutParameter&) = delete;
    OutParameter& operator=(const OutParameter&) = delete;
    operator pointer*() const noexcept { return &owner_.value_; }

   private:
    UniqueAny& owner_;
  };
  [[nodiscard]] OutParameter put() noexcept {
    reset();
    return OutParameter(*this);
  }

 private:
  static void CountTaken(pointer value) noexcept {
    if (value != Traits::Invalid()) handle_count::Taken(Traits::kKind);
  }

  pointer value_ = Traits::Invalid();
};

template <class T, auto CloseFunction, HandleKind Kind>
struct NullInvalidTraits {
  using pointer = T;
  static constexpr HandleKind kKind = Kind;
  static pointer Invalid() noexcept { return nullptr; }
  static void Close(pointer value) noexcept { CloseFunction(value); }
};

// CreateFile reports failure as INVALID_HANDLE_VALUE, not null.
struct FileHandleTraits {
  using pointer = HANDLE;
  static constexpr HandleKind kKind = HandleKind::kKernel;
  static pointer Invalid() noexcept { return INVALID_HANDLE_VALUE; }
  static void Close(pointer value) noexcept { ::CloseHandle(value); }
};

using UniqueWindow = UniqueAny<NullInvalidTraits<HWND, &::DestroyWindow, HandleKind::kUser>>;
using UniqueIcon = UniqueAny<NullInvalidTraits<HICON, &::DestroyIcon, HandleKind::kUser>>;
using UniqueCursor = UniqueAny<NullInvalidTraits<HCURSOR, &::DestroyCursor, HandleKind::kUser>>;
using UniqueMenu = UniqueAny<NullInvalidTraits<HMENU, &::DestroyMenu, HandleKind::kUser>>;
using UniqueDc = UniqueAny<NullInvalidTraits<HDC, &::DeleteDC, HandleKind::kGdi>>;  // CreateCompatibleDC
using UniqueKey = UniqueAny<NullInvalidTraits<HKEY, &::RegCloseKey, HandleKind::kKernel>>;
using UniqueHandle = UniqueAny<NullInvalidTraits<HANDLE, &::CloseHandle, HandleKind::kKernel>>;  // null on failure
using UniqueFile = UniqueAny<FileHandleTraits>;
using UniqueModule = UniqueAny<NullInvalidTraits<HMODULE, &::FreeLibrary, HandleKind::kKernel>>;  // LoadLibrary
template <class T>
using UniqueGdi = UniqueAny<NullInvalidTraits<T, &::DeleteObject, HandleKind::kGdi>>;
using UniqueBitmap = UniqueGdi<HBITMAP>;
using UniqueFont = UniqueGdi<HFONT>;

// A window's DC from GetDC, given back with ReleaseDC.
class WindowDc {
 public:
  explicit WindowDc(HWND window) noexcept : window_(window), dc_(::GetDC(window)) {
    if (dc_ != nullptr) handle_count::Taken(HandleKind::kGdi);
  }
  ~WindowDc() {
    if (dc_ == nullptr) return;
    ::ReleaseDC(window_, dc_);
    handle_count::Closed(HandleKind::kGdi);
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
  explicit PaintDc(HWND window) noexcept : window_(window) {
    dc_ = ::BeginPaint(window, &ps_);
    if (dc_ != nullptr) handle_count::Taken(HandleKind::kGdi);
  }
  ~PaintDc() {
    ::EndPaint(window_, &ps_);
    if (dc_ != nullptr) handle_count::Closed(HandleKind::kGdi);
  }
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
