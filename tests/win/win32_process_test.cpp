// The running program: its name, folder, environment and single instance.
#include <gtest/gtest.h>

#include <cstdlib>
#include <string>

#include "platform/win32/handles.h"
#include "platform/win32/wide_text.h"
#include "platform/win32/win32_process.h"

namespace quillet::win32 {
namespace {

constexpr int kChildSawPrevious = 10;
constexpr int kChildSawNone = 11;

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

// Runs `exe` as a child that reports what a fresh Win32Process sees.
int RunInstanceProbe(const std::wstring& exe) {
  std::wstring command = L"\"" + exe + L"\" --gtest_also_run_disabled_tests --gtest_filter=InstanceProbe.*";
  STARTUPINFOW startup{};
  startup.cb = sizeof startup;
  PROCESS_INFORMATION info{};
  if (!::CreateProcessW(exe.c_str(), command.data(), nullptr, nullptr, FALSE, 0, nullptr, nullptr, &startup, &info))
    return -1;
  const UniqueHandle process(info.hProcess), thread(info.hThread);
  if (::WaitForSingleObject(process.get(), 60000) != WAIT_OBJECT_0) return -2;
  DWORD code = 0;
  ::GetExitCodeProcess(process.get(), &code);
  return static_cast<int>(code);
}

TEST(Win32ProcessTest, AnotherProcessSeesTheInstanceButARenamedCopyDoesNot) {
  Win32Process first;
  ASSERT_FALSE(first.PreviousInstance());
  const std::wstring exe = Win32Process::ExecutablePath();
  EXPECT_EQ(RunInstanceProbe(exe), kChildSawPrevious);

  wchar_t temp[MAX_PATH] = {};
  ASSERT_NE(::GetTempPathW(MAX_PATH, temp), 0u);
  const std::wstring copy = std::wstring(temp) + L"quillet_win_tests_renamed.exe";
  ASSERT_TRUE(::CopyFileW(exe.c_str(), copy.c_str(), FALSE));
  EXPECT_EQ(RunInstanceProbe(copy), kChildSawNone);
  ::DeleteFileW(copy.c_str());
}

// Not a test of its own: the child process of the test above. Its exit code
// is the answer, so a filter that matched nothing could not pass for it.
TEST(InstanceProbe, DISABLED_ExitCodeTellsWhetherAPreviousInstanceRuns) {
  Win32Process probe;
  std::exit(probe.PreviousInstance() ? kChildSawPrevious : kChildSawNone);
}

}  // namespace
}  // namespace quillet::win32
