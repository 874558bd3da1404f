/* Whether a window belongs to a process running the executable EXE (a file
 * name such as Quillet.exe): how the probe and the pinger find the side bar. */
#pragma once
#include <windows.h>
#include <string.h>

static int runs_exe(HWND hwnd, const char *exe) {
  DWORD pid = 0;
  GetWindowThreadProcessId(hwnd, &pid);
  HANDLE process = OpenProcess(PROCESS_QUERY_LIMITED_INFORMATION, FALSE, pid);
  if (!process) return 0;
  char path[MAX_PATH];
  DWORD size = MAX_PATH;
  BOOL ok = QueryFullProcessImageNameA(process, 0, path, &size);
  CloseHandle(process);
  if (!ok) return 0;
  const char *base = strrchr(path, '\\');
  return _stricmp(base ? base + 1 : path, exe) == 0;
}
