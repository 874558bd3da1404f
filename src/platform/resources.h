// Data built into the program: the pictures of the bar.
#pragma once

#include <cstdint>
#include <optional>
#include <string_view>
#include <vector>

namespace quillet {

class ResourceService {
 public:
  virtual ~ResourceService() = default;
  // The bytes of the resource of `type` named `name` ("#101" names id 101);
  // nothing when the program has none.
  [[nodiscard]] virtual std::optional<std::vector<std::uint8_t>> Resource(std::string_view type,
                                                                          std::string_view name) = 0;
};

}  // namespace quillet
