// The services a form may use, handed to it at construction.
#pragma once

#include "platform/clock.h"
#include "platform/devices.h"
#include "platform/dialogs.h"
#include "platform/drives.h"
#include "platform/files.h"
#include "platform/notification_area.h"
#include "platform/process.h"
#include "platform/resources.h"
#include "platform/session.h"
#include "platform/settings_store.h"
#include "platform/shell.h"
#include "platform/system_info.h"

namespace quillet {

struct Platform {
  SettingsStore& settings;
  DriveService& drives;
  ProcessService& process;
  ClockService& clock;
  DialogService& dialogs;
  FileService& files;
  ResourceService& resources;
  ShellService& shell;
  SessionService& session;
  DeviceService& devices;
  SystemInfoService& system;
  NotificationAreaService& tray;
};

}  // namespace quillet
