#pragma once

#include "LowLevelFacilities/UtilitiesExport.h"
#include "LowLevelFacilities/WideStrings/ByteBuffer.h"
#include "LowLevelFacilities/WideStrings/CXString.h"

/// Scrambles a password on its way to the device, so that it cannot be read off a ticket, a spool file or a
/// log. Whoever has this library can undo it: it is no protection against an attacker
/// (docs/formats/scrambling.md).
class OV_UTILITIES_API DataEncrypter {
public:
    DataEncrypter() = delete;

    /// Which key is used: each mode has its own, and what was scrambled with one is not read with another.
    /// This one is for passwords in tickets and printer comments.
    static constexpr int passwordMode = 0;

    /// The scrambled form: ASCII characters that may stand in quotation marks. The same text gives the same
    /// form. An empty text gives an empty one.
    [[nodiscard]] static ByteBuffer EncryptStringWithOrvelSimple1(const CXString& text,
                                                                  int mode = passwordMode);
    /// The text that was scrambled, in UTF-8. An empty form gives an empty text. Throws
    /// CPExceptionInvalidArgument if the form was not made with this mode, or was changed since.
    [[nodiscard]] static ByteBuffer DecryptStringWithOrvelSimple1(const CXString& scrambled,
                                                                  int mode = passwordMode);
};
