#pragma once

#include "LowLevelFacilities/UtilitiesExport.h"
#include "LowLevelFacilities/WideStrings/CXString.h"

#include <cstddef>
#include <vector>

/// Loose helpers that callers know under this name.
class OV_UTILITIES_API OrvelUtilities {
public:
    OrvelUtilities() = delete;

    /// Base64 in one line. The options say how lines are broken; 2 means not at all, and is all that is
    /// taken.
    static constexpr unsigned int base64WithoutLineBreaks = 2;

    /// The number of characters for that many bytes, without a terminator.
    [[nodiscard]] static int Base64EncodeGetRequiredLength(int byteCount, unsigned int options) noexcept;
    /// Writes the characters and, if there is room, a terminator. `*length` is the room on entry, the number
    /// of characters (without the terminator) afterwards. False, with `*length` 0, if it does not fit.
    static bool Base64Encode(const unsigned char* bytes, int byteCount, char* text, int* length,
                             unsigned int options) noexcept;
    static bool Base64Encode(const unsigned char* bytes, int byteCount, wchar_t* text, int* length,
                             unsigned int options) noexcept;
    /// A number of bytes that is enough for that many characters.
    [[nodiscard]] static int Base64DecodeGetRequiredLength(int characterCount) noexcept;
    /// `*length` is the room in bytes on entry, the number of bytes afterwards. False, with `*length` 0, if
    /// the text is not Base64 or does not fit.
    static bool Base64Decode(const char* text, int characterCount, unsigned char* bytes, int* length);
    static bool Base64Decode(const wchar_t* text, int characterCount, unsigned char* bytes, int* length);

    /// What stands behind the last separator of a path: a slash, a backslash or a drive's colon.
    [[nodiscard]] static CXString getFileNameFromFullPath(const CXString& path);
    /// The rest of it, with its last separator.
    [[nodiscard]] static CXString getPathFromFileName(const CXString& path);

    /// Appends the pieces between the separators to `out`; an empty text has none.
    static void parseCharacterSeparatedStrings(std::vector<CXString>& out, const CXString& text,
                                               wchar_t separator, bool trimPieces, bool skipEmptyPieces);
};
