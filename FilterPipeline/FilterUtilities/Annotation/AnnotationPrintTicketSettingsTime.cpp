// The texts of time stamps.

#include "Annotation/AnnotationPrintTicketSettings.h"
#include "Annotation/AttributeCollections.h"
#include "Annotation/DateAndTimeSeparators.h"
#include "Annotation/SelectionKeeper.h"
#include "ComSupport/FailureBarrier.h"
#include "ComSupport/HresultHelpers.h"
#include "EmbeddedSettings/PrintTicketOrvelPublicDocSettingsReaderWriter.h"

#include <LowLevelFacilities/WideStrings/ByteBuffer.h>
#include <SystemServices/PrintJob.h>

#include <winspool.h>

#include <algorithm>
#include <initializer_list>
#include <iterator>

using namespace DataModelIds;

using This = AnnotationPrintTicketSettings;

namespace {

constexpr int formattedUnits = 260;

// The formatter makes neither of these marks by itself, so a separator need not be safe inside a picture.
constexpr wchar_t dateMark[] = L"//";
constexpr wchar_t timeMark[] = L":";

struct Picture {
    tagValueEnum value;
    const wchar_t* picture;
};

// The first is that of all other values.
constexpr Picture datePictures[] = {
    {VAL_TIME_STAMP_MONTH_DAY_YEAR, L"M'//'d'//'yyyy"},
    {VAL_TIME_STAMP_DAY_MONTH_YEAR, L"d'//'M'//'yyyy"},
    {VAL_TIME_STAMP_YEAR_MONTH_DAY, L"yyyy'//'M'//'d"},
};
constexpr Picture timePictures[] = {
    {VAL_TIME_STAMP_HOUR_24, L"H':'mm':'ss"},
    {VAL_TIME_STAMP_HOUR_12, L"h':'mm':'ss tt"},
};

template <std::size_t count>
const wchar_t* FindPicture(const Picture (&pictures)[count], tagValueEnum value) {
    const auto* const found = std::ranges::find(pictures, value, &Picture::value);
    return found != std::end(pictures) ? found->picture : pictures[0].picture;
}

/// A part that cannot be formatted is told of, and left out.
CXString OrReport(int length, const wchar_t* text) {
    if (length > 0) return text;
    ReportIfFailed(GetLastErrorAsHResult());
    return {};
}

CXString FormatDate(const SYSTEMTIME& time, const wchar_t* picture) {
    wchar_t text[formattedUnits] = {};
    const int length =
        GetDateFormatEx(LOCALE_NAME_USER_DEFAULT, 0, &time, picture, text, formattedUnits, nullptr);
    return OrReport(length, text);
}

CXString FormatTime(const SYSTEMTIME& time, const wchar_t* picture) {
    wchar_t text[formattedUnits] = {};
    const int length = GetTimeFormatEx(LOCALE_NAME_USER_DEFAULT, 0, &time, picture, text, formattedUnits);
    return OrReport(length, text);
}

CXString NameOfZone() {
    TIME_ZONE_INFORMATION zone{};
    const DWORD state = GetTimeZoneInformation(&zone);
    if (state == TIME_ZONE_ID_INVALID) return OrReport(0, nullptr);
    return state == TIME_ZONE_ID_DAYLIGHT ? zone.DaylightName : zone.StandardName;
}

CXString Join(std::initializer_list<const CXString*> parts) {
    CXString text;
    for (const CXString* const part : parts) {
        if (part->IsEmpty()) continue;
        if (!text.IsEmpty()) text += L' ';
        text += *part;
    }
    return text;
}

/// The first of what the job says, what the locale says, and the default that is no blank.
CXString ReadSeparator(PrintTicketOrvelPublicDocSettingsReaderWriter& publicSettings, const wchar_t* name,
                       const AttributeBytesIndexedList& attributes, tagFeatureEnum feature,
                       CXString (*ofLocale)(), const wchar_t* otherwise) {
    bool isSpecified = false;
    CXString separator;
    publicSettings.GetCurrentValueAsStringForJobLevelOrvelPublicDocSettingsFeature(name, isSpecified,
                                                                                   separator);
    if (!isSpecified) separator.Empty();
    if (separator.IsEmpty()) separator = AttributeCollections::Text(attributes, feature);
    if (separator.IsEmpty()) separator = ofLocale();
    return separator.IsBlank() ? CXString(otherwise) : separator;
}

} // namespace

CXString This::GetDateSeparatorByReverseEngineering() {
    return DateAndTimeSeparators::DateSeparatorOfLocale();
}

CXString This::GetTimeSeparatorByReverseEngineering() {
    return DateAndTimeSeparators::TimeSeparatorOfLocale();
}

void This::InitializeLocalizedDateAndTimeSeparatorsOnFirstUse(
    PrintTicketOrvelPublicDocSettingsReaderWriter& publicSettings, AttributeBytesIndexedList& attributes) {
    DateAndTimeSeparators::OfProcess().SetOnFirstUse([&] {
        return DateAndTimeSeparators::Separators{
            ReadSeparator(publicSettings, L"date-separator-api", attributes, FEAT_ANNOTATION_DATE_SEPARATOR,
                          &GetDateSeparatorByReverseEngineering, L"/"),
            ReadSeparator(publicSettings, L"time-separator-api", attributes, FEAT_ANNOTATION_TIME_SEPARATOR,
                          &GetTimeSeparatorByReverseEngineering, L":")};
    });
}

// ---- The time of the job

void This::SetJobSubmitTimeInLocalTime(SYSTEMTIME time) { m_jobSubmitTime = time; }

HRESULT This::InitializeJobSubmitTimeInLocalTimeIfNotAlreadyInitialized(void* printerHandle, ULONG jobId) {
    if (m_jobSubmitTime.wYear != 0) return S_FALSE;
    const ByteBuffer record = PrintJob::GetJobInfo(printerHandle, jobId, 2, false);
    if (record.size() < sizeof(JOB_INFO_2W)) return E_FAIL;
    const auto& job = *reinterpret_cast<const JOB_INFO_2W*>(record.getLpbyte());
    SYSTEMTIME local{};
    if (!SystemTimeToTzSpecificLocalTime(nullptr, &job.Submitted, &local)) return E_FAIL;
    SetJobSubmitTimeInLocalTime(local);
    return S_OK;
}

// ---- The texts

CXString This::GenerateTimstampAnnotationText() {
    const OperationScope operation("AnnotationPrintTicketSettings::GenerateTimstampAnnotationText");
    const AnnotationElementSettings& element = Selected();
    const DateAndTimeSeparators::Separators separators = DateAndTimeSeparators::OfProcess().Get();
    const CXString day = FormatDate(m_jobSubmitTime, L"ddd");
    CXString date = FormatDate(m_jobSubmitTime, FindPicture(datePictures, element.timeStampDateOrder));
    date.Replace(dateMark, separators.date);
    CXString time = FormatTime(m_jobSubmitTime, FindPicture(timePictures, element.timeStampHourForm));
    time.Replace(timeMark, separators.time);
    if (element.timeStampTimePart == VAL_TIME_STAMP_HOUR_MINUTE_ZONE && !time.IsEmpty()) {
        const CXString zone = NameOfZone();
        time = Join({&time, &zone});
    }
    switch (element.timeStampFormat) {
    case VAL_TIME_STAMP_DATE:
        return date;
    case VAL_TIME_STAMP_TIME:
        return time;
    case VAL_TIME_STAMP_DAY_DATE_TIME:
        return Join({&day, &date, &time});
    case VAL_TIME_STAMP_DAY_DATE:
        return Join({&day, &date});
    default:
        // Deliberate: the formats with a zone too. The time part alone says whether there is one.
        return Join({&date, &time});
    }
}

HRESULT This::ApplyTimstampAnnotationText() {
    if (!IsTimestampAnnotationType()) return E_INVALIDARG;
    m_selected->text = GenerateTimstampAnnotationText();
    return S_OK;
}

HRESULT This::InitializeAllTimeStampAnnotationElementsBasedOnJobStartTime(void* printerHandle, ULONG jobId,
                                                                          bool regenerate,
                                                                          CXString& firstWord,
                                                                          CXString& secondWord) {
    const OperationScope operation(
        "AnnotationPrintTicketSettings::InitializeAllTimeStampAnnotationElementsBasedOnJobStartTime");
    HRESULT hr = S_OK;
    try {
        const SelectionKeeper selection(*this);
        for (const auto& element : m_elements) {
            m_selected = element.get();
            if (element->isJobId) {
                if (!regenerate || element->text.IsEmpty())
                    hr = InitializeJobIdText_throws(printerHandle, jobId, firstWord, secondWord);
            } else if (IsTimestampAnnotationType() && (regenerate || element->text.IsEmpty())) {
                hr = InitializeJobSubmitTimeInLocalTimeIfNotAlreadyInitialized(printerHandle, jobId);
                if (SUCCEEDED(hr)) hr = ApplyTimstampAnnotationText();
            }
        }
    }
    CATCH_VARIOUS(hr)
    return hr;
}

HRESULT This::InitializeJobIdText_throws(void* printerHandle, ULONG jobId, const CXString& firstWord,
                                         const CXString& secondWord) {
    AnnotationElementSettings& element = *m_selected;
    if (element.text.IsEmpty()) {
        const HRESULT hr = InitializeJobSubmitTimeInLocalTimeIfNotAlreadyInitialized(printerHandle, jobId);
        if (FAILED(hr)) return hr;
        element.text = GenerateTimstampAnnotationText();
        if (!firstWord.IsEmpty() && !secondWord.IsEmpty()) {
            const CXString time = element.text;
            element.text.Format(L"%s,  %s,  %s", firstWord, time, secondWord);
        }
    }
    element.faceName = m_deviceContext.FindBestFontForDisplayingString(element.text, element.faceName);
    return S_OK;
}
