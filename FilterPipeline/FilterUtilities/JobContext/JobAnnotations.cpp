#include "JobContext/JobAnnotations.h"

#include "Annotation/AnnotationNumbering.h"
#include "Annotation/AnnotationTextLayout.h"
#include "Annotation/AttributeCollections.h"
#include "ComSupport/ReportWarning.h"
#include "DataModel/FeatureIds.h"
#include "PrintSchema/PrintSchemaKeywords.h"
#include "PrintSchema/PrintTicketXmlDocument.h"
#include "PropertyBags/NativeComPrinterPropertyBagAccess.h"

#include <LowLevelFacilities/Failures/CPExceptionInvalidArgument.h>
#include <LowLevelFacilities/Failures/ThrowComException.h>
#include <LowLevelFacilities/Failures/ThrowFailure.h>
#include <SystemServices/OrvelUtilities.h>

#include <utf16units.h>

#include <algorithm>
#include <iterator>
#include <map>
#include <utility>

using namespace DataModelIds;
using namespace PrintSchema;

namespace {

constexpr const wchar_t* storeProperty = L"AnnotationStore"; // of the queue
constexpr const wchar_t* digits = L"0123456789";             // which numbered annotations may need

tagValueEnum JobIdOption(XpsFilterPrintTicket& ticket) {
    JobIdentification::EJobIdentificationOption option = {};
    if (ticket.GetJobIdSetting(option) != S_OK) return VAL_UNSPECIFIED;
    switch (option) {
    case JobIdentification::EJobIdentificationOption::JobIdPrintFirstPage:
        return VAL_PRINT_ID_ON_FIRST_PAGE;
    case JobIdentification::EJobIdentificationOption::JobIdPrintAllPages:
        return VAL_PRINT_ID_ON_ALL_PAGES;
    default:
        return VAL_UNSPECIFIED;
    }
}

/// Expanding a definition writes into the ticket, which is the job's.
std::unique_ptr<PrintTicketXmlDocument> CopyOf(PrintTicketXmlDocument* ticket) {
    if (ticket == nullptr) return nullptr;
    CComBSTR text;
    ThrowIfFailed(ticket->GetDomDocPtr()->get_xml(&text));
    return std::make_unique<PrintTicketXmlDocument>(CXString(text));
}

/// The selected element has something to say on a page.
bool HasWords(const AnnotationPrintTicketSettings& settings) {
    return settings.IsTextBasedAnnotationType() &&
           (!settings.GetText().IsEmpty() || IsNumberedAnnotation(*settings.GetSelected()));
}

/// Chooses faces for texts, and remembers them: looking through all faces of the system takes long.
class FaceChoice {
public:
    explicit FaceChoice(GdiDeviceContext& fonts) : m_fonts(fonts) {}

    const CXString& Of(const CXString& wantedFace, const CXString& text) {
        // Line feeds are not drawn, and the order and number of characters does not count.
        std::wstring characters(text.View());
        std::sort(characters.begin(), characters.end());
        characters.erase(std::unique(characters.begin(), characters.end()), characters.end());
        std::erase(characters, L'\n');
        const bool hasPairs = std::ranges::any_of(characters, OvPlatform::Utf16::IsSurrogate<wchar_t>);
        const auto [found, isNew] = m_faces.try_emplace({std::wstring(wantedFace.View()), characters});
        if (isNew) {
            // Halves of pairs that were sorted are none; the fonts are asked for the text as it is.
            CXString asked = hasPairs ? text : CXString(std::wstring(characters));
            CXString preferred = wantedFace;
            found->second = m_fonts.FindBestFontForDisplayingString(asked, preferred);
        }
        return found->second;
    }

private:
    GdiDeviceContext& m_fonts;
    std::map<std::pair<std::wstring, std::wstring>, CXString> m_faces;
};

/// The selected element, which is a text, as it is drawn: in characters that a page can hold, and in a face
/// that has them. The list has both from now on.
PageAnnotation ChooseFace(AnnotationPrintTicketSettings& settings, FaceChoice& faces,
                          const CXString& wantedFace) {
    constexpr int usualSize = 72;
    constexpr int mostPoints = 10'000;
    AnnotationElementSettings& element = *settings.GetSelected();
    element.text = DrawableText(element.text);
    if (element.sizeInPoints < 1 || element.sizeInPoints > mostPoints) {
        ReportWarning("An annotation of " + std::to_string(element.sizeInPoints) + " points gets " +
                      std::to_string(usualSize));
        element.sizeInPoints = usualSize;
    }
    CXString text = element.text;
    if (IsNumberedAnnotation(element)) text += digits;
    element.faceName = faces.Of(element.faceName, text);
    if (element.faceName.Compare(wantedFace) != 0)
        ReportWarning("An annotation in " + CPStringUtils::narrowToStdString(wantedFace) + " is written in " +
                      CPStringUtils::narrowToStdString(element.faceName) +
                      ", which has all of its characters");
    PageAnnotation annotation{element};
    annotation.wantedFace = wantedFace;
    annotation.fontPartName = settings.GenerateFontResourceUriWitExtension(element.faceName);
    return annotation;
}

/// One font serves all annotations in its face, so they have one character set, that of the first, and the
/// characters of all.
void ShareFonts(AnnotationPrintTicketSettings& settings, std::vector<PageAnnotation>& annotations) {
    struct Font {
        int charset = DEFAULT_CHARSET;
        CXString characters = {};
    };
    std::map<std::wstring, Font, std::less<>> fonts;
    for (const PageAnnotation& annotation : annotations) {
        const CXString& face = annotation.element.faceName;
        if (annotation.fontPartName.IsEmpty()) continue;
        const auto [found, isNew] = fonts.try_emplace(std::wstring(face.View()));
        Font& font = found->second;
        if (isNew)
            font = {annotation.element.charset,
                    settings.GetCumulativeListOfUniqueCharactersRequiredFromThisFont(face)};
        if (!IsNumberedAnnotation(annotation.element)) continue;
        for (const wchar_t digit : std::wstring_view(digits))
            if (font.characters.View().find(digit) == std::wstring_view::npos) font.characters += digit;
    }
    for (PageAnnotation& annotation : annotations) {
        if (annotation.fontPartName.IsEmpty()) continue;
        const Font& font = fonts.find(annotation.element.faceName.View())->second;
        annotation.element.charset = font.charset;
        annotation.characters = font.characters;
    }
}

} // namespace

JobAnnotations::JobAnnotations(XpsFilterPrintTicket& ticket, std::unique_ptr<AnnotationStore> store, Job job)
    : m_ticket(CopyOf(ticket.GetCopyOfPtrToPrintTicketXmlDocumentForReading(JobFilterPtScope))),
      m_settings(std::make_unique<PrintTicketOrvelPublicDocSettingsReaderWriter>(
          m_ticket.get(), PrintTicketOrvelPublicDocSettingsReaderWriter::EmptyDocument::WithCommit)),
      m_attributes(ticket.GetAttributeBytesIndexedListRef()), m_store(std::move(store)),
      m_job(std::move(job)), m_jobIdOption(JobIdOption(ticket)) {
    ReadClientData();
    ExpandName();
}

JobAnnotations::~JobAnnotations() = default;

void JobAnnotations::ReadClientData() {
    CXString text;
    if (!m_ticket ||
        m_ticket->GetStringParameterInitValue(m_ticket->GetUserKeywordsNsPrefix(),
                                              JobOrvelClientJobData2Parameters::PARAMETERNAME, text) != S_OK)
        return;
    const int units = static_cast<int>(text.View().size());
    ByteBuffer bytes;
    int length = OrvelUtilities::Base64DecodeGetRequiredLength(units);
    bytes.resize(static_cast<std::size_t>(length));
    if (!OrvelUtilities::Base64Decode(text.View().data(), units, bytes.getLpbyte(), &length))
        ThrowFailure<CPExceptionInvalidArgument>(
            [] { return "The client's data in the ticket are damaged"; });
    bytes.resize(static_cast<std::size_t>(length));
    m_clientData.emplace(bytes);
}

bool JobAnnotations::HasDefinitionInSettings() {
    bool isSpecified = false;
    unsigned int count = 0;
    ThrowIfFailed(m_settings->GetNumberOfChildrenForOrvelPublicDocSettingsFeature(L"annotation-col-api",
                                                                                  isSpecified, count));
    return isSpecified;
}

// What the client sent along is what the user saw, and goes before what the queue has under that name.
void JobAnnotations::ExpandName() {
    AnnotationPrintTicketSettings settings;
    const CXString name = settings.GetAnnotationDefinitionNameFromPrintTicket(*m_settings, m_attributes);
    const bool hasDefinition =
        HasDefinitionInSettings() || AttributeCollections::IsSpecified(m_attributes, FEAT_ANNOTATION_COL);
    if (name.IsEmpty() || hasDefinition) return;
    if (m_clientData && settings.ExpandNameOnlyAnnotationDefinitionInPrintTicketUsingCjd2(
                            name, &*m_clientData, *m_settings) == S_OK)
        if (settings.WasNameOnlyDefinitionExpandedInPrintTicket())
            m_origin = AnnotationOrigin::ClientDefinition;
    if (m_origin == AnnotationOrigin::DocumentSettings && m_store) {
        ThrowIfFailed(
            settings.ExpandNameOnlyAnnotationDefinitionInPrintTicket(name, m_store.get(), *m_settings),
            "The settings of a ticket cannot take the annotation definition " +
                CPStringUtils::narrowToStdString(name));
        if (settings.WasNameOnlyDefinitionExpandedInPrintTicket())
            m_origin = AnnotationOrigin::StoredDefinition;
    }
    if (m_origin == AnnotationOrigin::DocumentSettings)
        ReportWarning("The ticket names an annotation that nobody has a definition of: " +
                      CPStringUtils::narrowToStdString(name));
}

std::vector<PageAnnotation> JobAnnotations::OfPage(Gdiplus::SizeF size) {
    std::vector<PageAnnotation> annotations = Read(size, false);
    if (AttributeCollections::IsSpecified(m_attributes, FEAT_FAX_OUT_COL)) {
        std::vector<PageAnnotation> sheet = Read(size, true);
        std::move(sheet.begin(), sheet.end(), std::back_inserter(annotations));
    }
    return annotations;
}

std::vector<PageAnnotation> JobAnnotations::Read(Gdiplus::SizeF size, bool isFaxSheet) {
    AnnotationPrintTicketSettings settings;
    settings.SetFaxAnnotationSettings(isFaxSheet);
    const HRESULT hr = settings.Initialize(size, *m_settings, m_attributes, static_cast<LONG>(m_job.id),
                                           false, m_jobIdOption);
    ThrowIfFailed(hr);
    if (hr == S_FALSE) return {};
    // The mark of the job gets its face together with its text.
    std::vector<CXString> wantedFaces;
    while (settings.SelectAnnotationElement(static_cast<int>(wantedFaces.size())))
        wantedFaces.push_back(settings.GetFaceName());
    if (m_clientData) settings.ReadClientGeneratedTimestampTextFromClientJobData2(&*m_clientData);
    FillInTimes(settings);

    const AnnotationOrigin origin = isFaxSheet                  ? AnnotationOrigin::FaxSheet
                                    : HasDefinitionInSettings() ? m_origin
                                                                : AnnotationOrigin::AttributeBytes;
    FaceChoice faces(settings.GetGdiDeviceContextRef());
    std::vector<PageAnnotation> annotations;
    // All are looked at, whatever the first one is.
    for (std::size_t index = 0; settings.SelectAnnotationElement(static_cast<int>(index)); ++index) {
        if (settings.IsBitmapAnnotationType())
            annotations.push_back(ReadPicture(settings));
        else if (HasWords(settings))
            annotations.push_back(ChooseFace(settings, faces, wantedFaces[index]));
        else
            continue;
        annotations.back().origin = settings.IsJobIDAnnotationType() ? AnnotationOrigin::JobMark : origin;
    }
    ShareFonts(settings, annotations);
    return annotations;
}

// A file is looked into once, whatever number of elements and page sizes it serves; one that cannot be read
// is left to whoever needs it.
PageAnnotation JobAnnotations::ReadPicture(AnnotationPrintTicketSettings& settings) {
    AnnotationElementSettings& element = *settings.GetSelected();
    const auto [found, isNew] = m_pictures.try_emplace(std::wstring(element.imageFileName.View()), element);
    if (isNew && SUCCEEDED(settings.ParseImageFile())) {
        element.isImageParsed = true;
        found->second = element;
    }
    PageAnnotation annotation{element};
    const AnnotationElementSettings& read = found->second;
    annotation.element.imageWidth = read.imageWidth;
    annotation.element.imageHeight = read.imageHeight;
    annotation.element.isImageParsed = read.isImageParsed;
    annotation.element.horizontalResolution = read.horizontalResolution;
    annotation.element.verticalResolution = read.verticalResolution;
    annotation.picturePartName = settings.GenerateImageResourceUriWithoutExtension(element.imageFileName);
    if (read.isImageParsed) {
        const auto scaled = [&](const Dimension& length) {
            return static_cast<float>(length.GetValue(Dimension::XpsUnit).GetDoubleValue()) *
                   element.scaling / 100;
        };
        annotation.pictureSize = {scaled(read.imageWidth), scaled(read.imageHeight)};
    }
    return annotation;
}

void JobAnnotations::FillInTimes(AnnotationPrintTicketSettings& settings) {
    const HRESULT hr = settings.InitializeAllTimeStampAnnotationElementsBasedOnJobStartTime(
        m_job.printer, m_job.id, false, m_job.userName, m_job.documentName);
    if (FAILED(hr))
        ReportWarning("The time of the job is not known; time stamps without a text are left out");
}

std::unique_ptr<AnnotationStore>
JobAnnotations::ReadStore(const NativeComPrinterPropertyBagAccess& queueProperties) {
    CXString xml;
    queueProperties.GetPrinterPropertyBagString(storeProperty, xml);
    if (xml.IsBlank()) return nullptr;
    return std::make_unique<AnnotationStore>(CPString(CPStringUtils::narrowToStdString(xml)), true);
}
