#include "FilterUtilities/PrintSchema/CapabilitiesSupport.h"
#include "Support/Rows.h"

#include <Com/FaultInjection.h>
#include <Media/CPageImageablePCHandler.h>

#include <array>

namespace {

std::string Property(const std::string& name, const std::string& content) {
    return "<psf:Property name='" + name + "'>" + content + "</psf:Property>";
}

std::string Limits(const std::string& parameter, const std::string& least, const std::string& most) {
    return "<psf:ParameterDef name='psk:" + parameter + "'>" +
           (least.empty() ? "" : Property("psf:MinValue", Value(least))) +
           (most.empty() ? "" : Property("psf:MaxValue", Value(most))) + "</psf:ParameterDef>";
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
    const std::string area =
        Property("psk:OriginWidth", Value("4000")) + Property("psk:OriginHeight", Value("5000")) +
        Property("psk:ExtentWidth", Value("202000")) + Property("psk:ExtentHeight", Value("287000"));
    const std::string sizes = Property("psk:ImageableSizeWidth", Value("210000")) +
                              Property("psk:ImageableSizeHeight", Value("297000"));
    const std::string limits = Limits("PageMediaSizeMediaSizeWidth", "90000", "320000") +
                               Limits("PageMediaSizeMediaSizeHeight", "140000", "1200000");
    // An area outside the imageable size is none of the page's.
    const std::string decoy = Property("psk:ImageableArea", Property("psk:OriginWidth", Value("1")));
    const Rows<std::string, std::array<int, 10>> cases{
        {decoy + limits + Property("psk:PageImageableSize", sizes + Property("psk:ImageableArea", area)),
         {210000, 297000, 4000, 5000, 202000, 287000, 90000, 320000, 140000, 1200000}},
        {decoy + Limits("PageMediaSizeMediaSizeWidth", "90000", ""),
         {-1, -2, -3, -4, -5, -6, 90000, -8, -9, -10}},
        {Property("psk:PageImageableSize", sizes), {210000, 297000, -3, -4, -5, -6, -7, -8, -9, -10}},
        {"", {-1, -2, -3, -4, -5, -6, -7, -8, -9, -10}},
    };
    for (const auto& [content, numbers] : cases) {
        const Answer answer = Ask(Capabilities(content).GetDomDocPtr());
        EXPECT_EQ(answer.hr, S_OK);
        EXPECT_EQ(answer.numbers, numbers);
    }
}

TEST(CPageImageablePCHandler, GivesFailuresBack) {
    EXPECT_EQ(Ask(nullptr).hr, E_POINTER);
    EXPECT_EQ(Ask(OpenTicket(Ticket("")).GetDomDocPtr()).hr, E_FAIL);
    const PrintCapabilitiesXmlDocument document =
        Capabilities(Limits("PageMediaSizeMediaSizeWidth", "1", "2"));
    const auto undisturbed = Ask(document.GetDomDocPtr()).numbers;
    LONG calls = 0;
    for (LONG number = 1;; ++number) {
        const OvPlatform::FaultInjectionScope scope(number, E_ACCESSDENIED);
        const Answer answer = Ask(document.GetDomDocPtr());
        if (!OvPlatform::FaultInjection::HasFailed()) break;
        // A document need not tell all of its prefixes.
        EXPECT_TRUE(FAILED(answer.hr) || answer.numbers == undisturbed) << number;
        calls += FAILED(answer.hr) ? 1 : 0;
    }
    EXPECT_GT(calls, 100);
}

} // namespace
