// Any text as a queue's properties, and behind the first zero, as device settings that are set in it. What is
// set is read again whole, or nothing has changed; the other items stay as they were.

#include <PropertyBags/NativeComPrinterPropertyBagAccess.h>
#include <PropertyBags/NativeComQueuePropertyBagAccess.h>
#include <Spooler/QueuePropertyBag.h>

#include <atlcomcli.h>

#include <cstdint>
#include <cstdlib>
#include <string>

namespace {

using Access = NativeComQueuePropertyBagAccess;

constexpr auto propertiesName = L"OrvelQueueProperties";
constexpr auto optionName = L"installable-option_of.some-kind";

void Check(bool holds) {
    if (!holds) std::abort();
}

CXString AllOtherItems(Access& queue) {
    CXString all;
    CXString item;
    for (const auto read :
         {&Access::GetRawIpOrHostName, &Access::GetFullyQualifiedDomainName, &Access::GetDeviceSerialNumber,
          &Access::GetAutoConfigRegData, &Access::GetJobAccountingRequiredFromUiValue,
          &Access::GetJobAccountingRequiredFromObdsValue}) {
        (queue.*read)(item);
        all += item + L"|";
    }
    queue.GetPrintServerResidentTtfFonts(item);
    CPString configuration;
    queue.GetOrvelQueuePrePostConfiguration(configuration);
    return all + item + L"|" + CXString(configuration);
}

// As XML has the ends of lines.
CXString WithLineFeeds(CXString text) {
    text.Replace(L"\r\n", L"\n");
    text.Replace(L"\r", L"\n");
    return text;
}

void CheckOptions(const NativeComPrinterPropertyBagAccess& bag, IPrinterPropertyBag* platformBag,
                  Access& queue, const CXString& value) {
    queue.SetInstallableOptions({{optionName, value}});
    Access::InstallableOptions options;
    const bool hasAll = queue.GetInstallableOptions(options);
    Check(hasAll == !value.IsEmpty() && options.size() == (hasAll ? 1u : 0u));
    CXString stored;
    bag.GetPrinterPropertyBagString(L"Config:InstallableOption_UNS_of_DOT_someKind", stored);
    Check(stored.IsEmpty() == value.IsEmpty());
    const CXString direct = Access::TryGetInstallableOption(platformBag, optionName);
    Check(hasAll ? direct == options[0].second : direct.IsEmpty());
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    const std::string input(reinterpret_cast<const char*>(data), size);
    const std::size_t end = std::min(input.find('\0'), size);
    const CPString settings(input.substr(std::min(end + 1, size)));

    CComPtr<IPrinterPropertyBag> platformBag;
    OvPlatform::QueuePropertyBag::Create({}, OvPlatform::QueuePropertyBag::Access::ReadWrite, &platformBag);
    NativeComPrinterPropertyBagAccess bag(
        *platformBag, NativeComPrinterPropertyBagAccess::AssertionPolicyBagIsHeldElsewhere);
    const CXString properties{CPString(input.substr(0, end))};
    bag.SetPrinterPropertyBagString(propertiesName, properties);
    Access queue(L"", {optionName}, bag);

    const CXString others = AllOtherItems(queue);
    CPString before;
    queue.GetOrvelDeviceSettings(before);
    queue.SetOrvelDeviceSettings(settings);
    CXString stored;
    bag.GetPrinterPropertyBagString(propertiesName, stored);
    CPString after;
    queue.GetOrvelDeviceSettings(after);
    Check(AllOtherItems(queue) == others);
    Check(stored == properties ? after == before : CXString(after) == WithLineFeeds(CXString(settings)));
    CheckOptions(bag, platformBag, queue, CXString(settings));
    return 0;
}
