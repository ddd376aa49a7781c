#pragma once

#include "JobContext/JobSheetSettings.h"
#include "JobContext/PageSettings.h"
#include "JobContext/XpsFilterPrintTicketBase.h"

/// What the current part is to look like, in plain answers.
///
///     XpsFilterPrintTicket ticket(&manager, helper);
///     if (manager.GetSnapshotOfCurrentMergedPartPrintTicket(kPTPageScope, ticket) == S_OK)
///         ticket.GetPageMediaSizeSettings(size);
///
/// A record always holds usable values: the ticket's, or its own defaults. Failures of the tickets are
/// returned.
class OV_FILTER_UTILITIES_API XpsFilterPrintTicket : public XpsFilterPrintTicketBase {
public:
    XpsFilterPrintTicket(PrintTicketManager* manager, const IAttributeBytesDebugDisplayHelper& helper);
    ~XpsFilterPrintTicket() override;

    // The default also for an option that is none of these. What is absent is E_ELEMENT_NOT_FOUND for the
    // orientation, and S_FALSE for the others.
    HRESULT GetOrientationSetting(PrintSchema::PageOrientation::EOrientationOption& option); // Portrait
    HRESULT GetDuplexSetting(PrintSchema::JobDuplexAllDocumentsContiguously::EDuplexOption& option);
    HRESULT GetJobIdSetting(PrintSchema::JobIdentification::EJobIdentificationOption& option);

    /// Whether the job chooses between one-sided and two-sided in the device's own settings.
    bool IsSidesImagedSpecified();

    /// Whether the page is fitted to another sheet. Always S_OK.
    HRESULT GetPageScalingSettings(PrintSchema::PageScaling::PageScalingData& data) const;
    /// Gutter and creep belong to a booklet. Always S_OK.
    HRESULT GetBookletSettings(PrintSchema::Binding::BindingData& data) const;
    /// S_FALSE where the ticket has no pages on a sheet; the outlines are read also then.
    HRESULT GetNUpSettings(PrintSchema::NUp::NUpData& data) const;
    HRESULT GetPageMediaSizeSettings(PrintSchema::PageMediaSize::PageMediaSizeData& data) const;
    /// The sheet that comes out: the one that pages are fitted to, else that of the page. Always S_OK: what
    /// goes wrong on the way to a chosen sheet leaves that of the page.
    HRESULT GetOutputPaperSizeSettings(PrintSchema::OutputPaperSize::OutputPaperSizeData& data) const;

private:
    template <typename Option, std::size_t count>
    HRESULT ReadChoice(const wchar_t* feature, bool isPublic, const wchar_t* const (&words)[count],
                       Option& option) const;
    [[nodiscard]] LONG ReadOptionAttribute(LONG feature) const;
    void ReadChosenSheet(PrintSchema::OutputPaperSize::OutputPaperSizeData& data) const;
    void ReadSheetFromAttributeBytes(PrintSchema::OutputPaperSize::OutputPaperSizeData& data) const;
    void ReadSheetFromCapabilities(const CXString& keyword,
                                   PrintSchema::OutputPaperSize::OutputPaperSizeData& data) const;

    /// What the capabilities said of a keyword last: they are large, and the pages of a job ask for the same.
    struct KnownSheet {
        CXString printer = {};
        CXString keyword = {};
        PrintSchema::OutputPaperSize::OutputPaperSizeData size = {};
    };
    mutable KnownSheet m_knownSheet;
};
