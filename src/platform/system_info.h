// What the system says about itself: its version and the machine's registry.
#pragma once

#include <cstddef>
#include <memory>
#include <optional>
#include <string>
#include <string_view>

namespace quillet {

// As the version call gives it: platform 0 Win32s, 1 the 9x family, 2 NT.
struct OsVersion {
  int platform_id = 0;
  int major = 0;
  int minor = 0;
};

// A registry key opened for reading.
class RegistryKey {
 public:
  virtual ~RegistryKey() = default;
  // A text value read into a buffer of `max_chars`; nothing when the read fails.
  [[nodiscard]] virtual std::optional<std::string> QueryString(std::string_view name, std::size_t max_chars) = 0;
  // True when the key closed without an error.
  [[nodiscard]] virtual bool Close() = 0;
};

class SystemInfoService {
 public:
  virtual ~SystemInfoService() = default;
  [[nodiscard]] virtual std::optional<OsVersion> Version() = 0;
  // A key below HKEY_LOCAL_MACHINE for reading; null when it can't be opened.
  [[nodiscard]] virtual std::unique_ptr<RegistryKey> OpenMachineKey(std::string_view path) = 0;
};

}  // namespace quillet
