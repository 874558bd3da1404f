#include "platform/win32/win32_shell.h"

#include <algorithm>
#include <cstdint>
#include <optional>
#include <vector>

#include "platform/win32/wide_text.h"
#include "platform/win32/win32.h"

#include <shobjidl.h>

namespace quillet::win32 {
namespace {

// Spelled here so that no import library (uuid, ole32) is needed.
constexpr CLSID kClsidShellLink = {0x00021401, 0x0000, 0x0000, {0xC0, 0, 0, 0, 0, 0, 0, 0x46}};
constexpr IID kIidShellLinkW = {0x000214F9, 0x0000, 0x0000, {0xC0, 0, 0, 0, 0, 0, 0, 0x46}};
constexpr IID kIidPersistFile = {0x0000010B, 0x0000, 0x0000, {0xC0, 0, 0, 0, 0, 0, 0, 0x46}};

template <class Fn>
Fn Cast(FARPROC function) noexcept {
  return reinterpret_cast<Fn>(reinterpret_cast<void*>(function));
}

// Owns one reference to a COM object.
template <class T>
class ComRef {
 public:
  ComRef() noexcept = default;
  ~ComRef() {
    if (object_ != nullptr) object_->Release();
  }
  ComRef(const ComRef&) = delete;
  ComRef& operator=(const ComRef&) = delete;
  [[nodiscard]] void** put() noexcept { return reinterpret_cast<void**>(&object_); }
  [[nodiscard]] T* operator->() const noexcept { return object_; }
  explicit operator bool() const noexcept { return object_ != nullptr; }

 private:
  T* object_ = nullptr;
};

// COM on this thread for as long as the object lives. Another owner may have
// started it with another threading model (RPC_E_CHANGED_MODE): it is then
// used as it is and not ended here.
class ComApartment {
 public:
  using Initialize = HRESULT(WINAPI*)(LPVOID, DWORD);
  using Uninitialize = void(WINAPI*)();
  ComApartment(Initialize initialize, Uninitialize uninitialize) noexcept {
    const HRESULT result = initialize(nullptr, COINIT_APARTMENTTHREADED);
    if (result == S_OK || result == S_FALSE) uninitialize_ = uninitialize;
  }
  ~ComApartment() {
    if (uninitialize_ != nullptr) uninitialize_();
  }
  ComApartment(const ComApartment&) = delete;
  ComApartment& operator=(const ComApartment&) = delete;

 private:
  Uninitialize uninitialize_ = nullptr;
};

// A 32-bit top-down DIB section selected into a memory DC.
class PixelCanvas {
 public:
  PixelCanvas(int width, int height) noexcept : dc_(::CreateCompatibleDC(nullptr)) {
    BITMAPINFO info{};
    info.bmiHeader.biSize = sizeof info.bmiHeader;
    info.bmiHeader.biWidth = width;
    info.bmiHeader.biHeight = -height;
    info.bmiHeader.biPlanes = 1;
    info.bmiHeader.biBitCount = 32;
    info.bmiHeader.biCompression = BI_RGB;
    void* bits = nullptr;
    bitmap_.reset(::CreateDIBSection(dc_.get(), &info, DIB_RGB_COLORS, &bits, nullptr, 0));
    if (dc_ && bitmap_) {
      selected_.emplace(dc_.get(), bitmap_.get());
      bits_ = static_cast<std::uint32_t*>(bits);
      count_ = static_cast<std::size_t>(width) * static_cast<std::size_t>(height);
    }
  }
  [[nodiscard]] HDC dc() const noexcept { return dc_.get(); }
  // Null when the canvas could not be made.
  [[nodiscard]] std::uint32_t* begin() const noexcept { return bits_; }
  [[nodiscard]] std::uint32_t* end() const noexcept { return bits_ + count_; }

 private:
  UniqueDc dc_;
  UniqueBitmap bitmap_;
  // Last, so it goes first: the bitmap leaves the DC before either is deleted.
  std::optional<ScopedSelectObject> selected_;
  std::uint32_t* bits_ = nullptr;
  std::size_t count_ = 0;
};

// The icon drawn over a ground of one colour; empty when GDI failed.
std::vector<std::uint32_t> DrawnOver(HICON icon, int width, int height, std::uint32_t ground) {
  const PixelCanvas canvas(width, height);
  if (canvas.begin() == nullptr) return {};
  std::fill(canvas.begin(), canvas.end(), ground);
  if (!::DrawIconEx(canvas.dc(), 0, 0, icon, width, height, 0, nullptr, DI_NORMAL)) return {};
  ::GdiFlush();
  return {canvas.begin(), canvas.end()};
}

std::uint32_t Byte(std::uint32_t pixel, int shift) { return (pixel >> shift) & 0xFF; }

// What lets a white ground through more than a black one is see-through by
// as much; the colour over black is the colour times its alpha.
std::uint32_t StraightPixel(std::uint32_t over_black, std::uint32_t over_white) {
  int through = 0;
  for (int shift : {0, 8, 16})
    through += static_cast<int>(Byte(over_white, shift)) - static_cast<int>(Byte(over_black, shift));
  const int alpha = std::clamp(255 - (through + 1) / 3, 0, 255);
  if (alpha == 0) return 0;
  std::uint32_t pixel = static_cast<std::uint32_t>(alpha) << 24;
  for (int shift : {0, 8, 16}) {
    const auto channel = static_cast<int>((Byte(over_black, shift) * 255 + alpha / 2) / alpha);
    pixel |= static_cast<std::uint32_t>(std::min(channel, 255)) << shift;
  }
  return pixel;
}

class Win32ShellIcon final : public ShellIcon {
 public:
  explicit Win32ShellIcon(HICON icon) noexcept : icon_(icon) {}

  std::vector<std::uint32_t> Render(int width, int height) const override {
    if (width <= 0 || height <= 0) return {};
    const std::vector<std::uint32_t> black = DrawnOver(icon_.get(), width, height, 0x000000);
    const std::vector<std::uint32_t> white = DrawnOver(icon_.get(), width, height, 0xFFFFFF);
    if (black.empty() || white.size() != black.size()) return {};
    std::vector<std::uint32_t> pixels(black.size());
    for (std::size_t i = 0; i < pixels.size(); ++i) pixels[i] = StraightPixel(black[i], white[i]);
    return pixels;
  }

 private:
  UniqueIcon icon_;
};

}  // namespace

FARPROC Win32Shell::Function(const char* name) {
  if (!shell32_) shell32_.reset(::LoadLibraryW(L"shell32.dll"));
  return shell32_ ? ::GetProcAddress(shell32_.get(), name) : nullptr;
}

FARPROC Win32Shell::Ole(const char* name) {
  if (!ole32_) ole32_.reset(::LoadLibraryW(L"ole32.dll"));
  return ole32_ ? ::GetProcAddress(ole32_.get(), name) : nullptr;
}

bool Win32Shell::ShellExecute(std::string_view operation, std::string_view file, std::string_view parameters,
                              std::string_view directory, int show) {
  using ShellExecuteFn = HINSTANCE(WINAPI*)(HWND, LPCWSTR, LPCWSTR, LPCWSTR, LPCWSTR, INT);
  const auto shell_execute = Cast<ShellExecuteFn>(Function("ShellExecuteW"));
  if (shell_execute == nullptr) return false;
  const std::wstring verb = Widen(operation), target = Widen(file), params = Widen(parameters),
                     folder = Widen(directory);
  const HINSTANCE result =
      shell_execute(nullptr, verb.empty() ? nullptr : verb.c_str(), target.c_str(),
                    params.empty() ? nullptr : params.c_str(), folder.empty() ? nullptr : folder.c_str(), show);
  // Values above 32 mean success.
  return reinterpret_cast<INT_PTR>(result) > 32;
}

bool Win32Shell::RunCommandLine(std::string_view command_line, int show) {
  std::wstring line = Widen(command_line);
  STARTUPINFOW startup{};
  startup.cb = sizeof startup;
  startup.dwFlags = STARTF_USESHOWWINDOW;
  startup.wShowWindow = static_cast<WORD>(show);
  PROCESS_INFORMATION started{};
  if (!::CreateProcessW(nullptr, line.data(), nullptr, nullptr, FALSE, 0, nullptr, nullptr, &startup, &started))
    return false;
  const UniqueHandle process(started.hProcess), thread(started.hThread);
  return true;
}

std::unique_ptr<ShellIcon> Win32Shell::ExtractAssociatedIcon(std::string& path) {
  using ExtractFn = HICON(WINAPI*)(HINSTANCE, LPWSTR, WORD*);
  const auto extract = Cast<ExtractFn>(Function("ExtractAssociatedIconW"));
  if (extract == nullptr) return nullptr;
  // The call may write a path of up to MAX_PATH characters over the one given.
  std::wstring buffer = Widen(path);
  buffer.resize(std::max<std::size_t>(buffer.size() + 1, MAX_PATH + 1), L'\0');
  WORD index = 0;
  const HICON icon = extract(::GetModuleHandleW(nullptr), buffer.data(), &index);
  path = Narrow(buffer.c_str());
  // 1 is how the shell's icon calls say "a file without icons"; it is no handle.
  if (reinterpret_cast<UINT_PTR>(icon) <= 1) return nullptr;
  return std::make_unique<Win32ShellIcon>(icon);
}

std::string Win32Shell::ShortcutTarget(std::string_view path) {
  const auto initialize = Cast<ComApartment::Initialize>(Ole("CoInitializeEx"));
  const auto uninitialize = Cast<ComApartment::Uninitialize>(Ole("CoUninitialize"));
  const auto create = Cast<HRESULT(WINAPI*)(REFCLSID, LPUNKNOWN, DWORD, REFIID, LPVOID*)>(Ole("CoCreateInstance"));
  if (initialize == nullptr || uninitialize == nullptr || create == nullptr) return {};
  const ComApartment apartment(initialize, uninitialize);
  ComRef<IShellLinkW> link;
  ComRef<IPersistFile> file;
  if (FAILED(create(kClsidShellLink, nullptr, CLSCTX_INPROC_SERVER, kIidShellLinkW, link.put()))) return {};
  if (FAILED(link->QueryInterface(kIidPersistFile, file.put()))) return {};
  if (FAILED(file->Load(Widen(path).c_str(), STGM_READ))) return {};
  wchar_t target[MAX_PATH] = {};
  WIN32_FIND_DATAW found{};
  // No flags: environment strings expanded, the long form, a path that can be started as it is.
  if (link->GetPath(target, MAX_PATH, &found, 0) != S_OK) return {};
  return Narrow(target);
}

}  // namespace quillet::win32
