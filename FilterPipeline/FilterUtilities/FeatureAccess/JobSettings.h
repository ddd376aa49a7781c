#pragma once

#include "ComSupport/FilterUtilitiesExport.h"
#include "EmbeddedSettings/PrintTicketAttributeBytesReaderWriter.h"
#include "EmbeddedSettings/PrintTicketOrvelPublicDocSettingsReaderWriter.h"
#include "FeatureAccess/DataModelLessFeatureAccess.h"
#include "FeatureAccess/RecordedFeatureAccess.h"
#include "TicketAccess/NativeComPrintTicketAccess.h"

#include <DeviceDescription/OrvelDriverPropertyBag.h>

#include <prntvpt.h>

#include <memory>

class PrintTicketManager;

/// What the caller knows of a job. The printer's handle serves one question about the queue, and may be null.
struct JobDescription {
    CXString documentName = {};
    CXString userName = {};
    CXString userDomainName = {};
    void* printer = nullptr;
};

/// What a level of a job asks for, and all places that say it, under one roof: the merged ticket, the
/// settings that travel in it, the printer's capabilities and the device's, and the feature access over them.
///
///     JobSettings settings(manager, kPTJobScope, driverBag);
///     settings.Features().GetOptionValue(FEAT_BOOKLET)
///
/// The thread must be in a COM apartment, and stays the same. Required features are enforced, and the output
/// size is the media size of the ticket. The settings that travel in a ticket are the job's: a page or a
/// document that brings a ticket of its own is merged without them.
class OV_FILTER_UTILITIES_API JobSettings {
public:
    /// Of a level that the manager has merged. The ticket stays the manager's: it must keep it as long as
    /// this object lives, and what is set here is set there. Throws CPComException with E_PENDING for a level
    /// that is not merged and with E_FAIL for a printer without capabilities; what the places throw passes.
    JobSettings(PrintTicketManager& manager, EPrintTicketScope level, const OrvelDriverPropertyBag& driver,
                const JobDescription& job = {});
    /// Of another level of the same job: its printer, device and names are not asked for again.
    JobSettings(PrintTicketManager& manager, EPrintTicketScope level, const JobSettings& otherLevel);
    /// Of documents. Throws what they throw for texts that are not valid ones.
    JobSettings(const CXString& ticketXml, const CXString& capabilitiesXml,
                OvlSharedPtr<SimpleOcapParser> device, const JobDescription& job = {});
    JobSettings(const JobSettings&) = delete;
    JobSettings& operator=(const JobSettings&) = delete;
    ~JobSettings();

    /// The first question to the document settings writes an empty document into a ticket that has none.
    [[nodiscard]] DataModelLessFeatureAccess& Features() { return m_features; }
    [[nodiscard]] const DataModelLessFeatureAccess& Features() const { return m_features; }
    /// The same, with a record of what it is asked from now on. It must not outlive this object.
    [[nodiscard]] RecordedFeatureAccess RecordedFeatures();

    // The places.
    [[nodiscard]] PrintTicketXmlDocument& Ticket() { return *m_ticket; }
    [[nodiscard]] NativeComPrintTicketAccess& TicketAccess() { return m_ticketAccess; }
    [[nodiscard]] SimpleOcapParser& Device() const { return *m_device; }
    [[nodiscard]] PrintTicketAttributeBytesReaderWriter& AttributeBytes() { return m_attributeBytes; }
    /// For edits that are to reach the ticket. The features parse the settings for themselves: what is set by
    /// them is not seen here, and what is committed here after the first question to them is not seen by
    /// them.
    [[nodiscard]] PrintTicketOrvelPublicDocSettingsReaderWriter& DocumentSettings() {
        return m_documentSettings;
    }

private:
    using Capabilities = std::shared_ptr<PrintCapabilitiesXmlDocument>;

    JobSettings(std::unique_ptr<PrintTicketXmlDocument> ticket, Capabilities capabilities,
                OvlSharedPtr<SimpleOcapParser> device, const JobDescription& job);

    JobDescription m_job;
    std::unique_ptr<PrintTicketXmlDocument> m_ticket;
    Capabilities m_capabilities;
    OvlSharedPtr<SimpleOcapParser> m_device;
    NativeComPrintTicketAccess m_ticketAccess;
    PrintTicketAttributeBytesReaderWriter m_attributeBytes;
    PrintTicketOrvelPublicDocSettingsReaderWriter m_documentSettings;
    DataModelLessFeatureAccess m_features;
};
