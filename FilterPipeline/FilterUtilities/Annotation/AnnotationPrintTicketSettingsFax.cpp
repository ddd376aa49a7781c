// The cover sheet of a fax: what it says, in lines that fit the page.

#include "Annotation/AnnotationPrintTicketSettings.h"
#include "Annotation/AttributeCollections.h"
#include "Annotation/LineBreaker.h"
#include "ComSupport/FailureBarrier.h"
#include "ComSupport/XGenerateRandomGuidAsString.h"

#include <algorithm>
#include <string>
#include <string_view>
#include <utility>

using namespace DataModelIds;

using This = AnnotationPrintTicketSettings;

namespace {

constexpr tagFeatureEnum senderFields[] = {FEAT_FAX_COVER_SENDER_292, FEAT_FAX_COVER_SENDER_293,
                                           FEAT_FAX_COVER_SENDER_296, FEAT_FAX_COVER_SENDER_294,
                                           FEAT_FAX_COVER_SENDER_295};

// The labels that a client sends, by position.
constexpr int senderLabel = 0;
constexpr int recipientLabel = 1;
constexpr int notesLabel = 2;

constexpr wchar_t face[] = L"Arial";
constexpr int sizeInPoints = 20;
// XPS units, 96 to the inch.
constexpr int margin = 96;
constexpr int lineHeight = 32;
constexpr int firstLine = margin / lineHeight;

CXString WithLineFeed(CXString text) {
    text += L'\n';
    return text;
}

void AppendLine(CXString& lines, std::wstring_view line) {
    if (line.empty()) return;
    if (!lines.IsEmpty()) lines += L'\n';
    lines += line;
}

} // namespace

// ---- What it says

CXString This::GetLocalizedString(int index) {
    if (m_attributes == nullptr) return {};
    const CXString labels = AttributeCollections::Text(*m_attributes, FEAT_FAX_COVER_LABELS);
    const int first = labels.Find(L',');
    if (index == senderLabel) return labels.SpanExcluding(L",");
    if (first < 0) return {};
    if (index != recipientLabel) return labels.Mid(labels.ReverseFind(L',') + 1);
    const int second = labels.Find(L',', first + 1);
    return second < 0 ? CXString() : labels.Mid(first + 1, second - first - 1);
}

AttributeBytesIndexedList This::GetFaxCover() {
    if (m_attributes == nullptr) return {};
    return AttributeCollections::Open(AttributeCollections::Open(*m_attributes, FEAT_FAX_OUT_COL),
                                      FEAT_FAX_COVER_COL);
}

CXString This::GetFaxSenderInfo() {
    const AttributeBytesIndexedList cover = GetFaxCover();
    CXString sender;
    for (const tagFeatureEnum field : senderFields) {
        const CXString text = AttributeCollections::Text(cover, field);
        if (!text.IsEmpty()) sender += WithLineFeed(text);
    }
    return sender.IsEmpty() ? sender : WithLineFeed(GetLocalizedString(senderLabel)) + WithLineFeed(sender);
}

CXString This::GetFaxRecipients() {
    const AttributeBytesIndexedList cover = GetFaxCover();
    bool isFound = false;
    const LONG mode = cover.GetOptionValue(AttributeBytesFeatureId(FEAT_FAX_COVER_RECIPIENT_MODE), &isFound);
    if (!isFound || mode == VAL_FAX_COVER_RECIPIENTS_OMITTED) return {};
    CXString recipients = WithLineFeed(GetLocalizedString(recipientLabel));
    if (mode == VAL_FAX_COVER_RECIPIENTS_LISTED) {
        AttributeCollections::ForEach(
            AttributeCollections::Open(cover, FEAT_FAX_COVER_RECIPIENT_COL), [&](const auto& recipient) {
                const auto name =
                    AttributeCollections::FindText(recipient, FEAT_FAX_COVER_RECIPIENT_COL_NAME);
                if (name) recipients += WithLineFeed(*name);
            });
        return recipients;
    }
    const auto name = AttributeCollections::FindText(cover, FEAT_FAX_COVER_RECIPIENT_NAME);
    if (name) recipients += WithLineFeed(WithLineFeed(*name));
    return recipients;
}

CXString This::GetFaxNotes() {
    auto notes = AttributeCollections::FindText(GetFaxCover(), FEAT_FAX_COVER_NOTES);
    if (!notes) return {};
    notes->Remove(L'\r');
    CXString lines = WithLineFeed(GetLocalizedString(notesLabel));
    for (const CXString& line : notes->Tokenize(L'\n'))
        lines += WithLineFeed(WrapLineIfNecessary(line));
    return lines;
}

CXString This::BuildFaxInfoString() { return GetFaxSenderInfo() + GetFaxRecipients() + GetFaxNotes(); }

// ---- Its lines as elements

void This::AddAndInitializeFaxCoverSheetInfoAnnotationElement() {
    CXString info = BuildFaxInfoString();
    info.Remove(L'\r');
    int line = 0;
    for (const CXString& text : info.Tokenize(L'\n'))
        InitFaxTextAnnotationElement(text, line++);
}

void This::InitFaxTextAnnotationElement(CXString text, int line) {
    if (text.IsEmpty()) return;
    AddNewAnnotationElement();
    AnnotationElementSettings& element = *m_selected;
    element.type = VAL_ANNOTATION_TYPE_TEXT;
    ++m_textBasedCount;
    element.isFirstPageOnly = true;
    element.drawMode = VAL_ANNOTATION_IN_FOREGROUND;
    element.renderOrder = VAL_ANNOTATION_PRE_IMPOSITION;
    element.opacity = 1;
    element.justificationFlags = 5;
    element.justificationX = margin;
    element.justificationY = (line + firstLine) * lineHeight;
    element.text = std::move(text);
    element.faceName = face;
    element.charset = DEFAULT_CHARSET;
    element.sizeInPoints = sizeInPoints;
    element.color = L"#000000";
    element.resourceName = XGenerateRandomGuidAsString();
}

// ---- Lines that fit

LineBreaker This::MakeLineBreaker() {
    return LineBreaker([this](std::wstring_view piece) {
        CXString text{std::wstring(piece)};
        const Gdiplus::RectF size =
            m_deviceContext.GetTextDimensionsInXpsUnits(face, DEFAULT_CHARSET, sizeInPoints, text);
        // A text that cannot be measured is not broken.
        if (size.Height == 0) ReportIfFailed(E_FAIL);
        return size.Width <= m_pageWidth - 2 * margin;
    });
}

CXString This::WrapLineIfNecessary(CXString text) {
    const OperationScope operation("AnnotationPrintTicketSettings::WrapLineIfNecessary");
    if (text.IsEmpty()) return text;
    LineBreaker breaker = MakeLineBreaker();
    if (breaker.FitsAsAWhole(text.View())) return text;
    CXString lines;
    LineBreaker::Line line;
    do {
        line = breaker.NextLine(text.View(), line.next);
        AppendLine(lines, line.text);
    } while (!line.text.empty());
    return lines;
}

// NOLINTNEXTLINE(performance-unnecessary-value-param): the published form takes a copy
CXString This::FormatLine(CXString& lines, CXString text, int& lineStart, int& lineLength, int& wordStart,
                          int& wordLength, int& remaining) {
    const OperationScope operation("AnnotationPrintTicketSettings::FormatLine");
    const std::wstring_view whole = text.View();
    const LineBreaker::Line line =
        MakeLineBreaker().NextLine(whole, static_cast<std::size_t>(std::max(lineStart, 0)));
    AppendLine(lines, line.text);
    const std::size_t lastBlank = line.text.find_last_of(L' ');
    const std::size_t word = lastBlank == std::wstring_view::npos ? 0 : lastBlank + 1;
    lineLength = static_cast<int>(line.text.size());
    wordStart = static_cast<int>(line.text.data() - whole.data()) + static_cast<int>(word);
    wordLength = lineLength - static_cast<int>(word);
    lineStart = static_cast<int>(line.next);
    remaining = text.GetLength() - lineStart;
    return CXString(std::wstring(line.text));
}
