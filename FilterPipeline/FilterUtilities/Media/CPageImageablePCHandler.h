#pragma once

#include "ComSupport/FilterUtilitiesExport.h"

#include <windows.h>
#include <msxml6.h>

#include <cstdint>

class XpsFilterPrintTicket;

namespace PrintSchema::PageImageableSize {

/// Microns.
struct PageImageableData {
    std::int32_t imageableWidth;
    std::int32_t imageableHeight;
    std::int32_t originWidth;
    std::int32_t originHeight;
    std::int32_t extentWidth;
    std::int32_t extentHeight;
};

} // namespace PrintSchema::PageImageableSize

/// Reads the imageable area and the limits of custom sizes from a Print Capabilities document.
class OV_FILTER_UTILITIES_API CPageImageablePCHandler {
public:
    /// The ticket that the object works for; not owned, may be null.
    explicit CPageImageablePCHandler(XpsFilterPrintTicket* ticket);
    CPageImageablePCHandler(const CPageImageablePCHandler& other);
    CPageImageablePCHandler& operator=(const CPageImageablePCHandler& other);
    virtual ~CPageImageablePCHandler();

    /// Microns. What the document does not hold is left as it was. Failures are returned: E_POINTER without
    /// document or data, E_FAIL for a document that is no Print Capabilities document.
    HRESULT GetData(IXMLDOMDocument2* capabilities, PrintSchema::PageImageableSize::PageImageableData* data,
                    int& minWidth, int& maxWidth, int& minHeight, int& maxHeight);

private:
    XpsFilterPrintTicket* m_ticket;
};
