#include "widgets/ucAniGIF.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <array>
#include <climits>
#include <fstream>
#include <functional>
#include <iterator>
#include <memory>
#include <tuple>

#include "fakes/fake_platform.h"
#include "headless/headless_ui.h"
#include "headless/recording_painter.h"
#include "widgets/gif/gif_test_bytes.h"

namespace quillet {
namespace {

using gif_test::Bytes;
using gif_test::Solid;
using gif_test::TestImage;
using testing::RecordingPainter;
using testing::VirtualTimers;
using Changes = std::vector<std::int32_t>;

constexpr std::uint32_t kRed = 0xFFFF0000u, kGreen = 0xFF00FF00u, kBlue = 0xFF0000FFu;

struct FrameSpec {
  TestImage image;
  std::uint16_t delay = 10;  // hundredths
  int disposal = 0;
  std::optional<std::uint8_t> transparent{};
};

// On a screen of red, green, blue and white.
Bytes Gif(const std::vector<FrameSpec>& frames, std::optional<std::uint16_t> loops = {}, std::uint16_t screen = 4) {
  gif_test::GifWriter w;
  w.Screen(screen, screen, {0xFF0000, 0x00FF00, 0x0000FF, 0xFFFFFF});
  if (loops) w.Netscape(*loops);
  for (const auto& f : frames) w.GraphicControl(f.disposal, f.delay, f.transparent).Image(f.image);
  return w.Trailer().Get();
}

Bytes FourFrames(std::optional<std::uint16_t> loops, std::uint16_t delay = 10) {
  std::vector<FrameSpec> frames;
  for (std::uint8_t i = 0; i < 4; ++i) frames.push_back({Solid(4, 4, i), delay});
  return Gif(frames, loops);
}

// Two opaque frames kept on each other: they are composed on a canvas.
Bytes CanvasGif(int second_left, int second_top, int width, int height) {
  return Gif({{Solid(width, height, 0), 10, 1}, {Solid(width, height, 1, second_left, second_top), 10, 1}}, {}, 1);
}

struct Player {
  VirtualTimers timers;
  ucAniGIF gif;
  Changes changes;
  int done = 0;
  explicit Player(int delay_animation = 1, TwipsRect bounds = {0, 0, 1500, 1500}) : gif(timers, {"ucAniGIF1", bounds}) {
    gif.SetDelayAnimation(delay_animation);
    gif.FrameChanged = [this](std::int32_t frame, bool&) { changes.push_back(frame); };
    gif.AnimationDone = [this] { ++done; };
  }
};

// A numeric property: how it is set and how it is read.
struct Property {
  void (ucAniGIF::*set)(int);
  int (ucAniGIF::*get)() const;
};
constexpr Property kMinFrameDelay{&ucAniGIF::SetMinFrameDelay, &ucAniGIF::MinFrameDelay},
    kLoops{&ucAniGIF::SetLoops, &ucAniGIF::Loops}, kSteppedDelay{&ucAniGIF::SetSteppedDelay, &ucAniGIF::SteppedDelay},
    kStretch{&ucAniGIF::SetStretch, &ucAniGIF::Stretch}, kMirrored{&ucAniGIF::SetMirrored, &ucAniGIF::Mirrored},
    kDelayAnimation{&ucAniGIF::SetDelayAnimation, &ucAniGIF::DelayAnimation},
    kBackStyle{&ucAniGIF::SetBackStyle, &ucAniGIF::BackStyle}, kOffsetX{&ucAniGIF::SetOffsetX, &ucAniGIF::OffsetX};

using Edges = std::array<int, 4>;  // left, top, width, height
Edges EdgesOf(const TwipsRect& r) { return {r.left, r.top, r.width, r.height}; }

// The last picture a paint drew and where it went.
struct Drawn {
  Picture picture;
  TwipsRect where;
  std::uint32_t At(int x, int y) const { return picture.pixels[static_cast<std::size_t>(y * picture.width + x)]; }
};

Drawn Paint(const ucAniGIF& gif, RecordingPainter& painter) {
  painter.Clear();
  gif.Paint(painter);
  for (auto op = painter.ops.rbegin(); op != painter.ops.rend(); ++op)
    if (op->kind == RecordingPainter::Op::kPicture) return {*op->picture, op->rect};
  ADD_FAILURE() << "no picture drawn";
  return {};
}
Drawn Paint(const ucAniGIF& gif) {
  RecordingPainter painter;
  return Paint(gif, painter);
}

TEST(ucAniGIF, LoopsThreeOnFourFramesEndsOnTheLastFrame) {
  Player p;
  ASSERT_TRUE(p.gif.LoadAnimatedGIF_Array(FourFrames(3)));
  EXPECT_EQ(p.gif.Loops(), 3);
  EXPECT_TRUE(p.gif.DeferredUnpackPending());
  EXPECT_FALSE(p.gif.PendingInterval().has_value());
  p.timers.Advance(20);  // the rest of the frames are unpacked, then play starts
  EXPECT_FALSE(p.gif.DeferredUnpackPending());
  EXPECT_EQ(p.gif.PendingInterval(), 100u);
  EXPECT_EQ(p.gif.Action(), ucAniGIF::kPlaying);
  p.timers.Advance(100 * 20);
  EXPECT_EQ(p.gif.CurrentFrame(), 4);
  EXPECT_EQ(p.gif.LoopsRemaining(), 3);
  EXPECT_EQ(p.gif.Action(), ucAniGIF::kStopped);
  EXPECT_EQ(p.done, 1);
  EXPECT_EQ(p.timers.Running(), 0u);
  // Ticks report the frame that was replaced; the last wrap stops on frame 4.
  EXPECT_EQ(p.changes, (Changes{1, 2, 3, 4, 1, 2, 3, 4, 1, 2, 3, 4}));
}

TEST(ucAniGIF, OneFrameNeverRunsATimerAndReportsFrameOneOnce) {
  Player p;
  ASSERT_TRUE(p.gif.LoadAnimatedGIF_Array(Gif({{Solid(4, 4, 1)}})));
  EXPECT_EQ(p.timers.Running(), 0u);
  p.timers.Advance(10000);
  EXPECT_EQ(p.changes, (Changes{1}));
  EXPECT_EQ(p.gif.Action(), ucAniGIF::kStopped);
  EXPECT_EQ(p.gif.FrameCount(), 1);
}

TEST(ucAniGIF, DelayAnimationTwoShowsFrameOneWithoutPlaying) {
  Player p(2);
  ASSERT_TRUE(p.gif.LoadAnimatedGIF_Array(FourFrames(0)));
  EXPECT_TRUE(p.changes.empty());
  p.timers.Advance(20);
  EXPECT_EQ(p.changes, (Changes{1}));
  EXPECT_EQ(p.gif.Action(), ucAniGIF::kStopped);
  EXPECT_EQ(p.timers.Running(), 0u);
}

TEST(ucAniGIF, FrameDelaysSteppedDelayAndTheMinimum) {
  const std::tuple<const char*, std::uint16_t, int, int, std::uint32_t> cases[] = {
      // name, the file's delay (hundredths), stepped delay, minimum; the interval played (ms)
      {"the file's delay", 10, 0, 50, 100},
      {"a zero delay plays at the minimum", 0, 0, 50, 50},
      {"a short delay is raised to the minimum", 2, 0, 60, 60},
      {"a stepped delay overrides the file's, and the minimum does not apply to it", 10, 20, 50, 20}};
  for (const auto& [name, file_delay, stepped, minimum, interval] : cases) {
    Player p(0);
    p.gif.SetSteppedDelay(stepped);
    p.gif.SetMinFrameDelay(minimum);
    ASSERT_TRUE(p.gif.LoadAnimatedGIF_Array(FourFrames(0, file_delay))) << name;
    EXPECT_EQ(p.gif.PendingInterval(), interval) << name;
  }
}

TEST(ucAniGIF, PropertiesClampFoldOrIgnoreOutOfRangeValues) {
  const std::tuple<const char*, Property, int, int, int> cases[] = {
      // name, property, a value set, then another; the value read
      {"MinFrameDelay floor", kMinFrameDelay, 50, 5, 10},
      {"MinFrameDelay ceiling", kMinFrameDelay, 50, 40000, 32700},
      {"Loops folds a negative", kLoops, 0, -2, 2},
      {"Loops ignores the lowest int", kLoops, 3, INT_MIN, 3},
      {"SteppedDelay", kSteppedDelay, 40, -5, 0},
      {"Stretch", kStretch, 2, 7, 2},
      {"Mirrored", kMirrored, 1, 4, 1},
      {"DelayAnimation", kDelayAnimation, 1, 5, 1},
      {"BackStyle", kBackStyle, 0, 3, 0}};
  for (const auto& [name, property, first, second, read] : cases) {
    Player p;
    (p.gif.*property.set)(first);
    (p.gif.*property.set)(second);
    EXPECT_EQ((p.gif.*property.get)(), read) << name;
  }
  Player p;
  EXPECT_EQ(p.gif.LoopsRemaining(), 0);  // nothing loaded
  ASSERT_TRUE(p.gif.LoadAnimatedGIF_Array(FourFrames(0)));
  EXPECT_EQ(p.gif.LoopsRemaining(), 2147483647);
}

TEST(ucAniGIF, ActionsStopPlayPauseStepAndRestart) {
  Player p(0);
  ASSERT_TRUE(p.gif.LoadAnimatedGIF_Array(FourFrames(0)));
  p.timers.Advance(200);
  EXPECT_EQ(p.gif.CurrentFrame(), 3);
  p.gif.SetAction(2);
  EXPECT_EQ(p.gif.Action(), ucAniGIF::kPaused);
  p.timers.Advance(1000);
  EXPECT_EQ(p.gif.CurrentFrame(), 3);
  p.gif.SetAction(1);  // resumes where it was
  p.timers.Advance(100);
  EXPECT_EQ(p.gif.CurrentFrame(), 4);
  p.changes.clear();
  p.gif.SetAction(3);  // step on the last frame wraps to 1 and stays paused
  EXPECT_EQ(p.gif.CurrentFrame(), 1);
  EXPECT_EQ(p.gif.Action(), ucAniGIF::kPaused);
  p.gif.SetAction(3);
  EXPECT_EQ(p.changes, (Changes{1, 2}));
  p.gif.SetAction(0);
  EXPECT_EQ(p.gif.CurrentFrame(), 1);
  EXPECT_EQ(p.gif.Action(), ucAniGIF::kStopped);
  EXPECT_EQ(p.timers.Running(), 0u);
  p.gif.SetAction(4);
  EXPECT_EQ(p.gif.Action(), ucAniGIF::kPlaying);
  p.gif.SetAction(9);
  EXPECT_EQ(p.gif.Action(), ucAniGIF::kPlaying);
  p.gif.UserControl_Hide();
  EXPECT_EQ(p.gif.Action(), ucAniGIF::kPaused);
  p.gif.UserControl_Show();
  EXPECT_EQ(p.gif.Action(), ucAniGIF::kPlaying);
}

TEST(ucAniGIF, AHandlerThatStopsTheAnimationIsObeyed) {
  Player p(0);
  p.gif.FrameChanged = [&](std::int32_t, bool&) { p.gif.SetAction(2); };
  ASSERT_TRUE(p.gif.LoadAnimatedGIF_Array(FourFrames(0)));
  p.timers.Advance(1000);
  EXPECT_EQ(p.gif.CurrentFrame(), 2);
  EXPECT_EQ(p.gif.Action(), ucAniGIF::kPaused);
}

// An owner may destroy the control from its own event: nothing of it may be touched afterwards (the sanitizer
// build sees any use of freed memory).
TEST(ucAniGIF, AHandlerMayDestroyTheControl) {
  using Owned = std::unique_ptr<ucAniGIF>;
  const auto one_frame = Gif({{Solid(4, 4, 1)}});
  const struct {
    const char* name;
    int delay_animation;
    Bytes bytes;
    std::function<void(Owned&)> then = nullptr;  // after loading, if the control is still there
    bool from_bag = false;                       // loaded by ReadProperties
    bool on_done = false;                        // destroyed by AnimationDone, else by FrameChanged
  } cases[] = {
      {"a play tick", 0, FourFrames(0)},
      {"the unpack tick", 2, FourFrames(0)},
      {"loading one frame", 0, one_frame},
      {"loading one frame, not to be played", 2, one_frame},
      {"ReadProperties", 0, one_frame, nullptr, true},
      {"SetAction 0", 2, FourFrames(0), [](Owned& g) { g->SetAction(0); }},
      {"SetAction 4", 2, FourFrames(0), [](Owned& g) { g->SetAction(4); }},
      {"SetAction 3", 2, FourFrames(0), [](Owned& g) { g->SetAction(3); }},
      {"the owner, between ticks", 0, FourFrames(0), [](Owned& g) { g.reset(); }},
      {"AnimationDone", 0, Gif({{Solid(4, 4, 0)}, {Solid(4, 4, 1)}}, 1), nullptr, false, true},
  };
  for (const auto& c : cases) {
    VirtualTimers timers;
    auto gif = std::make_unique<ucAniGIF>(timers, ucAniGIFArgs{"g", {0, 0, 60, 60}});
    gif->SetDelayAnimation(c.delay_animation);
    if (c.on_done) gif->AnimationDone = [&gif] { gif.reset(); };
    if (!c.on_done) gif->FrameChanged = [&gif](std::int32_t, bool&) { gif.reset(); };
    PropertyBag bag;
    bag.WriteBytes("GIF", c.bytes);
    bag.WriteProperty("DelayLoad", std::int64_t{c.delay_animation});
    if (c.from_bag) gif->ReadProperties(bag);
    if (!c.from_bag) gif->LoadAnimatedGIF_Array(c.bytes);
    if (gif && c.then) c.then(gif);
    timers.Advance(1000);
    EXPECT_EQ(gif, nullptr) << c.name;
    EXPECT_EQ(timers.Running(), 0u) << c.name;
  }
}

TEST(ucAniGIF, ALoadThatFailsLeavesNothingLoaded) {
  Bytes gif77a = FourFrames(0);
  gif77a[3] = gif77a[4] = '7';
  const std::tuple<const char*, Bytes, std::size_t, bool> cases[] = {
      // name, bytes, the largest canvas allowed, whether they load
      {"not a known version", gif77a, kMaxCanvasBytes, false},
      {"no bytes", {}, kMaxCanvasBytes, false},
      {"a 1 x 1 frame at 32767, 32767: a 32768 x 32768 canvas", CanvasGif(32767, 32767, 1, 1), kMaxCanvasBytes, false},
      {"a canvas one row over the bound", CanvasGif(0, 1, 16, 16), 16 * 16 * 4, false},
      {"a canvas at the bound", CanvasGif(0, 0, 16, 16), 16 * 16 * 4, true}};
  for (const auto& [name, bytes, max_canvas_bytes, loads] : cases) {
    SCOPED_TRACE(name);
    VirtualTimers timers;
    ucAniGIF gif(timers, {.name = "g", .bounds = {0, 0, 60, 60}, .max_canvas_bytes = max_canvas_bytes});
    gif.SetDelayAnimation(0);
    ASSERT_TRUE(gif.LoadAnimatedGIF_Array(FourFrames(0)));
    bool loaded = true;
    EXPECT_NO_THROW(loaded = gif.LoadAnimatedGIF_Array(bytes));
    EXPECT_EQ(loaded, loads);
    EXPECT_EQ(gif.FrameCount(), loads ? 2 : 0);
    EXPECT_EQ(timers.Running(), loads ? 1u : 0u);
    RecordingPainter painter;
    gif.Paint(painter);
    EXPECT_EQ(painter.Empty(), !loads);
  }
}

TEST(ucAniGIF, AMissingFileChangesNothingAndAnUnreadableOneClears) {
  testing::FakeFiles files;
  files.files["C:\\Art\\spin.gif"] = FourFrames(0);
  files.unreadable.push_back("C:\\Art\\locked.gif");
  Player p;
  ASSERT_TRUE(p.gif.LoadAnimatedGIF_File(files, "C:\\Art\\spin.gif"));
  EXPECT_EQ(p.gif.FrameCount(), 4);
  EXPECT_FALSE(p.gif.LoadAnimatedGIF_File(files, "C:\\Art\\gone.gif"));
  EXPECT_EQ(p.gif.FrameCount(), 4);
  EXPECT_FALSE(p.gif.LoadAnimatedGIF_File(files, "C:\\Art\\locked.gif"));
  EXPECT_EQ(p.gif.FrameCount(), 0);
  EXPECT_EQ(p.timers.Running(), 0u);
}

// Frame 1: red with a see-through column; frame 2 covers the middle and is disposed by restoring; frame 3 paints
// one blue pixel in a corner.
TEST(ucAniGIF, DisposalThreeRestoresExactlyItsRectangleMaskIncluded) {
  Player p(0);
  TestImage first = Solid(4, 4, 0);
  for (int y = 0; y < 4; ++y) first.pixels[static_cast<std::size_t>(y * 4 + 2)] = 3;
  ASSERT_TRUE(p.gif.LoadAnimatedGIF_Array(
      Gif({{first, 10, 0, 3}, {Solid(2, 2, 1, 1, 1), 10, 3}, {Solid(1, 1, 2, 3, 3), 10, 1}})));
  ASSERT_TRUE(p.gif.Animation().Plan.NeedsCanvas);
  const Drawn after_first = Paint(p.gif);
  EXPECT_EQ(after_first.At(2, 0), 0u);  // see-through
  EXPECT_EQ(after_first.At(0, 0), kRed);
  p.timers.Advance(100);
  const Drawn second = Paint(p.gif);
  EXPECT_EQ(second.At(1, 1), kGreen);  // frame 2 shows...
  EXPECT_EQ(second.At(2, 2), kGreen);  // ...over the see-through column too
  p.timers.Advance(100);
  Picture want = after_first.picture;
  want.pixels[15] = kBlue;
  EXPECT_EQ(Paint(p.gif).picture.pixels, want.pixels);
}

TEST(ucAniGIF, DisposalTwoClearsToWhatLiesBehind) {
  Player p(0);
  ASSERT_TRUE(p.gif.LoadAnimatedGIF_Array(
      Gif({{Solid(4, 4, 0), 10, 0}, {Solid(2, 2, 1), 10, 2}, {Solid(1, 1, 2, 3, 3), 10, 0}})));
  ASSERT_TRUE(p.gif.Animation().Plan.CanvasNeedsMask);
  Drawn last;
  for (int i = 0; i < 3; ++i, p.timers.Advance(100)) last = Paint(p.gif);
  EXPECT_EQ((std::array{last.At(0, 0), last.At(1, 1), last.At(2, 2), last.At(3, 3)}),
            (std::array{0u, 0u, kRed, kBlue}));
}

// Frame `frame`'s pixel at x, y in the strip.
std::uint8_t StripPixel(const ucAniGIF& gif, int frame, int x, int y) {
  return gif.Animation().Strip.Row(y)[gif.Animation().Frames[static_cast<std::size_t>(frame - 1)].StripX + x];
}

TEST(ucAniGIF, MirroringOneThenTwoFlipsBothAxesOnceAndMovesTheFrames) {
  Player p(0);
  TestImage corner = Solid(3, 2, 0);
  corner.pixels[0] = 1;  // top left marks the orientation
  ASSERT_TRUE(p.gif.LoadAnimatedGIF_Array(Gif({{Solid(4, 4, 3)}, {corner}})));
  const auto second = [&p] { return p.gif.Animation().Frames[1]; };
  p.gif.SetMirrored(1);
  EXPECT_EQ(second().Left, 1);
  EXPECT_EQ(StripPixel(p.gif, 2, 2, 0), 1);
  p.gif.SetMirrored(2);
  EXPECT_EQ(second().Left, 0);
  EXPECT_EQ(second().Top, 2);
  EXPECT_EQ(StripPixel(p.gif, 2, 0, 1), 1);
  EXPECT_EQ(StripPixel(p.gif, 2, 0, 0), 0);
  p.gif.SetMirrored(0);
  EXPECT_EQ(StripPixel(p.gif, 2, 0, 0), 1);
  EXPECT_EQ(second().Top, 0);
}

TEST(ucAniGIF, MirroringAskedBeforeTheDeferredUnpackReachesEveryFrame) {
  Player p(1);
  p.gif.SetMirrored(1);
  TestImage corner = Solid(4, 4, 0);
  corner.pixels[0] = 1;
  ASSERT_TRUE(p.gif.LoadAnimatedGIF_Array(Gif({{corner}, {corner}})));
  EXPECT_EQ(StripPixel(p.gif, 1, 3, 0), 1);
  p.timers.Advance(20);
  EXPECT_EQ(StripPixel(p.gif, 1, 3, 0), 1);
  EXPECT_EQ(StripPixel(p.gif, 2, 3, 0), 1);
}

// A 4 x 4 canvas in a control at 300, 150 twips.
TEST(ucAniGIF, StretchSizesTheControlAndTheCanvasDrawn) {
  const struct {
    int stretch;
    bool auto_size;
    int width, height;              // the control as placed, twips
    Edges control, drawn;           // the control once loaded; where the canvas goes
    int shown_width, shown_height;  // of the canvas, pixels
  } cases[] = {
      {4, false, 1500, 750, {300, 150, 60, 60}, {300, 150, 60, 60}, 4, 4},     // sized to the canvas
      {0, true, 1500, 750, {300, 150, 1500, 750}, {300, 150, 60, 60}, 4, 4},   // natural size, control untouched
      {0, false, 30, 45, {300, 150, 30, 45}, {300, 150, 30, 45}, 2, 3},        // what the control holds
      {3, false, 1500, 750, {300, 150, 1500, 750}, {300, 150, 60, 60}, 4, 4},  // never enlarged
      {1, true, 1500, 750, {300, 150, 750, 750}, {300, 150, 750, 750}, 4, 4},  // uniform fit
      {2, true, 1500, 750, {300, 150, 1500, 750}, {300, 150, 1500, 750}, 4, 4},
      {1, false, 1500, 750, {300, 150, 1500, 750}, {300, 150, 1500, 750}, 4, 4},  // no AutoSize: the control stays
  };
  for (const auto& c : cases) {
    SCOPED_TRACE(::testing::Message() << "Stretch " << c.stretch << ", AutoSize " << c.auto_size);
    Player p(0, {300, 150, c.width, c.height});
    p.gif.SetStretch(c.stretch);
    p.gif.SetAutoSize(c.auto_size);
    ASSERT_TRUE(p.gif.LoadAnimatedGIF_Array(CanvasGif(0, 0, 4, 4)));
    ASSERT_TRUE(p.gif.Animation().Plan.NeedsCanvas);
    EXPECT_EQ(EdgesOf(p.gif.Bounds()), c.control);
    EXPECT_EQ(p.gif.ActualWidth(), 60);
    const Drawn drawn = Paint(p.gif);
    EXPECT_EQ(EdgesOf(drawn.where), c.drawn);
    EXPECT_EQ(drawn.picture.width, c.shown_width);
    EXPECT_EQ(drawn.picture.height, c.shown_height);
  }
}

// Resolves every system colour to one of its own, as a host with another scheme would.
struct HostPainter : RecordingPainter {
  static constexpr Colour kHostColour = Rgb(1, 2, 3);
  Colour Resolve(Colour colour) const override { return (colour & 0x80000000u) ? kHostColour : colour; }
};

// Frame 2 lets frame 1 (red) show through its middle column, unless the control is filled: then the fill shows
// there, in the host's colours.
TEST(ucAniGIF, AFilledControlFillsUnderEachFrameOnTheCanvasToo) {
  const std::tuple<const char*, int, Colour, std::optional<Colour>, std::uint32_t> cases[] = {
      // name, BackStyle, BackColor; the fill resolved by the host, and the pixel where frame 2 is see-through
      {"not filled", 0, Rgb(0, 0, 0x80), std::nullopt, kRed},
      {"filled", 1, Rgb(0, 0, 0x80), Rgb(0, 0, 0x80), 0xFF000080u},
      {"filled with a system colour", 1, kSystemButtonFace, HostPainter::kHostColour, 0xFF010203u}};
  TestImage holed = Solid(4, 4, 2);
  for (int y = 0; y < 4; ++y) holed.pixels[static_cast<std::size_t>(y * 4 + 1)] = 3;
  for (const auto& [name, back_style, back_color, fill, see_through] : cases) {
    SCOPED_TRACE(name);
    Player p(0, {0, 0, 60, 60});
    p.gif.SetBackStyle(back_style);
    p.gif.SetBackColor(back_color);
    ASSERT_TRUE(p.gif.LoadAnimatedGIF_Array(Gif({{Solid(4, 4, 0), 10, 1}, {holed, 10, 1, 3}})));
    ASSERT_TRUE(p.gif.Animation().Plan.NeedsCanvas);
    HostPainter painter;
    Paint(p.gif, painter);
    p.timers.Advance(100);
    const Drawn drawn = Paint(p.gif, painter);
    EXPECT_EQ(drawn.At(1, 2), see_through);
    EXPECT_EQ(drawn.At(0, 2), kBlue);
    const auto& first = painter.ops.front();
    if (fill) {
      ASSERT_EQ(first.kind, RecordingPainter::Op::kFill);
      EXPECT_EQ(painter.Resolve(first.colour), *fill);
      EXPECT_EQ(EdgesOf(first.rect), (Edges{0, 0, 60, 60}));
    } else {
      EXPECT_NE(first.kind, RecordingPainter::Op::kFill);
    }
  }
}

// A host that keeps a copy of each retained picture and brings it up to date only by what the picture says has
// changed (new pixels of the strip, the canvas's dirty rectangle), as the Win32 host does.
struct CopyingHost : RecordingPainter {
  std::vector<std::uint8_t> strip;
  std::uint64_t version = ~std::uint64_t{0};
  Picture canvas;
  void DrawIndexed(const IndexedPicture& p, const PictureRect& source, const Palette& colours, int transparent,
                   const TwipsRect& dest) override {
    if (p.Version() != version) strip.assign(p.Bits(), p.Bits() + p.Stride() * p.Height());
    version = p.Version();
    IndexedPicture copy;
    copy.SetPixels(strip.data(), p.Width(), p.Height(), p.Stride());
    RecordingPainter::DrawIndexed(copy, source, colours, transparent, dest);
  }
  void DrawSurface(const ArgbSurface& s, const PictureRect& source, const TwipsRect& dest) override {
    const PictureRect d = s.TakeDirty();
    if (canvas.width != s.Pixels().width) canvas = s.Pixels();
    for (int y = d.top; y < d.top + d.height; ++y) {
      const auto row = static_cast<std::size_t>(y * canvas.width + d.left);
      std::copy_n(s.Pixels().pixels.begin() + static_cast<std::ptrdiff_t>(row), d.width,
                  canvas.pixels.begin() + static_cast<std::ptrdiff_t>(row));
    }
    ArgbSurface copy(canvas.width, canvas.height, s.Opaque());
    copy.Edit() = canvas;
    RecordingPainter::DrawSurface(copy, source, dest);
  }
};

// Every frame, through mirroring, a filled background and a palette change, is drawn the same by a host that keeps
// copies as by one that takes the pixels afresh each time.
TEST(ucAniGIF, AHostKeepingCopiesDrawsWhatIsComposed) {
  TestImage holed = Solid(4, 4, 0);
  for (int y = 0; y < 4; ++y) holed.pixels[static_cast<std::size_t>(y * 4 + 2)] = 3;
  const Bytes canvas = Gif({{holed, 10, 0, 3}, {Solid(2, 2, 1, 1, 1), 10, 3}, {Solid(1, 1, 2, 3, 3), 10, 2},
                            {Solid(2, 1, 1, 0, 0), 10, 1}});
  const Bytes strip = Gif({{holed, 10, 2, 3}, {Solid(3, 2, 1, 1, 1), 10, 2}});
  for (const Bytes& bytes : {canvas, strip}) {
    Player p(0);
    ASSERT_TRUE(p.gif.LoadAnimatedGIF_Array(bytes));
    CopyingHost host;
    for (int step = 0; step < 12; ++step, p.timers.Advance(100)) {
      SCOPED_TRACE(::testing::Message() << "step " << step << (bytes == canvas ? " on the canvas" : " from the strip"));
      if (step == 3) p.gif.SetMirrored(3);
      if (step == 6) p.gif.SetBackStyle(1);
      if (step == 8) p.gif.SetPalette(0, {0x102030, 0x405060, 0x708090, 0xA0B0C0});
      const Drawn kept = Paint(p.gif, host);
      const Drawn fresh = Paint(p.gif);
      EXPECT_EQ(kept.picture.pixels, fresh.picture.pixels);
      EXPECT_EQ(EdgesOf(kept.where), EdgesOf(fresh.where));
    }
  }
}

TEST(ucAniGIF, PropertiesSurviveTheBagAndAStoredLoopCountWins) {
  const std::pair<Property, int> stored[] = {{kLoops, 0},         {kMinFrameDelay, 80}, {kStretch, 2}, {kMirrored, 3},
                                             {kSteppedDelay, 70}, {kBackStyle, 1},      {kOffsetX, 4}};
  PropertyBag bag;
  {
    Player p;
    ASSERT_TRUE(p.gif.LoadAnimatedGIF_Array(FourFrames(3)));
    for (const auto& [property, value] : stored) (p.gif.*property.set)(value);
    p.gif.SetAutoSize(true);
    p.timers.Advance(20);  // unpacked: the stream is let go
    p.gif.WriteProperties(bag);
  }
  // Design time keeps the stream; at run time it is gone once unpacked.
  EXPECT_TRUE(bag.ReadBytes("GIF").empty());
  bag.WriteBytes("GIF", FourFrames(3));
  Player q;
  q.gif.ReadProperties(bag);
  EXPECT_EQ(q.gif.FrameCount(), 4);
  for (const auto& [property, value] : stored)
    EXPECT_EQ((q.gif.*property.get)(), value);  // Loops: 0 beats the file's 3
  EXPECT_TRUE(q.gif.AutoSize());
}

TEST(ucAniGIF, StoredValuesOutOfRangeAreLeftAside) {
  const std::tuple<const char*, const char*, Property, int> cases[] = {
      {"DelayLoad", "-1", kDelayAnimation, 1}, {"Delay", "1e30", kMinFrameDelay, 50},
      {"Delay", "-1e30", kMinFrameDelay, 50},  {"Delay", "9.3e18", kMinFrameDelay, 50},  // past 2^63
      {"Delay", "&H50", kMinFrameDelay, 80},   {"Stretch", "1e30", kStretch, 1},
      {"Loops", "-2147483648", kLoops, 3}};  // the file's count stays
  for (const auto& [key, text, property, read] : cases) {
    PropertyBag bag;
    bag.WriteBytes("GIF", FourFrames(3));
    bag.WriteProperty(key, std::string(text));
    Player p;
    p.gif.ReadProperties(bag);
    EXPECT_EQ((p.gif.*property.get)(), read) << key << " " << text;
  }
}

TEST(ucAniGIF, TheCurrentFrameCanBeTakenOutAsAGifOfItsOwn) {
  Player p(0), copy;
  ASSERT_TRUE(p.gif.LoadAnimatedGIF_Array(FourFrames(0)));
  p.timers.Advance(100);
  ASSERT_TRUE(copy.gif.LoadAnimatedGIF_Array(p.gif.AnimatedGIF()));
  EXPECT_EQ(Paint(copy.gif).At(0, 0), kGreen);  // frame 2 was green
}

TEST(ucAniGIF, TheCommittedSpinnerLoopsForEverWithoutACanvas) {
  std::ifstream file(QUILLET_SOURCE_DIR "/resources/spinner.gif", std::ios::binary);
  ASSERT_TRUE(file) << "resources/spinner.gif is missing";
  Player p(0);
  ASSERT_TRUE(p.gif.LoadAnimatedGIF_Array({std::istreambuf_iterator<char>(file), {}}));
  EXPECT_EQ(p.gif.FrameCount(), 12);
  EXPECT_EQ(p.gif.Loops(), 0);
  EXPECT_FALSE(p.gif.Animation().Plan.NeedsCanvas);
  EXPECT_EQ(p.gif.PendingInterval(), 80u);
  p.timers.Advance(80 * 30);
  EXPECT_EQ(p.gif.Action(), ucAniGIF::kPlaying);
  EXPECT_EQ(p.gif.CurrentFrame(), 30 % 12 + 1);
  EXPECT_EQ(Paint(p.gif).At(0, 0), 0u);  // the corners are see-through
}

}  // namespace
}  // namespace quillet
