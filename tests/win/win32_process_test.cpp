// The running program: its name, folder, environment and single instance.
// Other processes and renamed copies are left to the end-to-end start-up test.
#include <gtest/gtest.h>

#include <string>

#include "platform/win32/wide_text.h"
#include "platform/win32/win32_process.h"

namespace quillet::win32 {
namespace {

TEST(Win32ProcessTest, NameAndFolderOfTheRunningExecutable) {
  Win32Process process;
  EXPECT_EQ(process.ExecutableName(), "quillet_win_tests");
  const std::string folder = process.ProgramFolder();
  ASSERT_FALSE(folder.empty());
  EXPECT_NE(folder.back(), '\\');
  EXPECT_EQ(Widen(folder) + L"\\quillet_win_tests.exe", Win32Process::ExecutablePath());
}

TEST(Win32ProcessTest, EnvironmentVariablesAsUtf8) {
  Win32Process process;
  ASSERT_TRUE(::SetEnvironmentVariableW(L"QUILLET_TEST_VALUE", L"C:\u00E9"));
  EXPECT_EQ(process.Environment("QUILLET_TEST_VALUE"), "C:\xC3\xA9");
  ::SetEnvironmentVariableW(L"QUILLET_TEST_VALUE", nullptr);
  EXPECT_EQ(process.Environment("QUILLET_TEST_VALUE"), "");
  ASSERT_TRUE(::SetEnvironmentVariableW(L"QUILLET_TEST_LONG", std::wstring(1000, L'x').c_str()));
  EXPECT_EQ(process.Environment("QUILLET_TEST_LONG"), std::string(1000, 'x'));
  ::SetEnvironmentVariableW(L"QUILLET_TEST_LONG", nullptr);
}

TEST(Win32ProcessTest, MutexNameFoldsCaseAndSeparatorsButNotTheFileName) {
  const auto name = Win32Process::InstanceMutexName;
  EXPECT_EQ(name(L"C:\\Program Files\\Quillet\\Quillet.exe"), name(L"c:\\PROGRAM FILES\\quillet\\QUILLET.EXE"));
  EXPECT_NE(name(L"C:\\Program Files\\Quillet\\Quillet.exe"), name(L"C:\\Program Files\\Quillet\\Quillet2.exe"));
  EXPECT_NE(name(L"C:\\A\\Quillet.exe"), name(L"C:\\B\\Quillet.exe"));
  const std::wstring n = name(L"C:\\A\\Quillet.exe");
  EXPECT_EQ(n.find(L'\\', n.find(L'\\') + 1), std::wstring::npos) << "only the namespace's backslash";
  // Deep paths stay within the system's limit and still differ by their start.
  const std::wstring deep(300, L'd');
  EXPECT_LT(name(L"C:\\" + deep + L"\\Quillet.exe").size(), std::size_t{MAX_PATH});
  EXPECT_NE(name(L"C:\\" + deep + L"\\Quillet.exe"), name(L"D:\\" + deep + L"\\Quillet.exe"));
}

TEST(Win32ProcessTest, ASecondObjectOfTheSameExecutableSeesTheFirst) {
  Win32Process first;
  ASSERT_FALSE(first.PreviousInstance());
  EXPECT_FALSE(first.PreviousInstance()) << "the answer holds";
  {
    Win32Process second;
    EXPECT_TRUE(second.PreviousInstance());
  }
}

}  // namespace
}  // namespace quillet::win32
