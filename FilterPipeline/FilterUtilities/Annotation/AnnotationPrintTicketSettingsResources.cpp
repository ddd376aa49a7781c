// Fonts and pictures of the elements, and the names of their parts.

#include "Annotation/AnnotationPrintTicketSettings.h"
#include "Annotation/AnnotationWords.h"
#include "ComSupport/FailureBarrier.h"
#include "ComSupport/HresultHelpers.h"
#include "FontsAndImages/GDIPlus.h"

#include <BinaryForms/Hash32.h>
#include <SystemServices/OrvelUtilities.h>

#include <utf16units.h>

using This = AnnotationPrintTicketSettings;

namespace {

constexpr float resolutionOfPictureWithout = 300; // dots to the inch

float InXpsUnits(const Dimension& length) {
    return static_cast<float>(length.GetValue(Dimension::XpsUnit).GetDoubleValue());
}

} // namespace

// ---- Names of parts

LONG This::GetAnnotationResourceUiqueNameSeed() { return m_resourceSeed; }

CXString This::GetAnnotationResourceUriRootPath() {
    return m_isFax ? L"/Resources/FaxCoverSheet/Annotations" : L"/Resources/Annotations";
}

// NOLINTBEGIN(performance-unnecessary-value-param): the published forms take copies
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

// NOLINTEND(performance-unnecessary-value-param)

// ---- Fonts

CXString This::GetCumulativeListOfUniqueCharactersRequiredFromThisFont(const CXString& faceName) {
    OvPlatform::Utf16::DifferentCharacters characters;
    for (const auto& element : m_elements)
        if (AnnotationWords::IsTextBased(element->type) && element->faceName.Compare(faceName) == 0)
            characters.Add(element->text.View());
    return CXString(std::wstring(characters.Text()));
}

// ---- Pictures

HRESULT This::ParseImageFile() {
    const OperationScope operation("AnnotationPrintTicketSettings::ParseImageFile");
    const CXString& fileName = Selected().imageFileName;
    if (fileName.IsBlank()) return E_INVALIDARG;
    HRESULT hr = S_OK;
    try {
        const GDIPlus running;
        Gdiplus::Bitmap bitmap(fileName);
        hr = ParseImageFile_impl(bitmap);
    }
    CATCH_VARIOUS(hr)
    return hr;
}

HRESULT This::ParseImageFile(IStream* picture) {
    const OperationScope operation("AnnotationPrintTicketSettings::ParseImageFile");
    if (picture == nullptr) return E_INVALIDARG;
    HRESULT hr = S_OK;
    try {
        const GDIPlus running;
        Gdiplus::Bitmap bitmap(picture);
        hr = ParseImageFile_impl(bitmap);
    }
    CATCH_VARIOUS(hr)
    return hr;
}

HRESULT This::ParseImageFile_impl(Gdiplus::Bitmap& bitmap) {
    if (m_selected == nullptr) return E_UNEXPECTED;
    const Gdiplus::Status status = bitmap.GetLastStatus();
    if (status != Gdiplus::Ok) return GetGDIStatusErrorAsHResult(status);
    float horizontal = bitmap.GetHorizontalResolution();
    float vertical = bitmap.GetVerticalResolution();
    if (horizontal == 0 || vertical == 0) horizontal = vertical = resolutionOfPictureWithout;
    m_selected->imageWidth = Dimension(static_cast<double>(bitmap.GetWidth()) / horizontal, Dimension::Inch);
    m_selected->imageHeight = Dimension(static_cast<double>(bitmap.GetHeight()) / vertical, Dimension::Inch);
    m_selected->horizontalResolution = horizontal;
    m_selected->verticalResolution = vertical;
    return S_OK;
}

bool This::ParseImageIfNecessary() {
    const OperationScope operation("AnnotationPrintTicketSettings::ParseImageIfNecessary");
    return !Selected().isImageParsed && !Selected().imageFileName.IsBlank() &&
           SUCCEEDED(ReportIfFailed(ParseImageFile()));
}

float This::GetImageWidthInXpsUnits() {
    // Deliberate: the width alone remembers that the file was read. Who asks for all begins with it.
    if (ParseImageIfNecessary()) m_selected->isImageParsed = true;
    return InXpsUnits(Selected().imageWidth);
}

float This::GetImageHeightInXpsUnits() {
    ParseImageIfNecessary();
    return InXpsUnits(Selected().imageHeight);
}

float This::GetHResolution() {
    ParseImageIfNecessary();
    return Selected().horizontalResolution;
}

float This::GetVResolution() {
    ParseImageIfNecessary();
    return Selected().verticalResolution;
}
