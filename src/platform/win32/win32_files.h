// Files through the wide Win32 calls.
#pragma once

#include "platform/files.h"

namespace quillet::win32 {

class Win32Files : public FileService {
 public:
  [[nodiscard]] std::optional<std::vector<std::uint8_t>> ReadWholeFile(std::string_view path) override;
  [[nodiscard]] std::optional<std::uint32_t> Attributes(std::string_view path) override;
  [[nodiscard]] bool FolderExists(std::string_view path) override;
  [[nodiscard]] bool ListingFinds(std::string_view path) override;
  [[nodiscard]] bool DeleteFolder(std::string_view path) override;
  [[nodiscard]] bool CopyFolder(std::string_view source, std::string_view destination) override;
  [[nodiscard]] bool FileCopy(std::string_view source, std::string_view destination) override;
  [[nodiscard]] bool FileDelete(std::string_view path) override;
  [[nodiscard]] bool WriteWholeFile(std::string_view path, const std::vector<std::uint8_t>& bytes) override;
  [[nodiscard]] bool CreateFolder(std::string_view path) override;
};

}  // namespace quillet::win32
