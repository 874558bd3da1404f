// In-memory stand-ins for the machine: settings, drives, process, clock, dialogs.
#pragma once

#include <array>
#include <condition_variable>
#include <deque>
#include <functional>
#include <memory>
#include <mutex>
#include <map>
#include <optional>
#include <string>
#include <vector>

#include "platform/platform.h"

namespace quillet::testing {

class MemorySettingsStore : public SettingsStore {
 public:
  std::string GetSetting(std::string_view application, std::string_view section, std::string_view key,
                         std::string_view fallback) override;
  void SaveSetting(std::string_view application, std::string_view section, std::string_view key,
                   std::string_view value) override;
  void DeleteSetting(std::string_view application, std::string_view section, std::string_view key) override;

  std::optional<std::string> Find(const std::string& application, const std::string& section,
                                  const std::string& key) const;
  // Every save in order, as "application\\section\\key=value".
  std::vector<std::string> log;

 private:
  std::map<std::string, std::string> values_;  // "app\\section\\key", case-insensitive keys
};

// Holds back the queries of a drive until it is opened, as an offline share
// does; a query gives up after ten seconds so a failing test can't hang.
class Gate {
 public:
  void Open();
  void Wait();
  int Waiting() const;

 private:
  mutable std::mutex mutex_;
  std::condition_variable opened_;
  bool open_ = false;
  int waiting_ = 0;
};

struct FakeDrive {
  int type = kDriveFixed;
  std::shared_ptr<Gate> hang;  // queries wait at it while it is closed
  bool ready = true;
  FreeSpaceCounts counts{8, 512, 1000, 2000};
  bool space_fails = false;
  std::string label;
};

class FakeDrives : public DriveService {
 public:
  std::optional<std::string> LogicalDriveStrings() override;
  int DriveType(std::string_view drive) override;
  std::optional<FreeSpaceCounts> DiskFreeSpace(std::string_view drive) override;
  std::optional<bool> IsReady(std::string_view root) override;
  std::string VolumeLabel(std::string_view drive) override;

  // A drive of `total` and `free` bytes in 4 KiB clusters.
  static FakeDrive Sized(std::uint64_t total_bytes, std::uint64_t free_bytes, int type = kDriveFixed);

  // Change `drives` only while no query runs, or under `mutex`.
  std::map<char, FakeDrive> drives;  // by upper-case letter
  bool list_fails = false;
  std::vector<std::string> ready_queries;
  std::mutex mutex;

 private:
  // A copy of the drive, after waiting at its gate; queries come from other threads.
  std::optional<FakeDrive> Find(std::string_view drive);
};

class FakeProcess : public ProcessService {
 public:
  std::string ExecutableName() override { return exe_name; }
  std::string ProgramFolder() override { return folder; }
  std::string Environment(std::string_view name) override;
  bool PreviousInstance() override { return previous_instance; }

  std::string exe_name = "Quillet";
  std::string folder = "C:\\Program Files\\Quillet";
  std::map<std::string, std::string> environment{{"HOMEDRIVE", "C:"}};
  bool previous_instance = false;
};

class FakeClock : public ClockService {
 public:
  std::uint32_t TickCount() override { return ticks; }
  std::optional<std::uint32_t> LastInputTick() override { return last_input; }
  std::uint32_t ticks = 0;
  std::optional<std::uint32_t> last_input = 0;
};

class ScriptedDialogs : public DialogService {
 public:
  struct Shown {
    std::string text;
    int style;
    std::string title;
  };
  int MessageBox(std::string_view text, int style, std::string_view title) override;
  std::vector<Shown> shown;
  std::deque<int> answers;  // answers in order; kAnswerOk when none is left
};

// Orders paths as Windows compares them: without regard to case.
struct PathLess {
  bool operator()(std::string_view a, std::string_view b) const;
  using is_transparent = void;
};

// A tree of folders and files by full path, "E:\\a\\b.txt"; parents need not be listed.
class FakeFiles : public FileService {
 public:
  std::optional<std::vector<std::uint8_t>> ReadWholeFile(std::string_view path) override;
  std::optional<std::uint32_t> Attributes(std::string_view path) override;
  bool FolderExists(std::string_view path) override;
  bool ListingFinds(std::string_view path) override;
  bool DeleteFolder(std::string_view path) override;
  bool CopyFolder(std::string_view source, std::string_view destination) override;
  bool FileCopy(std::string_view source, std::string_view destination) override;
  bool FileDelete(std::string_view path) override;
  bool WriteWholeFile(std::string_view path, const std::vector<std::uint8_t>& bytes) override;
  bool CreateFolder(std::string_view path) override;

  std::map<std::string, std::vector<std::uint8_t>, PathLess> files;
  std::vector<std::string> unreadable;                     // there, but every read fails
  std::map<std::string, std::uint32_t, PathLess> folders;  // with their attributes
  bool copies_fail = false;                                // as on a full drive
  bool writes_fail = false;                                // the same for written files
  // Runs at each copy of a file, before it is made.
  std::function<void(const std::string& source, const std::string& destination)> on_copy;
};

// The program's pictures as committed under resources/art, found by name.
class FakeResources : public ResourceService {
 public:
  std::optional<std::vector<std::uint8_t>> Resource(std::string_view type, std::string_view name) override;
};

// What the system knows of a file's icon: its colour (drawn as a square
// with a see-through top-left pixel) and the program that opens it, which
// replaces the path as the system does for a document.
struct FakeIcon {
  std::uint32_t colour = 0xFF0000FF;
  std::string program;
};

class FakeShell : public ShellService {
 public:
  struct Call {
    std::string operation, file, parameters, directory;
    int show;
    bool operator==(const Call&) const = default;
  };
  bool ShellExecute(std::string_view operation, std::string_view file, std::string_view parameters,
                    std::string_view directory, int show) override {
    calls.push_back({std::string(operation), std::string(file), std::string(parameters), std::string(directory), show});
    return true;
  }
  bool RunCommandLine(std::string_view command_line, int show) override {
    runs.push_back({std::string(command_line), show});
    return true;
  }
  std::unique_ptr<ShellIcon> ExtractAssociatedIcon(std::string& path) override;
  std::string ShortcutTarget(std::string_view path) override {
    const auto it = shortcuts.find(std::string(path));
    return it == shortcuts.end() ? std::string() : it->second;
  }
  std::map<std::string, FakeIcon> icons;  // by path; other paths have none
  std::map<std::string, std::string> shortcuts;
  std::vector<Call> calls;
  struct Run {
    std::string command_line;
    int show;
    bool operator==(const Run&) const = default;
  };
  std::vector<Run> runs;
};

class FakeSession : public SessionService {
 public:
  bool LockWorkStation() override {
    ++locks;
    return true;
  }
  int locks = 0;
};

// The notification area: what was sent, and the icon standing there.
class FakeTray : public NotificationAreaService {
 public:
  bool NotifyIcon(int message, const NotifyIconRecord& record) override {
    sent.push_back(message);
    if (message == kNotifyAdd) icons.push_back(record);
    if (message == kNotifyModify && !icons.empty()) icons.back() = record;
    if (message == kNotifyDelete && !icons.empty()) icons.pop_back();
    return true;
  }
  // A press on the icon, as the system reports it.
  void Press(int mouse_message) {
    if (on_icon_event) on_icon_event(mouse_message);
  }
  std::vector<int> sent;
  std::vector<NotifyIconRecord> icons;
};

// A version, and machine registry keys with their text values.
class FakeSystemInfo : public SystemInfoService {
 public:
  std::optional<OsVersion> Version() override { return version; }
  std::unique_ptr<RegistryKey> OpenMachineKey(std::string_view path) override;
  std::optional<OsVersion> version = OsVersion{2, 6, 1};
  std::map<std::string, std::map<std::string, std::string>> keys;
  bool close_fails = false;
};

class FakeDevices : public DeviceService {
 public:
  void SendMciString(std::string_view command) override { commands.emplace_back(command); }
  bool NtFamily() override { return nt; }
  bool EjectMedia(std::string_view drive) override {
    commands.push_back("eject " + std::string(drive));
    return true;
  }
  bool DosIoctl(const std::array<std::uint32_t, 7>& registers) override {
    ioctls.push_back(registers);
    return true;
  }
  std::vector<std::string> commands;  // media control strings and "eject F:"
  std::vector<std::array<std::uint32_t, 7>> ioctls;
  bool nt = true;
};

struct FakePlatform {
  MemorySettingsStore settings;
  FakeDrives drives;
  FakeProcess process;
  FakeClock clock;
  ScriptedDialogs dialogs;
  FakeFiles files;
  FakeResources resources;
  FakeShell shell;
  FakeSession session;
  FakeDevices devices;
  FakeSystemInfo system;
  FakeTray tray;
  Platform platform{settings, drives, process, clock, dialogs, files, resources, shell, session, devices, system, tray};

  std::optional<std::string> Setting(const std::string& key, const std::string& section = "Form1") const {
    return settings.Find(process.exe_name, section, key);
  }
};

}  // namespace quillet::testing
