#pragma once

#include "ComSupport/FilterUtilitiesExport.h"

#include <LowLevelFacilities/WideStrings/ByteBuffer.h>
#include <LowLevelFacilities/WideStrings/CXString.h>

#include <windows.h>
#include <gdiplus.h>

/// The system's fonts, as far as text that is put on a page needs them: which one has the characters, how
/// large the text is, and the bytes to embed. A face that the system lacks is replaced by the system. Faces
/// are asked for in normal weight, upright; of a face's name, 31 characters count. Sizes are in points,
/// charsets are GDI's (1, DEFAULT_CHARSET, asks for none).
///
/// Failures of the system give what is told for each operation; memory that is out throws std::bad_alloc. An
/// object belongs to the thread that made it.
class OV_FILTER_UTILITIES_API GdiDeviceContext {
public:
    /// Makes no device context yet: the first operation that needs one does.
    GdiDeviceContext() noexcept = default;
    ~GdiDeviceContext();
    GdiDeviceContext(const GdiDeviceContext&) = delete;
    GdiDeviceContext& operator=(const GdiDeviceContext&) = delete;

    /// A TrueType font that has the characters of the text, under the glyph ids of the whole font; the whole
    /// font where it forbids to be cut. A text beyond 65,535 units counts by its different characters. Empty
    /// if the font may not be embedded, or on any failure.
    ByteBuffer GetFontSubset(const CXString& face, int charset, int pointSize, CXString& text);

    /// The preferred face if it has all characters of the text; otherwise the first family of the system
    /// that has; the preferred face too if there is none, or on failure.
    CXString FindBestFontForDisplayingString(CXString& text, CXString& preferredFace);

    /// Whether the face has a glyph for each unit of the text: never for a surrogate pair, since GDI looks
    /// units up one by one. True for an empty text; false on failure.
    bool CanFontDisplayString(const CXString& text, const CXString& face);

    /// The member of the collection that has the font's "name" table, by its checksum; 0xFFFF if there is
    /// none, the collection is no collection, or the font has no such table.
    unsigned short FindIndexOfTrueTypeFontWithinSourceCollection(const ByteBuffer& font,
                                                                 const ByteBuffer& collection);

    /// The file of the font: a whole collection (then the index says which member the font is, 0xFFFF if
    /// that is not known) or the font alone (then the index is 0). Empty on failure.
    ByteBuffer GetTheFontData(const CXString& face, int charset, int pointSize, bool& isCollection,
                              unsigned short& collectionIndex);

    /// Width of the text in one line and height of the font, in 96ths of an inch, from the origin. Empty on
    /// failure.
    Gdiplus::RectF GetTextDimensionsInXpsUnits(const CXString& face, int charset, int pointSize,
                                               CXString& text);

protected:
    /// Of the display; made if there is none. Null on failure.
    HDC GetDeviceContext();

    /// Selects the face; what was selected by this operation before is put back first. On failure nothing
    /// stays selected.
    HRESULT CreateAndSetFont(const CXString& face, int charset, int pointSize);
    void UnSetAndDeleteFont();

    /// Takes the Embedded OpenType wrapper off. E_FAIL, with the buffer emptied, if it is none or
    /// compressed.
    HRESULT ConvertEmbeddedOpenTypeDataToTtf(ByteBuffer& data);

    /// The checksum of the "name" table of the font whose offset table stands at the offset; 0 if there is
    /// none within the size, or the version is not 1.0.
    ULONG GetUniqueNumberRepresentingATrueTypeFont(unsigned char* bytes, ULONG offset, ULONG size);

private:
    HDC m_deviceContext = nullptr;
    HGDIOBJ m_font = nullptr;
    HGDIOBJ m_fontBefore = nullptr;
};
