#include "widgets/ucAniGIF.h"

#include <gtest/gtest.h>

#include <fstream>
#include <iterator>

#include "fakes/fake_platform.h"
#include "headless/headless_ui.h"
#include "widgets/gif/gif_test_bytes.h"

namespace quillet {
namespace {

using gif_test::GifWriter;
using gif_test::TestImage;
using testing::VirtualTimers;

const std::vector<std::uint32_t> kPalette{0xFF0000, 0x00FF00, 0x0000FF, 0xFFFFFF};

TestImage Solid(std::uint16_t left, std::uint16_t top, int width, int height, std::uint8_t index) {
  TestImage image;
  image.left = left;
  image.top = top;
  image.width = width;
  image.height = height;
  image.pixels.assign(static_cast<std::size_t>(width * height), index);
  image.lzw.min_code_size = 2;
  return image;
}

struct FrameSpec {
  FrameSpec(TestImage i, std::uint16_t d = 10, int disp = 0, std::optional<std::uint8_t> t = {})
      : image(std::move(i)), delay(d), disposal(disp), transparent(t) {}
  TestImage image;
  std::uint16_t delay;  // hundredths
  int disposal;
  std::optional<std::uint8_t> transparent;
};

std::vector<std::uint8_t> Gif(const std::vector<FrameSpec>& frames, std::optional<std::uint16_t> loops = {},
                              std::uint16_t screen = 4) {
  GifWriter w;
  w.Screen(screen, screen, kPalette);
  if (loops) w.Netscape(*loops);
  for (const auto& f : frames) {
    w.GraphicControl(f.disposal, f.delay, f.transparent);
    w.Image(f.image);
  }
  w.Trailer();
  return w.Get();
}

std::vector<std::uint8_t> FourFrames(std::optional<std::uint16_t> loops, std::uint16_t delay = 10) {
  std::vector<FrameSpec> frames;
  for (std::uint8_t i = 0; i < 4; ++i) frames.emplace_back(Solid(0, 0, 4, 4, i), delay);
  return Gif(frames, loops);
}

struct Player {
  VirtualTimers timers;
  ucAniGIF gif;
  std::vector<std::int32_t> changes;
  int done = 0;
  explicit Player(int delay_animation = 1) : gif(timers, {"ucAniGIF1", {0, 0, 1500, 1500}}) {
    gif.SetDelayAnimation(delay_animation);
    gif.FrameChanged = [this](std::int32_t frame, bool&) { changes.push_back(frame); };
    gif.AnimationDone = [this] { ++done; };
  }
};

// Keeps the last picture drawn, to look at pixels.
struct PixelPainter : Painter {
  Picture last;
  TwipsRect where;
  std::vector<Colour> fills;
  void FillRect(const TwipsRect&, Colour c) override { fills.push_back(c); }
  void DrawText(const TwipsRect&, std::string_view, const Font&, Colour, TextAlign) override {}
  void DrawTextAt(int, int, std::string_view, const Font&, Colour) override {}
  void DrawLine(int, int, int, int, Colour) override {}
  void PushLayer(const TwipsRect&, Colour) override {}
  void PopLayer(std::optional<Colour>) override {}
  void DrawPicture(const Picture& p, const TwipsRect& dest) override {
    last = p;
    where = dest;
  }
  std::uint32_t At(int x, int y) const { return last.pixels[static_cast<std::size_t>(y * last.width + x)]; }
};

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
  const std::vector<std::int32_t> want{1, 2, 3, 4, 1, 2, 3, 4, 1, 2, 3, 4};
  EXPECT_EQ(p.changes, want);
}

TEST(ucAniGIF, OneFrameNeverRunsATimerAndReportsFrameOneOnce) {
  Player p;
  ASSERT_TRUE(p.gif.LoadAnimatedGIF_Array(Gif({{Solid(0, 0, 4, 4, 1)}})));
  EXPECT_EQ(p.timers.Running(), 0u);
  p.timers.Advance(10000);
  EXPECT_EQ(p.changes, (std::vector<std::int32_t>{1}));
  EXPECT_EQ(p.gif.Action(), ucAniGIF::kStopped);
  EXPECT_EQ(p.gif.FrameCount(), 1);
}

TEST(ucAniGIF, FrameDelaysSteppedDelayAndTheMinimum) {
  const struct {
    const char* name;
    std::uint16_t file_delay;
    int stepped;
    int minimum;
    std::uint32_t interval;
  } cases[] = {
      {"the file's delay", 10, 0, 50, 100},
      {"a zero delay plays at the minimum", 0, 0, 50, 50},
      {"a short delay is raised to the minimum", 2, 0, 60, 60},
      {"stepped delay overrides every frame", 10, 100, 50, 100},
      {"the minimum does not apply to a stepped delay", 10, 20, 50, 20},
  };
  for (const auto& c : cases) {
    Player p(0);
    p.gif.SetSteppedDelay(c.stepped);
    p.gif.SetMinFrameDelay(c.minimum);
    ASSERT_TRUE(p.gif.LoadAnimatedGIF_Array(FourFrames(0, c.file_delay))) << c.name;
    EXPECT_EQ(p.gif.PendingInterval(), c.interval) << c.name;
  }
}

TEST(ucAniGIF, PropertiesClampFoldOrIgnoreOutOfRangeValues) {
  Player p;
  p.gif.SetMinFrameDelay(5);
  EXPECT_EQ(p.gif.MinFrameDelay(), 10);
  p.gif.SetMinFrameDelay(40000);
  EXPECT_EQ(p.gif.MinFrameDelay(), 32700);
  p.gif.SetLoops(-2);
  EXPECT_EQ(p.gif.Loops(), 2);
  p.gif.SetSteppedDelay(-5);
  EXPECT_EQ(p.gif.SteppedDelay(), 0);
  p.gif.SetStretch(2);
  p.gif.SetStretch(7);
  EXPECT_EQ(p.gif.Stretch(), 2);
  p.gif.SetMirrored(1);
  p.gif.SetMirrored(4);
  EXPECT_EQ(p.gif.Mirrored(), 1);
  p.gif.SetDelayAnimation(5);
  EXPECT_EQ(p.gif.DelayAnimation(), 1);
  p.gif.SetBackStyle(3);
  EXPECT_EQ(p.gif.BackStyle(), 0);
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
  EXPECT_EQ(p.changes, (std::vector<std::int32_t>{1}));
  p.gif.SetAction(3);
  EXPECT_EQ(p.changes, (std::vector<std::int32_t>{1, 2}));
  p.gif.SetAction(0);
  EXPECT_EQ(p.gif.CurrentFrame(), 1);
  EXPECT_EQ(p.gif.Action(), ucAniGIF::kStopped);
  EXPECT_EQ(p.timers.Running(), 0u);
  p.gif.SetAction(4);
  EXPECT_EQ(p.gif.Action(), ucAniGIF::kPlaying);
  p.gif.SetAction(9);
  EXPECT_EQ(p.gif.Action(), ucAniGIF::kPlaying);
}

TEST(ucAniGIF, HidingPausesAndShowingBringsItBack) {
  Player p(0);
  ASSERT_TRUE(p.gif.LoadAnimatedGIF_Array(FourFrames(0)));
  p.gif.UserControl_Hide();
  EXPECT_EQ(p.gif.Action(), ucAniGIF::kPaused);
  p.gif.UserControl_Show();
  EXPECT_EQ(p.gif.Action(), ucAniGIF::kPlaying);
}

TEST(ucAniGIF, DelayAnimationTwoShowsFrameOneWithoutPlaying) {
  Player p(2);
  ASSERT_TRUE(p.gif.LoadAnimatedGIF_Array(FourFrames(0)));
  EXPECT_TRUE(p.changes.empty());
  p.timers.Advance(20);
  EXPECT_EQ(p.changes, (std::vector<std::int32_t>{1}));
  EXPECT_EQ(p.gif.Action(), ucAniGIF::kStopped);
  EXPECT_EQ(p.timers.Running(), 0u);
}

TEST(ucAniGIF, AHandlerThatStopsTheAnimationIsObeyed) {
  Player p(0);
  p.gif.FrameChanged = [&](std::int32_t, bool&) { p.gif.SetAction(2); };
  ASSERT_TRUE(p.gif.LoadAnimatedGIF_Array(FourFrames(0)));
  p.timers.Advance(1000);
  EXPECT_EQ(p.gif.CurrentFrame(), 2);
  EXPECT_EQ(p.gif.Action(), ucAniGIF::kPaused);
}

TEST(ucAniGIF, NoTickArrivesAfterTheControlIsGone) {
  VirtualTimers timers;
  {
    ucAniGIF gif(timers, {"g", {0, 0, 60, 60}});
    ASSERT_TRUE(gif.LoadAnimatedGIF_Array(FourFrames(0)));
    EXPECT_GT(timers.Running(), 0u);
  }
  EXPECT_EQ(timers.Running(), 0u);
  timers.Advance(1000);
}

TEST(ucAniGIF, ABadStreamLoadsNothing) {
  Player p;
  ASSERT_TRUE(p.gif.LoadAnimatedGIF_Array(FourFrames(0)));
  std::vector<std::uint8_t> bad = FourFrames(0);
  bad[3] = '7';
  bad[4] = '7';  // "GIF77a"
  EXPECT_FALSE(p.gif.LoadAnimatedGIF_Array(bad));
  EXPECT_EQ(p.gif.CurrentFrame(), 0);
  EXPECT_EQ(p.gif.FrameCount(), 0);
  EXPECT_EQ(p.timers.Running(), 0u);
  EXPECT_FALSE(p.gif.LoadAnimatedGIF_Array({}));
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

TEST(ucAniGIF, DisposalThreeRestoresExactlyItsRectangleMaskIncluded) {
  Player p(0);
  // Frame 1: red with a see-through column; frame 2 covers the middle and is
  // disposed by restoring; frame 3 paints one blue pixel in a corner.
  TestImage first = Solid(0, 0, 4, 4, 0);
  for (int y = 0; y < 4; ++y) first.pixels[static_cast<std::size_t>(y * 4 + 2)] = 3;
  ASSERT_TRUE(p.gif.LoadAnimatedGIF_Array(
      Gif({{first, 10, 0, 3}, {Solid(1, 1, 2, 2, 1), 10, 3}, {Solid(3, 3, 1, 1, 2), 10, 1}})));
  ASSERT_TRUE(p.gif.Animation().Plan.NeedsCanvas);
  PixelPainter painter;
  p.gif.Paint(painter);
  const Picture after_first = painter.last;
  EXPECT_EQ(painter.At(2, 0), 0u);            // see-through
  EXPECT_EQ(painter.At(0, 0), 0xFFFF0000u);   // red
  p.timers.Advance(100);
  p.gif.Paint(painter);
  EXPECT_EQ(painter.At(1, 1), 0xFF00FF00u);  // frame 2 shows...
  EXPECT_EQ(painter.At(2, 2), 0xFF00FF00u);  // ...over the see-through column too
  p.timers.Advance(100);
  p.gif.Paint(painter);
  Picture want = after_first;
  want.pixels[15] = 0xFF0000FFu;
  EXPECT_EQ(painter.last.pixels, want.pixels);
}

TEST(ucAniGIF, DisposalTwoClearsToWhatLiesBehind) {
  Player p(0);
  ASSERT_TRUE(p.gif.LoadAnimatedGIF_Array(Gif({{Solid(0, 0, 4, 4, 0), 10, 0}, {Solid(0, 0, 2, 2, 1), 10, 2},
                                                {Solid(3, 3, 1, 1, 2), 10, 0}})));
  ASSERT_TRUE(p.gif.Animation().Plan.CanvasNeedsMask);
  PixelPainter painter;
  for (int i = 0; i < 3; ++i) {
    p.gif.Paint(painter);
    p.timers.Advance(100);
  }
  EXPECT_EQ(painter.At(0, 0), 0u);
  EXPECT_EQ(painter.At(1, 1), 0u);
  EXPECT_EQ(painter.At(2, 2), 0xFFFF0000u);
  EXPECT_EQ(painter.At(3, 3), 0xFF0000FFu);
}

TEST(ucAniGIF, MirroringOneThenTwoFlipsBothAxesOnceAndMovesTheFrames) {
  Player p(0);
  TestImage corner = Solid(0, 0, 3, 2, 0);
  corner.pixels[0] = 1;  // top left marks the orientation
  ASSERT_TRUE(p.gif.LoadAnimatedGIF_Array(Gif({{Solid(0, 0, 4, 4, 3)}, {corner}})));
  const auto pixel = [&](int frame, int x, int y) {
    const FrameRecord& f = p.gif.Animation().Frames[static_cast<std::size_t>(frame - 1)];
    return p.gif.Animation().Strip.Row(y)[f.StripX + x];
  };
  p.gif.SetMirrored(1);
  EXPECT_EQ(p.gif.Animation().Frames[1].Left, 1);
  EXPECT_EQ(pixel(2, 2, 0), 1);
  p.gif.SetMirrored(2);
  EXPECT_EQ(p.gif.Animation().Frames[1].Left, 0);
  EXPECT_EQ(p.gif.Animation().Frames[1].Top, 2);
  EXPECT_EQ(pixel(2, 0, 1), 1);
  EXPECT_EQ(pixel(2, 0, 0), 0);
  p.gif.SetMirrored(0);
  EXPECT_EQ(pixel(2, 0, 0), 1);
  EXPECT_EQ(p.gif.Animation().Frames[1].Top, 0);
}

TEST(ucAniGIF, MirroringAskedBeforeTheDeferredUnpackReachesEveryFrame) {
  Player p(1);
  p.gif.SetMirrored(1);
  TestImage corner = Solid(0, 0, 4, 4, 0);
  corner.pixels[0] = 1;
  ASSERT_TRUE(p.gif.LoadAnimatedGIF_Array(Gif({{corner}, {corner}})));
  const auto top_right = [&](int frame) {
    const FrameRecord& f = p.gif.Animation().Frames[static_cast<std::size_t>(frame - 1)];
    return p.gif.Animation().Strip.Row(0)[f.StripX + 3];
  };
  EXPECT_EQ(top_right(1), 1);
  p.timers.Advance(20);
  EXPECT_EQ(top_right(1), 1);
  EXPECT_EQ(top_right(2), 1);
}

TEST(ucAniGIF, StretchSizesTheControl) {
  const struct {
    int stretch;
    bool auto_size;
    int width, height;  // twips, from a control of 1500 x 750 and a 4 x 4 canvas
  } cases[] = {
      {4, false, 60, 60},     // natural size, sized to the canvas
      {0, true, 1500, 750},   // natural size, control untouched
      {1, true, 750, 750},    // uniform fit
      {2, true, 1500, 750},   // fill
      {1, false, 1500, 750},  // no AutoSize: the control stays
  };
  for (const auto& c : cases) {
    VirtualTimers timers;
    ucAniGIF gif(timers, {"g", {0, 0, 1500, 750}});
    gif.SetStretch(c.stretch);
    gif.SetAutoSize(c.auto_size);
    ASSERT_TRUE(gif.LoadAnimatedGIF_Array(FourFrames(0)));
    EXPECT_EQ(gif.Width(), c.width) << c.stretch << c.auto_size;
    EXPECT_EQ(gif.Height(), c.height) << c.stretch << c.auto_size;
    EXPECT_EQ(gif.ActualWidth(), 60);
  }
}

TEST(ucAniGIF, BackStyleFillsWithTheBackColour) {
  Player p(0);
  p.gif.SetBackStyle(1);
  ASSERT_TRUE(p.gif.LoadAnimatedGIF_Array(FourFrames(0)));
  PixelPainter painter;
  p.gif.Paint(painter);
  ASSERT_EQ(painter.fills.size(), 1u);
  EXPECT_EQ(painter.fills[0], Rgb(240, 240, 240));  // the system button face
}

TEST(ucAniGIF, PropertiesSurviveTheBagAndAStoredLoopCountWins) {
  PropertyBag bag;
  {
    Player p;
    ASSERT_TRUE(p.gif.LoadAnimatedGIF_Array(FourFrames(3)));
    p.gif.SetLoops(0);
    p.gif.SetMinFrameDelay(80);
    p.gif.SetStretch(2);
    p.gif.SetAutoSize(true);
    p.gif.SetMirrored(3);
    p.gif.SetSteppedDelay(70);
    p.gif.SetBackStyle(1);
    p.gif.SetOffsetX(4);
    p.timers.Advance(20);  // unpacked: the stream is let go
    p.gif.WriteProperties(bag);
  }
  // Design time keeps the stream; at run time it is gone once unpacked.
  EXPECT_TRUE(bag.ReadBytes("GIF").empty());
  bag.WriteBytes("GIF", FourFrames(3));
  Player q;
  q.gif.ReadProperties(bag);
  EXPECT_EQ(q.gif.FrameCount(), 4);
  EXPECT_EQ(q.gif.Loops(), 0);  // the stored 0 beats the file's 3
  EXPECT_EQ(q.gif.MinFrameDelay(), 80);
  EXPECT_EQ(q.gif.Stretch(), 2);
  EXPECT_TRUE(q.gif.AutoSize());
  EXPECT_EQ(q.gif.Mirrored(), 3);
  EXPECT_EQ(q.gif.SteppedDelay(), 70);
  EXPECT_EQ(q.gif.BackStyle(), 1);
  EXPECT_EQ(q.gif.OffsetX(), 4);
  PropertyBag stored_minus_one;
  stored_minus_one.WriteProperty("DelayLoad", std::int64_t{-1});
  q.gif.ReadProperties(stored_minus_one);
  EXPECT_EQ(q.gif.DelayAnimation(), 1);
}

TEST(ucAniGIF, TheCurrentFrameCanBeTakenOutAsAGifOfItsOwn) {
  Player p(0);
  ASSERT_TRUE(p.gif.LoadAnimatedGIF_Array(FourFrames(0)));
  p.timers.Advance(100);
  const auto bytes = p.gif.AnimatedGIF();
  VirtualTimers timers;
  ucAniGIF copy(timers, {"copy", {0, 0, 60, 60}});
  ASSERT_TRUE(copy.LoadAnimatedGIF_Array(bytes));
  PixelPainter painter;
  copy.Paint(painter);
  EXPECT_EQ(painter.At(0, 0), 0xFF00FF00u);  // frame 2 was green
}

TEST(ucAniGIF, TheCommittedSpinnerLoopsForEverWithoutACanvas) {
  std::ifstream file(QUILLET_SOURCE_DIR "/resources/spinner.gif", std::ios::binary);
  ASSERT_TRUE(file) << "resources/spinner.gif is missing";
  std::vector<std::uint8_t> bytes{std::istreambuf_iterator<char>(file), {}};
  Player p(0);
  ASSERT_TRUE(p.gif.LoadAnimatedGIF_Array(bytes));
  EXPECT_EQ(p.gif.FrameCount(), 12);
  EXPECT_EQ(p.gif.Loops(), 0);
  EXPECT_FALSE(p.gif.Animation().Plan.NeedsCanvas);
  EXPECT_EQ(p.gif.PendingInterval(), 80u);
  p.timers.Advance(80 * 30);
  EXPECT_EQ(p.gif.Action(), ucAniGIF::kPlaying);
  EXPECT_EQ(p.gif.CurrentFrame(), 30 % 12 + 1);
  PixelPainter painter;
  p.gif.Paint(painter);
  EXPECT_EQ(painter.At(0, 0), 0u);  // the corners are see-through
}

}  // namespace
}  // namespace quillet
