/* The least a keyed side bar can be: one borderless tool window, layered
 * with the colour key RGB(192,0,192) and filled with that colour, so nothing
 * of it shows. The baseline the side bar's start-up and idle cost are
 * compared with.
 *
 * Usage: bare_window.exe WIDTH HEIGHT [LEFT TOP]   (pixels; a GUI program
 * with a plain main, built with -mwindows) */
#define _WIN32_WINNT 0x0600
#include <windows.h>
#include <stdlib.h>

#define KEY_COLOUR RGB(192, 0, 192)

static LRESULT CALLBACK window_proc(HWND hwnd, UINT message, WPARAM wparam, LPARAM lparam) {
  if (message == WM_DESTROY) {
    PostQuitMessage(0);
    return 0;
  }
  return DefWindowProcW(hwnd, message, wparam, lparam);
}

int main(int argc, char **argv) {
  if (argc < 3) return 2;
  const int width = atoi(argv[1]), height = atoi(argv[2]);
  const int left = argc > 4 ? atoi(argv[3]) : 0, top = argc > 4 ? atoi(argv[4]) : 0;
  HBRUSH key_brush = CreateSolidBrush(KEY_COLOUR);
  WNDCLASSW wc = {0};
  wc.lpfnWndProc = window_proc;
  wc.hInstance = GetModuleHandleW(NULL);
  wc.hCursor = LoadCursorW(NULL, (LPCWSTR)IDC_ARROW);
  wc.hbrBackground = key_brush; /* the class brush paints every exposed pixel in the key */
  wc.lpszClassName = L"BareKeyedWindow";
  if (!RegisterClassW(&wc)) return 1;

  HWND hwnd = CreateWindowExW(WS_EX_TOOLWINDOW | WS_EX_LAYERED, wc.lpszClassName, L"bare", WS_POPUP, left, top,
                              width, height, NULL, NULL, wc.hInstance, NULL);
  if (!hwnd) return 1;
  SetLayeredWindowAttributes(hwnd, KEY_COLOUR, 0, LWA_COLORKEY);
  ShowWindow(hwnd, SW_SHOW);  // shown and activated, as the side bar is
  UpdateWindow(hwnd);
  MSG msg;
  while (GetMessageW(&msg, NULL, 0, 0) > 0) DispatchMessageW(&msg);
  DeleteObject(key_brush);
  return 0;
}
