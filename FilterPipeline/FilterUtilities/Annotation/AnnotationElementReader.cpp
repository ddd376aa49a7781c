#include "Annotation/AnnotationElementReader.h"

#include "Annotation/AnnotationWords.h"
#include "DataModel/FeatureIds.h"
#include "EmbeddedSettings/PublicDocSettingsDocument.h"

#include <AttributeStore/AttributeBytesIndexedList.h>
#include <SystemServices/OrvelUtilities.h>
#include <Xml/XmlDomNode.h>

#include <span>
#include <variant>
#include <vector>

using namespace DataModelIds;

namespace {

using RawElement = AnnotationElementReader::RawElement;
using Choice = AnnotationWords::Choice;

struct Option {
    tagValueEnum RawElement::*member;
    const Choice& words;
};

/// A value of an annotation: its names in the two places, and where it goes.
struct Field {
    tagFeatureEnum feature;
    const wchar_t* keyword;
    std::variant<int RawElement::*, CXString RawElement::*, Option> target;
};

/// In the settings the fields of a time stamp are words of one list.
constexpr wchar_t timeStampFields[] = L"time-stamp-format-fields-api";

const Field ofAll[] = {
    {FEAT_ANNOTATION_TYPE, L"type-api", Option{&RawElement::type, AnnotationWords::type}},
    {FEAT_ANNOTATION_FIRST_PAGE, L"firstpage-api",
     Option{&RawElement::firstPage, AnnotationWords::firstPage}},
    {FEAT_ANNOTATION_DRAW_MODE, L"drawmode-api", Option{&RawElement::drawMode, AnnotationWords::drawMode}},
    {FEAT_ANNOTATION_TRANSPARENCY, L"transparency-api", &RawElement::transparency},
    {FEAT_ANNOTATION_TEXT, L"text-api", &RawElement::text},
    {FEAT_ANNOTATION_ANGLE, L"angle-api", &RawElement::angle},
    {FEAT_ANNOTATION_X_OFFSET, L"x-offset-api", &RawElement::xOffset},
    {FEAT_ANNOTATION_Y_OFFSET, L"y-offset-api", &RawElement::yOffset},
    {FEAT_ANNOTATION_JUSTIFICATION, L"justify-api", &RawElement::justificationFlags},
    {FEAT_ANNOTATION_X_OFFSET_INCHES, L"x-offset-inches-api", &RawElement::xOffsetInches},
    {FEAT_ANNOTATION_Y_OFFSET_INCHES, L"y-offset-inches-api", &RawElement::yOffsetInches},
    {FEAT_ANNOTATION_RENDER_ORDER, L"render-order-api",
     Option{&RawElement::renderOrder, AnnotationWords::renderOrder}},
};

const Field ofPictures[] = {
    {FEAT_ANNOTATION_PICTURE_SCALE, L"picture-scale-api", &RawElement::pictureScale},
};

const Field ofTexts[] = {
    {FEAT_ANNOTATION_FONT_NAME, L"font-name-api", &RawElement::fontName},
    {FEAT_ANNOTATION_CHARACTER_SET, L"font-char-set-api", &RawElement::characterSet},
    {FEAT_ANNOTATION_FONT_SIZE, L"font-size-api", &RawElement::fontSize},
    {FEAT_ANNOTATION_COLOR, L"rgb-api", &RawElement::color},
};

const Field ofTimeStamps[] = {
    {FEAT_ANNOTATION_TIME_STAMP_FORMAT, timeStampFields,
     Option{&RawElement::format, AnnotationWords::format}},
    {FEAT_ANNOTATION_TIME_STAMP_DATE_ORDER, timeStampFields,
     Option{&RawElement::dateOrder, AnnotationWords::dateOrder}},
    {FEAT_ANNOTATION_TIME_STAMP_TIME_PART, timeStampFields,
     Option{&RawElement::timePart, AnnotationWords::timePart}},
    {FEAT_ANNOTATION_TIME_STAMP_HOUR_FORM, timeStampFields,
     Option{&RawElement::hourForm, AnnotationWords::hourForm}},
};

void StoreText(const Field& field, const CXString& text, RawElement& element) {
    const bool isText = field.feature == FEAT_ANNOTATION_TEXT;
    // A blank face or colour would make markup that says nothing; a blank text is what the user wrote.
    if (text.IsBlank() && !isText) return;
    element.*std::get<CXString RawElement::*>(field.target) = text;
}

/// The members of an entry in the settings.
class SettingsSource {
public:
    explicit SettingsSource(const XmlDomNode& entry) : m_entry(entry) {}

    void Read(const Field& field, RawElement& element) const {
        CXString text;
        if (!GetText(field.keyword, text)) return;
        if (const auto* const option = std::get_if<Option>(&field.target)) {
            element.*(option->member) = option->words.FromText(text);
        } else if (const auto* const number = std::get_if<int RawElement::*>(&field.target)) {
            if (!text.IsBlank()) element.** number = text.GetAsInt();
        } else {
            StoreText(field, text, element);
        }
    }

    void ReadTimeStamp(RawElement& element) const {
        CXString list;
        if (GetText(timeStampFields, list)) AnnotationElementReader::ReadTimeStampWords(list, element);
    }

private:
    bool GetText(const wchar_t* keyword, CXString& text) const {
        bool isSpecified = false;
        const LONG result = PublicDocSettingsDocument::Guarded(keyword, [&] {
            return PublicDocSettingsDocument::GetMemberString(m_entry, keyword, isSpecified, text);
        });
        return result == S_OK && isSpecified;
    }

    const XmlDomNode& m_entry;
};

class AttributeSource {
public:
    explicit AttributeSource(const AttributeBytesIndexedList& attributes) : m_attributes(attributes) {}

    void Read(const Field& field, RawElement& element) const {
        const AttributeBytesFeatureId feature(field.feature);
        bool isFound = false;
        if (const auto* const option = std::get_if<Option>(&field.target)) {
            const LONG value = m_attributes.GetOptionValue(feature, &isFound);
            if (isFound) element.*(option->member) = option->words.FromNumber(value);
        } else if (const auto* const number = std::get_if<int RawElement::*>(&field.target)) {
            const int value = m_attributes.GetIntegerValue(feature, &isFound);
            if (isFound) element.** number = value;
        } else {
            const CXString text = m_attributes.GetStringValue(feature, &isFound);
            if (isFound) StoreText(field, text, element);
        }
    }

    void ReadTimeStamp(RawElement& element) const {
        for (const Field& field : ofTimeStamps)
            Read(field, element);
    }

private:
    const AttributeBytesIndexedList& m_attributes;
};

template <typename Source>
void ReadFields(const Source& source, std::span<const Field> fields, RawElement& element) {
    for (const Field& field : fields)
        source.Read(field, element);
}

template <typename Source>
void ReadElement(const Source& source, RawElement& element) {
    ReadFields(source, ofAll, element);
    if (element.type == VAL_ANNOTATION_TYPE_PICTURE) {
        ReadFields(source, ofPictures, element);
        return;
    }
    ReadFields(source, ofTexts, element);
    if (element.type == VAL_ANNOTATION_TYPE_TIME_STAMP) source.ReadTimeStamp(element);
}

} // namespace

void AnnotationElementReader::Read(const XmlDomNode& entry, RawElement& element) {
    ReadElement(SettingsSource(entry), element);
}

void AnnotationElementReader::Read(const AttributeBytesIndexedList& attributes, RawElement& element) {
    ReadElement(AttributeSource(attributes), element);
}

void AnnotationElementReader::ReadTimeStampWords(const CXString& list, RawElement& element) {
    using Settings = AnnotationPrintTicketSettings;
    std::vector<CXString> words;
    OrvelUtilities::parseCharacterSeparatedStrings(words, list, L',', true, true);
    for (const CXString& word : words) {
        (void)(Settings::TryToGetTimeStampFormatApiFromString(word, element.format) ||
               Settings::TryToGetTimeStampFormatDateApiFromString(word, element.dateOrder) ||
               Settings::TryToGetTimeStampFormatTimeApiFromString(word, element.timePart) ||
               Settings::TryToGetTimeStampFormatHourApiFromString(word, element.hourForm));
    }
}
