#include "ui/win32/drop_target.h"

#include "platform/win32/wide_text.h"

namespace quillet::win32 {
namespace {

// The two interfaces the target answers, spelled here so no import library is needed.
constexpr IID kIidUnknown = {0x00000000, 0x0000, 0x0000, {0xC0, 0, 0, 0, 0, 0, 0, 0x46}};
constexpr IID kIidDropTarget = {0x00000122, 0x0000, 0x0000, {0xC0, 0, 0, 0, 0, 0, 0, 0x46}};

FORMATETC FileListFormat() noexcept { return {CF_HDROP, nullptr, DVASPECT_CONTENT, -1, TYMED_HGLOBAL}; }

template <class Fn>
Fn Cast(FARPROC function) noexcept {
  return reinterpret_cast<Fn>(reinterpret_cast<void*>(function));
}

}  // namespace

FileDrops::~FileDrops() {
  Accept(window_, false);
  if (ole_started_) {
    if (const auto uninitialize = Cast<void(WINAPI*)()>(Ole("OleUninitialize"))) uninitialize();
  }
}

FARPROC FileDrops::Ole(const char* name) noexcept {
  if (!ole32_) ole32_.reset(::LoadLibraryW(L"ole32.dll"));
  return ole32_ ? ::GetProcAddress(ole32_.get(), name) : nullptr;
}

FARPROC FileDrops::Shell(const char* name) noexcept {
  if (!shell32_) shell32_.reset(::LoadLibraryW(L"shell32.dll"));
  return shell32_ ? ::GetProcAddress(shell32_.get(), name) : nullptr;
}

bool FileDrops::StartOle() noexcept {
  if (ole_started_) return true;
  const auto initialize = Cast<HRESULT(WINAPI*)(LPVOID)>(Ole("OleInitialize"));
  // S_FALSE: already started on this thread; it still counts once.
  ole_started_ = initialize != nullptr && SUCCEEDED(initialize(nullptr));
  return ole_started_;
}

void FileDrops::Accept(HWND window, bool accept) noexcept {
  // A window that never took drops has nothing to stop.
  if (window == nullptr || (!accept && window_ == nullptr)) return;
  if (const auto accept_files = Cast<void(WINAPI*)(HWND, BOOL)>(Shell("DragAcceptFiles")))
    accept_files(window, accept ? TRUE : FALSE);
  if (accept && !registered_ && StartOle()) {
    const auto register_target = Cast<HRESULT(WINAPI*)(HWND, IDropTarget*)>(Ole("RegisterDragDrop"));
    registered_ = register_target != nullptr && SUCCEEDED(register_target(window, &target_));
  } else if (!accept && registered_) {
    if (const auto revoke = Cast<HRESULT(WINAPI*)(HWND)>(Ole("RevokeDragDrop"))) revoke(window);
    registered_ = false;
  }
  window_ = accept ? window : nullptr;
}

std::optional<FileDrop> FileDrops::TakePending() {
  if (pending_.empty()) return std::nullopt;
  FileDrop drop = std::move(pending_.front());
  pending_.pop_front();
  return drop;
}

std::vector<std::string> FileDrops::Paths(HDROP drop) {
  std::vector<std::string> paths;
  const auto query = Cast<UINT(WINAPI*)(HDROP, UINT, LPWSTR, UINT)>(Shell("DragQueryFileW"));
  if (query == nullptr) return paths;
  const UINT count = query(drop, 0xFFFFFFFF, nullptr, 0);
  for (UINT i = 0; i < count; ++i) {
    std::wstring path(query(drop, i, nullptr, 0), L'\0');
    if (path.empty()) continue;
    const UINT got = query(drop, i, path.data(), static_cast<UINT>(path.size() + 1));
    path.resize(got);
    paths.push_back(Narrow(path));
  }
  return paths;
}

std::optional<FileDrop> FileDrops::Read(HDROP drop) {
  FileDrop read{Paths(drop), {}};
  if (const auto point = Cast<BOOL(WINAPI*)(HDROP, POINT*)>(Shell("DragQueryPoint"))) point(drop, &read.client);
  if (const auto finish = Cast<void(WINAPI*)(HDROP)>(Shell("DragFinish"))) finish(drop);
  if (read.paths.empty()) return std::nullopt;
  return read;
}

HRESULT FileDrops::Target::QueryInterface(REFIID iid, void** object) noexcept {
  if (object == nullptr) return E_POINTER;
  if (iid == kIidUnknown || iid == kIidDropTarget) {
    *object = static_cast<IDropTarget*>(this);
    AddRef();
    return S_OK;
  }
  *object = nullptr;
  return E_NOINTERFACE;
}

ULONG FileDrops::Target::AddRef() noexcept { return ++references_; }

ULONG FileDrops::Target::Release() noexcept { return references_ == 0 ? 0 : --references_; }

DWORD FileDrops::Target::Effect(POINTL at, DWORD allowed) noexcept {
  POINT client{at.x, at.y};
  if (!has_files_ || !::ScreenToClient(owner_.window_, &client) || !owner_.over_(client)) return DROPEFFECT_NONE;
  return (allowed & DROPEFFECT_COPY) != 0 ? DROPEFFECT_COPY : DROPEFFECT_NONE;
}

HRESULT FileDrops::Target::DragEnter(IDataObject* data, DWORD, POINTL at, DWORD* effect) noexcept {
  FORMATETC format = FileListFormat();
  has_files_ = data != nullptr && data->QueryGetData(&format) == S_OK;
  if (effect != nullptr) *effect = Effect(at, *effect);
  return S_OK;
}

HRESULT FileDrops::Target::DragOver(DWORD, POINTL at, DWORD* effect) noexcept {
  if (effect != nullptr) *effect = Effect(at, *effect);
  return S_OK;
}

HRESULT FileDrops::Target::DragLeave() noexcept {
  has_files_ = false;
  return S_OK;
}

HRESULT FileDrops::Target::Drop(IDataObject* data, DWORD, POINTL at, DWORD* effect) noexcept {
  const DWORD allowed = effect != nullptr ? *effect : DROPEFFECT_COPY;
  if (effect != nullptr) *effect = DROPEFFECT_NONE;
  if (data == nullptr || Effect(at, allowed) == DROPEFFECT_NONE) return S_OK;
  FORMATETC format = FileListFormat();
  STGMEDIUM medium{};
  if (FAILED(data->GetData(&format, &medium))) return S_OK;
  FileDrop drop;
  try {
    drop.paths = owner_.Paths(static_cast<HDROP>(medium.hGlobal));
  } catch (...) {
    drop.paths.clear();  // out of memory: the drop is refused
  }
  if (const auto release = Cast<void(WINAPI*)(STGMEDIUM*)>(owner_.Ole("ReleaseStgMedium"))) release(&medium);
  drop.client = {at.x, at.y};
  ::ScreenToClient(owner_.window_, &drop.client);
  if (drop.paths.empty()) return S_OK;
  try {
    owner_.pending_.push_back(std::move(drop));
  } catch (...) {
    return E_OUTOFMEMORY;
  }
  ::PostMessageW(owner_.window_, kDropMessage, 0, 0);
  if (effect != nullptr) *effect = DROPEFFECT_COPY;
  has_files_ = false;
  return S_OK;
}

}  // namespace quillet::win32
