#include "platform/win32/win32_files.h"

#include "platform/win32/handles.h"
#include "platform/win32/wide_text.h"
#include "platform/win32/win32.h"

namespace quillet::win32 {
namespace {

// Read-only, hidden, system, archive and normal: opens whatever kind of file is there.
constexpr DWORD kAnyFileAttributes = FILE_ATTRIBUTE_READONLY | FILE_ATTRIBUTE_HIDDEN | FILE_ATTRIBUTE_SYSTEM |
                                     FILE_ATTRIBUTE_ARCHIVE | FILE_ATTRIBUTE_NORMAL;

}  // namespace

std::optional<std::vector<std::uint8_t>> Win32Files::ReadWholeFile(std::string_view path) {
  const std::wstring wide = Widen(path);
  if (::GetFileAttributesW(wide.c_str()) == INVALID_FILE_ATTRIBUTES) return std::nullopt;
  std::vector<std::uint8_t> bytes;
  const UniqueFile file(::CreateFileW(wide.c_str(), GENERIC_READ, FILE_SHARE_READ, nullptr, OPEN_EXISTING,
                                      kAnyFileAttributes, nullptr));
  if (!file) return bytes;
  const DWORD size = ::GetFileSize(file.get(), nullptr);
  if (size == INVALID_FILE_SIZE || size == 0) return bytes;
  bytes.resize(size);
  DWORD read = 0;
  if (!::ReadFile(file.get(), bytes.data(), size, &read, nullptr) || read < size) bytes.clear();
  return bytes;
}

std::optional<std::uint32_t> Win32Files::Attributes(std::string_view path) {
  const DWORD attributes = ::GetFileAttributesW(Widen(path).c_str());
  if (attributes == INVALID_FILE_ATTRIBUTES) return std::nullopt;
  return attributes;
}

}  // namespace quillet::win32
