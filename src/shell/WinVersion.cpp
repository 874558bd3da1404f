#include "shell/WinVersion.h"

namespace quillet {

std::string QueryRegString(RegistryKey& key, std::string_view name) {
  constexpr std::size_t kBufferChars = 256;
  const auto text = key.QueryString(name, kBufferChars);
  return text ? *text : "<Error>";
}

std::string ProductNameFromRegistry(SystemInfoService& system, DialogService& dialogs) {
  const auto key = system.OpenMachineKey("SOFTWARE\\Microsoft\\Windows NT\\CurrentVersion");
  if (!key) {
    dialogs.MessageBox("Error opening key.", kOkOnly, "Quillet");
    return "";
  }
  std::string name = QueryRegString(*key, "ProductName");
  if (!key->Close()) dialogs.MessageBox("Error closing key.", kOkOnly, "Quillet");
  return name;
}

}  // namespace quillet
