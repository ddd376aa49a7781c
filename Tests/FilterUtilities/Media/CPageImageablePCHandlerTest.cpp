#include "FilterUtilities/PrintSchema/CapabilitiesSupport.h"
#include "Support/Rows.h"

#include <Media/CPageImageablePCHandler.h>

#include <array>

namespace {

std::string Limits(const std::string& parameter, const std::string& least, const std::string& most) {
    return Named("ParameterDef", "psk:" + parameter,
                 (least.empty() ? "" : Property("psf:MinValue", least)) +
                     (most.empty() ? "" : Property("psf:MaxValue", most)));
}

// The ten numbers in the order of the arguments, and the result.
struct Answer {
    HRESULT hr;
    std::array<int, 10> numbers;
};

Answer Ask(IXMLDOMDocument2* document) {
    PrintSchema::PageImageableSize::PageImageableData data = {-1, -2, -3, -4, -5, -6};
    int minWidth = -7;
    int maxWidth = -8;
    int minHeight = -9;
    int maxHeight = -10;
    CPageImageablePCHandler handler(nullptr);
    const HRESULT hr = handler.GetData(document, &data, minWidth, maxWidth, minHeight, maxHeight);
    return {hr,
            {data.imageableWidth, data.imageableHeight, data.originWidth, data.originHeight, data.extentWidth,
             data.extentHeight, minWidth, maxWidth, minHeight, maxHeight}};
}

TEST(CPageImageablePCHandler, ReadsWhatADocumentHoldsAndLeavesTheRest) {
    const std::string area = Property("psk:OriginWidth", "4000") + Property("psk:OriginHeight", "5000") +
                             Property("psk:ExtentWidth", "202000") + Property("psk:ExtentHeight", "287000");
    const std::string sizes =
        Property("psk:ImageableSizeWidth", "210000") + Property("psk:ImageableSizeHeight", "297000");
    const std::string limits = Limits("PageMediaSizeMediaSizeWidth", "90000", "320000") +
                               Limits("PageMediaSizeMediaSizeHeight", "140000", "1200000");
    // An area outside the imageable size is none of the page's.
    const std::string decoy = Named("Property", "psk:ImageableArea", Property("psk:OriginWidth", "1"));
    const Rows<std::string, std::array<int, 10>> cases{
        {decoy + limits +
             Named("Property", "psk:PageImageableSize", sizes + Named("Property", "psk:ImageableArea", area)),
         {210000, 297000, 4000, 5000, 202000, 287000, 90000, 320000, 140000, 1200000}},
        {decoy + Limits("PageMediaSizeMediaSizeWidth", "90000", ""),
         {-1, -2, -3, -4, -5, -6, 90000, -8, -9, -10}},
        {Named("Property", "psk:PageImageableSize", sizes),
         {210000, 297000, -3, -4, -5, -6, -7, -8, -9, -10}},
        {"", {-1, -2, -3, -4, -5, -6, -7, -8, -9, -10}},
    };
    for (const auto& [content, numbers] : cases) {
        const Answer answer = Ask(Capabilities(content).GetDomDocPtr());
        EXPECT_EQ(answer.hr, S_OK);
        EXPECT_EQ(answer.numbers, numbers);
    }
    EXPECT_EQ(Ask(nullptr).hr, E_POINTER);
    EXPECT_EQ(Ask(OpenTicket(Ticket("")).GetDomDocPtr()).hr, E_FAIL);
}

} // namespace
