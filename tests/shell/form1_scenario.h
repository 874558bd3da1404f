// A side bar started in the headless host on fake drives and settings.
#pragma once

#include <initializer_list>
#include <memory>
#include <string>
#include <utility>
#include <vector>

#include <gtest/gtest.h>

#include "fakes/fake_platform.h"
#include "headless/headless_ui.h"
#include "shell/Form1.h"

namespace quillet::testing {

class Form1Scenario : public ::testing::Test {
 protected:
  Form1Scenario() {
    fake.drives.drives['C'] = FakeDrives::Sized(100ull << 30, 40ull << 30);
    fake.drives.drives['D'] = FakeDrives::Sized(500ull << 30, 300ull << 30);
  }

  void Store(const std::string& key, const std::string& value, const std::string& section = "Form1") {
    fake.settings.SaveSetting(fake.process.exe_name, section, key, value);
    fake.settings.log.clear();
  }

  Form1& Start() {
    form = std::make_unique<Form1>(ui, fake.platform);
    form->Load();
    if (!ui.Ended()) form->Show();
    return *form;
  }

  std::string Setting(const std::string& key) { return fake.Setting(key).value_or("<missing>"); }

  // A side bar of its own on the given stored settings, for tables of cases.
  struct Started {
    FakePlatform fake;
    HeadlessUi ui;
    std::unique_ptr<Form1> form;
  };
  static std::unique_ptr<Started> StartWith(std::initializer_list<std::pair<std::string, std::string>> stored) {
    auto run = std::make_unique<Started>();
    for (const auto& [key, value] : stored) run->fake.settings.SaveSetting("Quillet", "Form1", key, value);
    run->fake.settings.log.clear();
    run->form = std::make_unique<Form1>(run->ui, run->fake.platform);
    run->form->Load();
    return run;
  }

  // The values saved under Timer, in order.
  static std::vector<std::string> TimerSaves(const FakePlatform& fake) {
    const std::string prefix = "Quillet\\Form1\\Timer=";
    std::vector<std::string> saves;
    for (const auto& entry : fake.settings.log)
      if (entry.rfind(prefix, 0) == 0) saves.push_back(entry.substr(prefix.size()));
    return saves;
  }

  // Mouse input at form coordinates in twips; the host's pointer follows it.
  void Mouse(MouseEventKind kind, int button, int x, int y) {
    ui.pointer = {form->Left() + x, form->Top() + y};
    form->DispatchMouse(kind, {button, 0, x, y});
  }
  void MoveOver(const Visual& v, int dx = 30, int dy = 30) {
    Mouse(MouseEventKind::kMove, 0, v.Left() + dx, v.Top() + dy);
  }
  void ClickOn(const Visual& v, int dx = 30, int dy = 30) {
    Mouse(MouseEventKind::kDown, kLeftButton, v.Left() + dx, v.Top() + dy);
    Mouse(MouseEventKind::kUp, kLeftButton, v.Left() + dx, v.Top() + dy);
  }

  FakePlatform fake;
  HeadlessUi ui;
  std::unique_ptr<Form1> form;
};

}  // namespace quillet::testing
