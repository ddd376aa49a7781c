#include "PrintTime/PrintTimeUiHelper.h"

#include "DataModel/FeatureIds.h"
#include "DataModel/NativeXmlConfigCpssOptionValueDictionary.h"
#include "PrintTime/DeviceSettingsPath.h"
#include "PropertyBags/NativeComPrinterPropertyBagAccess.h"
#include "PropertyBags/NativeComQueuePropertyBagAccess.h"

#include <algorithm>
#include <iterator>

using namespace DataModelIds;

namespace {

namespace Path {
constexpr auto bidiMode = L"/OrvelDeviceSettings/odrv-device-bidi-communication";
constexpr auto bidiAddress = L"/OrvelDeviceSettings/odrv-device-bidi-ip-address";
constexpr auto accountingPrompt = L"/OrvelDeviceSettings/odrv-dev-accounting-prompt-option";
constexpr auto promptToggle = L"/OrvelDeviceSettings/odrv-accounting-print-time-prompt-toggle";
constexpr auto blackAndWhiteOnly = L"/OrvelDeviceSettings/odrv-device-black-and-white-only";
constexpr auto securePrintOnly = L"/OrvelDeviceSettings/odrv-device-secure-print-only";
} // namespace Path

namespace Option {
constexpr auto accounting = L"installable-job-accounting-system-actual";
constexpr auto holdForAuthentication = L"installable-hold-for-authentication-actual";
constexpr auto faxOut = L"installable-fax-out-actual";
} // namespace Option

// A user's notification and the word with which it is off.
struct Notification {
    const wchar_t* name;
    const wchar_t* off;
};
constexpr Notification notifications[] = {
    {L"Notify For Completed Jobs", L"notify-completed-jobs-off"},
    {L"Notify For Completed But Altered Jobs", L"notify-completed-but-altered-jobs-off"},
    {L"Notify For Failed or Canceled Jobs", L"notify-failed-or-canceled-jobs-off"},
};

NativeComPrinterPropertyBagAccess AccessTo(IPrinterPropertyBag& bag) {
    return {bag, NativeComPrinterPropertyBagAccess::AssertionPolicyBagIsHeldElsewhere};
}

CXString DeviceSetting(IPrinterPropertyBag* bag, const wchar_t* path) {
    if (bag == nullptr) return {};
    NativeComPrinterPropertyBagAccess access = AccessTo(*bag);
    const NativeComQueuePropertyBagAccess queue({}, {}, access);
    CPString settings;
    queue.GetOrvelDeviceSettings(settings);
    return DeviceSettingsPath(path).ValueIn(settings);
}

bool IsDeviceSetting(IPrinterPropertyBag* bag, const wchar_t* path, const wchar_t* value) {
    return DeviceSetting(bag, path).Compare(value) == 0;
}

bool IsInstalled(IPrinterPropertyBag* bag, const wchar_t* option, const wchar_t* value) {
    return NativeComQueuePropertyBagAccess::TryGetInstallableOption(bag, option).Compare(value) == 0;
}

bool HasAccounting(IPrinterPropertyBag* bag) {
    const CXString system = NativeComQueuePropertyBagAccess::TryGetInstallableOption(bag, Option::accounting);
    return !system.IsBlank() && system.Compare(L"none") != 0;
}

tagValueEnum PromptOf(const CXString& word) {
    // An older word, which the dictionary does not have.
    if (word.Compare(L"not-for-black-and-white") == 0) return VAL_ACCT_PROMPT_FOR_COLOR;
    const auto& words = *NativeXmlConfigCpssOptionValueDictionary::Instance();
    return words.IsCpssNamePresent(FEAT_DEV_ACCT_PROMPT_OPTION, word.View())
               ? words.GetEntryByCpssName(FEAT_DEV_ACCT_PROMPT_OPTION, word.View()).value
               : VAL_ACCT_PROMPT_NEVER;
}

} // namespace

PrintTimeUiHelper::PrintTimeUiHelper() = default;

bool PrintTimeUiHelper::GetBidiSettingsFromQueueSettings(IPrinterPropertyBag* bag, CXString& mode,
                                                         CXString& address) {
    address.Empty();
    mode = DeviceSetting(bag, Path::bidiMode);
    if (mode.Compare(L"bidi-communication-manual") == 0) address = DeviceSetting(bag, Path::bidiAddress);
    return !mode.IsEmpty();
}

tagValueEnum PrintTimeUiHelper::GetPrintTimeAccountingPromptOption(IPrinterPropertyBag* bag) {
    return HasAccounting(bag) ? PromptOf(DeviceSetting(bag, Path::accountingPrompt)) : VAL_ACCT_PROMPT_NEVER;
}

bool PrintTimeUiHelper::IsPrintTimeAccountingPromptEnabledByQueueSettings(IPrinterPropertyBag* bag) {
    return GetPrintTimeAccountingPromptOption(bag) != VAL_ACCT_PROMPT_NEVER;
}

bool PrintTimeUiHelper::PrintTimePromptToggleEnabled(IPrinterPropertyBag* bag) {
    return !IsDeviceSetting(bag, Path::promptToggle, L"disabled");
}

bool PrintTimeUiHelper::BlackAndWhiteOnlyToggleEnabled(IPrinterPropertyBag* bag) {
    // Deliberate: on where the queue does not say.
    return !IsDeviceSetting(bag, Path::blackAndWhiteOnly, L"black-and-white-only-disabled");
}

bool PrintTimeUiHelper::IsSecurePrintOnlyEnabled(IPrinterPropertyBag* bag) {
    return IsDeviceSetting(bag, Path::securePrintOnly, L"secure-print-only-enabled");
}

bool PrintTimeUiHelper::IsSecurePrintViaLoginEnabled(IPrinterPropertyBag* bag) {
    return IsInstalled(bag, Option::holdForAuthentication, L"user-id");
}

bool PrintTimeUiHelper::IsFaxEnabledByQueueSettings(IPrinterPropertyBag* bag) {
    return IsInstalled(bag, Option::faxOut, L"installed");
}

bool PrintTimeUiHelper::IsJobTrackerEnabledByUserPreferences(IPrinterPropertyBag& bag) {
    const NativeComPrinterPropertyBagAccess user = AccessTo(bag);
    const auto isOff = [&](const Notification& notification) {
        CXString value;
        user.GetPrinterPropertyBagString(notification.name, value);
        return value.Compare(notification.off) == 0;
    };
    return !std::all_of(std::begin(notifications), std::end(notifications), isOff);
}
