#pragma once

// Uniscribe, as the SDK header of this name publishes it: text to the glyphs of a font, in three steps.
// ScriptItemize cuts a paragraph into items of one direction and script, ScriptShape gives the glyphs of an
// item, ScriptPlace says where they stand.

#include <windows.h>

#define USP_E_SCRIPT_NOT_IN_FONT _HRESULT_TYPEDEF_(0x80040200)
#define SCRIPT_UNDEFINED 0

struct ABC {
    int abcA;
    UINT abcB;
    int abcC;
};

struct SCRIPT_CONTROL {
    DWORD uDefaultLanguage : 16;
    DWORD fContextDigits : 1;
    DWORD fInvertPreBoundDir : 1;
    DWORD fInvertPostBoundDir : 1;
    DWORD fLinkStringBefore : 1;
    DWORD fLinkStringAfter : 1;
    DWORD fNeutralOverride : 1;
    DWORD fNumericOverride : 1;
    DWORD fLegacyBidiClass : 1;
    DWORD fMergeNeutralItems : 1;
    DWORD fUseStandardBidi : 1;
    DWORD fReserved : 6;
};

struct SCRIPT_STATE {
    WORD uBidiLevel : 5; // odd: from right to left
    WORD fOverrideDirection : 1;
    WORD fInhibitSymSwap : 1;
    WORD fCharShape : 1;
    WORD fDigitSubstitute : 1;
    WORD fInhibitLigate : 1;
    WORD fDisplayZWG : 1;
    WORD fArabicNumContext : 1;
    WORD fGcpClusters : 1;
    WORD fReserved : 1;
    WORD fEngineReserved : 2;
};

struct SCRIPT_ANALYSIS {
    WORD eScript : 10; // SCRIPT_UNDEFINED: no shaping, one glyph for each character
    WORD fRTL : 1;
    WORD fLayoutRTL : 1;
    WORD fLinkBefore : 1;
    WORD fLinkAfter : 1;
    WORD fLogicalOrder : 1; // glyphs in the order of the text, also from right to left
    WORD fNoGlyphIndex : 1;
    SCRIPT_STATE s;
};

struct SCRIPT_ITEM {
    int iCharPos; // where it begins, in units of the text
    SCRIPT_ANALYSIS a;
};

struct SCRIPT_VISATTR {
    WORD uJustification : 4;
    WORD fClusterStart : 1;
    WORD fDiacritic : 1;
    WORD fZeroWidth : 1;
    WORD fReserved : 1;
    WORD fShapeReserved : 8;
};

struct GOFFSET {
    LONG du; // along the line, in its direction
    LONG dv; // upward
};

/// For one font and whoever keeps it; null at first. Behind it stands the item that was shaped last:
/// ScriptPlace places its glyphs as the font wants them together, any others by their own widths.
using SCRIPT_CACHE = void*;

/// Null in it afterwards.
EXTERN_C WINBASEAPI HRESULT WINAPI ScriptFreeCache(SCRIPT_CACHE* psc);

/// The items in the order of the text, and one more that says where it ends: `cMaxItems` must leave room for
/// it, which `pcItems` does not count. E_OUTOFMEMORY where they are more. Without a state, the paragraph runs
/// from left to right.
EXTERN_C WINBASEAPI HRESULT WINAPI ScriptItemize(const WCHAR* pwcInChars, int cInChars, int cMaxItems,
                                                 const SCRIPT_CONTROL* psControl, const SCRIPT_STATE* psState,
                                                 SCRIPT_ITEM* pItems, int* pcItems);

/// For runs of these levels, the order in which they stand from left to right, and the other way round.
/// Either may be null.
EXTERN_C WINBASEAPI HRESULT WINAPI ScriptLayout(int cRuns, const BYTE* pbLevel, int* piVisualToLogical,
                                                int* piLogicalToVisual);

/// The glyphs of one item, and for each unit of it the first glyph of its cluster: E_INVALIDARG for an item
/// of more than 65,535. E_OUTOFMEMORY where the glyphs are more than `cMaxGlyphs`, USP_E_SCRIPT_NOT_IN_FONT
/// for a font without the item's script, E_PENDING without a device context. A character that the font lacks
/// is glyph 0.
EXTERN_C WINBASEAPI HRESULT WINAPI ScriptShape(HDC hdc, SCRIPT_CACHE* psc, const WCHAR* pwcChars, int cChars,
                                               int cMaxGlyphs, SCRIPT_ANALYSIS* psa, WORD* pwOutGlyphs,
                                               WORD* pwLogClust, SCRIPT_VISATTR* psva, int* pcGlyphs);

/// Advances and offsets of the glyphs in pixels of the context, and what they take up together (null is
/// allowed).
EXTERN_C WINBASEAPI HRESULT WINAPI ScriptPlace(HDC hdc, SCRIPT_CACHE* psc, const WORD* pwGlyphs, int cGlyphs,
                                               const SCRIPT_VISATTR* psva, SCRIPT_ANALYSIS* psa,
                                               int* piAdvance, GOFFSET* pGoffset, ABC* pABC);
