#include "FeatureAccess/JobSettings.h"

#include "ComSupport/ThrowHresult.h"
#include "PrintSchema/PrintCapabilitiesXmlDocument.h"
#include "PrintSchema/PrintSchemaKeywords.h"
#include "PrintSchema/PrintTicketXmlDocument.h"
#include "Ticket/PrintTicketManager.h"

#include <utility>

namespace {

/// Dumps of the attributes are no business of a job.
class NoDisplayHelp : public IAttributeBytesDebugDisplayHelper {
public:
    [[nodiscard]] std::unique_ptr<IAttributeBytesDebugDisplayHelper> Clone() const override {
        return std::make_unique<NoDisplayHelp>();
    }
};

std::unique_ptr<PrintTicketXmlDocument> TicketOf(PrintTicketManager& manager, EPrintTicketScope level) {
    const OperationScope operation("JobSettings::JobSettings");
    IXMLDOMDocument2* const ticket = manager.GetPtrToPrintTicketForReading(level);
    if (ticket == nullptr) ThrowComException(E_PENDING, "The level is not merged.");
    return std::make_unique<PrintTicketXmlDocument>(ticket);
}

std::unique_ptr<PrintCapabilitiesXmlDocument> CapabilitiesOf(const PrintTicketManager& manager) {
    const OperationScope operation("JobSettings::JobSettings");
    auto capabilities = PrintCapabilitiesXmlDocument::CreatePrintCapabilitiesXmlDocument(
        manager.GetPrinterName(), manager.GetUserToken());
    if (!capabilities) ThrowComException(E_FAIL, "The printer has no capabilities.");
    return capabilities;
}

struct OutputSize {
    explicit OutputSize(const IPrintTicketAccess& ticket) {
        CXString option;
        ticket.GetCurrentValueMediaSizeFeature(PrintSchema::PageMediaSize::FEATURE, option, width, height);
    }

    Dimension width;
    Dimension height;
};

} // namespace

JobSettings::JobSettings(PrintTicketManager& manager, EPrintTicketScope level,
                         const OrvelDriverPropertyBag& driver, const JobDescription& job)
    : JobSettings(TicketOf(manager, level), CapabilitiesOf(manager), driver.GetSimpleOcapParser(), job) {}

JobSettings::JobSettings(PrintTicketManager& manager, EPrintTicketScope level, const JobSettings& otherLevel)
    : JobSettings(TicketOf(manager, level), otherLevel.m_capabilities, otherLevel.m_device,
                  otherLevel.m_job) {}

JobSettings::JobSettings(const CXString& ticketXml, const CXString& capabilitiesXml,
                         OvlSharedPtr<SimpleOcapParser> device, const JobDescription& job)
    : JobSettings(std::make_unique<PrintTicketXmlDocument>(ticketXml),
                  std::make_shared<PrintCapabilitiesXmlDocument>(capabilitiesXml), std::move(device), job) {}

JobSettings::JobSettings(std::unique_ptr<PrintTicketXmlDocument> ticket, Capabilities capabilities,
                         OvlSharedPtr<SimpleOcapParser> device, const JobDescription& job)
    : m_job(job), m_ticket(std::move(ticket)), m_capabilities(std::move(capabilities)),
      m_device(std::move(device)), m_ticketAccess(*m_ticket, *m_capabilities),
      m_attributeBytes(m_ticket.get(), NoDisplayHelp(), false), m_documentSettings(m_ticket.get()),
      m_features([&] {
          const OutputSize size(m_ticketAccess);
          return DataModelLessFeatureAccess(job.documentName, job.userName, job.userDomainName, job.printer,
                                            size.width, size.height, *m_device, m_ticketAccess,
                                            m_attributeBytes);
      }()) {}

JobSettings::~JobSettings() = default;

RecordedFeatureAccess JobSettings::RecordedFeatures() {
    return RecordedFeatureAccess(m_features, [this](const FeatureQuestion& question) {
        const RecordedAnswer answer = m_features.Answer(question);
        // The features do not know that their size is the ticket's.
        const bool isSize = question.kind == FeatureQuestionKind::OutputSize && answer.isSpecified;
        return isSize ? FeatureValueSource::PrintTicket : answer.source;
    });
}
