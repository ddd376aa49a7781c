#include <dwrite.h>
#include <t2embapi.h>

// Not built yet: each fails, as on a system without fonts.

HDC CreateDCW(LPCWSTR, LPCWSTR, LPCWSTR, const DEVMODEW*) {
    SetLastError(ERROR_CALL_NOT_IMPLEMENTED);
    return nullptr;
}
BOOL DeleteDC(HDC) { return FALSE; }
int GetDeviceCaps(HDC, int) { return 0; }
HFONT CreateFontIndirectW(const LOGFONTW*) {
    SetLastError(ERROR_CALL_NOT_IMPLEMENTED);
    return nullptr;
}
HGDIOBJ SelectObject(HDC, HGDIOBJ) { return nullptr; }
BOOL DeleteObject(HGDIOBJ) { return FALSE; }
int GetTextFaceW(HDC, int, LPWSTR) { return 0; }
DWORD GetGlyphIndicesW(HDC, LPCWSTR, int, LPWORD, DWORD) { return GDI_ERROR; }
DWORD GetFontData(HDC, DWORD, DWORD, PVOID, DWORD) { return GDI_ERROR; }
BOOL GetTextExtentPoint32W(HDC, LPCWSTR, int, LPSIZE) { return FALSE; }
BOOL GetTextMetricsW(HDC, LPTEXTMETRICW) { return FALSE; }
HRESULT DWriteCreateFactory(DWRITE_FACTORY_TYPE, REFIID, IUnknown** factory) {
    if (factory != nullptr) *factory = nullptr;
    return E_NOTIMPL;
}
LONG TTEmbedFont(HDC, ULONG, ULONG, ULONG*, ULONG*, WRITEEMBEDPROC, LPVOID, USHORT*, USHORT, USHORT,
                 TTEMBEDINFO*) {
    return E_API_NOTIMPL;
}
