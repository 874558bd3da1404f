// Icons and shortcut targets from the real shell, with files made in the
// prefix's temporary folder.
#include <gtest/gtest.h>

#include <algorithm>
#include <cstdint>
#include <cstdio>
#include <cstdlib>
#include <functional>
#include <memory>
#include <optional>
#include <string>
#include <vector>

#include "platform/win32/handles.h"
#include "platform/win32/wide_text.h"
#include "platform/win32/win32_shell.h"

#include <shobjidl.h>

namespace quillet::win32 {
namespace {

constexpr CLSID kClsidShellLink = {0x00021401, 0x0000, 0x0000, {0xC0, 0, 0, 0, 0, 0, 0, 0x46}};
constexpr IID kIidShellLinkW = {0x000214F9, 0x0000, 0x0000, {0xC0, 0, 0, 0, 0, 0, 0, 0x46}};
constexpr IID kIidPersistFile = {0x0000010B, 0x0000, 0x0000, {0xC0, 0, 0, 0, 0, 0, 0, 0x46}};
const char kNotepad[] = "C:\\windows\\notepad.exe";

std::string TempFolder() {
  wchar_t temp[MAX_PATH] = {};
  const DWORD n = ::GetTempPathW(MAX_PATH, temp);
  return Narrow(std::wstring(temp, n));
}

std::string OwnPath() {
  wchar_t path[MAX_PATH] = {};
  const DWORD n = ::GetModuleFileNameW(nullptr, path, MAX_PATH);
  return Narrow(std::wstring(path, n));
}

bool UnderWine() { return ::GetProcAddress(::GetModuleHandleW(L"ntdll.dll"), "wine_get_version") != nullptr; }

void WriteBytes(const std::string& path, const std::vector<std::uint8_t>& bytes) {
  const UniqueFile file(::CreateFileW(Widen(path).c_str(), GENERIC_WRITE, 0, nullptr, CREATE_ALWAYS,
                                      FILE_ATTRIBUTE_NORMAL, nullptr));
  ASSERT_TRUE(file);
  DWORD written = 0;
  ASSERT_TRUE(::WriteFile(file.get(), bytes.data(), static_cast<DWORD>(bytes.size()), &written, nullptr));
}

std::uint32_t Alpha(std::uint32_t pixel) { return pixel >> 24; }

// ------------------------------------------------------------------ icons

void Put16(std::vector<std::uint8_t>& bytes, std::uint32_t value) {
  bytes.push_back(static_cast<std::uint8_t>(value));
  bytes.push_back(static_cast<std::uint8_t>(value >> 8));
}
void Put32(std::vector<std::uint8_t>& bytes, std::uint32_t value) {
  Put16(bytes, value & 0xFFFF);
  Put16(bytes, value >> 16);
}

// An icon file of one 32 x 32 image: 32 bits with alpha when `bits` is 32,
// else 24 bits whose see-through pixels are set in the AND mask. `pixel`
// gives each pixel as 0xAARRGGBB, rows from the top.
std::vector<std::uint8_t> IconFile(int bits, const std::function<std::uint32_t(int x, int y)>& pixel) {
  constexpr int kSize = 32;
  const int colour_row = (kSize * bits / 8 + 3) / 4 * 4, mask_row = 4;
  std::vector<std::uint8_t> image;
  for (std::uint32_t field : {40u, std::uint32_t{kSize}, std::uint32_t{kSize * 2}}) Put32(image, field);
  Put16(image, 1);
  Put16(image, static_cast<std::uint32_t>(bits));
  for (int i = 0; i < 6; ++i) Put32(image, 0);
  for (int y = kSize; y-- > 0;) {
    for (int x = 0; x < kSize; ++x) {
      const std::uint32_t p = pixel(x, y);
      for (int shift = 0; shift < bits; shift += 8) image.push_back(static_cast<std::uint8_t>(p >> shift));
    }
    image.resize(image.size() + static_cast<std::size_t>(colour_row - kSize * bits / 8), 0);
  }
  for (int y = kSize; y-- > 0;) {
    std::uint32_t mask = 0;  // the leftmost pixel in the top bit of the first byte
    for (int x = 0; x < kSize; ++x)
      if (Alpha(pixel(x, y)) == 0) mask |= 0x80u >> (x % 8) << (x / 8 * 8);
    for (int i = 0; i < mask_row; ++i) image.push_back(static_cast<std::uint8_t>(mask >> (8 * i)));
  }
  std::vector<std::uint8_t> file;
  Put16(file, 0);
  Put16(file, 1);  // an icon
  Put16(file, 1);  // one image
  file.insert(file.end(), {kSize, kSize, 0, 0});
  Put16(file, 1);
  Put16(file, static_cast<std::uint32_t>(bits));
  Put32(file, static_cast<std::uint32_t>(image.size()));
  Put32(file, 22);
  file.insert(file.end(), image.begin(), image.end());
  return file;
}

// Each channel and alpha within `slack` of the expected pixel.
::testing::AssertionResult Near(std::uint32_t actual, std::uint32_t expected, int slack) {
  for (int shift : {0, 8, 16, 24}) {
    const int a = static_cast<int>((actual >> shift) & 0xFF), e = static_cast<int>((expected >> shift) & 0xFF);
    if (std::abs(a - e) > slack) {
      char text[64];
      std::snprintf(text, sizeof text, "0x%08X is not near 0x%08X", static_cast<unsigned>(actual),
                    static_cast<unsigned>(expected));
      return ::testing::AssertionFailure() << text;
    }
  }
  return ::testing::AssertionSuccess();
}

struct QuadrantIcon {
  const char* what;
  int bits;
  std::uint32_t quadrants[4];  // top left, top right, bottom left, bottom right
  std::uint32_t rendered[4];   // what comes back, straight alpha
};

const QuadrantIcon kQuadrantIcons[] = {
    {"32 bits with alpha",
     32,
     {0xFFFF0000u, 0x8000FF00u, 0x00123456u, 0x400000FFu},
     {0xFFFF0000u, 0x8000FF00u, 0u, 0x400000FFu}},
    {"24 bits with an AND mask",
     24,
     {0xFF123456u, 0x00000000u, 0xFFFFFFFFu, 0x00000000u},
     {0xFF123456u, 0u, 0xFFFFFFFFu, 0u}},
};

TEST(Win32ShellTest, RenderGivesStraightAlphaForBothKindsOfIcon) {
  Win32Shell shell;
  for (const QuadrantIcon& c : kQuadrantIcons) {
    SCOPED_TRACE(c.what);
    std::string path = TempFolder() + "quillet quadrants.ico";
    WriteBytes(path, IconFile(c.bits, [&](int x, int y) { return c.quadrants[(y >= 16) * 2 + (x >= 16)]; }));
    const std::string written = path;
    const std::unique_ptr<ShellIcon> icon = shell.ExtractAssociatedIcon(path);
    ASSERT_NE(icon, nullptr);
    EXPECT_EQ(path, written);
    const std::vector<std::uint32_t> pixels = icon->Render(32, 32);
    ASSERT_EQ(pixels.size(), 32u * 32u);
    for (int q = 0; q < 4; ++q) {
      SCOPED_TRACE(q);
      const int x = (q % 2) * 16 + 8, y = (q / 2) * 16 + 8;
      EXPECT_TRUE(Near(pixels[static_cast<std::size_t>(y * 32 + x)], c.rendered[q], 3));
    }
    ::DeleteFileW(Widen(path).c_str());
  }
}

TEST(Win32ShellTest, AProgramsIconStretchesToTheSlotWithSeeThroughPixels) {
  Win32Shell shell;
  std::string path = kNotepad;
  const std::unique_ptr<ShellIcon> icon = shell.ExtractAssociatedIcon(path);
  ASSERT_NE(icon, nullptr);
  EXPECT_EQ(path, kNotepad);
  const std::vector<std::uint32_t> pixels = icon->Render(29, 29);
  ASSERT_EQ(pixels.size(), 29u * 29u);
  const auto opaque = std::count_if(pixels.begin(), pixels.end(), [](std::uint32_t p) { return Alpha(p) == 255; });
  const auto clear = std::count(pixels.begin(), pixels.end(), 0u);
  EXPECT_GT(opaque, 29 * 29 / 4);
  EXPECT_GT(clear, 0);
  // See-through pixels carry no colour.
  EXPECT_TRUE(std::all_of(pixels.begin(), pixels.end(), [](std::uint32_t p) { return Alpha(p) != 0 || p == 0; }));

  EXPECT_EQ(icon->Render(48, 16).size(), 48u * 16u);
  EXPECT_TRUE(icon->Render(0, 29).empty());
  EXPECT_TRUE(icon->Render(29, -1).empty());
}

// With no icon in the file and no program to open it, the call looks in the
// module it is given (this program) and writes that module's path.
TEST(Win32ShellTest, NoIconGivesNullAndTheCallersOwnPath) {
  Win32Shell shell;
  for (std::string path : {std::string("C:\\no\\such.xyz"), std::string(""), std::string("C:\\windows")}) {
    SCOPED_TRACE(path);
    EXPECT_EQ(shell.ExtractAssociatedIcon(path), nullptr);
    EXPECT_EQ(path, OwnPath());
  }
}

// Windows gives a document the icon and path of the program that opens it.
// Wine 8 reads no icon from a text file and never asks for its program: a
// document fares as a missing file there.
TEST(Win32ShellTest, ADocumentGivesTheIconOfItsProgramOnWindowsOnly) {
  Win32Shell shell;
  const std::string document = TempFolder() + "quillet note.txt";
  WriteBytes(document, {'h', 'i'});
  std::string path = document;
  const std::unique_ptr<ShellIcon> icon = shell.ExtractAssociatedIcon(path);
  if (UnderWine()) {
    EXPECT_EQ(icon, nullptr);
    EXPECT_EQ(path, OwnPath());
  } else {
    EXPECT_NE(icon, nullptr);
    EXPECT_NE(path, document);
  }
  ::DeleteFileW(Widen(document).c_str());
}

// -------------------------------------------------------------- shortcuts

template <class Fn>
Fn OleFunction(HMODULE ole32, const char* name) {
  return reinterpret_cast<Fn>(reinterpret_cast<void*>(::GetProcAddress(ole32, name)));
}

template <class T>
class ComRef {
 public:
  ComRef() = default;
  ~ComRef() {
    if (object_ != nullptr) object_->Release();
  }
  ComRef(const ComRef&) = delete;
  ComRef& operator=(const ComRef&) = delete;
  void** put() { return reinterpret_cast<void**>(&object_); }
  T* operator->() const { return object_; }

 private:
  T* object_ = nullptr;
};

// COM on this thread with `model`, ended with the object when it was started.
class Com {
 public:
  explicit Com(DWORD model) : ole32_(::LoadLibraryW(L"ole32.dll")) {
    result_ = OleFunction<HRESULT(WINAPI*)(LPVOID, DWORD)>(ole32_.get(), "CoInitializeEx")(nullptr, model);
  }
  ~Com() {
    if (SUCCEEDED(result_)) OleFunction<void(WINAPI*)()>(ole32_.get(), "CoUninitialize")();
  }
  Com(const Com&) = delete;
  Com& operator=(const Com&) = delete;
  [[nodiscard]] HRESULT result() const { return result_; }
  [[nodiscard]] HMODULE ole32() const { return ole32_.get(); }

 private:
  UniqueModule ole32_;
  HRESULT result_ = E_FAIL;
};

void MakeShortcut(const std::string& shortcut, const std::string& target) {
  const Com com(COINIT_APARTMENTTHREADED);
  const auto create =
      OleFunction<HRESULT(WINAPI*)(REFCLSID, LPUNKNOWN, DWORD, REFIID, LPVOID*)>(com.ole32(), "CoCreateInstance");
  ComRef<IShellLinkW> link;
  ComRef<IPersistFile> file;
  ASSERT_EQ(create(kClsidShellLink, nullptr, CLSCTX_INPROC_SERVER, kIidShellLinkW, link.put()), S_OK);
  ASSERT_EQ(link->SetPath(Widen(target).c_str()), S_OK);
  ASSERT_EQ(link->QueryInterface(kIidPersistFile, file.put()), S_OK);
  ASSERT_EQ(file->Save(Widen(shortcut).c_str(), TRUE), S_OK);
}

DWORD WINAPI RunBody(LPVOID body) {
  (*static_cast<const std::function<void()>*>(body))();
  return 0;
}

// Runs `body` on a thread of its own, whose COM starts unset.
void OnNewThread(const std::function<void()>& body) {
  const UniqueHandle thread(
      ::CreateThread(nullptr, 0, &RunBody, const_cast<std::function<void()>*>(&body), 0, nullptr));
  ASSERT_TRUE(thread);
  ::WaitForSingleObject(thread.get(), INFINITE);
}

class Win32ShellShortcutTest : public ::testing::Test {
 protected:
  void SetUp() override { MakeShortcut(shortcut_, kNotepad); }
  void TearDown() override { ::DeleteFileW(Widen(shortcut_).c_str()); }
  const std::string shortcut_ = TempFolder() + "quillet notepad \xC3\xA9.lnk";
};

TEST_F(Win32ShellShortcutTest, AShortcutGivesItsTargetAndAnythingElseNothing) {
  Win32Shell shell;
  EXPECT_EQ(shell.ShortcutTarget(shortcut_), kNotepad);
  EXPECT_EQ(shell.ShortcutTarget(TempFolder() + "quillet no such.lnk"), "");
  EXPECT_EQ(shell.ShortcutTarget(kNotepad), "");
  EXPECT_EQ(shell.ShortcutTarget(""), "");
}

// Whatever COM the calling thread has, the call reads the shortcut and
// leaves that COM as it found it.
TEST_F(Win32ShellShortcutTest, TheCallersComIsLeftAsItWas) {
  struct Case {
    const char* what;
    DWORD before;  // the caller's threading model; ~0 for no COM
    HRESULT after_in_model;  // COM started anew in that model afterwards
  };
  const DWORD kNone = ~DWORD{0};
  const Case cases[] = {
      {"no COM: started and ended by the call", kNone, S_OK},
      {"a single-threaded apartment stays", COINIT_APARTMENTTHREADED, S_FALSE},
      {"a multi-threaded one stays", COINIT_MULTITHREADED, S_FALSE},
  };
  for (const Case& c : cases) {
    SCOPED_TRACE(c.what);
    std::string target;
    HRESULT after = E_FAIL;
    OnNewThread([&] {
      std::optional<Com> caller;
      if (c.before != kNone) caller.emplace(c.before);
      Win32Shell shell;
      target = shell.ShortcutTarget(shortcut_);
      const Com again(c.before == kNone ? DWORD{COINIT_APARTMENTTHREADED} : c.before);
      after = again.result();
    });
    EXPECT_EQ(target, kNotepad);
    EXPECT_EQ(after, c.after_in_model);
  }
}

}  // namespace
}  // namespace quillet::win32
