// The readers of XML that other rooms stand on, and that of the device capabilities.

#include "Support/Growth.h"
#include "Support/InApartment.h"

#include <DeviceDescription/SimpleOcapParser.h>
#include <Xml/MicrosoftXmlParser.h>
#include <Xml/XmlLiteWrapper.h>
#include <Xml/XmlOutputUtf8StringCallback.h>

namespace {

// Items that differ by the number in the place of their '#'.
GrowthMaker Reading(const std::string& open, const std::string& item, const std::string& close,
                    void (*read)(const std::string&)) {
    return [=](std::size_t n) {
        const auto numbered = [&](std::size_t i) {
            return std::string(item).replace(item.find('#'), 1, std::to_string(i));
        };
        return [read, text = open + Times(n, numbered) + close] { read(text); };
    };
}

void ReadCapabilities(const std::string& text) {
    const SimpleOcapParser device{CPString(text.c_str())};
    static_cast<void>(device.GetSupportedInstallableOptionFeaturesFromOcap());
    for (const CPString& value : device.GetSupportedFeatureOrValuesFromOcap(CPString("all"), false))
        EXPECT_FALSE(device.IsCpssFeatureSupported(CPString("all"), value));
}

void RunQueries(const std::string& text) {
    XmlLiteWrapper::Query names(L"/s/t/@n"), texts(L"/s/t");
    XmlLiteWrapper reader;
    EXPECT_TRUE(reader.LoadXmlStringAsReadOnly(CXString(text.c_str())));
    reader.AttachQuery(names);
    reader.AttachQuery(texts);
    EXPECT_TRUE(reader.RunAttachedQueries());
    EXPECT_EQ(names.GetResult().GetCount(), texts.GetResult().GetCount());
}

void WalkAndWrite(const std::string& text) {
    MicrosoftXmlParser parser(L"growth", false);
    parser.parse(CPString(text.c_str()));
    const auto root = parser.getDocument().GetDocumentElement();
    for (auto node = root->GetFirstChild(); node; node = node->GetNextSibling()) {
        CXString name;
        EXPECT_TRUE(node->GetAttribute(L"n", name));
        node->SetTextValue(name);
    }
    CPString written;
    XmlOutputUtf8StringCallback output(written, XmlOutputCallback::EnhanceXmlLegibility);
    parser.convertToXmlStream(output, true);
}

const std::string deviceStart = "<DeviceCapabilities version='1.0'>";
const std::string deviceEnd = "</DeviceCapabilities>";

const GrowthCase cases[] = {
    {"ReadsFeatures", Reading(deviceStart, "<Text name='#'/>\n", deviceEnd, ReadCapabilities), 2'500},
    {"ReadsValues",
     Reading(deviceStart + "<Option name='all' default='0'>", "<Value name='#'/>\n", "</Option>" + deviceEnd,
             ReadCapabilities),
     40'000},
    {"RunsQueries", Reading("<s>", "<t n='#'>text</t>\n", "</s>", RunQueries)},
    {"WalksAndWrites", Reading("<s>", "<t n='#'>text</t>\n", "</s>", WalkAndWrite)},
};

class XmlReadersGrowth : public InApartment<testing::TestWithParam<GrowthCase>> {};

TEST_P(XmlReadersGrowth, IsLinear) { ExpectLinearGrowth(GetParam()); }

INSTANTIATE_TEST_SUITE_P(, XmlReadersGrowth, testing::ValuesIn(cases), GrowthName);

} // namespace
