#include "fakes/fake_platform.h"

#include <algorithm>
#include <cctype>
#include <fstream>
#include <iomanip>
#include <iterator>
#include <sstream>

namespace quillet::testing {
namespace {
std::string Path(std::string_view a, std::string_view s, std::string_view k) {
  std::string p = std::string(a) + "\\" + std::string(s) + "\\" + std::string(k);
  for (char& c : p) c = static_cast<char>(std::tolower(static_cast<unsigned char>(c)));
  return p;
}
}  // namespace

std::string MemorySettingsStore::GetSetting(std::string_view application, std::string_view section,
                                            std::string_view key, std::string_view fallback) {
  const auto it = values_.find(Path(application, section, key));
  return it == values_.end() ? std::string(fallback) : it->second;
}

void MemorySettingsStore::SaveSetting(std::string_view application, std::string_view section,
                                      std::string_view key, std::string_view value) {
  log.push_back(std::string(application) + "\\" + std::string(section) + "\\" + std::string(key) + "=" +
                std::string(value));
  values_[Path(application, section, key)] = std::string(value);
}

void MemorySettingsStore::DeleteSetting(std::string_view application, std::string_view section,
                                        std::string_view key) {
  values_.erase(Path(application, section, key));
}

std::optional<std::string> MemorySettingsStore::Find(const std::string& application, const std::string& section,
                                                     const std::string& key) const {
  const auto it = values_.find(Path(application, section, key));
  if (it == values_.end()) return std::nullopt;
  return it->second;
}

FakeDrive FakeDrives::Sized(std::uint64_t total_bytes, std::uint64_t free_bytes, int type) {
  FakeDrive d;
  d.type = type;
  d.counts = {8, 512, static_cast<std::uint32_t>(free_bytes / 4096), static_cast<std::uint32_t>(total_bytes / 4096)};
  return d;
}

void Gate::Open() {
  {
    const std::lock_guard lock(mutex_);
    open_ = true;
  }
  opened_.notify_all();
}

void Gate::Wait() {
  std::unique_lock lock(mutex_);
  ++waiting_;
  opened_.wait_for(lock, std::chrono::seconds(10), [this] { return open_; });
  --waiting_;
}

int Gate::Waiting() const {
  const std::lock_guard lock(mutex_);
  return waiting_;
}

std::optional<FakeDrive> FakeDrives::Find(std::string_view drive) {
  if (drive.size() < 2 || drive[1] != ':') return std::nullopt;
  std::optional<FakeDrive> found;
  {
    const std::lock_guard lock(mutex);
    const auto it = drives.find(static_cast<char>(std::toupper(static_cast<unsigned char>(drive[0]))));
    if (it != drives.end()) found = it->second;
  }
  if (found && found->hang) found->hang->Wait();
  return found;
}

std::optional<std::string> FakeDrives::LogicalDriveStrings() {
  if (list_fails) return std::nullopt;
  std::string raw;
  for (const auto& [letter, d] : drives) {
    raw += letter;
    raw += ":\\";
    raw += '\0';
  }
  raw += '\0';
  return raw;
}

int FakeDrives::DriveType(std::string_view drive) {
  // The type comes from the system's table at once, even for a drive that hangs.
  const std::lock_guard lock(mutex);
  if (drive.size() < 2 || drive[1] != ':') return kDriveNoRoot;
  const auto it = drives.find(static_cast<char>(std::toupper(static_cast<unsigned char>(drive[0]))));
  return it == drives.end() ? kDriveNoRoot : it->second.type;
}

std::optional<FreeSpaceCounts> FakeDrives::DiskFreeSpace(std::string_view drive) {
  const auto d = Find(drive);
  if (!d || !d->ready || d->space_fails) return std::nullopt;
  return d->counts;
}

std::optional<bool> FakeDrives::IsReady(std::string_view root) {
  {
    const std::lock_guard lock(mutex);
    ready_queries.emplace_back(root);
  }
  const auto d = Find(root);
  if (!d) return std::nullopt;
  return d->ready;
}

std::string FakeDrives::VolumeLabel(std::string_view drive) {
  const auto d = Find(drive);
  return d ? d->label : std::string();
}

std::string FakeProcess::Environment(std::string_view name) {
  const auto it = environment.find(std::string(name));
  return it == environment.end() ? std::string() : it->second;
}

int ScriptedDialogs::MessageBox(std::string_view text, int style, std::string_view title) {
  shown.push_back({std::string(text), style, std::string(title)});
  if (answers.empty()) return kAnswerOk;
  const int a = answers.front();
  answers.pop_front();
  return a;
}

bool PathLess::operator()(std::string_view a, std::string_view b) const {
  return std::lexicographical_compare(a.begin(), a.end(), b.begin(), b.end(), [](char x, char y) {
    return std::tolower(static_cast<unsigned char>(x)) < std::tolower(static_cast<unsigned char>(y));
  });
}

namespace {

bool SamePath(std::string_view a, std::string_view b) { return !PathLess{}(a, b) && !PathLess{}(b, a); }

// Whether `path` lies inside `folder`, and its part after "folder\".
std::optional<std::string> Below(std::string_view path, std::string_view folder) {
  if (path.size() <= folder.size() + 1 || path[folder.size()] != '\\') return std::nullopt;
  if (!SamePath(path.substr(0, folder.size()), folder)) return std::nullopt;
  return std::string(path.substr(folder.size() + 1));
}

std::string_view Trimmed(std::string_view path) {
  while (path.size() > 3 && path.back() == '\\') path.remove_suffix(1);
  return path;
}

}  // namespace

std::optional<std::vector<std::uint8_t>> FakeFiles::ReadWholeFile(std::string_view path) {
  const std::string key(path);
  if (std::find(unreadable.begin(), unreadable.end(), key) != unreadable.end()) return std::vector<std::uint8_t>{};
  const auto it = files.find(key);
  if (it == files.end()) return std::nullopt;
  return it->second;
}

namespace {

class FakeKey : public RegistryKey {
 public:
  FakeKey(const std::map<std::string, std::string>& values, bool close_fails)
      : values_(values), close_fails_(close_fails) {}
  std::optional<std::string> QueryString(std::string_view name, std::size_t) override {
    const auto it = values_.find(std::string(name));
    if (it == values_.end()) return std::nullopt;
    return it->second;
  }
  bool Close() override { return !close_fails_; }

 private:
  std::map<std::string, std::string> values_;
  bool close_fails_;
};

}  // namespace

std::unique_ptr<RegistryKey> FakeSystemInfo::OpenMachineKey(std::string_view path) {
  const auto it = keys.find(std::string(path));
  if (it == keys.end()) return nullptr;
  return std::make_unique<FakeKey>(it->second, close_fails);
}

std::optional<std::uint32_t> FakeFiles::Attributes(std::string_view path) {
  if (const auto it = folders.find(path); it != folders.end()) return it->second;
  if (files.count(path) != 0) return 0x20;  // archive
  return std::nullopt;
}

bool FakeFiles::FolderExists(std::string_view path) { return folders.count(Trimmed(path)) != 0; }

bool FakeFiles::ListingFinds(std::string_view path) { return Attributes(path).has_value(); }

bool FakeFiles::DeleteFolder(std::string_view path) {
  const std::string_view folder = Trimmed(path);
  const auto it = folders.find(folder);
  if (it == folders.end()) return false;
  folders.erase(it);
  std::erase_if(folders, [&](const auto& entry) { return Below(entry.first, folder).has_value(); });
  std::erase_if(files, [&](const auto& entry) { return Below(entry.first, folder).has_value(); });
  return true;
}

bool FakeFiles::CopyFolder(std::string_view source, std::string_view destination) {
  const std::string from(Trimmed(source)), to(Trimmed(destination));
  if (!FolderExists(from) || files.count(to) != 0) return false;
  folders.emplace(to, folders.at(from));
  for (const auto& [path, attributes] : std::map<std::string, std::uint32_t, PathLess>(folders))
    if (const auto rest = Below(path, from)) folders.emplace(to + "\\" + *rest, attributes);
  for (const auto& [path, bytes] : std::map<std::string, std::vector<std::uint8_t>, PathLess>(files))
    if (const auto rest = Below(path, from); rest && !FileCopy(path, to + "\\" + *rest)) return false;
  return true;
}

bool FakeFiles::FileCopy(std::string_view source, std::string_view destination) {
  const auto it = files.find(source);
  if (it == files.end() || folders.count(destination) != 0) return false;
  if (on_copy) on_copy(std::string(source), std::string(destination));
  if (copies_fail) return false;
  const auto bytes = it->second;
  files.insert_or_assign(std::string(destination), bytes);
  return true;
}

bool FakeFiles::FileDelete(std::string_view path) {
  const auto it = files.find(path);
  if (it == files.end()) return false;
  files.erase(it);
  return true;
}

bool FakeFiles::WriteWholeFile(std::string_view path, const std::vector<std::uint8_t>& bytes) {
  if (writes_fail || folders.count(path) != 0) return false;
  files.insert_or_assign(std::string(path), bytes);
  return true;
}

bool FakeFiles::CreateFolder(std::string_view path) {
  if (Attributes(path)) return false;
  folders.emplace(std::string(Trimmed(path)), 16u);  // a folder
  return true;
}

namespace {

class FakeShellIcon : public ShellIcon {
 public:
  explicit FakeShellIcon(std::uint32_t colour) : colour_(colour) {}
  std::vector<std::uint32_t> Render(int width, int height) const override {
    std::vector<std::uint32_t> pixels(static_cast<std::size_t>(width) * static_cast<std::size_t>(height), colour_);
    if (!pixels.empty()) pixels[0] = 0;
    return pixels;
  }

 private:
  std::uint32_t colour_;
};

}  // namespace

std::unique_ptr<ShellIcon> FakeShell::ExtractAssociatedIcon(std::string& path) {
  const auto it = icons.find(path);
  if (it == icons.end()) return nullptr;
  if (!it->second.program.empty()) path = it->second.program;
  return std::make_unique<FakeShellIcon>(it->second.colour);
}

}  // namespace quillet::testing

namespace quillet::testing {

// Finds the line "NAME TYPE "file"" of the resource script and reads the file.
std::optional<std::vector<std::uint8_t>> FakeResources::Resource(std::string_view type, std::string_view name) {
#ifdef QUILLET_SOURCE_DIR
  const std::string folder = std::string(QUILLET_SOURCE_DIR) + "/resources/";
  std::ifstream script(folder + "art.rc");
  const auto same = [](std::string_view a, std::string_view b) {
    return a.size() == b.size() && std::equal(a.begin(), a.end(), b.begin(), [](char x, char y) {
             return std::toupper(static_cast<unsigned char>(x)) == std::toupper(static_cast<unsigned char>(y));
           });
  };
  const std::string wanted_name = name.starts_with("#") ? std::string(name.substr(1)) : std::string(name);
  std::string line;
  while (std::getline(script, line)) {
    std::istringstream fields(line);
    std::string line_name, line_type, file;
    if (!(fields >> line_name >> line_type >> std::quoted(file))) continue;
    if (!same(line_name, wanted_name) || !same(line_type, type)) continue;
    std::ifstream in(folder + file, std::ios::binary);
    if (!in) return std::nullopt;
    return std::vector<std::uint8_t>(std::istreambuf_iterator<char>(in), std::istreambuf_iterator<char>());
  }
#else
  (void)type;
  (void)name;
#endif
  return std::nullopt;
}

}  // namespace quillet::testing
