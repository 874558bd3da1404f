/* Drops files on a point of the screen, as another program would.
 * Usage: drop_files.exe ole|post X Y PATH...   (X, Y in screen pixels)
 *   ole:  an OLE drag with a CF_HDROP data object, let go at the point after
 *         a few ticks (no mouse button is needed);
 *   post: WM_DROPFILES to the window at the point, the DROPFILES block
 *         written into that process's memory first.
 * Prints "effect=N" (ole) or "posted" (post). */
#define COBJMACROS
#define _WIN32_WINNT 0x0600
#include <windows.h>
#include <ole2.h>
#include <shlobj.h>
#include <stdio.h>
#include <string.h>

/* A DROPFILES block with wide paths, each ended by a zero, the list by another. */
static SIZE_T build_dropfiles(BYTE *out, int count, char **paths, POINT pt) {
  SIZE_T size = sizeof(DROPFILES);
  for (int i = 0; i < count; i++) {
    WCHAR wide[MAX_PATH];
    int n = MultiByteToWideChar(CP_UTF8, 0, paths[i], -1, wide, MAX_PATH);
    if (out) memcpy(out + size, wide, n * sizeof(WCHAR));
    size += n * sizeof(WCHAR);
  }
  if (out) {
    memset(out + size, 0, sizeof(WCHAR));
    DROPFILES *d = (DROPFILES *)out;
    d->pFiles = sizeof(DROPFILES);
    d->pt = pt;
    d->fNC = FALSE;
    d->fWide = TRUE;
  }
  return size + sizeof(WCHAR);
}

static HGLOBAL g_files; /* the list the data object hands out copies of */

/* ---- IDataObject with one format: CF_HDROP in global memory ---- */
static HRESULT STDMETHODCALLTYPE do_qi(IDataObject *self, REFIID iid, void **out) {
  if (IsEqualIID(iid, &IID_IUnknown) || IsEqualIID(iid, &IID_IDataObject)) {
    *out = self;
    return S_OK;
  }
  *out = NULL;
  return E_NOINTERFACE;
}
static ULONG STDMETHODCALLTYPE do_addref(IDataObject *self) { (void)self; return 2; }
static ULONG STDMETHODCALLTYPE do_release(IDataObject *self) { (void)self; return 1; }
static HRESULT STDMETHODCALLTYPE do_querygetdata(IDataObject *self, FORMATETC *f) {
  (void)self;
  return f->cfFormat == CF_HDROP && (f->tymed & TYMED_HGLOBAL) ? S_OK : DV_E_FORMATETC;
}
static HRESULT STDMETHODCALLTYPE do_getdata(IDataObject *self, FORMATETC *f, STGMEDIUM *m) {
  if (do_querygetdata(self, f) != S_OK) return DV_E_FORMATETC;
  SIZE_T size = GlobalSize(g_files);
  HGLOBAL copy = GlobalAlloc(GMEM_MOVEABLE, size);
  if (!copy) return E_OUTOFMEMORY;
  memcpy(GlobalLock(copy), GlobalLock(g_files), size);
  GlobalUnlock(copy);
  GlobalUnlock(g_files);
  m->tymed = TYMED_HGLOBAL;
  m->hGlobal = copy;
  m->pUnkForRelease = NULL;
  return S_OK;
}
static HRESULT STDMETHODCALLTYPE do_getdatahere(IDataObject *s, FORMATETC *f, STGMEDIUM *m) {
  (void)s; (void)f; (void)m;
  return E_NOTIMPL;
}
static HRESULT STDMETHODCALLTYPE do_canonical(IDataObject *s, FORMATETC *in, FORMATETC *out) {
  (void)s; (void)in;
  out->ptd = NULL;
  return DATA_S_SAMEFORMATETC;
}
static HRESULT STDMETHODCALLTYPE do_setdata(IDataObject *s, FORMATETC *f, STGMEDIUM *m, BOOL r) {
  (void)s; (void)f; (void)m; (void)r;
  return E_NOTIMPL;
}
static HRESULT STDMETHODCALLTYPE do_enum(IDataObject *s, DWORD dir, IEnumFORMATETC **e) {
  (void)s; (void)dir;
  *e = NULL;
  return E_NOTIMPL;
}
static HRESULT STDMETHODCALLTYPE do_dadvise(IDataObject *s, FORMATETC *f, DWORD a, IAdviseSink *k, DWORD *c) {
  (void)s; (void)f; (void)a; (void)k; (void)c;
  return OLE_E_ADVISENOTSUPPORTED;
}
static HRESULT STDMETHODCALLTYPE do_dunadvise(IDataObject *s, DWORD c) {
  (void)s; (void)c;
  return OLE_E_ADVISENOTSUPPORTED;
}
static HRESULT STDMETHODCALLTYPE do_enumdadvise(IDataObject *s, IEnumSTATDATA **e) {
  (void)s;
  *e = NULL;
  return OLE_E_ADVISENOTSUPPORTED;
}
static IDataObjectVtbl g_data_vtbl = {do_qi, do_addref, do_release, do_getdata, do_getdatahere,
                                      do_querygetdata, do_canonical, do_setdata, do_enum,
                                      do_dadvise, do_dunadvise, do_enumdadvise};
static IDataObject g_data = {&g_data_vtbl};

/* ---- IDropSource that lets go after a few ticks ---- */
static int g_ticks;
static HRESULT STDMETHODCALLTYPE ds_qi(IDropSource *self, REFIID iid, void **out) {
  if (IsEqualIID(iid, &IID_IUnknown) || IsEqualIID(iid, &IID_IDropSource)) {
    *out = self;
    return S_OK;
  }
  *out = NULL;
  return E_NOINTERFACE;
}
static ULONG STDMETHODCALLTYPE ds_addref(IDropSource *self) { (void)self; return 2; }
static ULONG STDMETHODCALLTYPE ds_release(IDropSource *self) { (void)self; return 1; }
static HRESULT STDMETHODCALLTYPE ds_continue(IDropSource *self, BOOL escape, DWORD keys) {
  (void)self; (void)escape; (void)keys;
  return ++g_ticks >= 8 ? DRAGDROP_S_DROP : S_OK;
}
static HRESULT STDMETHODCALLTYPE ds_feedback(IDropSource *self, DWORD effect) {
  (void)self; (void)effect;
  return DRAGDROP_S_USEDEFAULTCURSORS;
}
static IDropSourceVtbl g_source_vtbl = {ds_qi, ds_addref, ds_release, ds_continue, ds_feedback};
static IDropSource g_source = {&g_source_vtbl};

static int drop_ole(POINT at, int count, char **paths) {
  if (FAILED(OleInitialize(NULL))) return 1;
  POINT none = {0, 0};
  SIZE_T size = build_dropfiles(NULL, count, paths, none);
  g_files = GlobalAlloc(GMEM_MOVEABLE | GMEM_ZEROINIT, size);
  build_dropfiles(GlobalLock(g_files), count, paths, none);
  GlobalUnlock(g_files);
  SetCursorPos(at.x, at.y);
  DWORD effect = 0;
  HRESULT hr = DoDragDrop(&g_data, &g_source, DROPEFFECT_COPY, &effect);
  printf("effect=%lu hr=0x%08lx\n", (unsigned long)effect, (unsigned long)hr);
  GlobalFree(g_files);
  OleUninitialize();
  return SUCCEEDED(hr) ? 0 : 1;
}

static int drop_post(POINT at, int count, char **paths) {
  HWND window = GetAncestor(WindowFromPoint(at), GA_ROOT);
  if (!window) return 1;
  POINT client = at;
  ScreenToClient(window, &client);
  SIZE_T size = build_dropfiles(NULL, count, paths, client);
  BYTE *block = HeapAlloc(GetProcessHeap(), HEAP_ZERO_MEMORY, size);
  build_dropfiles(block, count, paths, client);
  DWORD pid = 0;
  GetWindowThreadProcessId(window, &pid);
  HANDLE process = OpenProcess(PROCESS_VM_OPERATION | PROCESS_VM_WRITE, FALSE, pid);
  void *remote = process ? VirtualAllocEx(process, NULL, size, MEM_COMMIT | MEM_RESERVE, PAGE_READWRITE) : NULL;
  int ok = remote && WriteProcessMemory(process, remote, block, size, NULL) &&
           PostMessageW(window, WM_DROPFILES, (WPARAM)remote, 0);
  if (process) CloseHandle(process);
  HeapFree(GetProcessHeap(), 0, block);
  printf(ok ? "posted\n" : "not posted\n");
  return ok ? 0 : 1;
}

int main(int argc, char **argv) {
  if (argc < 5) {
    fprintf(stderr, "usage: drop_files.exe ole|post X Y PATH...\n");
    return 2;
  }
  POINT at = {atol(argv[2]), atol(argv[3])};
  return strcmp(argv[1], "ole") == 0 ? drop_ole(at, argc - 4, argv + 4) : drop_post(at, argc - 4, argv + 4);
}
