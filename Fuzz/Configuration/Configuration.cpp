// Any text as an administrator's configuration. What was read, what became of each element and where reading
// stopped must agree; the set is what the reading took; and no answer names what there is not.

#include <Commands/PolicyReport.h>
#include <Configuration/NativeXmlConfigurationFeatureSet.h>
#include <DataAccess/IPrinterPropertyBagAccess.h>
#include <DataModel/ValueNameTable.h>
#include <PropertyBags/NativeComQueuePropertyBagAccess.h>

#include <algorithm>
#include <cstdint>
#include <cstdlib>
#include <string>

namespace {

using namespace DataModelIds;
using Outcome = XmlConfigurationReading::Outcome;

void Check(bool holds) {
    if (!holds) std::abort();
}

class EmptyBag final : public IPrinterPropertyBagAccess {
    bool IsPropertyBagNull() override { return false; }
    bool GetPrinterPropertyBagBool(const CXString&) const override { return false; }
    int GetPrinterPropertyBagInteger(const CXString&) const override { return 0; }
    void GetPrinterPropertyBagString(const CXString&, CXString&) const override {}
    void GetPrinterPropertyBagBytes(const CXString&, ByteBuffer&) const override {}
    void GetPrinterPropertyBagStreamBuffer(const CXString&, ByteBuffer&) const override {}
    void GetPrinterPropertyBagStreamAsCPString(const CXString&, CPString&) const override {}
    void GetPrinterPropertyBagCompressedStreamBuffer(const CXString&, ByteBuffer&) const override {}
    void SetPrinterPropertyBagBool(const CXString&, bool) override {}
    void SetPrinterPropertyBagInteger(const CXString&, int) override {}
    void SetPrinterPropertyBagString(const CXString&, const CXString&) override {}
    void SetPrinterPropertyBagBytes(const CXString&, const ByteBuffer&) override {}
    void SetPrinterPropertyBagStreamBuffer(const CXString&, const ByteBuffer&) override {}
};

class Queue final : public NativeComQueuePropertyBagAccess {
public:
    Queue(EmptyBag& bag, const CPString& xml) : NativeComQueuePropertyBagAccess(L"", {}, bag), m_xml(xml) {}
    void GetOrvelQueuePrePostConfiguration(CPString& out) const override { out = m_xml; }

private:
    CPString m_xml;
};

void CheckReading(const XmlConfigurationReading& reading, const std::string& text) {
    const auto& elements = reading.GetElements();
    const auto count = [&](Outcome outcome) {
        return static_cast<std::size_t>(
            std::ranges::count(elements, outcome, &XmlConfigurationReading::Element::outcome));
    };
    Check(reading.GetFeatures().size() == count(Outcome::Taken));
    for (const auto& [name, outcome] : elements) {
        const bool isMember = reading.GetFeatures().contains(name);
        Check(outcome == Outcome::Faulty || outcome == Outcome::Lost ||
              isMember == (outcome != Outcome::Unknown));
    }
    const auto& fault = reading.GetFault();
    const bool stopped = fault && fault->isInContent;
    Check(count(Outcome::Faulty) == (stopped ? 1u : 0u));
    Check(stopped || count(Outcome::Lost) == 0);
    if (!fault) return;
    Check(!fault->message.isEmpty());
    Check(stopped || reading.GetFeatures().empty());
    // A carriage return ends a line, too, where it stands alone.
    const auto isBreak = [](char c) { return c == '\n' || c == '\r'; };
    const auto breaks = std::ranges::count_if(text, isBreak);
    Check(fault->line <= breaks + 1 && (!stopped || fault->line >= 1));
}

void CheckMember(const NativeXmlConfigurationFeatureSet& set, const NativeXmlConfigurationFeature& member) {
    Check(member.IsSupportedFeature());
    Check(set.TryGetFeature(member.GetXmlConfigFeature()) == &member);
    Check(set.TryGetFeature(member.GetFeatureEnum()) != nullptr);
    Check(!member.GetDebugDisplayString().isEmpty());
    Check(member.GetModeString() == "DEVICE" || member.GetModeString() == "DOCUMENT");
}

void CheckJobTypes(NativeXmlConfigurationFeatureSet& set) {
    std::vector<tagValueEnum> ofDevice;
    for (const auto& name : GetValueNames())
        if (name.id >= VAL_JOB_TYPE_NORMAL_PRINT && name.id <= VAL_JOB_TYPE_PROOF_PRINT_WITH_JOB_NAME)
            ofDevice.push_back(name.id);
    for (const tagValueEnum current : ofDevice) {
        tagValueEnum enforced{};
        const tagValueEnum type = set.GetNewJobTypeValueByEnforcingXmlConfig(ofDevice, current, enforced);
        Check(type == VAL_JOB_TYPE_NONE || type == VAL_JOB_TYPE_SECURE_PRINT ||
              !set.IsJobTypeValueDisallowedByXmlConfig(type));
        Check(FindValueName(type) != nullptr && FindValueName(enforced) != nullptr);
    }
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    const std::string text(reinterpret_cast<const char*>(data), size);
    const CPString xml{std::string(text)};
    const XmlConfigurationReading reading(xml);
    CheckReading(reading, text);
    EmptyBag bag;
    Queue queue(bag, xml);
    NativeXmlConfigurationFeatureSet set(queue);
    Check(set.NumberOfFeatures() == reading.GetFeatures().size());
    Check(set.GetDocumentFeatures().NumberOfFeatures() + set.GetDeviceFeatures().NumberOfFeatures() ==
          set.NumberOfFeatures());
    for (unsigned int i = 0; i < set.NumberOfFeatures(); ++i)
        CheckMember(set, set.GetFeature(i));
    CheckJobTypes(set);

    const OvPipeline::PolicyReport report(reading);
    Check(report.Rows().size() == reading.GetElements().size());
    Check(report.FaultLine().empty() == !reading.GetFault());
    Check(!report.AsTable().empty() && !report.AsJson().Result().empty());
    return 0;
}
