// Files through the wide Win32 calls.
#pragma once

#include "platform/files.h"

namespace quillet::win32 {

class Win32Files : public FileService {
 public:
  [[nodiscard]] std::optional<std::vector<std::uint8_t>> ReadWholeFile(std::string_view path) override;
  [[nodiscard]] std::optional<std::uint32_t> Attributes(std::string_view path) override;
};

}  // namespace quillet::win32
