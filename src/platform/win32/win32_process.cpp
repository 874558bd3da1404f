#include "platform/win32/win32_process.h"

#include "platform/win32/wide_text.h"

namespace quillet::win32 {
namespace {

// Mutex names are limited to MAX_PATH characters; a deep path keeps its tail
// and a hash of the whole so that two long paths still differ.
constexpr std::size_t kMaxMutexName = 200;

std::uint64_t Fnv1a(std::wstring_view text) {
  std::uint64_t hash = 14695981039346656037ull;
  for (const wchar_t c : text) {
    hash ^= static_cast<std::uint16_t>(c);
    hash *= 1099511628211ull;
  }
  return hash;
}

}  // namespace

std::wstring Win32Process::ExecutablePath() {
  std::wstring path(MAX_PATH, L'\0');
  for (;;) {
    const DWORD length = ::GetModuleFileNameW(nullptr, path.data(), static_cast<DWORD>(path.size()));
    if (length == 0) return {};
    if (length < path.size()) {
      path.resize(length);
      return path;
    }
    path.resize(path.size() * 2);
  }
}

std::string Win32Process::ExecutableName() {
  const std::wstring path = ExecutablePath();
  std::wstring name = path.substr(path.find_last_of(L"\\/") + 1);
  if (const auto dot = name.rfind(L'.'); dot != std::wstring::npos) name.resize(dot);
  return Narrow(name);
}

std::string Win32Process::ProgramFolder() {
  const std::wstring path = ExecutablePath();
  const auto slash = path.find_last_of(L"\\/");
  return slash == std::wstring::npos ? std::string() : Narrow(path.substr(0, slash));
}

std::string Win32Process::Environment(std::string_view name) {
  const std::wstring wide_name = Widen(name);
  std::wstring value(256, L'\0');
  for (;;) {
    const DWORD length =
        ::GetEnvironmentVariableW(wide_name.c_str(), value.data(), static_cast<DWORD>(value.size()));
    if (length == 0) return {};
    if (length < value.size()) {
      value.resize(length);
      return Narrow(value);
    }
    value.resize(length);  // length includes the terminator here
  }
}

std::wstring Win32Process::InstanceMutexName(std::wstring_view executable_path) {
  std::wstring folded(executable_path);
  if (!folded.empty())
    ::CharLowerBuffW(folded.data(), static_cast<DWORD>(folded.size()));
  for (wchar_t& c : folded)
    if (c == L'\\') c = L'/';
  std::wstring name = L"Local\\Quillet.Instance:" + folded;
  if (name.size() > kMaxMutexName) {
    wchar_t hash[17];
    ::wsprintfW(hash, L"%08x%08x", static_cast<unsigned>(Fnv1a(folded) >> 32),
                static_cast<unsigned>(Fnv1a(folded)));
    name = L"Local\\Quillet.Instance#" + std::wstring(hash) + L":" + folded.substr(folded.size() - 120);
  }
  return name;
}

bool Win32Process::PreviousInstance() {
  if (!previous_instance_) {
    instance_mutex_.reset(::CreateMutexW(nullptr, FALSE, InstanceMutexName(ExecutablePath()).c_str()));
    previous_instance_ = instance_mutex_ && ::GetLastError() == ERROR_ALREADY_EXISTS;
  }
  return *previous_instance_;
}

}  // namespace quillet::win32
