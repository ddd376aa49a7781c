#pragma once

#include "ComSupport/FilterUtilitiesExport.h"
#include "DataModel/ValueIds.h"
#include "Media/PcFormInfo.h"

#include <windows.h>

#include <vector>

class PrintCapabilitiesXmlDocument;
class PrintTicketXmlDocument;

/// Finds paper sizes in a Print Capabilities document and writes them into a Print Ticket. Sizes are in
/// microns. An object serves one capabilities document, whose list of sizes it keeps, and one thread.
class OV_FILTER_UTILITIES_API PageMediaSizePtPcHelper {
public:
    PageMediaSizePtPcHelper();
    virtual ~PageMediaSizePtPcHelper();

    /// The standard sizes that the document offers, in its order. Options without a size and the custom size
    /// are passed over. A failure is reported and not raised: the list then ends where it came, for this
    /// once. Once there is a whole list, the document is not read again.
    std::vector<PcFormInfo> GetSupportedPageMediaSizes(PrintCapabilitiesXmlDocument& capabilities);

    /// The first option of exactly this size. S_FALSE, and an empty keyword, if there is none. Failures are
    /// raised as CPComException.
    HRESULT GetPageMediaSizeOptionKeyword(PrintCapabilitiesXmlDocument& capabilities, int width, int height,
                                          CXString& keyword,
                                          PrintSchema::MsPrintTicketNamespacesEnum& nameSpace);

    /// Makes this the size of the ticket: the option that the capabilities offer for it, or a custom size.
    /// Failures are raised as CPComException, and leave the ticket as it was.
    HRESULT AddOrReplacePageMediaSize(PrintCapabilitiesXmlDocument& capabilities,
                                      PrintTicketXmlDocument& ticket, int width, int height);
    /// The same with an option that the caller has found, or that of the custom size.
    static HRESULT AddOrReplacePageMediaSize(PrintTicketXmlDocument& ticket, const PcFormInfo& form);

    /// A number of a custom size: the option refers to a parameter that holds it. Public names.
    struct CustomNumber {
        CXString property;
        CXString parameter;
        int value;
    };
    static HRESULT AddOrReplaceCustomSize(PrintTicketXmlDocument& ticket, const CXString& option,
                                          bool isPublic, const std::vector<CustomNumber>& numbers);

    /// S_FALSE if there is nothing to delete. Failures are raised.
    static HRESULT DeletePageMediaSizeAndItsParameterInitsIfExist(PrintTicketXmlDocument& ticket);

    /// Within 100 microns of a size that the driver knows by name.
    static bool IsEnvelopeSize(int width, int height);
    /// value is untouched if the result is false.
    static bool GetValueEnumForPageSizeBasedOnDims(int width, int height, DataModelIds::tagValueEnum& value);

private:
    void UpdateSizes(const PrintCapabilitiesXmlDocument& capabilities);
    static void ReadOptions(const PrintCapabilitiesXmlDocument& capabilities, std::vector<PcFormInfo>& sizes);

    std::vector<PcFormInfo> m_sizes;
};
