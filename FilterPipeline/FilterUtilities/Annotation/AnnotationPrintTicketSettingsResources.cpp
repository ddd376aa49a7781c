// Fonts and pictures of the elements, and the names of their parts.

#include "Annotation/AnnotationPrintTicketSettings.h"
#include "Annotation/AnnotationWords.h"
#include "ComSupport/FailureBarrier.h"
#include "ComSupport/HresultHelpers.h"

#include <BinaryForms/Hash32.h>
#include <SystemServices/OrvelUtilities.h>

#include <string_view>
#include <unordered_set>

using This = AnnotationPrintTicketSettings;

namespace {

bool IsPair(std::wstring_view text, std::size_t at) {
    return at + 1 < text.size() && (text[at] & 0xFC00) == 0xD800 && (text[at + 1] & 0xFC00) == 0xDC00;
}

} // namespace

// ---- Names of parts

LONG This::GetAnnotationResourceUiqueNameSeed() { return m_resourceSeed; }

CXString This::GetAnnotationResourceUriRootPath() {
    return m_isFax ? L"/Resources/FaxCoverSheet/Annotations" : L"/Resources/Annotations";
}

CXString This::GenerateFontResourceUriWitExtension(CXString faceName) {
    // The form of a GUID, as the names of obfuscated fonts must have it.
    CXString uri;
    uri.Format(L"%s/Fonts/%08X-%04X-%04X-%04X-%012X.odttf", GetAnnotationResourceUriRootPath(),
               static_cast<ULONG>(m_resourceSeed), 0U, 0U, 0U, Hash32::GetHash32(faceName));
    return uri;
}

CXString This::GenerateImageResourceUriWithoutExtension(CXString fileName) {
    CXString uri;
    uri.Format(L"%s/Bitmaps/A%08X-%08X-%08X", GetAnnotationResourceUriRootPath(),
               static_cast<ULONG>(m_resourceSeed),
               Hash32::GetHash32(OrvelUtilities::getPathFromFileName(fileName)),
               Hash32::GetHash32(OrvelUtilities::getFileNameFromFullPath(fileName)));
    return uri;
}

// ---- Fonts

CXString This::GetCumulativeListOfUniqueCharactersRequiredFromThisFont(const CXString& faceName) {
    CXString characters;
    std::unordered_set<std::wstring_view> seen;
    for (const auto& element : m_elements) {
        if (!AnnotationWords::IsTextBased(element->type) || element->faceName.Compare(faceName) != 0)
            continue;
        const std::wstring_view text = element->text.View();
        for (std::size_t at = 0; at < text.size();) {
            const std::wstring_view character = text.substr(at, IsPair(text, at) ? 2 : 1);
            if (seen.insert(character).second) characters += character;
            at += character.size();
        }
    }
    return characters;
}

// ---- Pictures

HRESULT This::ParseImageFile() { return E_NOTIMPL; }
HRESULT This::ParseImageFile(IStream*) { return E_NOTIMPL; }
HRESULT This::ParseImageFile_impl(Gdiplus::Bitmap&) { return E_NOTIMPL; }
bool This::ParseImageIfNecessary() { return false; }
float This::GetImageWidthInXpsUnits() { return 0; }
float This::GetImageHeightInXpsUnits() { return 0; }
float This::GetHResolution() { return 0; }
float This::GetVResolution() { return 0; }
