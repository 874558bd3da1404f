// Drive queries off the user interface thread. A drive that hangs (an offline
// share, a dying disk) must never freeze the bar: each pass asks every drive
// again and waits a short while for the answers, letting events run; a
// drive that has not answered by then keeps what it said last time, and its
// late answer is used on the next pass.
#pragma once

#include <chrono>
#include <condition_variable>
#include <functional>
#include <map>
#include <memory>
#include <mutex>
#include <optional>
#include <string>
#include <string_view>
#include <thread>
#include <vector>

#include "platform/drives.h"

namespace quillet {

// What one drive said: type, readiness, space counts and label.
struct DriveAnswer {
  int type = kDriveNoRoot;
  bool ready = false;  // a drive that never answered counts as not ready
  std::optional<FreeSpaceCounts> space;
  std::string label;
};

class DriveMonitor {
 public:
  static constexpr std::chrono::milliseconds kPatience{200};

  explicit DriveMonitor(DriveService& drives, std::chrono::milliseconds patience = kPatience);
  // Waits for the queries still running.
  ~DriveMonitor();
  DriveMonitor(const DriveMonitor&) = delete;
  DriveMonitor& operator=(const DriveMonitor&) = delete;

  // Starts a pass: asks each root ("C:\\") again, unless its last query
  // still runs, and sets the pass's deadline.
  void Ask(const std::vector<std::string>& roots);
  // The answer of a root ("C:\\" or "C:"): waits for it until the pass's
  // deadline, running `let_events_run` between short waits; after that the
  // last answer known.
  DriveAnswer Await(std::string_view drive, const std::function<void()>& let_events_run);
  // The last answer known, at once.
  DriveAnswer Last(std::string_view drive) const;

 private:
  // One worker a drive, kept for the program's life: starting a thread
  // at every pass costs more than the queries themselves.
  struct Slot {
    std::thread worker;
    bool asked = false;    // a query waits for the worker
    bool running = false;  // asked or under way
    DriveAnswer answer;
  };
  void Work(char letter);
  DriveAnswer Query(char letter);

  DriveService& drives_;
  std::chrono::milliseconds patience_;
  mutable std::mutex mutex_;
  std::condition_variable answered_, asked_;
  bool stopping_ = false;
  std::map<char, Slot> slots_;
  std::chrono::steady_clock::time_point deadline_{};
};

}  // namespace quillet
