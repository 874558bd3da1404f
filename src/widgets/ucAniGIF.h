// A window-less control that plays an animated GIF on its container. Sizes
// inside the control are pixels; its bounds on the form are twips.
#pragma once

#include <cstdint>
#include <functional>
#include <memory>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "core/system_colours.h"
#include "platform/files.h"
#include "ui/property_bag.h"
#include "ui/retained_picture.h"
#include "ui/timer_service.h"
#include "ui/visual.h"
#include "widgets/gif/gif_reader.h"
#include "widgets/gif_canvas.h"

namespace quillet {

struct ucAniGIFArgs {
  std::string name = "ucAniGIF1";
  TwipsRect bounds;
  double twips_per_pixel = 15.0;
  bool design_time = false;
  // What a load may allocate; a bigger strip or canvas fails the load.
  std::size_t max_strip_bytes = GifLoadOptions{}.MaxStripBytes;
  std::size_t max_canvas_bytes = kMaxCanvasBytes;
};

class ucAniGIF : public Visual {
 public:
  enum PlayStates : std::int32_t { kStopped = 0, kPlaying = 1, kPaused = 2 };

  ucAniGIF(TimerService& timers, ucAniGIFArgs args);
  ~ucAniGIF() override;

  // Loading. Each replaces what was loaded; true when a frame was loaded.
  bool LoadAnimatedGIF_Array(std::vector<std::uint8_t> bytes);
  // A file that is not there changes nothing; one that cannot be read in
  // full clears the control.
  bool LoadAnimatedGIF_File(FileService& files, std::string_view path);
  // The current frame as a GIF of its own; empty when nothing is loaded.
  std::vector<std::uint8_t> AnimatedGIF() const;

  std::int32_t CurrentFrame() const { return current_frame_; }
  std::int32_t FrameCount() const;
  bool AutoSize() const { return (stretch_flags_ & 8) != 0; }
  void SetAutoSize(bool on);
  bool Enabled() const { return enabled_; }
  void SetEnabled(bool on) { enabled_ = on; }
  // The canvas in the container's units.
  int ActualWidth() const;
  int ActualHeight() const;
  int Stretch() const { return stretch_flags_ & 7; }
  void SetStretch(int value);
  int MinFrameDelay() const { return min_frame_delay_; }
  void SetMinFrameDelay(int value);
  int Loops() const { return loop_count_; }
  void SetLoops(int value);
  std::int32_t LoopsRemaining() const;
  int Mirrored() const { return mirrored_; }
  void SetMirrored(int value);
  std::int32_t Action() const { return play_state_; }
  void SetAction(int value);
  int DelayAnimation() const { return delay_animation_; }
  void SetDelayAnimation(int value);
  int OffsetX() const { return offset_x_; }
  void SetOffsetX(int pixels) { offset_x_ = pixels; }
  int OffsetY() const { return offset_y_; }
  void SetOffsetY(int pixels);
  Colour BackColor() const { return back_color_; }
  void SetBackColor(Colour colour) { back_color_ = colour; }
  int BackStyle() const { return back_style_; }
  void SetBackStyle(int style);
  int SteppedDelay() const { return stepped_delay_; }
  void SetSteppedDelay(int ms) { stepped_delay_ = ms < 1 ? 0 : ms; }
  int MousePointer() const { return mouse_pointer_; }

  bool GetPalette(std::int32_t frame, std::vector<std::uint32_t>& colors);
  bool SetPalette(std::int32_t frame, const std::vector<std::uint32_t>& colors);
  bool CacheColorTables();
  bool RestoreColorTables(bool drop_copy);
  void Refresh() { Changed(); }

  // The container shows or hides the control.
  void UserControl_Show();
  void UserControl_Hide();

  void ReadProperties(const PropertyBag& bag);
  void WriteProperties(PropertyBag& bag) const;

  void Paint(Painter& painter) const override;

  std::function<void()> AnimationDone;
  std::function<void(std::int32_t frame, bool& handled)> FrameChanged;

  // For tests and the host: the timer's running interval, if any.
  std::optional<std::uint32_t> PendingInterval() const { return play_interval_; }
  bool DeferredUnpackPending() const { return unpack_timer_.has_value(); }
  const GifAnimation& Animation() const { return reader_.Animation(); }

 private:
  std::int32_t LoadGifBytes(std::vector<std::uint8_t> bytes);
  void ClearGif();
  void AfterFirstPass();
  void FinishUnpacking();
  bool RunTimer(bool start, bool deferred);
  void ArmPlayTimer();
  void KillPlayTimer();
  void KillTimers();
  void PlayTick();
  void UnpackTick();
  std::uint32_t FrameInterval() const;
  // False when the handler destroyed the control: nothing more may be done.
  bool RaiseFrameChanged(std::int32_t frame);
  void PaintCanvas(Painter& painter, double sx, double sy) const;
  void ComputeScale();
  void ResizeToFit();
  void MirrorAll(int target, bool first_only);
  // Tells the strip's picture that the strip has moved or its pixels changed.
  void StripChanged();
  bool Loaded() const { return current_frame_ != 0; }
  int InnerWidth() const;
  int InnerHeight() const;
  TwipsRect ToTwips(double x, double y, double w, double h) const;

  TimerService& timers_;
  ucAniGIFArgs args_;
  GifReader reader_;
  // The frame strip as a retained picture: a host keeps its copy from one
  // frame to the next and a frame change swaps its colours alone.
  IndexedPicture strip_;
  mutable GifCanvas canvas_;

  std::int32_t offset_x_ = 0, offset_y_ = 0;
  std::int32_t back_style_ = 0;
  Colour back_color_ = kSystemButtonFace;
  std::int16_t min_frame_delay_ = 50;
  std::int32_t loop_count_ = 0;
  std::int16_t loops_left_ = 0;
  std::int32_t play_state_ = kStopped;
  std::int32_t stretch_flags_ = 1;
  std::int32_t current_frame_ = 0;
  std::int32_t delay_animation_ = 1;
  std::int32_t mirrored_ = 0;
  // What the strip holds: frame 1 is mirrored ahead of the rest while they wait to be unpacked.
  std::int32_t first_mirrored_ = 0, rest_mirrored_ = 0;
  std::int32_t stepped_delay_ = 0;
  std::int32_t mouse_pointer_ = 0;
  bool enabled_ = true;
  mutable float scale_x_ = 0, scale_y_ = 0;
  bool resizing_ = false;

  // One-shot timers: each tick stops its own before anything else.
  std::optional<TimerService::TimerId> play_timer_, unpack_timer_;
  std::optional<std::uint32_t> play_interval_;
  // An event handler may destroy the control; a weak copy taken before
  // raising it tells whether the control is still there.
  std::shared_ptr<bool> alive_ = std::make_shared<bool>(true);
};

}  // namespace quillet
