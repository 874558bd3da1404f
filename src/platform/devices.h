// Drives as devices: media control commands for the optical drives' doors.
#pragma once

#include <string_view>

namespace quillet {

class DeviceService {
 public:
  virtual ~DeviceService() = default;
  // A media control interface command; its answer isn't looked at.
  virtual void SendMciString(std::string_view command) = 0;
};

}  // namespace quillet
