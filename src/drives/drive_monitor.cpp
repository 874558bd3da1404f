#include "drives/drive_monitor.h"

#include <cctype>

namespace quillet {
namespace {

constexpr std::chrono::milliseconds kSlice{10};

char LetterOf(std::string_view drive) {
  if (drive.empty() || !std::isalpha(static_cast<unsigned char>(drive[0]))) return 0;
  return static_cast<char>(std::toupper(static_cast<unsigned char>(drive[0])));
}

}  // namespace

DriveMonitor::DriveMonitor(DriveService& drives, std::chrono::milliseconds patience)
    : drives_(drives), patience_(patience) {}

DriveMonitor::~DriveMonitor() {
  std::vector<std::thread> workers;
  {
    const std::lock_guard lock(mutex_);
    stopping_ = true;
    for (auto& [letter, slot] : slots_)
      if (slot.worker.joinable()) workers.push_back(std::move(slot.worker));
  }
  asked_.notify_all();
  for (auto& w : workers) w.join();
}

void DriveMonitor::Ask(const std::vector<std::string>& roots) {
  {
    const std::lock_guard lock(mutex_);
    deadline_ = std::chrono::steady_clock::now() + patience_;
    for (const std::string& root : roots) {
      const char letter = LetterOf(root);
      if (letter == 0) continue;
      Slot& slot = slots_[letter];
      if (slot.running) continue;  // a hanging drive gets no second query
      slot.asked = slot.running = true;
      if (slot.worker.joinable()) continue;
      try {
        slot.worker = std::thread(&DriveMonitor::Work, this, letter);
      } catch (const std::system_error&) {
        slot.asked = slot.running = false;  // no thread to be had: the drive keeps its last answer
      }
    }
  }
  asked_.notify_all();
}

void DriveMonitor::Work(char letter) {
  std::unique_lock lock(mutex_);
  for (;;) {
    asked_.wait(lock, [&] { return stopping_ || slots_[letter].asked; });
    if (stopping_) return;
    slots_[letter].asked = false;
    lock.unlock();
    DriveAnswer answer = Query(letter);
    lock.lock();
    Slot& slot = slots_[letter];
    slot.answer = std::move(answer);
    slot.running = false;
    answered_.notify_all();
  }
}

DriveAnswer DriveMonitor::Query(char letter) {
  const std::string root{letter, ':', '\\'};
  const std::string drive{letter, ':'};
  DriveAnswer answer;
  try {
    // Even the type can wait on the device where the system looks at the volume.
    answer.type = drives_.DriveType(root);
    answer.ready = drives_.IsReady(root).value_or(false);
    if (answer.ready) {
      answer.space = drives_.DiskFreeSpace(drive);
      answer.label = drives_.VolumeLabel(drive);
    }
  } catch (...) {
    answer = DriveAnswer{};
  }
  return answer;
}

DriveAnswer DriveMonitor::Await(std::string_view drive, const std::function<void()>& let_events_run) {
  const char letter = LetterOf(drive);
  std::unique_lock lock(mutex_);
  for (;;) {
    const auto it = slots_.find(letter);
    if (it == slots_.end()) return {};
    if (!it->second.running || std::chrono::steady_clock::now() >= deadline_) return it->second.answer;
    // Wait a slice, then let the user interface breathe before waiting on.
    answered_.wait_for(lock, kSlice);
    if (!slots_[letter].running) return slots_[letter].answer;
    lock.unlock();
    if (let_events_run) let_events_run();
    lock.lock();
  }
}

DriveAnswer DriveMonitor::Last(std::string_view drive) const {
  const std::lock_guard lock(mutex_);
  const auto it = slots_.find(LetterOf(drive));
  return it == slots_.end() ? DriveAnswer{} : it->second.answer;
}

}  // namespace quillet
