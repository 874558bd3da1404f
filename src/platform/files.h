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
  // Whether a folder is at `path`.
  [[nodiscard]] virtual bool FolderExists(std::string_view path) = 0;
  // Whether a listing of `path`, folders included, finds a file or folder.
  [[nodiscard]] virtual bool ListingFinds(std::string_view path) = 0;
  // Deletes a folder and all in it, read-only files too; true when all went.
  [[nodiscard]] virtual bool DeleteFolder(std::string_view path) = 0;
  // Copies a folder with all in it into `destination`, made when missing;
  // files there of the same names are replaced. True when all was copied.
  [[nodiscard]] virtual bool CopyFolder(std::string_view source, std::string_view destination) = 0;
  // Copies one file, replacing a file of that name.
  [[nodiscard]] virtual bool FileCopy(std::string_view source, std::string_view destination) = 0;
  [[nodiscard]] virtual bool FileDelete(std::string_view path) = 0;
  // Writes `bytes` as the whole file at `path`, replacing one that is there.
  [[nodiscard]] virtual bool WriteWholeFile(std::string_view path, const std::vector<std::uint8_t>& bytes) = 0;
  // Makes one folder; its parent must be there.
  [[nodiscard]] virtual bool CreateFolder(std::string_view path) = 0;
};

}  // namespace quillet
