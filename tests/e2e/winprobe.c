/* Lists the top-level windows of the processes that run a given executable,
 * as Windows itself sees them: styles, rectangles and layered attributes,
 * which the X side cannot tell. One line a window, key=value, title last.
 * Usage: winprobe.exe Quillet.exe */
#define _WIN32_WINNT 0x0600
#include <windows.h>
#include <stdio.h>

#include "exe_window.h"

static BOOL CALLBACK each(HWND hwnd, LPARAM exe) {
  if (!runs_exe(hwnd, (const char *)exe)) return TRUE;
  RECT w, c;
  GetWindowRect(hwnd, &w);
  GetClientRect(hwnd, &c);
  COLORREF key = 0;
  BYTE alpha = 0;
  DWORD layered = 0;
  if (!GetLayeredWindowAttributes(hwnd, &key, &alpha, &layered)) layered = 0;
  char cls[256] = "", title[256] = "";
  GetClassNameA(hwnd, cls, sizeof cls);
  GetWindowTextA(hwnd, title, sizeof title);
  DWORD pid = 0;
  GetWindowThreadProcessId(hwnd, &pid);
  /* Wine keeps the X window of a top-level window in this property. */
  unsigned long xid = (unsigned long)(ULONG_PTR)GetPropA(hwnd, "__wine_x11_whole_window");
  printf("hwnd=0x%lx xid=0x%lx pid=%lu visible=%d style=0x%08lx exstyle=0x%08lx"
         " left=%ld top=%ld width=%ld height=%ld client_width=%ld client_height=%ld"
         " owner=0x%lx layered=%lu key=0x%06lx alpha=%u class=%s title=%s\n",
         (unsigned long)(ULONG_PTR)hwnd, xid, pid, IsWindowVisible(hwnd) ? 1 : 0,
         (unsigned long)GetWindowLongA(hwnd, GWL_STYLE), (unsigned long)GetWindowLongA(hwnd, GWL_EXSTYLE),
         w.left, w.top, w.right - w.left, w.bottom - w.top, c.right - c.left, c.bottom - c.top,
         (unsigned long)(ULONG_PTR)GetWindow(hwnd, GW_OWNER), layered, (unsigned long)key, alpha, cls, title);
  return TRUE;
}

int main(int argc, char **argv) {
  if (argc != 2) {
    fprintf(stderr, "usage: winprobe.exe <executable name>\n");
    return 2;
  }
  EnumWindows(each, (LPARAM)argv[1]);
  return 0;
}
