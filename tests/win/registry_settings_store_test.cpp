// The settings store against the real registry of the prefix.
#include <gtest/gtest.h>

#include <string>

#include "platform/win32/handles.h"
#include "platform/win32/registry_settings_store.h"

namespace quillet::win32 {
namespace {

constexpr const wchar_t* kBase = L"Software\\VB and VBA Program Settings\\";

class RegistrySettingsStoreTest : public ::testing::Test {
 protected:
  void SetUp() override {
    app_ = "QuilletWineTest" + std::to_string(::GetCurrentProcessId());
    wide_app_ = std::wstring(app_.begin(), app_.end());
    ::RegDeleteTreeW(HKEY_CURRENT_USER, (kBase + wide_app_).c_str());
  }
  void TearDown() override { ::RegDeleteTreeW(HKEY_CURRENT_USER, (kBase + wide_app_).c_str()); }

  // What the registry itself holds, read without the store.
  struct Raw {
    LSTATUS status = ERROR_FILE_NOT_FOUND;
    DWORD type = REG_NONE;
    std::wstring text;
  };
  Raw ReadRaw(const std::wstring& section, const std::wstring& name) const {
    Raw raw;
    UniqueKey key;
    raw.status = ::RegOpenKeyExW(HKEY_CURRENT_USER, (kBase + wide_app_ + L"\\" + section).c_str(), 0,
                                 KEY_QUERY_VALUE, key.put());
    if (raw.status != ERROR_SUCCESS) return raw;
    wchar_t buffer[256] = {};
    DWORD bytes = sizeof buffer - sizeof(wchar_t);
    raw.status = ::RegQueryValueExW(key.get(), name.c_str(), nullptr, &raw.type,
                                    reinterpret_cast<BYTE*>(buffer), &bytes);
    raw.text.assign(buffer, bytes / sizeof(wchar_t));
    if (!raw.text.empty() && raw.text.back() == L'\0') raw.text.pop_back();
    return raw;
  }

  RegistrySettingsStore store_;
  std::string app_;
  std::wstring wide_app_;
};

TEST_F(RegistrySettingsStoreTest, SaveWritesARegSzValueNamedByTheKeyUnderTheSection) {
  store_.SaveSetting(app_, "Form1", "Timer", "30");
  const Raw raw = ReadRaw(L"Form1", L"Timer");
  ASSERT_EQ(raw.status, ERROR_SUCCESS);
  EXPECT_EQ(raw.type, static_cast<DWORD>(REG_SZ));
  EXPECT_EQ(raw.text, L"30");
  EXPECT_EQ(store_.GetSetting(app_, "Form1", "Timer", "fallback"), "30");

  store_.SaveSetting(app_, "Form1", "Timer", "");  // replaced, and an empty text is a value
  EXPECT_EQ(ReadRaw(L"Form1", L"Timer").text, L"");
  EXPECT_EQ(store_.GetSetting(app_, "Form1", "Timer", "fallback"), "");
}

TEST_F(RegistrySettingsStoreTest, MissingKeyOrValueGivesTheFallback) {
  EXPECT_EQ(store_.GetSetting(app_, "Form1", "THEME", "NORMAL"), "NORMAL");  // no key at all
  store_.SaveSetting(app_, "Form1", "LB", "E");
  EXPECT_EQ(store_.GetSetting(app_, "Form1", "THEME", "NORMAL"), "NORMAL");  // key, no value
  EXPECT_EQ(store_.GetSetting(app_, "Form1", "THEME", ""), "");
  EXPECT_EQ(store_.GetSetting(app_, "Form11", "LB", "none"), "none");  // another section
}

TEST_F(RegistrySettingsStoreTest, DeleteRemovesOnlyThatValue) {
  store_.SaveSetting(app_, "Form1", "3Lanuch", "C:\\Tools\\a.exe");
  store_.SaveSetting(app_, "Form1", "launch", "3");
  store_.DeleteSetting(app_, "Form1", "3Lanuch");
  EXPECT_EQ(ReadRaw(L"Form1", L"3Lanuch").status, ERROR_FILE_NOT_FOUND);
  EXPECT_EQ(store_.GetSetting(app_, "Form1", "3Lanuch", "gone"), "gone");
  EXPECT_EQ(store_.GetSetting(app_, "Form1", "launch", ""), "3");
  store_.DeleteSetting(app_, "Form1", "3Lanuch");  // deleting again does no harm
  store_.DeleteSetting(app_, "NoSuchSection", "x");
}

TEST_F(RegistrySettingsStoreTest, TextIsUtf8OnOurSideAndUtf16InTheRegistry) {
  store_.SaveSetting(app_, "Form1", "Font", "Fran\xC3\xA7ois \xE2\x82\xAC");  // "François €"
  EXPECT_EQ(ReadRaw(L"Form1", L"Font").text, L"Fran\u00E7ois \u20AC");
  EXPECT_EQ(store_.GetSetting(app_, "Form1", "Font", ""), "Fran\xC3\xA7ois \xE2\x82\xAC");
}

}  // namespace
}  // namespace quillet::win32
