#include <DeviceDescription/SimpleOcapParser.h>
#include <LowLevelFacilities/Failures/CPComException.h>

#include <cstdint>
#include <cstdlib>

namespace {

void check(bool holds) {
    if (!holds) std::abort();
}

/// What one answer says about a feature, the others must not deny.
void AskAbout(const SimpleOcapParser& device, const CPString& feature) {
    bool isTextFound = false;
    bool isIntegerFound = false;
    CXString factoryDefault;
    const CPString text = device.GetFactoryDefaultValueAsString(feature, isTextFound, false);
    const int integer = device.GetFactoryDefaultValueAsInteger(feature, isIntegerFound, false);
    const auto values = device.GetSupportedFeatureOrValuesFromOcap(feature, false, &factoryDefault);
    const auto members = device.GetSupportedFeatureOrValuesFromOcap(feature, true);
    check(CPString(factoryDefault) == text);
    check(!isIntegerFound || (isTextFound && CXString(text).GetAsInt() == integer));
    check(values.empty() || members.empty());
    for (const CPString& value : values)
        check(!value.isEmpty());
    for (const CPString& member : members) {
        check(device.IsCpssFeatureSupported(feature, member));
        bool isFoundAnywhere = false;
        static_cast<void>(device.GetFactoryDefaultValueAsString(member, isFoundAnywhere, true));
    }
    const bool isKnown = device.IsCpssFeatureSupported(feature);
    check(isKnown || (text.isEmpty() && values.empty() && members.empty() &&
                      !device.IsCpssFeatureRequired(feature) && !device.IsCpssFeatureOutputInOpif(feature)));
    unsigned shortest = 0;
    unsigned longest = 0;
    check(!device.GetTextLengthRange(feature, shortest, longest) || (isKnown && shortest <= longest));
}

} // namespace

// A document is refused in words, or answers without contradicting itself.
extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    try {
        const SimpleOcapParser device(CPString(std::string(reinterpret_cast<const char*>(data), size)));
        for (const char* const name : {"a", "b", "c", "", "print-quality-level", "adjust-lightness",
                                       "job-password", "media-col", "cover-front"})
            AskAbout(device, name);
        for (const CXString& option : device.GetSupportedInstallableOptionFeaturesFromOcap()) {
            check(device.IsCpssFeatureSupported(CPString(option)));
            AskAbout(device, CPString(option));
        }
    } catch (const CPComException& refused) {
        check(FAILED(refused.GetHresult()));
    }
    return 0;
}
