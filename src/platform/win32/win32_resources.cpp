#include "platform/win32/win32_resources.h"

#include <string>

#include "platform/win32/win32.h"

namespace quillet::win32 {

std::optional<std::vector<std::uint8_t>> Win32Resources::Resource(std::string_view type, std::string_view name) {
  const std::string type_text(type), name_text(name);
  // A loaded resource belongs to the module: nothing to free.
  const HRSRC found = ::FindResourceA(nullptr, name_text.c_str(), type_text.c_str());
  if (found == nullptr) return std::nullopt;
  const HGLOBAL loaded = ::LoadResource(nullptr, found);
  const DWORD size = ::SizeofResource(nullptr, found);
  const void* data = loaded != nullptr ? ::LockResource(loaded) : nullptr;
  if (data == nullptr) return std::nullopt;
  const auto* bytes = static_cast<const std::uint8_t*>(data);
  return std::vector<std::uint8_t>(bytes, bytes + size);
}

}  // namespace quillet::win32
