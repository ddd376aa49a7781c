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
using Texts = std::vector<std::string>;

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
    Texts AllTexts() {
        Texts texts;
        for (int i = 0; SelectAnnotationElement(i); ++i)
            texts.push_back(Utf8(GetText()));
        return texts;
    }

    using AnnotationPrintTicketSettings::ApplyTimstampAnnotationText;
    using AnnotationPrintTicketSettings::GenerateTimstampAnnotationText;
    using AnnotationPrintTicketSettings::InitFaxTextAnnotationElement;
    using AnnotationPrintTicketSettings::InitializeLocalizedDateAndTimeSeparatorsOnFirstUse;
    using AnnotationPrintTicketSettings::SetJobSubmitTimeInLocalTime;

    AttributeBytesIndexedList attributes;
    float pageWidth = 816;
};

inline AttributeValue Option(LONG value) { return AttributeValue::FromOption(value); }
inline AttributeValue Number(int value) { return AttributeValue::FromInteger(value); }
inline AttributeValue Text(const wchar_t* text) { return AttributeValue::FromString(text); }
inline AttributeValue Members(const AttributeBytesIndexedList& list) {
    return AttributeValue::FromCollection(list);
}
inline AttributeValue Set(const std::vector<AttributeBytesIndexedList>& collections) {
    AttributeBytesRawList set;
    for (const AttributeBytesIndexedList& collection : collections)
        set.AddAttributeBytes(AttributeBytes(AttributeBytesFeatureId(0), Members(collection)));
    return AttributeValue::FromCollectionSet(set);
}
inline AttributeBytesIndexedList JobWith(const std::vector<AttributeBytesIndexedList>& elements,
                                         LONG collection = FEAT_ANNOTATION_COL) {
    return Attributes({{collection, Members(Attributes({{FEAT_ANNOTATION_ELEMENT_COL, Set(elements)}}))}});
}
inline AttributeBytesIndexedList TextElement(const wchar_t* text, const wchar_t* face = L"Segoe UI",
                                             tagValueEnum type = VAL_ANNOTATION_TYPE_TEXT) {
    return Attributes({{FEAT_ANNOTATION_TYPE, Option(type)},
                       {FEAT_ANNOTATION_TEXT, Text(text)},
                       {FEAT_ANNOTATION_FONT_NAME, Text(face)}});
}

/// All that each element is, in a line: numbers in the order of the record, texts between quotes.
inline Texts ShowAll(AnnotationPrintTicketSettings& settings) {
    Texts all;
    for (int i = 0; settings.SelectAnnotationElement(i); ++i) {
        const AnnotationElementSettings& element = *settings.GetSelected();
        const Gdiplus::PointF offset = settings.GetOffsetFromCenter();
        std::string text = FormatStdString(
            "%d%s%s draw %d opacity %s angle %d at %g,%g edges %d %d,%d order %d", element.type,
            settings.GetFirstPageOnly() ? " first" : "", settings.IsJobIDAnnotationType() ? " job" : "",
            settings.GetDrawMode(), settings.GetOpacityAsString(), settings.GetAngle(), offset.X, offset.Y,
            settings.GetJustificationFlags(), settings.GetJustificationXOffsetInXpsUnits(),
            settings.GetJustificationYOffsetInXpsUnits(), settings.GetRenderOrder());
        text += settings.IsBitmapAnnotationType()
                    ? FormatStdString(" '%s' scale %g", settings.GetImageFileName(), settings.GetScaling())
                    : FormatStdString(" '%s' '%s' %d %d '%s'", settings.GetText(), settings.GetFaceName(),
                                      settings.GetCharset(), settings.GetFontSizeInPoints(),
                                      settings.GetFontHexColorString());
        if (element.timeStampFormat != 0 || element.timeStampHourForm != 0)
            text += FormatStdString(" stamp %d %d %d %d", element.timeStampFormat, element.timeStampDateOrder,
                                    element.timeStampTimePart, element.timeStampHourForm);
        all.push_back(text);
    }
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
