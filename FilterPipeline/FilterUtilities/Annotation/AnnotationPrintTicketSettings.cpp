#include "Annotation/AnnotationPrintTicketSettings.h"

#include "Annotation/AnnotationWords.h"

#include <charconv>
#include <cstdint>
#include <iterator>
#include <string>

using namespace DataModelIds;

using This = AnnotationPrintTicketSettings;

This::AnnotationPrintTicketSettings() = default;
This::~AnnotationPrintTicketSettings() = default;

void This::SetFaxAnnotationSettings(bool isFaxCoversheet) { m_isFax = isFaxCoversheet; }
bool This::IsFaxCoversheetAnnotations() { return m_isFax; }

// ---- The list

int This::AddNewAnnotationElement() {
    m_elements.push_back(std::make_unique<AnnotationElementSettings>());
    m_selected = m_elements.back().get();
    return static_cast<int>(m_elements.size());
}

void This::ForgetElements() {
    m_selected = nullptr;
    m_savedSelection = nullptr;
    m_elements.clear();
    m_textBasedCount = 0;
    m_timeStampCount = 0;
    m_bitmapCount = 0;
}

bool This::SelectAnnotationElement(int index) {
    if (index < 0 || static_cast<std::size_t>(index) >= m_elements.size()) return false;
    m_selected = m_elements[static_cast<std::size_t>(index)].get();
    return true;
}

AnnotationElementSettings* This::GetSelected() const { return m_selected; }

void This::SaveAnnotationElementSelection() { m_savedSelection = m_selected; }

void This::RestoreAnnotationElementSelection() {
    if (m_savedSelection != nullptr) m_selected = m_savedSelection;
}

int This::GetNumberOfAnnotationElements() {
    return DoesJobUseAnnotations() ? static_cast<int>(m_elements.size()) : 0;
}

bool This::DoesJobUseAnnotations() {
    return !m_elements.empty() && m_elements.front()->type != VAL_UNSPECIFIED;
}

int This::GetCountOfTextBasedElements() { return m_textBasedCount; }
int This::GetCountOfTimestampElements() { return m_timeStampCount; }
int This::GetCountOfBitmapElements() { return m_bitmapCount; }

// ---- What the words of the settings mean

tagValueEnum This::GetAnnotationElementTypeFromString(const CXString& text) {
    return AnnotationWords::type.FromText(text);
}

tagValueEnum This::GetFirstpageApiFromString(const CXString& text) {
    return AnnotationWords::firstPage.FromText(text);
}

tagValueEnum This::GetDrawmodeApiFromString(const CXString& text) {
    return AnnotationWords::drawMode.FromText(text);
}

tagValueEnum This::GetRenderOrderApiFromString(const CXString& text) {
    return AnnotationWords::renderOrder.FromText(text);
}

bool This::TryToGetTimeStampFormatApiFromString(const CXString& text, tagValueEnum& value) {
    return AnnotationWords::format.TryFromText(text, value);
}

bool This::TryToGetTimeStampFormatDateApiFromString(const CXString& text, tagValueEnum& value) {
    return AnnotationWords::dateOrder.TryFromText(text, value);
}

bool This::TryToGetTimeStampFormatTimeApiFromString(const CXString& text, tagValueEnum& value) {
    return AnnotationWords::timePart.TryFromText(text, value);
}

bool This::TryToGetTimeStampFormatHourApiFromString(const CXString& text, tagValueEnum& value) {
    return AnnotationWords::hourForm.TryFromText(text, value);
}

// ---- The selected element

const AnnotationElementSettings& This::Selected() const {
    static const AnnotationElementSettings none;
    return m_selected != nullptr ? *m_selected : none;
}

tagValueEnum This::GetType() const { return Selected().type; }
bool This::IsAnAnnotationSpecified() const { return GetType() != VAL_UNSPECIFIED; }

bool This::IsTextBasedAnnotationType() const { return AnnotationWords::IsTextBased(GetType()); }
bool This::IsTimestampAnnotationType() const { return GetType() == VAL_ANNOTATION_TYPE_TIME_STAMP; }
bool This::IsJobIDAnnotationType() const { return Selected().isJobId; }
bool This::IsBitmapAnnotationType() const { return GetType() == VAL_ANNOTATION_TYPE_PICTURE; }

bool This::GetFirstPageOnly() const { return Selected().isFirstPageOnly; }
tagValueEnum This::GetDrawMode() const { return Selected().drawMode; }
float This::GetOpacity() const { return Selected().opacity; }

CXString This::GetOpacityAsString() const {
    char digits[64];
    const auto end =
        std::to_chars(std::begin(digits), std::end(digits), GetOpacity(), std::chars_format::fixed);
    return CXString(std::string(std::begin(digits), end.ptr).c_str());
}

int This::GetAngle() const { return Selected().angle; }

Gdiplus::PointF This::GetOffsetFromCenter() const {
    return {Selected().offsetFromCenterX, Selected().offsetFromCenterY};
}

int This::GetJustificationFlags() const { return Selected().justificationFlags; }
int This::GetJustificationXOffsetInXpsUnits() const { return Selected().justificationX; }
int This::GetJustificationYOffsetInXpsUnits() const { return Selected().justificationY; }
tagValueEnum This::GetRenderOrder() const { return Selected().renderOrder; }
CXString This::GetFaceName() const { return Selected().faceName; }
int This::GetCharset() const { return Selected().charset; }
CXString This::GetText() const { return Selected().text; }
int This::GetFontSizeInPoints() const { return Selected().sizeInPoints; }

CXString This::GetFontRenderingEmSizeAsString() const {
    CXString text;
    text.Format(L"%d", std::int64_t{GetFontSizeInPoints()} * 96 / 72);
    return text;
}

CXString This::GetFontHexColorString() const { return Selected().color; }

CXString This::GetFontURI() const {
    CXString uri;
    uri.Format(L"/Resources/Fonts/%s.odttf", Selected().resourceName);
    return uri;
}

CXString This::GetImageFileName() const { return Selected().imageFileName; }

void This::SetImageFileName(const CXString& fileName) {
    if (m_selected != nullptr) m_selected->imageFileName = fileName;
}

float This::GetScaling() const { return Selected().scaling; }
GdiDeviceContext& This::GetGdiDeviceContextRef() { return m_deviceContext; }
