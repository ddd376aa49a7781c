#pragma once

#include "Annotation/AnnotationPrintTicketSettings.h"
#include "ComSupport/FilterUtilitiesExport.h"
#include "EmbeddedSettings/PrintTicketOrvelPublicDocSettingsReaderWriter.h"
#include "JobContext/XpsFilterPrintTicket.h"

#include <AnnotationStore/AnnotationStore.h>
#include <AttributeStore/AttributeBytesIndexedList.h>
#include <ClientJobData/ClientJobData2ReaderWriter.h>

#include <map>
#include <memory>
#include <optional>
#include <string>
#include <vector>

class NativeComPrinterPropertyBagAccess;

/// Who put an annotation on a page.
enum class AnnotationOrigin {
    DocumentSettings, // the settings in the ticket
    AttributeBytes,   // the driver's own settings in the ticket
    StoredDefinition, // a definition of the queue, which the ticket names
    ClientDefinition, // a definition that the client sent along, which the ticket names
    JobMark,          // the driver, since the ticket wants the job identified
    FaxSheet          // the cover sheet of a fax
};

/// One annotation of a page, with all that is decided but the number of the page.
struct PageAnnotation {
    /// A text's face is the one that was chosen.
    AnnotationElementSettings element;
    AnnotationOrigin origin = AnnotationOrigin::DocumentSettings;
    CXString wantedFace = {};
    /// Of a text: all characters that its face needs for all annotations, and the part for the font.
    CXString characters = {};
    CXString fontPartName = {};
    /// Of a picture: the part, without extension, and its size on the page, in XPS units; 0 for one that
    /// cannot be read.
    CXString picturePartName = {};
    Gdiplus::SizeF pictureSize = {};
};

/// The annotations of a job, from all places that may say something of them: the settings in its ticket, the
/// definitions that the client sent along or the queue keeps under a name, the mark of the job, a fax cover
/// sheet. The ticket stays as it is. Belongs to the thread of the ticket.
class OV_FILTER_UTILITIES_API JobAnnotations {
public:
    /// What the spooler knows of the job. Without a handle, time stamps that came without a text stay empty.
    struct Job {
        HANDLE printer = nullptr;
        ULONG id = 0;
        CXString userName = {};
        CXString documentName = {};
    };

    /// The snapshot must be of the job's level or a lower one; what is needed of it is copied. `store` may be
    /// null. Throws CPExceptionInvalidArgument for attribute bytes or client data that are damaged.
    JobAnnotations(XpsFilterPrintTicket& ticket, std::unique_ptr<AnnotationStore> store, Job job);
    ~JobAnnotations();
    JobAnnotations(const JobAnnotations&) = delete;
    JobAnnotations& operator=(const JobAnnotations&) = delete;

    /// Of a page of that size in XPS units, in the order in which the settings have them; none that has
    /// nothing to say. A time stamp whose time is not known is reported as a warning.
    [[nodiscard]] std::vector<PageAnnotation> OfPage(Gdiplus::SizeF size);

    /// The definitions that a queue keeps for its users; null if it keeps none.
    [[nodiscard]] static std::unique_ptr<AnnotationStore>
    ReadStore(const NativeComPrinterPropertyBagAccess& queueProperties);

private:
    void ReadClientData();
    void ExpandName();
    [[nodiscard]] std::vector<PageAnnotation> Read(Gdiplus::SizeF size, bool isFaxSheet);
    void FillInTimes(AnnotationPrintTicketSettings& settings);
    [[nodiscard]] PageAnnotation ReadPicture(AnnotationPrintTicketSettings& settings);
    [[nodiscard]] bool HasDefinitionInSettings();

    std::unique_ptr<PrintTicketXmlDocument> m_ticket; // null where the job has none
    std::unique_ptr<PrintTicketOrvelPublicDocSettingsReaderWriter> m_settings;
    AttributeBytesIndexedList m_attributes;
    std::unique_ptr<AnnotationStore> m_store;
    Job m_job;
    DataModelIds::tagValueEnum m_jobIdOption = DataModelIds::VAL_UNSPECIFIED;
    std::optional<ClientJobData2ReaderWriter> m_clientData;
    AnnotationOrigin m_origin = AnnotationOrigin::DocumentSettings;
    std::map<std::wstring, AnnotationElementSettings> m_pictures; // what was read of a file, by its name
};
