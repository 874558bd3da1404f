// Files and folders as the system keeps them.
#pragma once

#include <cstdint>
#include <optional>
#include <string_view>
#include <vector>

namespace quillet {

class FileService {
 public:
  virtual ~FileService() = default;
  // The whole file at `path` (UTF-8). Nothing when no file or folder is
  // there; no bytes when it is there but cannot be read in full.
  [[nodiscard]] virtual std::optional<std::vector<std::uint8_t>> ReadWholeFile(std::string_view path) = 0;
  // The attribute bits of a file or folder (16: a folder); nothing when there is none.
  [[nodiscard]] virtual std::optional<std::uint32_t> Attributes(std::string_view path) = 0;
};

}  // namespace quillet
