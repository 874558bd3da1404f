// Resources of the running executable.
#pragma once

#include "platform/resources.h"

namespace quillet::win32 {

class Win32Resources : public ResourceService {
 public:
  [[nodiscard]] std::optional<std::vector<std::uint8_t>> Resource(std::string_view type,
                                                                  std::string_view name) override;
};

}  // namespace quillet::win32
