// Live handle counts of the Win32 owners, and the side bar giving back every
// handle over many card rebuilds. Wine reports no GDI, USER or kernel object
// counts of its own, so the owners' counts are the only way to see a leak.
#include <gtest/gtest.h>

#include <iostream>
#include <memory>
#include <optional>
#include <string>
#include <vector>

#include "platform/platform.h"
#include "platform/win32/handles.h"
#include "platform/win32/registry_settings_store.h"
#include "platform/win32/wide_text.h"
#include "platform/win32/win32_clock.h"
#include "platform/win32/win32_devices.h"
#include "platform/win32/win32_files.h"
#include "platform/win32/win32_process.h"
#include "platform/win32/win32_resources.h"
#include "platform/win32/win32_shell.h"
#include "platform/win32/win32_system_info.h"
#include "shell/Form1.h"
#include "ui/win32/win32_ui.h"

namespace quillet::win32 {

std::ostream& operator<<(std::ostream& out, const HandleCounts& c) {
  return out << "{gdi " << c.gdi << ", user " << c.user << ", kernel " << c.kernel << "}";
}

namespace {

// Each owner counts its kind while it holds a handle, a move keeps one count,
// and a failed call counts nothing.
TEST(HandleCountTest, OwnersCountTheirKindWhileTheyHoldAHandle) {
  const HandleCounts before = LiveHandles();
  const auto plus = [&](long gdi, long user, long kernel) {
    return HandleCounts{before.gdi + gdi, before.user + user, before.kernel + kernel};
  };
  {
    UniqueGdi<HRGN> first(::CreateRectRgn(0, 0, 2, 2));
    const UniqueGdi<HRGN> second(std::move(first));
    const UniqueWindow window(::CreateWindowExW(0, L"STATIC", L"", WS_POPUP, 0, 0, 4, 4, nullptr, nullptr,
                                                ::GetModuleHandleW(nullptr), nullptr));
    UniqueKey key;
    ASSERT_EQ(::RegOpenKeyExW(HKEY_CURRENT_USER, L"Software", 0, KEY_READ, key.put()), ERROR_SUCCESS);
    EXPECT_EQ(LiveHandles(), plus(1, 1, 1));
    const UniqueFile missing(::CreateFileW(L"C:\\no\\such\\file", GENERIC_READ, 0, nullptr, OPEN_EXISTING, 0, nullptr));
    const UniqueFont no_font(::CreateFontIndirectW(nullptr));
    EXPECT_EQ(LiveHandles(), plus(1, 1, 1));
  }
  EXPECT_EQ(LiveHandles(), before);
}

// Message boxes would stop the test; none is expected.
class NoDialogs : public DialogService {
 public:
  int MessageBox(std::string_view text, int, std::string_view) override {
    shown.emplace_back(text);
    return kAnswerOk;
  }
  std::vector<std::string> shown;
};

// Three fixed drives, half, a fifth and a fiftieth free, that always answer
// at once: the prefix's own drives (Z: is the host's root) would make each
// refresh slow and its count depend on the machine.
class ThreeDrives : public DriveService {
 public:
  std::optional<std::string> LogicalDriveStrings() override { return std::string("C:\\\0D:\\\0E:\\\0\0", 13); }
  int DriveType(std::string_view) override { return kDriveFixed; }
  std::optional<FreeSpaceCounts> DiskFreeSpace(std::string_view drive) override {
    const std::uint32_t total = 250000;
    const char letter = drive.empty() ? 'C' : drive[0];
    return FreeSpaceCounts{8, 512, total / (letter == 'D' ? 5 : letter == 'E' ? 50 : 2), total};
  }
  std::optional<bool> IsReady(std::string_view) override { return true; }
  std::string VolumeLabel(std::string_view) override { return "DISK"; }
};

class NoSession : public SessionService {
 public:
  bool LockWorkStation() override { return false; }
};

class NoTray : public NotificationAreaService {
 public:
  bool NotifyIcon(int, const NotifyIconRecord&) override { return true; }
};

// The real services but for dialogs, drives, the session and the tray.
struct Services {
  RegistrySettingsStore settings;
  ThreeDrives drives;
  Win32Process process;
  Win32Clock clock;
  NoDialogs dialogs;
  Win32Files files;
  Win32Resources resources;
  Win32Shell shell;
  NoSession session;
  Win32Devices devices;
  Win32SystemInfo system;
  NoTray tray;
  Platform platform{settings, drives, process, clock, dialogs, files, resources, shell, session, devices, system, tray};
};

PicturePtr Solid(int width, int height, std::uint32_t argb) {
  return std::make_shared<const Picture>(
      Picture{width, height, std::vector<std::uint32_t>(static_cast<std::size_t>(width) * height, argb)});
}

constexpr std::uint32_t kCardArgb = 0xFF204878;
constexpr COLORREF kCardColour = RGB(0x20, 0x48, 0x78);

// The test program carries no art of its own: the form's picture sources are
// given opaque pictures of the art's sizes, so every card paints pictures.
void GiveArt(Form1& form) {
  form.ImageD(0).SetPicture(Solid(156, 48, kCardArgb));
  form.Image1.SetPicture(Solid(151, 7, 0xFF3080F0));
  form.Image2.SetPicture(Solid(151, 7, 0xFFF0A020));
  form.Image3.SetPicture(Solid(151, 7, 0xFFE02020));
  for (Image* icon : {&form.DC, &form.DD, &form.DCD, &form.DR}) icon->SetPicture(Solid(30, 30, 0xFFD0D0D0));
  form.Image5.SetPicture(Solid(21, 63, 0xFF404040));
  form.Image9.SetPicture(Solid(20, 20, 0xFF802020));
}

// The settings live under the test program's own name; each run starts and ends clean.
class SideBarHandlesTest : public ::testing::Test {
 protected:
  void SetUp() override { ::RegDeleteTreeW(HKEY_CURRENT_USER, kSettings); }
  void TearDown() override { ::RegDeleteTreeW(HKEY_CURRENT_USER, kSettings); }
  static constexpr const wchar_t* kSettings = L"Software\\VB and VBA Program Settings\\quillet_win_tests";
};

TEST_F(SideBarHandlesTest, AThousandCardRebuildsGiveBackEveryHandle) {
  constexpr int kRefreshes = 1000;
  const HandleCounts at_start = LiveHandles();
  {
    Services services;
    Win32Ui ui;
    Form1 form(ui, services.platform);
    GiveArt(form);
    ui.Guard([&] { form.Load(); });
    ASSERT_TRUE(form.Loaded());
    ui.Guard([&] { form.Show(); });
    // The test makes every refresh itself.
    form.Timer1.SetEnabled(false);
    form.Timer2.SetEnabled(false);
    const HWND window = ::FindWindowW(L"QuilletForm", Widen(form.Caption()).c_str());
    ASSERT_NE(window, nullptr);
    // A card rebuild: the drive list changes (C: hidden or shown), the cards
    // are unloaded and made again, and the window paints what came of it.
    const auto refresh = [&](bool hide_c) {
      form.Text3.SetText(hide_c ? "C:\\" : "");
      form.Command1.Press();
      ::RedrawWindow(window, nullptr, nullptr, RDW_INVALIDATE | RDW_UPDATENOW);
      ui.DoEvents();
      return form.CaptionL.Count() - 1;
    };
    ASSERT_EQ(refresh(false), 3);  // warm-up: fonts and buffers made once; three cards
    // The window takes drops from its first idle moment after painting on, loading ole32 and shell32 then.
    ::Sleep(50);
    ui.DoEvents();
    const HandleCounts warm = LiveHandles();
    int rebuilt = 0;
    for (int i = 1; i <= kRefreshes; ++i) {
      const bool hide_c = i % 2 == 1;
      if (refresh(hide_c) == (hide_c ? 2 : 3)) ++rebuilt;
    }
    const HandleCounts after = LiveHandles();
    std::cout << "live handles: at start " << at_start << ", after the warm-up " << warm << ", after "
              << kRefreshes << " rebuilds " << after << "\n";
    EXPECT_EQ(rebuilt, kRefreshes) << "refreshes whose card count followed the hidden drive";
    EXPECT_EQ(after, warm);
    EXPECT_TRUE(services.dialogs.shown.empty()) << services.dialogs.shown.front();

    // What was drawn last: the first card's picture below its text, opaque.
    const WindowDc dc(window);
    const COLORREF below_text = ::GetPixel(dc.get(), 150, 81);
    EXPECT_EQ(below_text, kCardColour) << std::hex << "pixel (150, 81) is 0x" << below_text;
    ui.Guard([&] { form.Unload(); });
  }
  EXPECT_EQ(LiveHandles(), at_start) << "after the form and the host are gone";
}

}  // namespace
}  // namespace quillet::win32
