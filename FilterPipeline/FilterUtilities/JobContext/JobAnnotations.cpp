#include "JobContext/JobAnnotations.h"

#include "Annotation/AnnotationNumbering.h"
#include "ComSupport/ReportWarning.h"
#include "DataModel/FeatureIds.h"
#include "PrintSchema/PrintSchemaKeywords.h"
#include "PrintSchema/PrintTicketXmlDocument.h"
#include "PropertyBags/NativeComPrinterPropertyBagAccess.h"

#include <AttributeStore/AttributeBytes.h>
#include <AttributeStore/AttributeBytesIndexedList.h>
#include <LowLevelFacilities/Failures/CPExceptionInvalidArgument.h>
#include <LowLevelFacilities/Failures/ThrowComException.h>
#include <LowLevelFacilities/Failures/ThrowFailure.h>
#include <SystemServices/OrvelUtilities.h>

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

/// The selected element, which is a picture. One that cannot be read is left to whoever needs it.
PageAnnotation ReadPicture(AnnotationPrintTicketSettings& settings) {
    Gdiplus::SizeF size;
    if (SUCCEEDED(settings.ParseImageFile())) {
        settings.GetSelected()->isImageParsed = true;
        const float scale = settings.GetScaling() / 100;
        size = {settings.GetImageWidthInXpsUnits() * scale, settings.GetImageHeightInXpsUnits() * scale};
    }
    PageAnnotation annotation{*settings.GetSelected()};
    annotation.picturePartName =
        settings.GenerateImageResourceUriWithoutExtension(settings.GetImageFileName());
    annotation.pictureSize = size;
    return annotation;
}

/// The selected element, which is a text, in a face that can show it. The list has that face from now on.
PageAnnotation ChooseFace(AnnotationPrintTicketSettings& settings) {
    AnnotationElementSettings& element = *settings.GetSelected();
    CXString text = element.text;
    if (IsNumberedAnnotation(element)) text += digits;
    CXString wanted = element.faceName;
    element.faceName = settings.GetGdiDeviceContextRef().FindBestFontForDisplayingString(text, wanted);
    if (element.faceName.Compare(wanted) != 0)
        ReportWarning("An annotation in " + CPStringUtils::narrowToStdString(wanted) + " is written in " +
                      CPStringUtils::narrowToStdString(element.faceName) +
                      ", which has all of its characters");
    PageAnnotation annotation{element};
    annotation.wantedFace = wanted;
    annotation.fontPartName = settings.GenerateFontResourceUriWitExtension(element.faceName);
    return annotation;
}

/// One font serves all annotations in its face.
void CountCharacters(AnnotationPrintTicketSettings& settings, std::vector<PageAnnotation>& annotations) {
    std::map<std::wstring, CXString, std::less<>> charactersOfFaces;
    for (const PageAnnotation& annotation : annotations) {
        const CXString& face = annotation.element.faceName;
        if (annotation.fontPartName.IsEmpty()) continue;
        const auto [found, isNew] = charactersOfFaces.try_emplace(std::wstring(face.View()));
        CXString& characters = found->second;
        if (isNew) characters = settings.GetCumulativeListOfUniqueCharactersRequiredFromThisFont(face);
        if (!IsNumberedAnnotation(annotation.element)) continue;
        for (const wchar_t digit : std::wstring_view(digits))
            if (characters.View().find(digit) == std::wstring_view::npos) characters += digit;
    }
    for (PageAnnotation& annotation : annotations)
        if (!annotation.fontPartName.IsEmpty())
            annotation.characters = charactersOfFaces.find(annotation.element.faceName.View())->second;
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

// What the client sent along is what the user saw, and goes before what the queue has under that name.
void JobAnnotations::ExpandName() {
    AnnotationPrintTicketSettings settings;
    const CXString name = settings.GetAnnotationDefinitionNameFromPrintTicket(*m_settings, m_attributes);
    if (name.IsEmpty()) return;
    if (m_clientData && settings.ExpandNameOnlyAnnotationDefinitionInPrintTicketUsingCjd2(
                            name, &*m_clientData, *m_settings) == S_OK)
        if (settings.WasNameOnlyDefinitionExpandedInPrintTicket())
            m_origin = AnnotationOrigin::ClientDefinition;
    if (m_origin == AnnotationOrigin::DocumentSettings && m_store) {
        ThrowIfFailed(
            settings.ExpandNameOnlyAnnotationDefinitionInPrintTicket(name, m_store.get(), *m_settings));
        if (settings.WasNameOnlyDefinitionExpandedInPrintTicket())
            m_origin = AnnotationOrigin::StoredDefinition;
    }
    if (m_origin == AnnotationOrigin::DocumentSettings)
        ReportWarning("The ticket names an annotation that nobody has a definition of: " +
                      CPStringUtils::narrowToStdString(name));
}

std::vector<PageAnnotation> JobAnnotations::OfPage(Gdiplus::SizeF size) {
    std::vector<PageAnnotation> annotations = Read(size, false);
    const AttributeBytes* const fax =
        m_attributes.GetAttributeBytesPtr(AttributeBytesFeatureId(FEAT_FAX_OUT_COL));
    if (fax != nullptr && fax->IsSpecified()) {
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
    if (m_clientData) settings.ReadClientGeneratedTimestampTextFromClientJobData2(&*m_clientData);
    FillInTimes(settings);

    const bool hasSettings = m_settings->IsOrvelPublicDocSettingsFeaturePresent(L"annotation-col-api");
    const AnnotationOrigin origin = isFaxSheet    ? AnnotationOrigin::FaxSheet
                                    : hasSettings ? m_origin
                                                  : AnnotationOrigin::AttributeBytes;
    std::vector<PageAnnotation> annotations;
    // All are looked at, whatever the first one is.
    for (int index = 0; settings.SelectAnnotationElement(index); ++index) {
        if (settings.IsBitmapAnnotationType())
            annotations.push_back(ReadPicture(settings));
        else if (HasWords(settings))
            annotations.push_back(ChooseFace(settings));
        else
            continue;
        annotations.back().origin = settings.IsJobIDAnnotationType() ? AnnotationOrigin::JobMark : origin;
    }
    CountCharacters(settings, annotations);
    return annotations;
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
