// Files dropped on a form's window: as an OLE drop target for CF_HDROP,
// which also tells where a drag is over the window, and as WM_DROPFILES for
// senders that only post that. ole32 and shell32 are loaded at first need:
// the program starts faster without importing them.
#pragma once

#include <deque>
#include <functional>
#include <optional>
#include <string>
#include <vector>

#include "platform/win32/handles.h"

#include <ole2.h>

namespace quillet::win32 {

struct FileDrop {
  std::vector<std::string> paths;
  POINT client{};  // the drop point in the window's client pixels
};

class FileDrops {
 public:
  // Posted to the window after an OLE drop, so the drop's handler runs
  // after the drag source has been let go.
  static constexpr UINT kDropMessage = WM_APP + 0x44;

  // `over` tells whether the point (client pixels) takes drops.
  explicit FileDrops(std::function<bool(POINT)> over) noexcept : over_(std::move(over)) {}
  ~FileDrops();
  FileDrops(const FileDrops&) = delete;
  FileDrops& operator=(const FileDrops&) = delete;

  // Starts or stops taking drops; stopping before the window goes is required.
  void Accept(HWND window, bool accept) noexcept;
  // The next OLE drop waiting for its handler.
  [[nodiscard]] std::optional<FileDrop> TakePending();
  // The files and point of a WM_DROPFILES; frees the block.
  [[nodiscard]] std::optional<FileDrop> Read(HDROP drop);

 private:
  // The COM object lives inside its owner, which outlives every reference
  // the system holds (revoked before the window goes): Release never deletes.
  class Target final : public IDropTarget {
   public:
    explicit Target(FileDrops& owner) noexcept : owner_(owner) {}
    HRESULT STDMETHODCALLTYPE QueryInterface(REFIID iid, void** object) noexcept override;
    ULONG STDMETHODCALLTYPE AddRef() noexcept override;
    ULONG STDMETHODCALLTYPE Release() noexcept override;
    HRESULT STDMETHODCALLTYPE DragEnter(IDataObject* data, DWORD keys, POINTL at, DWORD* effect) noexcept override;
    HRESULT STDMETHODCALLTYPE DragOver(DWORD keys, POINTL at, DWORD* effect) noexcept override;
    HRESULT STDMETHODCALLTYPE DragLeave() noexcept override;
    HRESULT STDMETHODCALLTYPE Drop(IDataObject* data, DWORD keys, POINTL at, DWORD* effect) noexcept override;

   private:
    DWORD Effect(POINTL at, DWORD allowed) noexcept;
    FileDrops& owner_;
    ULONG references_ = 0;
    bool has_files_ = false;
  };

  bool StartOle() noexcept;
  FARPROC Ole(const char* name) noexcept;
  FARPROC Shell(const char* name) noexcept;
  std::vector<std::string> Paths(HDROP drop);

  std::function<bool(POINT)> over_;
  UniqueModule ole32_, shell32_;
  HWND window_ = nullptr;
  bool ole_started_ = false;  // OleInitialize to be undone
  bool registered_ = false;
  std::deque<FileDrop> pending_;
  Target target_{*this};  // last: goes first
};

}  // namespace quillet::win32
