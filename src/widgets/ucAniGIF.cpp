#include "widgets/ucAniGIF.h"

#include <algorithm>
#include <cmath>
#include <cstdlib>
#include <limits>

#include "widgets/gif/gif_encoder.h"
#include "widgets/gif/gif_palette.h"

namespace quillet {
namespace {
constexpr std::uint32_t kUnpackInterval = 20;
}  // namespace

ucAniGIF::ucAniGIF(TimerService& timers, ucAniGIFArgs args)
    : Visual(args.name, args.bounds), timers_(timers), args_(std::move(args)) {}

ucAniGIF::~ucAniGIF() { KillTimers(); }

// ---- Loading ---------------------------------------------------------------

bool ucAniGIF::LoadAnimatedGIF_Array(std::vector<std::uint8_t> bytes) { return LoadGifBytes(std::move(bytes)) > 0; }

bool ucAniGIF::LoadAnimatedGIF_File(FileService& files, std::string_view path) {
  auto bytes = files.ReadWholeFile(path);
  return bytes && LoadGifBytes(std::move(*bytes)) > 0;
}

std::int32_t ucAniGIF::LoadGifBytes(std::vector<std::uint8_t> bytes) {
  ClearGif();
  std::int32_t count = 0;
  if (!bytes.empty()) {
    GifLoadOptions options;
    options.DesignTime = args_.design_time;
    options.MaxStripBytes = args_.max_strip_bytes;
    count = reader_.LoadGifBytes(std::move(bytes), options);
    StripChanged();
  }
  const GifAnimation& gif = reader_.Animation();
  if (count > 0 && gif.Plan.NeedsCanvas) {
    canvas_ = GifCanvas(gif.CanvasWidth, gif.CanvasHeight, gif.Plan.CanvasNeedsMask, args_.max_canvas_bytes);
    // No canvas, no animation: the load fails and the stream goes too.
    if (!canvas_.Exists()) count = reader_.LoadGifBytes({});
  }
  if (count > 0) {
    loop_count_ = gif.LoopCount;
    const std::weak_ptr<bool> alive = alive_;
    AfterFirstPass();
    if (!alive.expired() && !args_.design_time && count == 1) RaiseFrameChanged(1);
  } else {
    ClearGif();
    Changed();
  }
  return count;
}

void ucAniGIF::ClearGif() {
  KillTimers();
  reader_.ClearGif();
  StripChanged();
  canvas_ = GifCanvas();
  current_frame_ = 0;
  play_state_ = kStopped;
  loop_count_ = 0;
  scale_x_ = scale_y_ = 0;
  first_mirrored_ = rest_mirrored_ = 0;
}

void ucAniGIF::AfterFirstPass() {
  current_frame_ = 1;
  if (args_.design_time) {
    SetWidth(static_cast<int>(reader_.Animation().CanvasWidth * args_.twips_per_pixel));
    SetHeight(static_cast<int>(reader_.Animation().CanvasHeight * args_.twips_per_pixel));
    FinishUnpacking();
    return;
  }
  ResizeToFit();
  if (delay_animation_ == 0) {
    reader_.BuildFrameStrip(false);
    FinishUnpacking();
  } else if (FrameCount() > 1) {
    // Show frame 1 now; the rest is unpacked on a short timer.
    MirrorAll(Mirrored(), true);
    RunTimer(true, true);
  } else {
    FinishUnpacking();
  }
}

void ucAniGIF::FinishUnpacking() {
  reader_.FinishLoading();
  MirrorAll(Mirrored(), args_.design_time);
  if (args_.design_time) return;
  if ((delay_animation_ & 2) == 0) {
    loops_left_ = static_cast<std::int16_t>(loop_count_);
    RunTimer(true, false);
  } else {
    RaiseFrameChanged(1);
  }
}

std::vector<std::uint8_t> ucAniGIF::AnimatedGIF() const {
  if (!Loaded()) return {};
  return FrameToPicture(reader_.Animation(), current_frame_);
}

std::int32_t ucAniGIF::FrameCount() const { return Loaded() ? reader_.Animation().FrameCount() : 0; }

// ---- Timer -----------------------------------------------------------------

bool ucAniGIF::RunTimer(bool start, bool deferred) {
  if (args_.design_time) return false;
  if (!start) {
    KillPlayTimer();
    play_state_ = kStopped;
    return true;
  }
  if (play_state_ == kPlaying) return false;
  play_state_ = kStopped;
  if (!Loaded() || FrameCount() <= 1) return false;
  if (deferred) {
    unpack_timer_ = timers_.StartTimer(kUnpackInterval, [this] { UnpackTick(); });
  } else {
    ArmPlayTimer();
  }
  return true;
}

void ucAniGIF::ArmPlayTimer() {
  KillPlayTimer();
  play_interval_ = FrameInterval();
  play_timer_ = timers_.StartTimer(*play_interval_, [this] { PlayTick(); });
  play_state_ = kPlaying;
}

void ucAniGIF::KillPlayTimer() {
  if (play_timer_) timers_.StopTimer(*play_timer_);
  play_timer_.reset();
  play_interval_.reset();
}

void ucAniGIF::KillTimers() {
  KillPlayTimer();
  if (unpack_timer_) timers_.StopTimer(*unpack_timer_);
  unpack_timer_.reset();
}

std::uint32_t ucAniGIF::FrameInterval() const {
  if (stepped_delay_ > 0) return static_cast<std::uint32_t>(stepped_delay_);
  std::int32_t delay = 0;
  if (current_frame_ >= 1 && current_frame_ <= FrameCount())
    delay = reader_.Animation().Frames[static_cast<std::size_t>(current_frame_ - 1)].Delay;
  return static_cast<std::uint32_t>(std::max<std::int32_t>(delay, min_frame_delay_));
}

void ucAniGIF::UnpackTick() {
  if (unpack_timer_) timers_.StopTimer(*unpack_timer_);
  unpack_timer_.reset();
  reader_.BuildFrameStrip(false);
  StripChanged();
  FinishUnpacking();
}

void ucAniGIF::PlayTick() {
  KillPlayTimer();  // one shot: a long handler can't let ticks pile up
  const std::int32_t old = current_frame_;
  const std::int32_t count = FrameCount();
  bool wrapped = false;
  if (++current_frame_ > count) {
    current_frame_ = 1;
    wrapped = true;
  }
  bool again = true;
  if (count == 1) {
    loops_left_ = 0;
    play_state_ = kStopped;
    again = false;
  } else if (wrapped && loop_count_ != 0) {
    loops_left_ = static_cast<std::int16_t>(loops_left_ - 1);
    if (loops_left_ == 0) {
      again = false;
      play_state_ = kStopped;
      loops_left_ = static_cast<std::int16_t>(loop_count_);
      current_frame_ = count;  // the animation ends on its last frame
    }
  }
  Changed();
  if (!RaiseFrameChanged(old)) return;
  // A FrameChanged handler may have stopped, paused or reloaded the control.
  if (again) {
    if (play_state_ == kPlaying && Loaded() && !play_timer_) ArmPlayTimer();
  } else if (AnimationDone) {
    const auto done = AnimationDone;  // a copy outlives the control
    done();
  }
}

bool ucAniGIF::RaiseFrameChanged(std::int32_t frame) {
  if (!FrameChanged) return true;
  const std::weak_ptr<bool> alive = alive_;
  const auto handler = FrameChanged;  // a copy outlives the control
  bool handled = true;
  handler(frame, handled);
  return !alive.expired();
}

// ---- Properties ------------------------------------------------------------

void ucAniGIF::SetAutoSize(bool on) {
  stretch_flags_ = (stretch_flags_ & 7) | (on ? 8 : 0);
  if (on) ResizeToFit();
}

int ucAniGIF::ActualWidth() const {
  return static_cast<int>(reader_.Animation().CanvasWidth * args_.twips_per_pixel);
}
int ucAniGIF::ActualHeight() const {
  return static_cast<int>(reader_.Animation().CanvasHeight * args_.twips_per_pixel);
}

void ucAniGIF::SetStretch(int value) {
  if (value < 0 || value > 4) return;
  const bool was_playing = play_state_ == kPlaying && !args_.design_time;
  if (was_playing) SetAction(2);
  stretch_flags_ = value | (stretch_flags_ & 8);
  scale_x_ = scale_y_ = 0;
  ResizeToFit();
  if (was_playing) SetAction(1);
  else Changed();
}

void ucAniGIF::SetMinFrameDelay(int value) {
  min_frame_delay_ = static_cast<std::int16_t>(std::clamp(value, 10, 32700));
}

void ucAniGIF::SetLoops(int value) {
  if (value == std::numeric_limits<int>::min()) return;  // has no absolute value: out of range
  loop_count_ = std::abs(value);
  loops_left_ = static_cast<std::int16_t>(loop_count_);
}

std::int32_t ucAniGIF::LoopsRemaining() const {
  if (!Loaded()) return 0;
  return loop_count_ == 0 ? 2147483647 : loops_left_;
}

void ucAniGIF::SetMirrored(int value) {
  if (value < 0 || value > 3) return;
  const bool was_playing = play_state_ == kPlaying && !args_.design_time;
  if (was_playing) SetAction(2);
  mirrored_ = value;
  if (Loaded()) MirrorAll(value, args_.design_time || DeferredUnpackPending());
  if (was_playing) SetAction(1);
  else Changed();
}

// Mirroring is its own inverse: only the difference between what the strip
// holds and what is asked for is applied.
void ucAniGIF::MirrorAll(int target, bool first_only) {
  GifAnimation& gif = reader_.Animation();
  MirrorFrames(gif, target ^ first_mirrored_, 1, 1);
  first_mirrored_ = target;
  if (first_only) {
    StripChanged();
    return;
  }
  const int diff = target ^ rest_mirrored_;
  MirrorFrames(gif, diff, 2, gif.FrameCount());
  if (canvas_.Exists()) canvas_.Mirror(diff);
  rest_mirrored_ = target;
  StripChanged();
}

void ucAniGIF::StripChanged() {
  const FrameStrip& strip = reader_.Animation().Strip;
  strip_.SetPixels(strip.Bits.data(), strip.Width, strip.Height, strip.Stride);
}

void ucAniGIF::SetAction(int value) {
  if (!Loaded() || args_.design_time || value < 0 || value > 4) return;
  switch (value) {
    case 0:
    case 4:
      RunTimer(false, false);
      loops_left_ = static_cast<std::int16_t>(loop_count_);
      current_frame_ = 1;
      Changed();
      if (RaiseFrameChanged(1) && value == 4) RunTimer(true, false);
      break;
    case 1:
      if (play_state_ == kStopped) current_frame_ = 1;
      RunTimer(true, false);
      break;
    case 2:
      if (play_state_ != kStopped) {
        KillPlayTimer();
        play_state_ = kPaused;
      }
      break;
    case 3:
      KillPlayTimer();
      current_frame_ = current_frame_ >= FrameCount() ? 1 : current_frame_ + 1;
      play_state_ = kPaused;
      Changed();
      RaiseFrameChanged(current_frame_);
      break;
  }
}

void ucAniGIF::SetDelayAnimation(int value) {
  if (value >= 0 && value <= 3) delay_animation_ = value;
}

void ucAniGIF::SetOffsetY(int pixels) {
  offset_y_ = pixels;
  if (!(play_state_ == kPlaying && !args_.design_time)) Changed();
}

void ucAniGIF::SetBackStyle(int style) {
  if (style != 0 && style != 1) return;
  back_style_ = style;
  Changed();
}

bool ucAniGIF::GetPalette(std::int32_t frame, std::vector<std::uint32_t>& colors) {
  if (!Loaded() || frame < 0) return false;
  const bool pause = play_state_ == kPlaying;
  if (pause) SetAction(2);
  const bool ok = quillet::GetPalette(reader_.Animation(), frame, colors);
  if (pause) SetAction(1);
  return ok;
}

bool ucAniGIF::SetPalette(std::int32_t frame, const std::vector<std::uint32_t>& colors) {
  if (!Loaded() || frame < 0) return false;
  const bool pause = play_state_ == kPlaying;
  if (pause) SetAction(2);
  const bool ok = quillet::SetPalette(reader_.Animation(), frame, colors);
  if (pause) SetAction(1);
  else Changed();
  return ok;
}

bool ucAniGIF::CacheColorTables() { return Loaded() && quillet::CacheColorTables(reader_.Animation()); }

bool ucAniGIF::RestoreColorTables(bool drop_copy) {
  const bool ok = Loaded() && quillet::RestoreColorTables(reader_.Animation(), drop_copy);
  if (ok) Changed();
  return ok;
}

void ucAniGIF::UserControl_Show() {
  ComputeScale();
  if (play_state_ == kPaused) RunTimer(true, false);
}

void ucAniGIF::UserControl_Hide() { SetAction(2); }

// ---- Size and painting -----------------------------------------------------

int ucAniGIF::InnerWidth() const { return static_cast<int>(std::lround(Width() / args_.twips_per_pixel)); }
int ucAniGIF::InnerHeight() const { return static_cast<int>(std::lround(Height() / args_.twips_per_pixel)); }

void ucAniGIF::ComputeScale() {
  if (!Loaded()) return;
  const GifAnimation& gif = reader_.Animation();
  const int stretch = Stretch();
  if (stretch == 0 || stretch == 4 || gif.CanvasWidth <= 0 || gif.CanvasHeight <= 0) {
    scale_x_ = scale_y_ = 1.0f;
    return;
  }
  float sx = static_cast<float>(InnerWidth()) / static_cast<float>(gif.CanvasWidth);
  float sy = static_cast<float>(InnerHeight()) / static_cast<float>(gif.CanvasHeight);
  if (stretch == 1 || (stretch == 3 && !(sx > 1.0f && sy > 1.0f))) sx = sy = std::min(sx, sy);
  else if (stretch == 3) sx = sy = 1.0f;
  scale_x_ = sx;
  scale_y_ = sy;
}

void ucAniGIF::ResizeToFit() {
  if (!Loaded() || resizing_) return;
  resizing_ = true;
  ComputeScale();
  const GifAnimation& gif = reader_.Animation();
  int w = InnerWidth(), h = InnerHeight();
  if (Stretch() == 4) {
    w = gif.CanvasWidth;
    h = gif.CanvasHeight;
  } else if (Stretch() != 0 && AutoSize()) {
    w = static_cast<int>(std::lround(scale_x_ * static_cast<float>(gif.CanvasWidth)));
    h = static_cast<int>(std::lround(scale_y_ * static_cast<float>(gif.CanvasHeight)));
  }
  if (w != InnerWidth() || h != InnerHeight()) {
    SetWidth(static_cast<int>(std::lround(w * args_.twips_per_pixel)));
    SetHeight(static_cast<int>(std::lround(h * args_.twips_per_pixel)));
  } else {
    Changed();
  }
  resizing_ = false;
}

TwipsRect ucAniGIF::ToTwips(double x, double y, double w, double h) const {
  // Offsets are any 32-bit value: keep the sums inside int.
  const auto twips = [t = args_.twips_per_pixel](double v) {
    return static_cast<int>(std::clamp(std::round(v * t), -1e9, 1e9));
  };
  return {Left() + twips(x), Top() + twips(y), twips(w), twips(h)};
}

void ucAniGIF::Paint(Painter& painter) const {
  if (current_frame_ == 0) return;
  const GifAnimation& gif = reader_.Animation();
  const double sx = scale_x_ != 0 ? scale_x_ : 1.0, sy = scale_y_ != 0 ? scale_y_ : 1.0;
  // System colours go to the painter as they are: its host knows them.
  if (back_style_ == 1) painter.FillRect(ToTwips(0, 0, sx * gif.CanvasWidth, sy * gif.CanvasHeight), back_color_);
  if (canvas_.Exists()) {
    PaintCanvas(painter, sx, sy);
    return;
  }
  const FrameRecord& f = gif.Frames[static_cast<std::size_t>(current_frame_ - 1)];
  const double w = std::round(f.Width * sx), h = std::round(f.Height * sy);
  if (w < 1 || h < 1 || f.Width <= 0 || f.Height <= 0 || f.StripX < 0 || f.StripX + f.Width > gif.Strip.Width ||
      f.Height > gif.Strip.Height)
    return;
  // A frame change is a change of the colours its part of the strip is drawn in.
  static constexpr Palette kNoColours{};
  const auto table = static_cast<std::size_t>(f.ColorTable);
  painter.DrawIndexed(strip_, {f.StripX, 0, f.Width, f.Height},
                      table < gif.ColorTables.size() ? gif.ColorTables[table].Colors : kNoColours,
                      f.TransparentFlag == 1 ? f.TransparentIndex : -1,
                      ToTwips(std::round((f.Left + static_cast<double>(offset_x_)) * sx),
                              std::round((f.Top + static_cast<double>(offset_y_)) * sy), w, h));
}

void ucAniGIF::PaintCanvas(Painter& painter, double sx, double sy) const {
  const GifAnimation& gif = reader_.Animation();
  canvas_.ComposeBefore(gif, current_frame_);
  // A filled control lays its background under each frame on the canvas too,
  // so see-through parts don't show frames gone by.
  if (back_style_ == 1)
    canvas_.Backfill(gif, current_frame_, static_cast<std::int32_t>(std::lround(sx * gif.CanvasWidth)),
                     static_cast<std::int32_t>(std::lround(sy * gif.CanvasHeight)),
                     OpaquePixel(painter.Resolve(back_color_)));
  const int w = InnerWidth(), h = InnerHeight();
  if (w >= 1 && h >= 1) {
    const Picture& canvas = canvas_.Pixels();
    if (sx != 1.0 || sy != 1.0) {
      // Scaled, the canvas fills the whole control, even with one factor for both axes.
      painter.DrawSurface(canvas_.Surface(), {0, 0, canvas.width, canvas.height}, ToTwips(offset_x_, offset_y_, w, h));
    } else {
      // At natural size, as much as the control holds.
      const PictureRect shown{0, 0, std::min(w, canvas.width), std::min(h, canvas.height)};
      painter.DrawSurface(canvas_.Surface(), shown, ToTwips(offset_x_, offset_y_, shown.width, shown.height));
    }
  }
  if (gif.Frames[static_cast<std::size_t>(current_frame_ - 1)].Disposal >= 2) canvas_.ComposeAfter(gif, current_frame_);
}

// ---- Persistence -----------------------------------------------------------

void ucAniGIF::ReadProperties(const PropertyBag& bag) {
  std::vector<std::uint8_t> bytes = bag.ReadBytes("GIF");
  SetMinFrameDelay(static_cast<int>(bag.ReadNumber("Delay", min_frame_delay_)));
  const auto stretch = bag.ReadNumber("Stretch", 1);
  if ((stretch & 7) <= 4) stretch_flags_ = static_cast<std::int32_t>(stretch & 15);
  const auto delay_load = bag.ReadNumber("DelayLoad", 1);
  SetDelayAnimation(delay_load == -1 ? 1 : static_cast<int>(delay_load));
  const auto mirror = bag.ReadNumber("Mirror", 0);
  if (mirror >= 0 && mirror <= 3) mirrored_ = static_cast<std::int32_t>(mirror);
  enabled_ = bag.ReadNumber("Enabled", -1) != 0;
  mouse_pointer_ = static_cast<std::int32_t>(bag.ReadNumber("MousePointer", 0));
  back_color_ = static_cast<Colour>(bag.ReadNumber("BkgFill", kSystemButtonFace));
  SetBackStyle(static_cast<int>(bag.ReadNumber("BkgUsed", 0)));
  SetSteppedDelay(static_cast<int>(bag.ReadNumber("StepDelay", 0)));
  offset_x_ = static_cast<std::int32_t>(bag.ReadNumber("OffsetX", 0));
  offset_y_ = static_cast<std::int32_t>(bag.ReadNumber("OffsetY", 0));
  // A stored loop count, even the default 0, overrides the file's. Loading
  // may raise FrameChanged, whose handler may destroy the control.
  const std::weak_ptr<bool> alive = alive_;
  if (LoadGifBytes(std::move(bytes)) > 0 && !alive.expired())
    SetLoops(static_cast<int>(bag.ReadNumber("Loops", 0)));
}

void ucAniGIF::WriteProperties(PropertyBag& bag) const {
  bag.WriteBytes("GIF", reader_.GifBytes());
  bag.WriteProperty("Delay", std::int64_t{min_frame_delay_});
  bag.WriteProperty("Stretch", std::int64_t{stretch_flags_});
  bag.WriteProperty("Loops", std::int64_t{loop_count_});
  bag.WriteProperty("DelayLoad", std::int64_t{delay_animation_});
  bag.WriteProperty("Mirror", std::int64_t{mirrored_});
  bag.WriteProperty("MousePointer", std::int64_t{mouse_pointer_});
  bag.WriteProperty("Enabled", std::int64_t{enabled_ ? -1 : 0});
  bag.WriteProperty("OffsetX", std::int64_t{offset_x_});
  bag.WriteProperty("OffsetY", std::int64_t{offset_y_});
  bag.WriteProperty("BkgFill", std::int64_t{back_color_});
  bag.WriteProperty("BkgUsed", std::int64_t{back_style_});
  bag.WriteProperty("StepDelay", std::int64_t{stepped_delay_});
}

}  // namespace quillet
