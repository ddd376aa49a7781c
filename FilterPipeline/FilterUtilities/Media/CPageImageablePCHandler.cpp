#include "Media/CPageImageablePCHandler.h"

#include "ComSupport/FailureBarrier.h"
#include "ComSupport/ThrowHresult.h"
#include "PrintSchema/PrintCapabilitiesXmlDocument.h"
#include "PrintSchema/PrintTicketQueryBuilder.h"

#include <LowLevelFacilities/Failures/CPComException.h>

#include <filterpipeline.h>

#include <initializer_list>

namespace {

/// Asks a capabilities document for integers; what it does not hold stays as it was.
class IntegerReader {
public:
    explicit IntegerReader(const PrintCapabilitiesXmlDocument& document)
        : m_document(document), m_framework(document.GetFrameworkNsPrefix()),
          m_keywords(document.GetKeywordsNsPrefix()) {}

    /// A property of a parameter definition; property names are the framework's there.
    void ReadLimit(const wchar_t* parameter, const wchar_t* property, int& value) const {
        PrintTicketQueryBuilder builder(m_framework);
        builder.AddParameterDef(m_keywords, parameter);
        builder.AddChildProperty(m_framework, property);
        Read(builder, value);
    }

    /// A public property that lies inside others, the outermost first.
    void ReadProperty(std::initializer_list<const wchar_t*> path, int& value) const {
        PrintTicketQueryBuilder builder(m_framework);
        for (const wchar_t* const property : path)
            builder.AddProperty(m_keywords, property);
        Read(builder, value);
    }

private:
    void Read(const PrintTicketQueryBuilder& builder, int& value) const {
        CComBSTR query;
        builder.GetQuery(&query);
        const HRESULT hr = m_document.QueryNodeValue(query, &value);
        if (hr != E_ELEMENT_NOT_FOUND) ThrowIfFailed(hr);
    }

    const PrintCapabilitiesXmlDocument& m_document;
    CComBSTR m_framework;
    CComBSTR m_keywords;
};

} // namespace

CPageImageablePCHandler::CPageImageablePCHandler(XpsFilterPrintTicket* ticket) : m_ticket(ticket) {}
CPageImageablePCHandler::CPageImageablePCHandler(const CPageImageablePCHandler& other) = default;
CPageImageablePCHandler& CPageImageablePCHandler::operator=(const CPageImageablePCHandler& other) = default;
CPageImageablePCHandler::~CPageImageablePCHandler() = default;

HRESULT CPageImageablePCHandler::GetData(IXMLDOMDocument2* capabilities,
                                         PrintSchema::PageImageableSize::PageImageableData* data,
                                         int& minWidth, int& maxWidth, int& minHeight, int& maxHeight) {
    const OperationScope operation("CPageImageablePCHandler::GetData");
    using namespace PrintSchema::PageImageableSize;
    using namespace PrintSchema::PageImageableArea;
    using namespace PrintSchema::PageMediaSize;
    if (capabilities == nullptr || data == nullptr) return E_POINTER;
    HRESULT hr = S_OK;
    try {
        const PrintCapabilitiesXmlDocument document(capabilities);
        const IntegerReader reader(document);
        reader.ReadLimit(MEDIASIZEWIDTH_PARAM, PrintSchema::MIN_VALUE_NAME, minWidth);
        reader.ReadLimit(MEDIASIZEWIDTH_PARAM, PrintSchema::MAX_VALUE_NAME, maxWidth);
        reader.ReadLimit(MEDIASIZEHEIGHT_PARAM, PrintSchema::MIN_VALUE_NAME, minHeight);
        reader.ReadLimit(MEDIASIZEHEIGHT_PARAM, PrintSchema::MAX_VALUE_NAME, maxHeight);

        const wchar_t* const size = PAGE_IMAGEABLE_PROPERTY;
        const wchar_t* const area = PAGEIMAGEABLESIZE_AREA;
        reader.ReadProperty({size, PAGEIMAGEABLESIZE_WIDTH}, data->imageableWidth);
        reader.ReadProperty({size, PAGEIMAGEABLESIZE_HEIGHT}, data->imageableHeight);
        reader.ReadProperty({size, area, PAGEIMAGEABLEAREA_ORIGINWIDTH}, data->originWidth);
        reader.ReadProperty({size, area, PAGEIMAGEABLEAREA_ORIGINHEIGHT}, data->originHeight);
        reader.ReadProperty({size, area, PAGEIMAGEABLEAREA_EXTENTWIDTH}, data->extentWidth);
        reader.ReadProperty({size, area, PAGEIMAGEABLEAREA_EXTENTHEIGHT}, data->extentHeight);
    }
    CATCH_VARIOUS(hr)
    // Another document than capabilities is refused with a success code.
    return hr == S_FALSE ? E_FAIL : hr;
}
