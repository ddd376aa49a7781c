// Where the elements of a job come from: its settings, its attributes, and the driver itself.

#include "Annotation/AnnotationElementReader.h"
#include "Annotation/AnnotationPrintTicketSettings.h"
#include "Annotation/AnnotationWords.h"
#include "Annotation/AttributeCollections.h"
#include "ComSupport/FailureBarrier.h"
#include "ComSupport/XGenerateRandomGuidAsString.h"
#include "EmbeddedSettings/PrintTicketOrvelPublicDocSettingsReaderWriter.h"

#include <Xml/XmlDomNode.h>

#include <cstdint>

using namespace DataModelIds;

using This = AnnotationPrintTicketSettings;

namespace {

constexpr wchar_t annotations[] = L"annotation-col-api";
constexpr wchar_t annotationElements[] = L"annotation-element-col-api";

struct FontOfLanguage {
    WORD primaryLanguage;
    const wchar_t* face;
};

constexpr FontOfLanguage fonts[] = {
    {LANG_JAPANESE, L"Meiryo UI"},
    {LANG_KOREAN, L"Malgun Gothic"},
    {LANG_CHINESE, L"Microsoft JhengHei UI"},
};
// Chinese in simplified characters, as China and Singapore write it.
constexpr LANGID simplifiedChinese[] = {2052, 4100};
constexpr wchar_t simplifiedChineseFont[] = L"Microsoft YaHei UI";
constexpr wchar_t otherFont[] = L"Segoe UI";

CXString GetDefaultFontNameBasedOnDefaultLocale() {
    const LANGID language = GetUserDefaultUILanguage();
    for (const LANGID simplified : simplifiedChinese)
        if (language == simplified) return simplifiedChineseFont;
    for (const FontOfLanguage& font : fonts)
        if ((language & 0xFF) == font.primaryLanguage) return font.face;
    return otherFont;
}

/// Deliberate: clients write ten-thousandths of an inch, of which whole hundredths count.
int JustificationInXpsUnits(int tenThousandthsOfInch) {
    const int hundredths = tenThousandthsOfInch / 100;
    const Dimension offset(hundredths, Dimension::HundredthOfInch);
    return offset.GetValue(Dimension::XpsUnit).GetIntValue(Number::toNearest);
}

} // namespace

HRESULT This::Initialize(Gdiplus::SizeF pageSize,
                         PrintTicketOrvelPublicDocSettingsReaderWriter& publicSettings,
                         AttributeBytesIndexedList& attributes, LONG resourceSeed, bool flag,
                         tagValueEnum jobIdOption) {
    const OperationScope operation("AnnotationPrintTicketSettings::Initialize");
    ForgetElements();
    m_attributes = &attributes;
    m_pageWidth = pageSize.Width;
    m_pageHeight = pageSize.Height;
    m_resourceSeed = resourceSeed;
    m_initializeFlag = flag;
    m_jobHasFaxData = AttributeCollections::IsSpecified(attributes, FEAT_FAX_OUT_COL);
    HRESULT hr = S_OK;
    try {
        hr = ReadElements_throws(publicSettings, attributes);
        if (!m_jobHasFaxData &&
            (jobIdOption == VAL_PRINT_ID_ON_FIRST_PAGE || jobIdOption == VAL_PRINT_ID_ON_ALL_PAGES)) {
            InitializeLocalizedDateAndTimeSeparatorsOnFirstUse(publicSettings, attributes);
            AddAndInitializeJobIdInMarginAnnotation(attributes, jobIdOption == VAL_PRINT_ID_ON_FIRST_PAGE);
        }
    }
    CATCH_VARIOUS(hr)
    try {
        // Half of what was asked for is nothing to print.
        if (FAILED(hr)) ForgetElements();
        if (m_elements.empty()) {
            AddNewAnnotationElement();
            if (SUCCEEDED(hr)) hr = S_FALSE;
        }
    }
    CATCH_VARIOUS(hr)
    return hr;
}

HRESULT This::ReadElements_throws(PrintTicketOrvelPublicDocSettingsReaderWriter& publicSettings,
                                  AttributeBytesIndexedList& attributes) {
    if (!m_isFax) {
        bool isSpecified = false;
        unsigned int count = 0;
        const LONG found = publicSettings.GetNumberOfChildrenForOrvelPublicDocSettingsFeature(
            annotations, isSpecified, count);
        if (FAILED(found)) return found;
        if (isSpecified) {
            const LONG read = ReadPublicSettings_throws(publicSettings, attributes);
            return FAILED(read) ? read : S_OK;
        }
    }
    ReadAttributes_throws(publicSettings, attributes);
    return S_OK;
}

LONG This::ReadPublicSettings_throws(PrintTicketOrvelPublicDocSettingsReaderWriter& publicSettings,
                                     AttributeBytesIndexedList& attributes) {
    return publicSettings.VisitEntriesOfOrvelPublicDocSettingsFeature(
        annotationElements, [&](const XmlDomNode& entry) {
            RawAnnotationElementPrintTicketAttributes raw;
            AnnotationElementReader::Read(entry, raw);
            if (m_jobHasFaxData) raw.firstPage = VAL_ANNOTATION_PAGES_FIRST_ONLY;
            if (raw.type == VAL_ANNOTATION_TYPE_TIME_STAMP)
                InitializeLocalizedDateAndTimeSeparatorsOnFirstUse(publicSettings, attributes);
            AddAndInitializeNewAnnotationElement(raw);
        });
}

void This::ReadAttributes_throws(PrintTicketOrvelPublicDocSettingsReaderWriter& publicSettings,
                                 AttributeBytesIndexedList& attributes) {
    if (m_isFax) AddAndInitializeFaxCoverSheetInfoAnnotationElement();
    const AttributeBytesIndexedList collection =
        AttributeCollections::Open(attributes, m_isFax ? FEAT_FAX_COVER_ANNOTATION_COL : FEAT_ANNOTATION_COL);
    const AttributeBytesIndexedList elements =
        AttributeCollections::Open(collection, FEAT_ANNOTATION_ELEMENT_COL);
    AttributeCollections::ForEach(elements, [&](const AttributeBytesIndexedList& element) {
        RawAnnotationElementPrintTicketAttributes raw;
        AnnotationElementReader::Read(element, raw);
        if (raw.type == VAL_ANNOTATION_TYPE_TIME_STAMP)
            InitializeLocalizedDateAndTimeSeparatorsOnFirstUse(publicSettings, attributes);
        AddAndInitializeNewAnnotationElement(raw);
    });
}

void This::AddAndInitializeNewAnnotationElement(const RawAnnotationElementPrintTicketAttributes& raw) {
    AddNewAnnotationElement();
    AnnotationElementSettings& element = *m_selected;
    element.type = raw.type;
    m_textBasedCount += IsTextBasedAnnotationType() ? 1 : 0;
    m_timeStampCount += IsTimestampAnnotationType() ? 1 : 0;
    m_bitmapCount += IsBitmapAnnotationType() ? 1 : 0;
    element.isFirstPageOnly = m_isFax || raw.firstPage == VAL_ANNOTATION_PAGES_FIRST_ONLY;
    element.drawMode = raw.drawMode;
    element.renderOrder = raw.renderOrder;
    element.opacity = static_cast<float>(100 - std::int64_t{raw.transparency}) / 100;
    element.angle = raw.angle;
    element.offsetFromCenterX = static_cast<float>(raw.xOffset) / 1000;
    element.offsetFromCenterY = static_cast<float>(raw.yOffset) / 1000;
    element.justificationFlags = raw.justificationFlags;
    element.justificationX = JustificationInXpsUnits(raw.xOffsetInches);
    element.justificationY = JustificationInXpsUnits(raw.yOffsetInches);
    if (IsBitmapAnnotationType()) {
        element.imageFileName = raw.text;
        element.scaling = static_cast<float>(raw.pictureScale);
    } else {
        InitializeText(raw);
    }
}

void This::InitializeText(const RawAnnotationElementPrintTicketAttributes& raw) {
    AnnotationElementSettings& element = *m_selected;
    element.text = raw.text;
    element.faceName = raw.fontName;
    element.charset = raw.characterSet;
    element.sizeInPoints = raw.fontSize;
    element.color = raw.color;
    element.resourceName = XGenerateRandomGuidAsString();
    if (!IsTimestampAnnotationType()) return;
    element.timeStampFormat = raw.format;
    element.timeStampDateOrder = raw.dateOrder;
    element.timeStampTimePart = raw.timePart;
    element.timeStampHourForm = raw.hourForm;
}

void This::AddAndInitializeJobIdInMarginAnnotation(AttributeBytesIndexedList& /*attributes*/,
                                                   bool firstPageOnly) {
    AddNewAnnotationElement();
    AnnotationElementSettings& element = *m_selected;
    element.type = VAL_ANNOTATION_TYPE_TEXT;
    element.isJobId = true;
    // Deliberate: the mark is a text, and shows the time as a time stamp does.
    ++m_textBasedCount;
    ++m_timeStampCount;
    element.isFirstPageOnly = firstPageOnly;
    element.drawMode = VAL_ANNOTATION_IN_FOREGROUND;
    element.renderOrder = VAL_ANNOTATION_POST_IMPOSITION;
    element.timeStampHourForm = VAL_TIME_STAMP_HOUR_12;
    element.opacity = 1;
    element.justificationX = 22;
    element.justificationY = 22;
    element.justificationFlags = 5;
    element.faceName = GetDefaultFontNameBasedOnDefaultLocale();
    element.charset = DEFAULT_CHARSET;
    element.sizeInPoints = 9;
    element.color = L"#000000";
    element.resourceName = XGenerateRandomGuidAsString();
}
