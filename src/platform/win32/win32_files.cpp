#include "platform/win32/win32_files.h"

#include <functional>
#include <string>

#include "platform/win32/handles.h"
#include "platform/win32/wide_text.h"
#include "platform/win32/win32.h"

namespace quillet::win32 {
namespace {

// Read-only, hidden, system, archive and normal: opens whatever kind of file is there.
constexpr DWORD kAnyFileAttributes = FILE_ATTRIBUTE_READONLY | FILE_ATTRIBUTE_HIDDEN | FILE_ATTRIBUTE_SYSTEM |
                                     FILE_ATTRIBUTE_ARCHIVE | FILE_ATTRIBUTE_NORMAL;

// FindFirstFile reports failure as INVALID_HANDLE_VALUE and is closed by FindClose.
struct FindHandleTraits {
  using pointer = HANDLE;
  static constexpr HandleKind kKind = HandleKind::kKernel;
  static pointer Invalid() noexcept { return INVALID_HANDLE_VALUE; }
  static void Close(pointer value) noexcept { ::FindClose(value); }
};
using UniqueFind = UniqueAny<FindHandleTraits>;

bool IsFolder(DWORD attributes) {
  return attributes != INVALID_FILE_ATTRIBUTES && (attributes & FILE_ATTRIBUTE_DIRECTORY) != 0;
}

// Calls `each` with the full path and the entry of everything in `folder`
// but "." and ".."; false when the folder cannot be listed or `each` failed once.
bool ForEachEntry(const std::wstring& folder, const std::function<bool(const std::wstring&, const WIN32_FIND_DATAW&)>& each) {
  WIN32_FIND_DATAW entry{};
  const UniqueFind find(::FindFirstFileW((folder + L"\\*").c_str(), &entry));
  if (!find) return false;
  bool all = true;
  do {
    const std::wstring name = entry.cFileName;
    if (name == L"." || name == L"..") continue;
    if (!each(folder + L"\\" + name, entry)) all = false;
  } while (::FindNextFileW(find.get(), &entry));
  return all && ::GetLastError() == ERROR_NO_MORE_FILES;
}

// Read-only files and folders refuse deletion: the attribute goes first.
bool DeleteForced(const std::wstring& file) {
  ::SetFileAttributesW(file.c_str(), FILE_ATTRIBUTE_NORMAL);
  return ::DeleteFileW(file.c_str()) != FALSE;
}

bool DeleteTree(const std::wstring& folder) {
  const bool contents = ForEachEntry(folder, [](const std::wstring& path, const WIN32_FIND_DATAW& entry) {
    // A link to a folder is removed itself, never followed.
    if ((entry.dwFileAttributes & FILE_ATTRIBUTE_DIRECTORY) == 0) return DeleteForced(path);
    if ((entry.dwFileAttributes & FILE_ATTRIBUTE_REPARSE_POINT) != 0) {
      ::SetFileAttributesW(path.c_str(), FILE_ATTRIBUTE_NORMAL);
      return ::RemoveDirectoryW(path.c_str()) != FALSE;
    }
    return DeleteTree(path);
  });
  ::SetFileAttributesW(folder.c_str(), FILE_ATTRIBUTE_NORMAL);
  return ::RemoveDirectoryW(folder.c_str()) != FALSE && contents;
}

bool CopyTree(const std::wstring& source, const std::wstring& destination) {
  if (!::CreateDirectoryW(destination.c_str(), nullptr) && !IsFolder(::GetFileAttributesW(destination.c_str())))
    return false;
  return ForEachEntry(source, [&](const std::wstring& path, const WIN32_FIND_DATAW& entry) {
    const std::wstring target = destination + L"\\" + entry.cFileName;
    if ((entry.dwFileAttributes & FILE_ATTRIBUTE_DIRECTORY) != 0) return CopyTree(path, target);
    return ::CopyFileW(path.c_str(), target.c_str(), FALSE) != FALSE;
  });
}

std::wstring WithoutTrailingSlash(std::string_view path) {
  std::wstring wide = Widen(path);
  while (wide.size() > 3 && (wide.back() == L'\\' || wide.back() == L'/')) wide.pop_back();
  return wide;
}

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

bool Win32Files::FolderExists(std::string_view path) {
  return IsFolder(::GetFileAttributesW(WithoutTrailingSlash(path).c_str()));
}

bool Win32Files::ListingFinds(std::string_view path) {
  WIN32_FIND_DATAW entry{};
  const UniqueFind find(::FindFirstFileW(Widen(path).c_str(), &entry));
  return static_cast<bool>(find);
}

bool Win32Files::DeleteFolder(std::string_view path) {
  const std::wstring folder = WithoutTrailingSlash(path);
  return IsFolder(::GetFileAttributesW(folder.c_str())) && DeleteTree(folder);
}

bool Win32Files::CopyFolder(std::string_view source, std::string_view destination) {
  const std::wstring from = WithoutTrailingSlash(source);
  return IsFolder(::GetFileAttributesW(from.c_str())) && CopyTree(from, WithoutTrailingSlash(destination));
}

bool Win32Files::FileCopy(std::string_view source, std::string_view destination) {
  return ::CopyFileW(Widen(source).c_str(), Widen(destination).c_str(), FALSE) != FALSE;
}

bool Win32Files::FileDelete(std::string_view path) { return ::DeleteFileW(Widen(path).c_str()) != FALSE; }

bool Win32Files::WriteWholeFile(std::string_view path, const std::vector<std::uint8_t>& bytes) {
  if (bytes.size() > MAXDWORD) return false;
  const UniqueFile file(::CreateFileW(Widen(path).c_str(), GENERIC_WRITE, 0, nullptr, CREATE_ALWAYS,
                                      FILE_ATTRIBUTE_NORMAL, nullptr));
  if (!file) return false;
  if (bytes.empty()) return true;
  const auto size = static_cast<DWORD>(bytes.size());
  DWORD written = 0;
  return ::WriteFile(file.get(), bytes.data(), size, &written, nullptr) && written == size;
}

bool Win32Files::CreateFolder(std::string_view path) {
  return ::CreateDirectoryW(Widen(path).c_str(), nullptr) != FALSE;
}

}  // namespace quillet::win32
