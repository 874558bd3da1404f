/* How quickly a program's user interface thread answers, from the first
 * moment it has a window: every 20 ms a WM_NULL is sent with
 * SendMessageTimeout (5 s limit) and the time to the answer is taken.
 *
 * Usage: ping_window.exe EXE_NAME SECONDS [HOLD_PATH]
 * Pings the first top-level window of the process running EXE_NAME
 * (Quillet.exe) for SECONDS from the moment it has one (waiting up to 120 s),
 * and the next one when that is gone: all of the side bar's windows belong to
 * its one user interface thread. HOLD_PATH, a folder (F:\), is kept open
 * throughout (see below); "ready" is printed once it is open.
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
 * Prints "slow:" lines (answers over 50 ms), then one "ping:" line of
 * key=value pairs. Exit status 1 when no window showed. */
#define _WIN32_WINNT 0x0600
#include <windows.h>
#include <stdio.h>
#include <stdlib.h>

#include "../../tests/e2e/exe_window.h"

#define MAX_SAMPLES 100000
#define INTERVAL_MS 20
#define SLOW_MS 50.0
#define ANSWER_LIMIT_MS 5000

/* One series of answers: when each message was sent and how long it took. */
struct series {
  double sent[MAX_SAMPLES], took[MAX_SAMPLES];
  int n, timeouts;
};

static const char *wanted;
static double origin_ms, ms_per_tick;
static struct series bar, control;
static HWND control_window;
static volatile LONG stop;

static double now_ms(void) {
  LARGE_INTEGER t;
  QueryPerformanceCounter(&t);
  return (double)t.QuadPart * ms_per_tick;
}

static BOOL CALLBACK first(HWND hwnd, LPARAM found) {
  if (!runs_exe(hwnd, wanted)) return TRUE;
  *(HWND *)found = hwnd;
  return FALSE;
}

static HWND find_window(void) {
  HWND found = NULL;
  EnumWindows(first, (LPARAM)&found);
  return found;
}

/* Sends one WM_NULL and records the answer's time; 0 when the window is gone. */
static int ping(HWND target, struct series *s) {
  const double sent = now_ms();
  DWORD_PTR result = 0;
  SetLastError(0);
  const LRESULT ok = SendMessageTimeoutW(target, WM_NULL, 0, 0, SMTO_NORMAL, ANSWER_LIMIT_MS, &result);
  const double took = now_ms() - sent;
  if (!ok && GetLastError() == ERROR_TIMEOUT) s->timeouts++;
  else if (!ok && !IsWindow(target)) return 0;
  if (s->n < MAX_SAMPLES) {
    s->sent[s->n] = sent - origin_ms;
    s->took[s->n++] = took;
  }
  return 1;
}

/* Waits for the beat after `next` (ms), or takes now as the beat when already past it. */
static double pace(double next) {
  next += INTERVAL_MS;
  const double wait = next - now_ms();
  if (wait <= 0) return now_ms();
  Sleep((DWORD)wait);
  return next;
}

static DWORD WINAPI control_window_thread(LPVOID created) {
  control_window = CreateWindowExW(0, L"STATIC", L"", 0, 0, 0, 0, 0, HWND_MESSAGE, NULL, NULL, NULL);
  SetEvent((HANDLE)created);
  MSG msg;
  while (GetMessageW(&msg, NULL, 0, 0) > 0) DispatchMessageW(&msg);
  return 0;
}

static DWORD WINAPI control_ping_thread(LPVOID series) {
  for (double next = now_ms(); !stop; next = pace(next)) ping(control_window, (struct series *)series);
  return 0;
}

/* How much of [from, to] the control's slow answers cover. */
static double covered(double from, double to) {
  double sum = 0.0;
  for (int i = 0; i < control.n; ++i) {
    if (control.took[i] <= SLOW_MS) continue;
    const double lo = max(from, control.sent[i]), hi = min(to, control.sent[i] + control.took[i]);
    if (hi > lo) sum += hi - lo;
  }
  return sum;
}

static void report(void) {
  double worst = 0.0, worst_at = 0.0, own_worst = 0.0, own_at = 0.0, control_worst = 0.0;
  for (int i = 0; i < bar.n; ++i) {
    const double at = bar.sent[i], took = bar.took[i], own = took - covered(at, at + took);
    if (took > worst) worst = took, worst_at = at;
    if (own > own_worst) own_worst = own, own_at = at;
    if (took > SLOW_MS) printf("slow: at_s=%.3f took_ms=%.1f own_ms=%.1f\n", at / 1000.0, took, own);
  }
  for (int i = 0; i < control.n; ++i) control_worst = max(control_worst, control.took[i]);
  printf("ping: messages=%d worst_ms=%.1f worst_at_s=%.3f own_worst_ms=%.1f own_worst_at_s=%.3f timeouts=%d"
         " control_messages=%d control_worst_ms=%.1f\n",
         bar.n, worst, worst_at / 1000.0, own_worst, own_at / 1000.0, bar.timeouts, control.n, control_worst);
}

int main(int argc, char **argv) {
  if (argc < 3 || argc > 4) {
    fprintf(stderr, "usage: ping_window.exe EXE_NAME SECONDS [HOLD_PATH]\n");
    return 2;
  }
  wanted = argv[1];
  LARGE_INTEGER frequency;
  QueryPerformanceFrequency(&frequency);
  ms_per_tick = 1000.0 / (double)frequency.QuadPart;
  timeBeginPeriod(1);
  HANDLE held = INVALID_HANDLE_VALUE;
  if (argc > 3) {
    held = CreateFileA(argv[3], GENERIC_READ, FILE_SHARE_READ | FILE_SHARE_WRITE | FILE_SHARE_DELETE, NULL,
                       OPEN_EXISTING, FILE_FLAG_BACKUP_SEMANTICS, NULL);
    if (held == INVALID_HANDLE_VALUE) printf("hold: cannot open %s (error %lu)\n", argv[3], GetLastError());
  }
  printf("ready\n");
  fflush(stdout);

  HWND target = find_window();
  for (const double start = now_ms(); !target && now_ms() - start < 120000.0; target = find_window()) Sleep(1);
  if (!target) {
    printf("ping: no window of %s within 120 s\n", wanted);
    return 1;
  }
  origin_ms = now_ms();
  HANDLE created = CreateEventW(NULL, TRUE, FALSE, NULL);
  CreateThread(NULL, 0, control_window_thread, created, 0, NULL);
  WaitForSingleObject(created, INFINITE);
  HANDLE pinger = CreateThread(NULL, 0, control_ping_thread, &control, 0, NULL);

  for (double next = now_ms(); now_ms() - origin_ms < atof(argv[2]) * 1000.0;) {
    if (ping(target, &bar)) next = pace(next);
    else if (!(target = find_window())) Sleep(1);
  }
  InterlockedExchange(&stop, 1);
  WaitForSingleObject(pinger, INFINITE); /* the control's series is complete */
  report();
  if (held != INVALID_HANDLE_VALUE) CloseHandle(held);
  timeEndPeriod(1);
  return 0; /* the control window's thread ends with the process */
}
