// Whole files read through the wide calls, in the prefix's temporary folder.
#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "platform/win32/handles.h"
#include "platform/win32/wide_text.h"
#include "platform/win32/win32_files.h"

namespace quillet::win32 {
namespace {

std::string TempFolder() {
  wchar_t temp[MAX_PATH] = {};
  const DWORD n = ::GetTempPathW(MAX_PATH, temp);
  return Narrow(std::wstring(temp, n));
}

void WriteFile(const std::string& path, const std::vector<std::uint8_t>& bytes) {
  const UniqueFile file(::CreateFileW(Widen(path).c_str(), GENERIC_WRITE, 0, nullptr, CREATE_ALWAYS,
                                      FILE_ATTRIBUTE_NORMAL, nullptr));
  ASSERT_TRUE(file);
  DWORD written = 0;
  ASSERT_TRUE(::WriteFile(file.get(), bytes.data(), static_cast<DWORD>(bytes.size()), &written, nullptr));
}

TEST(Win32FilesTest, ReadsTheWholeFileByAUtf8Name) {
  const std::string path = TempFolder() + "quillet spin \xC3\xA9\xE2\x82\xAC.gif";
  std::vector<std::uint8_t> bytes(70000);
  for (std::size_t i = 0; i < bytes.size(); ++i) bytes[i] = static_cast<std::uint8_t>(i * 7);
  WriteFile(path, bytes);
  ::SetFileAttributesW(Widen(path).c_str(), FILE_ATTRIBUTE_READONLY | FILE_ATTRIBUTE_HIDDEN);
  Win32Files files;
  EXPECT_EQ(files.ReadWholeFile(path), bytes);
  ::SetFileAttributesW(Widen(path).c_str(), FILE_ATTRIBUTE_NORMAL);
  ::DeleteFileW(Widen(path).c_str());
  EXPECT_EQ(files.ReadWholeFile(path), std::nullopt);
}

TEST(Win32FilesTest, SomethingThereButUnreadableGivesNoBytes) {
  Win32Files files;
  const std::string folder = TempFolder() + "quillet-folder.gif";
  ::CreateDirectoryW(Widen(folder).c_str(), nullptr);
  EXPECT_EQ(files.ReadWholeFile(folder), std::vector<std::uint8_t>{});
  ::RemoveDirectoryW(Widen(folder).c_str());

  const std::string locked = TempFolder() + "quillet-locked.gif";
  WriteFile(locked, {1, 2, 3});
  {
    const UniqueFile holder(::CreateFileW(Widen(locked).c_str(), GENERIC_READ, 0, nullptr, OPEN_EXISTING,
                                          FILE_ATTRIBUTE_NORMAL, nullptr));
    ASSERT_TRUE(holder);
    EXPECT_EQ(files.ReadWholeFile(locked), std::vector<std::uint8_t>{});
  }
  EXPECT_EQ(files.ReadWholeFile(locked), (std::vector<std::uint8_t>{1, 2, 3}));
  ::DeleteFileW(Widen(locked).c_str());
}

TEST(Win32FilesTest, WriteWholeFileReplacesWhatWasThere) {
  Win32Files files;
  const std::string path = TempFolder() + "quillet slot \xC3\xA9.bmp";
  std::vector<std::uint8_t> bytes(70000);
  for (std::size_t i = 0; i < bytes.size(); ++i) bytes[i] = static_cast<std::uint8_t>(i * 13);
  EXPECT_TRUE(files.WriteWholeFile(path, bytes));
  EXPECT_EQ(files.ReadWholeFile(path), bytes);

  const std::vector<std::uint8_t> shorter{'B', 'M', 0};
  EXPECT_TRUE(files.WriteWholeFile(path, shorter));
  EXPECT_EQ(files.ReadWholeFile(path), shorter);
  EXPECT_TRUE(files.WriteWholeFile(path, {}));
  EXPECT_EQ(files.Attributes(path).has_value(), true);
  ::DeleteFileW(Widen(path).c_str());

  EXPECT_FALSE(files.WriteWholeFile(TempFolder() + "quillet no such folder\\slot.bmp", shorter));
}

TEST(Win32FilesTest, CreateFolderMakesOneFolderOnce) {
  Win32Files files;
  const std::string folder = TempFolder() + "quillet launch \xE2\x82\xAC";
  ::RemoveDirectoryW(Widen(folder).c_str());
  EXPECT_TRUE(files.CreateFolder(folder));
  EXPECT_TRUE(files.FolderExists(folder));
  EXPECT_FALSE(files.CreateFolder(folder));
  // Its parent must be there.
  EXPECT_FALSE(files.CreateFolder(folder + "\\missing\\child"));
  EXPECT_FALSE(files.FolderExists(folder + "\\missing"));
  ::RemoveDirectoryW(Widen(folder).c_str());
}

}  // namespace
}  // namespace quillet::win32
