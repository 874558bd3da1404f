// The settings store against the real registry of the prefix.
#include <gtest/gtest.h>

#include <optional>
#include <string>

#include "platform/win32/registry_settings_store.h"

namespace quillet::win32 {
namespace {

class RegistrySettingsStoreTest : public ::testing::Test {
 protected:
  void SetUp() override { Forget(); }
  void TearDown() override { Forget(); }
  void Forget() const { ::RegDeleteTreeW(HKEY_CURRENT_USER, key_.c_str()); }

  // A REG_SZ value under Form1 as the registry holds it, read without the store.
  std::optional<std::wstring> ReadRaw(const wchar_t* name) const {
    wchar_t text[512] = {};
    DWORD bytes = sizeof text;
    if (::RegGetValueW(HKEY_CURRENT_USER, (key_ + L"\\Form1").c_str(), name, RRF_RT_REG_SZ | RRF_NOEXPAND, nullptr,
                       text, &bytes) != ERROR_SUCCESS)
      return std::nullopt;
    return text;
  }

  RegistrySettingsStore store_;
  std::string app_ = "QuilletWineTest" + std::to_string(::GetCurrentProcessId());
  std::wstring key_ = L"Software\\VB and VBA Program Settings\\" + std::wstring(app_.begin(), app_.end());
};

// Each save replaces the value; an empty text is a value too, and text is
// UTF-8 on our side and UTF-16 in the registry, longer ones included.
TEST_F(RegistrySettingsStoreTest, SaveWritesARegSzValueNamedByTheKeyUnderTheSection) {
  struct Case {
    std::string value;
    std::wstring raw;
  };
  for (const Case& c : {Case{"30", L"30"}, Case{"", L""}, Case{"Fran\xC3\xA7ois \xE2\x82\xAC", L"Fran\u00E7ois \u20AC"},
                        Case{std::string(300, 'x'), std::wstring(300, L'x')}}) {
    store_.SaveSetting(app_, "Form1", "Timer", c.value);
    EXPECT_EQ(ReadRaw(L"Timer"), c.raw) << c.value;
    EXPECT_EQ(store_.GetSetting(app_, "Form1", "Timer", "fallback"), c.value);
  }
}

TEST_F(RegistrySettingsStoreTest, MissingKeyOrValueGivesTheFallbackAndDeleteRemovesOnlyThatValue) {
  EXPECT_EQ(store_.GetSetting(app_, "Form1", "THEME", "NORMAL"), "NORMAL");  // no key at all
  store_.SaveSetting(app_, "Form1", "3Lanuch", "C:\\Tools\\a.exe");
  store_.SaveSetting(app_, "Form1", "launch", "3");
  EXPECT_EQ(store_.GetSetting(app_, "Form1", "THEME", "NORMAL"), "NORMAL");  // key, no value
  EXPECT_EQ(store_.GetSetting(app_, "Form1", "THEME", ""), "");
  EXPECT_EQ(store_.GetSetting(app_, "Form11", "launch", "none"), "none");  // another section
  store_.DeleteSetting(app_, "Form1", "3Lanuch");
  EXPECT_EQ(ReadRaw(L"3Lanuch"), std::nullopt);
  EXPECT_EQ(store_.GetSetting(app_, "Form1", "3Lanuch", "gone"), "gone");
  EXPECT_EQ(store_.GetSetting(app_, "Form1", "launch", ""), "3");
  store_.DeleteSetting(app_, "Form1", "3Lanuch");  // deleting again does no harm
  store_.DeleteSetting(app_, "NoSuchSection", "x");
}

// The store keeps a section's key open; one deleted meanwhile by another
// program, and perhaps made again, is opened anew for writes and reads alike.
TEST_F(RegistrySettingsStoreTest, ASectionDeletedFromOutsideIsOpenedAnew) {
  store_.SaveSetting(app_, "Form1", "Timer", "30");
  Forget();
  store_.SaveSetting(app_, "Form1", "Timer", "45");
  EXPECT_EQ(ReadRaw(L"Timer"), L"45");
  Forget();
  const std::wstring section = key_ + L"\\Form1";
  ASSERT_EQ(::RegSetKeyValueW(HKEY_CURRENT_USER, section.c_str(), L"Timer", REG_SZ, L"60", 6), ERROR_SUCCESS);
  EXPECT_EQ(store_.GetSetting(app_, "Form1", "Timer", "gone"), "60");
}

}  // namespace
}  // namespace quillet::win32
