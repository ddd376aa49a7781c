#pragma once

// Fonts to be embedded, under the name of the SDK's header.

#include <windows.h>

#define WINAPIV

#define CHARSET_UNICODE 1
#define CHARSET_DEFAULT 1
#define CHARSET_SYMBOL 2
#define CHARSET_GLYPHIDX 3

// What a font may be embedded for.
#define EMBED_PREVIEWPRINT 1
#define EMBED_EDITABLE 2
#define EMBED_INSTALLABLE 3
#define EMBED_NOEMBEDDING 4

// What is asked for; it also stands in the flags of the Embedded OpenType data.
#define TTEMBED_RAW 0x00000000
#define TTEMBED_SUBSET 0x00000001
#define TTEMBED_TTCOMPRESSED 0x00000004
#define TTEMBED_FAILIFVARIATIONSIMULATED 0x00000010
#define TTEMBED_EMBEDEUDC 0x00000020
#define TTEMBED_WEBOBJECT 0x00000080
#define TTEMBED_XORENCRYPTDATA 0x10000000

// What was done.
#define TTEMBED_VARIATIONSIMULATED 0x00000001
#define TTEMBED_EUDCEMBEDDED 0x00000002
#define TTEMBED_SUBSETCANCEL 0x00000004 // the whole font: it forbids subsets

// Results: numbers of this library's own, which FAILED does not see.
#define E_NONE 0x0000L
#define E_API_NOTIMPL 0x0001L
#define E_CHARCODECOUNTINVALID 0x0002L
#define E_CHARCODESETINVALID 0x0003L
#define E_HDCINVALID 0x0006L
#define E_NOFREEMEMORY 0x0007L
#define E_NOTATRUETYPEFONT 0x000AL
#define E_ERRORACCESSINGFONTDATA 0x000CL
#define E_EXCEPTION 0x0013L
#define E_RESERVEDPARAMNOTNULL 0x0014L
#define E_CHARSETINVALID 0x0015L
#define E_INPUTPARAMINVALID 0x0019L
#define E_FONTDATAINVALID 0x0102L
#define E_FONTNOTEMBEDDABLE 0x0104L
#define E_SUBSETTINGFAILED 0x0106L
#define E_SAVETOSTREAMFAILED 0x0108L
#define E_NOOS2 0x0109L
#define E_FLAGSINVALID 0x010CL
#define E_STATUSINVALID 0x0115L
#define E_PRIVSTATUSINVALID 0x0116L

/// Takes bytes of the embedded font. What it gives is how many it took: fewer end the call.
using WRITEEMBEDPROC = ULONG(WINAPIV*)(void* stream, const void* bytes, const ULONG count);

/// Binds the data to addresses on the network.
struct TTEMBEDINFO {
    USHORT usStructSize;
    USHORT usRootStrSize;
    USHORT* pusRootStr;
};

/// Hands out the font that is selected in the context, as Embedded OpenType data. With TTEMBED_SUBSET it is
/// cut down to the characters of the text, which is UTF-16 (a surrogate pair is one character, a lone
/// surrogate none) with CHARSET_UNICODE, and glyph ids with CHARSET_GLYPHIDX; glyphs keep their ids. Language
/// 0 keeps names in all languages. E_NONE or another of the results above.
///
/// Compression, EUDC and binding to addresses are not built here: E_API_NOTIMPL.
EXTERN_C WINBASEAPI LONG WINAPI TTEmbedFont(HDC hDC, ULONG ulFlags, ULONG ulCharSet, ULONG* pulPrivStatus,
                                            ULONG* pulStatus, WRITEEMBEDPROC lpfnWriteToStream,
                                            LPVOID lpvWriteStream, USHORT* pusCharCodeSet,
                                            USHORT usCharCodeCount, USHORT usLanguage,
                                            TTEMBEDINFO* pTTEmbedInfo);
