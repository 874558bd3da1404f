// The one way Win32 code includes <windows.h>: lean, without min/max, and
// without the A/W name macros that would rename our own MessageBox,
// DrawText, ShellExecute and ExtractAssociatedIcon members in some translation units and not in others.
#pragma once

#ifndef WIN32_LEAN_AND_MEAN
#define WIN32_LEAN_AND_MEAN
#endif
#ifndef NOMINMAX
#define NOMINMAX
#endif
#include <windows.h>
#include <shellapi.h>

#undef MessageBox
#undef DrawText
#undef ShellExecute
#undef ExtractAssociatedIcon
