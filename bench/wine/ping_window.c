/* How quickly a program's user interface thread answers, from the first
 * moment it has a window: every INTERVAL ms a WM_NULL is sent with
 * SendMessageTimeout (5 s limit) and the time to the answer is taken.
 *
 * Usage: ping_window.exe EXE_NAME SECONDS [INTERVAL_MS [SEGMENT_S [HOLD_PATH]]]
 *   EXE_NAME   the executable whose windows are pinged (Quillet.exe)
 *   SECONDS    how long to measure once a window exists
 *   SEGMENT_S  also report the worst answer of each SEGMENT_S-second slice
 *   HOLD_PATH  a folder (F:\) to keep open throughout; "ready" is printed
 *              once it is open (see below)
 *
 * It waits (up to 120 s) for any top-level window of a process running
 * EXE_NAME, pings it, and moves to the visible unowned window (the side bar)
 * once that exists; both belong to the same thread in a one-thread program.
 *
 * A control window of this program's own, on a thread of its own, is pinged
 * the same way at the same time. Under Wine every cross-thread message passes
 * through the Wine server, and the server itself calls statfs when a drive's
 * device is first opened (it checks for removable media), so a hanging drive
 * can stall every program at once. The part of a slow answer during which the
 * control window was slow too is such a stall; what is left ("own") is the
 * pinged program's own. Keeping HOLD_PATH open keeps the server's device
 * record of that drive alive, so the server asks the drive only once, as this
 * program opens it, and the drive then hangs only the threads that query it,
 * as it would on Windows.
 *
 * Prints "slow:" lines (answers over 50 ms), "segment:" lines, then one
 * "ping:" line of key=value pairs. Exit status 1 when no window showed. */
#define _WIN32_WINNT 0x0600
#include <windows.h>
#include <stdio.h>
#include <stdlib.h>
#include <string.h>

#define MAX_SAMPLES 100000
#define MAX_SEGMENTS 64
#define SLOW_MS 50.0
#define ANSWER_LIMIT_MS 5000

struct found {
  HWND any;  /* any top-level window of the program */
  HWND main; /* a visible, unowned one with a real size */
};

/* One series of answers: when each message was sent and how long it took. */
struct series {
  double sent[MAX_SAMPLES];
  double took[MAX_SAMPLES];
  int n;
  int timeouts;
};

struct control {
  HWND window;
  HANDLE created;
  volatile LONG stop;
  int interval;
  struct series answers;
};

static const char *wanted;
static LARGE_INTEGER frequency;
static struct series bar;
static struct control control;

static double now_ms(void) {
  LARGE_INTEGER t;
  QueryPerformanceCounter(&t);
  return (double)t.QuadPart * 1000.0 / (double)frequency.QuadPart;
}

static int runs_wanted(HWND hwnd) {
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
  return _stricmp(base ? base + 1 : path, wanted) == 0;
}

static BOOL CALLBACK each(HWND hwnd, LPARAM param) {
  struct found *f = (struct found *)param;
  if (!runs_wanted(hwnd)) return TRUE;
  if (!f->any) f->any = hwnd;
  RECT r;
  if (IsWindowVisible(hwnd) && !GetWindow(hwnd, GW_OWNER) && GetWindowRect(hwnd, &r) &&
      r.right - r.left > 1 && r.bottom - r.top > 1) {
    f->main = hwnd;
    return FALSE;
  }
  return TRUE;
}

static struct found find_windows(void) {
  struct found f = {0, 0};
  EnumWindows(each, (LPARAM)&f);
  return f;
}

/* Sends one WM_NULL and records the answer's time; 0 when the window is gone. */
static int ping(HWND target, struct series *s, double origin) {
  const double sent = now_ms();
  DWORD_PTR result = 0;
  SetLastError(0);
  LRESULT ok = SendMessageTimeoutW(target, WM_NULL, 0, 0, SMTO_NORMAL, ANSWER_LIMIT_MS, &result);
  const double took = now_ms() - sent;
  if (!ok) {
    if (GetLastError() == ERROR_TIMEOUT) s->timeouts++;
    else if (!IsWindow(target)) return 0;
  }
  if (s->n < MAX_SAMPLES) {
    s->sent[s->n] = sent - origin;
    s->took[s->n] = took;
    s->n++;
  }
  return 1;
}

/* Waits until `next` (ms), or moves `next` up to now when already past it. */
static double pace(double next, int interval) {
  next += interval;
  const double wait = next - now_ms();
  if (wait > 0) Sleep((DWORD)wait);
  else next = now_ms();
  return next;
}

static LRESULT CALLBACK control_proc(HWND hwnd, UINT message, WPARAM wparam, LPARAM lparam) {
  return DefWindowProcW(hwnd, message, wparam, lparam);
}

static DWORD WINAPI control_window_thread(LPVOID unused) {
  (void)unused;
  WNDCLASSW wc = {0};
  wc.lpfnWndProc = control_proc;
  wc.hInstance = GetModuleHandleW(NULL);
  wc.lpszClassName = L"PingControl";
  RegisterClassW(&wc);
  control.window = CreateWindowExW(0, wc.lpszClassName, L"", 0, 0, 0, 0, 0, HWND_MESSAGE, NULL, wc.hInstance, NULL);
  SetEvent(control.created);
  MSG msg;
  while (GetMessageW(&msg, NULL, 0, 0) > 0) DispatchMessageW(&msg);
  return 0;
}

static double origin_ms;

static DWORD WINAPI control_ping_thread(LPVOID unused) {
  (void)unused;
  double next = now_ms();
  while (!control.stop) {
    ping(control.window, &control.answers, origin_ms);
    next = pace(next, control.interval);
  }
  return 0;
}

/* How much of [from, to] the control's slow answers cover. */
static double covered(double from, double to) {
  double sum = 0.0;
  for (int i = 0; i < control.answers.n; ++i) {
    if (control.answers.took[i] <= SLOW_MS) continue;
    const double a = control.answers.sent[i], b = a + control.answers.took[i];
    const double lo = a > from ? a : from, hi = b < to ? b : to;
    if (hi > lo) sum += hi - lo;
  }
  return sum;
}

static int by_value(const void *a, const void *b) {
  double x = *(const double *)a, y = *(const double *)b;
  return (x > y) - (x < y);
}

static double worst_of(const struct series *s) {
  double worst = 0.0;
  for (int i = 0; i < s->n; ++i)
    if (s->took[i] > worst) worst = s->took[i];
  return worst;
}

static void report(double window_after, int on_main, int other_thread, int lost, double segment_s) {
  double worst = 0.0, worst_at = 0.0, own_worst = 0.0, own_at = 0.0;
  double segment_worst[MAX_SEGMENTS] = {0};
  int segments = 0;
  for (int i = 0; i < bar.n; ++i) {
    const double at = bar.sent[i], took = bar.took[i];
    const double own = took - covered(at, at + took);
    if (took > worst) worst = took, worst_at = at;
    if (own > own_worst) own_worst = own, own_at = at;
    if (segment_s > 0.0) {
      int s = (int)(at / 1000.0 / segment_s);
      if (s >= MAX_SEGMENTS) s = MAX_SEGMENTS - 1;
      if (took > segment_worst[s]) segment_worst[s] = took;
      if (s + 1 > segments) segments = s + 1;
    }
    if (took > SLOW_MS) printf("slow: at_s=%.3f took_ms=%.1f own_ms=%.1f\n", at / 1000.0, took, own);
  }
  for (int s = 0; s < segments; ++s)
    printf("segment: from_s=%.0f worst_ms=%.1f\n", s * segment_s, segment_worst[s]);
  static double sorted[MAX_SAMPLES];
  memcpy(sorted, bar.took, sizeof(double) * bar.n);
  qsort(sorted, bar.n, sizeof sorted[0], by_value);
  printf("ping: messages=%d worst_ms=%.1f worst_at_s=%.3f own_worst_ms=%.1f own_worst_at_s=%.3f"
         " median_ms=%.2f p99_ms=%.1f timeouts=%d control_messages=%d control_worst_ms=%.1f"
         " lost=%d window_after_ms=%.0f main_window=%d other_thread=%d\n",
         bar.n, worst, worst_at / 1000.0, own_worst, own_at / 1000.0, bar.n ? sorted[bar.n / 2] : 0.0,
         bar.n ? sorted[(int)(0.99 * (bar.n - 1) + 0.5)] : 0.0, bar.timeouts, control.answers.n,
         worst_of(&control.answers), lost, window_after, on_main, other_thread);
}

/* Opens a folder and keeps it open to the end; NULL when it cannot. */
static HANDLE hold(const char *path) {
  HANDLE h = CreateFileA(path, GENERIC_READ, FILE_SHARE_READ | FILE_SHARE_WRITE | FILE_SHARE_DELETE, NULL,
                         OPEN_EXISTING, FILE_FLAG_BACKUP_SEMANTICS, NULL);
  if (h == INVALID_HANDLE_VALUE) {
    printf("hold: cannot open %s (error %lu)\n", path, GetLastError());
    return NULL;
  }
  return h;
}

int main(int argc, char **argv) {
  if (argc < 3 || argc > 6) {
    fprintf(stderr, "usage: ping_window.exe EXE_NAME SECONDS [INTERVAL_MS [SEGMENT_S [HOLD_PATH]]]\n");
    return 2;
  }
  wanted = argv[1];
  const double seconds = atof(argv[2]);
  const int interval = argc > 3 ? atoi(argv[3]) : 20;
  const double segment_s = argc > 4 ? atof(argv[4]) : 0.0;
  QueryPerformanceFrequency(&frequency);
  timeBeginPeriod(1);
  HANDLE held = argc > 5 ? hold(argv[5]) : NULL;
  printf("ready\n");
  fflush(stdout);

  const double wait_start = now_ms();
  struct found f = find_windows();
  while (!f.any && now_ms() - wait_start < 120000.0) {
    Sleep(1);
    f = find_windows();
  }
  if (!f.any) {
    printf("ping: no window of %s within 120 s\n", wanted);
    return 1;
  }
  HWND target = f.main ? f.main : f.any;
  DWORD first_thread = GetWindowThreadProcessId(target, NULL);
  int on_main = f.main != NULL, other_thread = 0, lost = 0;

  origin_ms = now_ms();
  control.created = CreateEventW(NULL, TRUE, FALSE, NULL);
  control.interval = interval;
  HANDLE window_thread = CreateThread(NULL, 0, control_window_thread, NULL, 0, NULL);
  WaitForSingleObject(control.created, INFINITE);
  HANDLE pinger = CreateThread(NULL, 0, control_ping_thread, NULL, 0, NULL);

  double next = now_ms();
  while (now_ms() - origin_ms < seconds * 1000.0) {
    if (!on_main) {
      struct found again = find_windows();
      if (again.main) {
        target = again.main;
        on_main = 1;
        if (GetWindowThreadProcessId(target, NULL) != first_thread) other_thread = 1;
      } else if (!IsWindow(target) && again.any) {
        target = again.any;
      }
    }
    if (!ping(target, &bar, origin_ms)) {
      lost++;
      on_main = 0;
      Sleep(1);
      continue;
    }
    next = pace(next, interval);
  }

  InterlockedExchange(&control.stop, 1);
  WaitForSingleObject(pinger, INFINITE);
  PostMessageW(control.window, WM_QUIT, 0, 0);
  WaitForSingleObject(window_thread, INFINITE);
  report(origin_ms - wait_start, on_main, other_thread, lost, segment_s);
  if (held) CloseHandle(held);
  timeEndPeriod(1);
  return 0;
}
