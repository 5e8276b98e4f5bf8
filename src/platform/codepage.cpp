// placeholder until the ICU-backed conversion lands
#include "gvlib/platform/winnls.h"
#include <cwchar>
#include <cstring>
static DWORD g_lastError = 0;
DWORD GetLastError() { return g_lastError; }
void SetLastError(DWORD e) { g_lastError = e; }
UINT GetACP() { return 1252; }
int lstrlenW(LPCWSTR s) { return s ? static_cast<int>(std::wcslen(s)) : 0; }
int WideCharToMultiByte(UINT, DWORD, LPCWSTR w, int n, LPSTR out, int cb, LPCSTR, BOOL*) {
    if (n < 0) n = lstrlenW(w) + 1;
    if (cb == 0) return n;
    for (int i = 0; i < n && i < cb; ++i) out[i] = w[i] < 256 ? static_cast<char>(w[i]) : '?';
    return n < cb ? n : cb;
}
int MultiByteToWideChar(UINT, DWORD, LPCSTR s, int n, LPWSTR out, int cch) {
    if (n < 0) n = static_cast<int>(std::strlen(s)) + 1;
    if (cch == 0) return n;
    for (int i = 0; i < n && i < cch; ++i) out[i] = static_cast<unsigned char>(s[i]);
    return n < cch ? n : cch;
}
