#pragma once

// Annotations of a job for the tests of this room, and what the tests ask of them.

#include "Support/AttributeLists.h"

#include <Annotation/AnnotationPrintTicketSettings.h>
#include <Annotation/DateAndTimeSeparators.h>
#include <DataModel/FeatureIds.h>
#include <EmbeddedSettings/PrintTicketOrvelPublicDocSettingsReaderWriter.h>
#include <LowLevelFacilities/Formatter/CPFormat.h>
#include <LowLevelFacilities/Strings/CPStringUtils.h>

#include <gtest/gtest.h>

#include <string>
#include <vector>

using namespace DataModelIds;

using AttributeValue = AttributeBytesValue;
using Settings = PrintTicketOrvelPublicDocSettingsReaderWriter;

inline std::string Utf8(const CXString& text) {
    return CPStringUtils::narrowToStdString(text.View().data(), text.View().size());
}

/// The class with what it keeps for its subclasses.
class OpenAnnotations : public AnnotationPrintTicketSettings {
public:
    HRESULT Read(const AttributeBytesIndexedList& list, tagValueEnum jobId = VAL_UNSPECIFIED) {
        Settings none(nullptr);
        return Read(none, list, jobId);
    }
    HRESULT Read(Settings& settings, const AttributeBytesIndexedList& list = {},
                 tagValueEnum jobId = VAL_UNSPECIFIED) {
        attributes = list;
        return Initialize({pageWidth, 1056}, settings, attributes, 0x1234, false, jobId);
    }

    using AnnotationPrintTicketSettings::ApplyTimstampAnnotationText;
    using AnnotationPrintTicketSettings::GenerateTimstampAnnotationText;
    using AnnotationPrintTicketSettings::InitFaxTextAnnotationElement;
    using AnnotationPrintTicketSettings::InitializeLocalizedDateAndTimeSeparatorsOnFirstUse;
    using AnnotationPrintTicketSettings::SetJobSubmitTimeInLocalTime;

    AttributeBytesIndexedList attributes;
    float pageWidth = 816;
};

/// Attributes of a set of collections below one collection, as a job has its annotations.
inline AttributeBytesIndexedList
JobWith(const std::vector<AttributeBytesIndexedList>& elements,
        std::initializer_list<std::pair<LONG, AttributeBytesValue>> others = {},
        tagFeatureEnum collection = FEAT_ANNOTATION_COL) {
    AttributeBytesRawList set;
    for (const AttributeBytesIndexedList& element : elements)
        set.AddAttributeBytes(
            AttributeBytes(AttributeBytesFeatureId(0), AttributeValue::FromCollection(element)));
    AttributeBytesIndexedList job = Attributes(others);
    const auto members = Attributes({{FEAT_ANNOTATION_ELEMENT_COL, AttributeValue::FromCollectionSet(set)}});
    job.AddAttributeBytes(
        AttributeBytes(AttributeBytesFeatureId(collection), AttributeValue::FromCollection(members)));
    return job;
}

inline AttributeValue Option(tagValueEnum value) { return AttributeValue::FromOption(value); }
inline AttributeValue Number(int value) { return AttributeValue::FromInteger(value); }
inline AttributeValue Text(const wchar_t* text) { return AttributeValue::FromString(text); }

/// All that the element is, in one line: numbers by the order of the record, texts between quotes.
inline std::string Show(AnnotationPrintTicketSettings& settings, int index) {
    if (!settings.SelectAnnotationElement(index)) return "(none)";
    const AnnotationElementSettings& element = *settings.GetSelected();
    const Gdiplus::PointF offset = settings.GetOffsetFromCenter();
    std::string text = FormatStdString(
        "%d%s%s draw %d opacity %s angle %d at %s,%s edges %d %d,%d order %d", element.type,
        settings.GetFirstPageOnly() ? " first" : "", settings.IsJobIDAnnotationType() ? " job" : "",
        settings.GetDrawMode(), settings.GetOpacityAsString(), settings.GetAngle(),
        FormatStdString("%g", offset.X), FormatStdString("%g", offset.Y), settings.GetJustificationFlags(),
        settings.GetJustificationXOffsetInXpsUnits(), settings.GetJustificationYOffsetInXpsUnits(),
        settings.GetRenderOrder());
    if (settings.IsBitmapAnnotationType())
        return text + FormatStdString(" '%s' scale %s", settings.GetImageFileName(),
                                      FormatStdString("%g", settings.GetScaling()));
    text += FormatStdString(" '%s' '%s' %d %d '%s'", settings.GetText(), settings.GetFaceName(),
                            settings.GetCharset(), settings.GetFontSizeInPoints(),
                            settings.GetFontHexColorString());
    if (element.timeStampFormat != 0 || element.timeStampHourForm != 0)
        text += FormatStdString(" stamp %d %d %d %d", element.timeStampFormat, element.timeStampDateOrder,
                                element.timeStampTimePart, element.timeStampHourForm);
    return text;
}
inline std::vector<std::string> ShowAll(AnnotationPrintTicketSettings& settings) {
    std::vector<std::string> all;
    for (int i = 0; settings.SelectAnnotationElement(i); ++i)
        all.push_back(Show(settings, i));
    return all;
}

/// Separators of the process for the life of this object. Empty ones wait for the first use.
class ProcessSeparators {
public:
    explicit ProcessSeparators(const wchar_t* date = L"", const wchar_t* time = L"") {
        DateAndTimeSeparators::OfProcess().Set({date, time});
    }
    ProcessSeparators(const ProcessSeparators&) = delete;
    ProcessSeparators& operator=(const ProcessSeparators&) = delete;
    ~ProcessSeparators() { DateAndTimeSeparators::OfProcess().Set({}); }

    static std::string Show() {
        const auto separators = DateAndTimeSeparators::OfProcess().Get();
        return Utf8(separators.date) + "|" + Utf8(separators.time);
    }
};
