// Forms made real by the Win32 host: styles, place, caption, mouse and closing.
#include <gtest/gtest.h>

#include <cmath>
#include <string>

#include "platform/win32/handles.h"
#include "shell/Form1.h"
#include "ui/form.h"
#include "ui/visual.h"
#include "ui/win32/win32_ui.h"

namespace quillet::win32 {
namespace {

int ScreenDpi() {
  const WindowDc screen(nullptr);
  return ::GetDeviceCaps(screen.get(), LOGPIXELSX);
}

// The side bar's own window, under another name so each test finds its own.
FormArgs SideBarArgs(const std::string& name) {
  FormArgs args = Form1::WindowArgs();
  args.name = name;
  return args;
}

// The title text is the form's caption at creation: a unique one finds the window.
HWND LoadAndFind(Form& form) {
  form.SetCaption("QuilletWineTest." + form.Name());
  form.Load();
  const std::wstring title(form.Caption().begin(), form.Caption().end());
  return ::FindWindowW(L"QuilletForm", title.c_str());
}

// The window stands where its twips say at the screen DPI.
void ExpectPlace(HWND hwnd, const TwipsRect& twips) {
  const double dpi = ScreenDpi();
  const auto px = [dpi](int t) { return static_cast<LONG>(std::lround(t * dpi / 1440.0)); };
  RECT r{};
  ASSERT_TRUE(::GetWindowRect(hwnd, &r));
  EXPECT_EQ(r.left, px(twips.left));
  EXPECT_EQ(r.top, px(twips.top));
  EXPECT_EQ(r.right - r.left, px(twips.width));
  EXPECT_EQ(r.bottom - r.top, px(twips.height));
}

TEST(PixelScaleTest, TwipsPerPixelComeFromTheDpi) {
  struct Case {
    int dpi, twips, pixels;
  };
  for (const Case c : {Case{96, 1320, 88}, Case{96, 5655, 377}, Case{96, 2350, 157}, Case{96, 14, 1},
                       Case{96, 7, 0}, Case{144, 1440, 144}, Case{144, 2350, 235}, Case{120, 2350, 196},
                       Case{96, -15, -1}}) {
    const PixelScale scale(c.dpi);
    EXPECT_EQ(scale.ToPixels(c.twips), c.pixels) << c.dpi << " dpi, " << c.twips << " twips";
  }
  EXPECT_EQ(PixelScale(96).ToTwips(88), 1320);
  EXPECT_EQ(PixelScale(144).ToTwips(88), 880);
  // A window keeps its pixel width wherever it stands.
  const PixelScale scale(96);
  for (int left : {0, 7, 8, 1320, 1327})
    EXPECT_EQ(scale.ToWindowRect({left, 0, 2350, 100}).right - scale.ToWindowRect({left, 0, 2350, 100}).left, 157);
  EXPECT_EQ(PixelScale::FromScreen().Dpi(), ScreenDpi());
  Win32Ui ui;
  const ScreenInfo screen = ui.Screen();
  EXPECT_EQ(screen.twips_per_pixel, 1440.0 / ScreenDpi());
  EXPECT_NEAR(screen.width_twips, ::GetSystemMetrics(SM_CXSCREEN) * screen.twips_per_pixel, 1.0);
}

// The side bar keys its form as it is built, before there is a window; a key
// set later reaches the window all the same. A plain form keeps its title bar.
TEST(FormWindowTest, StyleKeyPlaceAndCaptionFollowTheForm) {
  enum Key { kNone, kFirst, kLater };
  struct Case {
    const char* name;
    bool side_bar;
    Key key;
  };
  for (const Case c : {Case{"KeyForm", true, kFirst}, Case{"LateKeyForm", true, kLater},
                       Case{"PlainForm", false, kNone}}) {
    SCOPED_TRACE(c.name);
    Win32Ui ui;
    Form form(ui, c.side_bar ? SideBarArgs(c.name) : FormArgs{c.name, {600, 600, 3000, 2000}});
    if (c.key == kFirst) form.SetColourKey(kKeyColour);
    const HWND hwnd = LoadAndFind(form);
    ASSERT_NE(hwnd, nullptr);
    if (c.key == kLater) form.SetColourKey(kKeyColour);
    const auto style = static_cast<DWORD>(::GetWindowLongPtrW(hwnd, GWL_STYLE));
    const auto ex_style = static_cast<DWORD>(::GetWindowLongPtrW(hwnd, GWL_EXSTYLE));
    EXPECT_EQ(style & (WS_POPUP | WS_CAPTION | WS_SYSMENU),
              static_cast<DWORD>(c.side_bar ? WS_POPUP : WS_CAPTION | WS_SYSMENU));
    EXPECT_EQ(ex_style & (WS_EX_LAYERED | WS_EX_TOOLWINDOW),
              static_cast<DWORD>(c.side_bar ? WS_EX_LAYERED | WS_EX_TOOLWINDOW : 0));
    COLORREF key = 0;
    DWORD flags = 0;
    if (c.key != kNone) {
      ASSERT_TRUE(::GetLayeredWindowAttributes(hwnd, &key, nullptr, &flags));
      EXPECT_TRUE(flags & LWA_COLORKEY);
      EXPECT_EQ(key, RGB(0xC0, 0x00, 0xC0));
    }
    ExpectPlace(hwnd, form.Bounds());
    form.Move({2880, 1440, 2640, 1500});
    ExpectPlace(hwnd, {2880, 1440, 2640, 1500});
    form.SetCaption("4");
    wchar_t text[16] = {};
    ::GetWindowTextW(hwnd, text, 16);
    EXPECT_STREQ(text, L"4");
    form.SetCaption("");
    EXPECT_EQ(::GetWindowTextLengthW(hwnd), 0);
    // Shown and hidden once: under Wine a hide waits 2 s for a window manager.
    if (c.key != kFirst) continue;
    EXPECT_FALSE(::IsWindowVisible(hwnd));
    form.Show();
    EXPECT_TRUE(::IsWindowVisible(hwnd));
    form.Hide();
    EXPECT_FALSE(::IsWindowVisible(hwnd));
  }
}

TEST(FormWindowTest, MouseReachesTheControlInTwipsAndAClickFollows) {
  Win32Ui ui;
  Form form(ui, SideBarArgs("MouseForm"));
  Label target("Target", {300, 150, 1500, 600}, "x");
  form.AddVisual(target);
  MouseArgs down{}, moved{};
  int clicks = 0;
  target.on_mouse_down = [&](const MouseArgs& a) { down = a; };
  target.on_mouse_move = [&](const MouseArgs& a) { moved = a; };
  target.on_click = [&] { ++clicks; };
  const HWND hwnd = LoadAndFind(form);
  ASSERT_NE(hwnd, nullptr);
  const PixelScale& scale = ui.Scale();
  const int x = scale.ToPixels(600), y = scale.ToPixels(450);
  ::SendMessageW(hwnd, WM_MOUSEMOVE, MK_RBUTTON | MK_CONTROL, MAKELPARAM(x, y));
  EXPECT_EQ(moved.button, kRightButton);
  EXPECT_EQ(moved.shift, 2);
  ::SendMessageW(hwnd, WM_LBUTTONDOWN, MK_LBUTTON | MK_SHIFT, MAKELPARAM(x, y));
  EXPECT_EQ(down.button, kLeftButton);
  EXPECT_EQ(down.shift, 1);
  EXPECT_EQ(down.x, scale.ToTwips(x) - 300);  // relative to the control
  EXPECT_EQ(down.y, scale.ToTwips(y) - 150);
  EXPECT_EQ(::GetCapture(), hwnd);
  ::SendMessageW(hwnd, WM_LBUTTONUP, 0, MAKELPARAM(x, y));
  EXPECT_EQ(clicks, 1);
  EXPECT_NE(::GetCapture(), hwnd);
  form.RemoveVisual(target);
}

// Closing from the system asks the form; a form that unloads itself there
// destroys its own window in the middle of the message.
TEST(FormWindowTest, CloseAsksTheFormAndAnUnloadInsideDestroysTheWindow) {
  struct Refusing : Form {
    using Form::Form;
    int asked = 0;
    bool refuse = true;
    void Form_Close() override {
      ++asked;
      if (!refuse) Unload();
    }
  };
  Win32Ui ui;
  Refusing form(ui, SideBarArgs("ClosingForm"));
  const HWND hwnd = LoadAndFind(form);
  ASSERT_NE(hwnd, nullptr);
  ::SendMessageW(hwnd, WM_CLOSE, 0, 0);
  EXPECT_EQ(form.asked, 1);
  EXPECT_TRUE(::IsWindow(hwnd));
  form.refuse = false;
  ::SendMessageW(hwnd, WM_CLOSE, 0, 0);
  EXPECT_EQ(form.asked, 2);
  EXPECT_FALSE(form.Loaded());
  EXPECT_FALSE(::IsWindow(hwnd));
}

}  // namespace
}  // namespace quillet::win32
