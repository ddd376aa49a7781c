#include "Support/FakePrinterPropertyBag.h"
#include "Support/InApartment.h"
#include "Support/ReportRecorder.h"
#include "Support/Rows.h"

#include <PrintTime/PrintTimeUiHelper.h>

#include <gtest/gtest.h>

#include <string>

using namespace DataModelIds;
using Helper = PrintTimeUiHelper;

namespace {

class PrintTimeUiHelperTest : public InApartment<> {
protected:
    void Set(const wchar_t* name, const std::wstring& text) {
        m_bag->SetString(CComBSTR(name), CComBSTR(text.c_str()));
    }
    /// The queue's device settings; each element stands as it is written.
    void SetDevice(const std::wstring& elements,
                   const std::wstring& root = L"<OrvelDeviceSettings>|</OrvelDeviceSettings>") {
        const std::size_t bar = root.find(L'|');
        std::wstring settings = root.substr(0, bar) + elements + root.substr(bar + 1);
        if (const auto end = settings.find(L"]]>"); end != std::wstring::npos)
            settings.insert(end + 2, L"]]><![CDATA[");
        Set(L"OrvelQueueProperties",
            L"<q><OrvelDeviceSettings><![CDATA[" + settings + L"]]></OrvelDeviceSettings></q>");
    }
    void SetDevice(const std::wstring& name, const std::wstring& value, int) {
        SetDevice(L"<" + name + L">" + value + L"</" + name + L">");
    }

    CComPtr<FakePrinterPropertyBag> m_bag = MakeFake<FakePrinterPropertyBag>();
};

TEST_F(PrintTimeUiHelperTest, TellsForWhichJobsAccountingDataAreAsked) {
    const auto option = L"Config:InstallableJobAccountingSystemActual";
    const Rows<const wchar_t*, const wchar_t*, tagValueEnum> rows{
        {L"Standard", L"every-job", VAL_ACCT_PROMPT_EVERY_JOB},
        {L"Network", L"for-color", VAL_ACCT_PROMPT_FOR_COLOR},
        {L"AccountingGreenUserOnly", L"for-fax", VAL_ACCT_PROMPT_FOR_FAX},
        {L"LocalBillingSecure", L"not-for-black-and-white", VAL_ACCT_PROMPT_FOR_COLOR},
        {L"InternalTallybox", L"for-color-and-fax", VAL_ACCT_PROMPT_FOR_COLOR_AND_FAX},
        {L"Billing", L"\n for-monochrome-and-color\t", VAL_ACCT_PROMPT_FOR_MONOCHROME_AND_COLOR},
        {L"Standard", L"never", VAL_ACCT_PROMPT_NEVER},
        {L"Standard", L"", VAL_ACCT_PROMPT_NEVER},
        {L"Standard", L"Every-Job", VAL_ACCT_PROMPT_NEVER},
        {L"None", L"every-job", VAL_ACCT_PROMPT_NEVER},
        {L"  ", L"every-job", VAL_ACCT_PROMPT_NEVER},
    };
    for (const auto& [system, word, prompt] : rows) {
        Set(option, system);
        SetDevice(L"odrv-dev-accounting-prompt-option", word, 0);
        EXPECT_EQ(prompt, Helper::GetPrintTimeAccountingPromptOption(m_bag)) << system << " " << word;
        EXPECT_EQ(prompt != VAL_ACCT_PROMPT_NEVER,
                  Helper::IsPrintTimeAccountingPromptEnabledByQueueSettings(m_bag));
    }
    const auto without = MakeFake<FakePrinterPropertyBag>();
    EXPECT_EQ(VAL_ACCT_PROMPT_NEVER, Helper::GetPrintTimeAccountingPromptOption(without));
    EXPECT_EQ(VAL_ACCT_PROMPT_NEVER, Helper::GetPrintTimeAccountingPromptOption(nullptr));
}

TEST_F(PrintTimeUiHelperTest, AnswersWhatIsOnOrOff) {
    using Question = bool (*)(IPrinterPropertyBag*);
    const Rows<Question, const wchar_t*, const wchar_t*, bool> settings{
        {Helper::PrintTimePromptToggleEnabled, L"odrv-accounting-print-time-prompt-toggle", L"disabled",
         true},
        {Helper::BlackAndWhiteOnlyToggleEnabled, L"odrv-device-black-and-white-only",
         L"black-and-white-only-disabled", true},
        {Helper::IsSecurePrintOnlyEnabled, L"odrv-device-secure-print-only", L"secure-print-only-enabled",
         false},
    };
    for (const auto& [question, element, other, byDefault] : settings) {
        EXPECT_EQ(byDefault, question(nullptr)) << element;
        EXPECT_EQ(byDefault, question(MakeFake<FakePrinterPropertyBag>())) << element;
        SetDevice(element, other, 0);
        EXPECT_EQ(!byDefault, question(m_bag)) << element;
        SetDevice(element, L"another word", 0);
        EXPECT_EQ(byDefault, question(m_bag)) << element;
    }
    const Rows<Question, const wchar_t*, const wchar_t*> options{
        {Helper::IsSecurePrintViaLoginEnabled, L"Config:InstallableHoldForAuthenticationActual", L"UserId"},
        {Helper::IsFaxEnabledByQueueSettings, L"Config:InstallableFaxOutActual", L"Installed"},
    };
    for (const auto& [question, option, value] : options) {
        EXPECT_FALSE(question(nullptr)) << option;
        EXPECT_FALSE(question(m_bag)) << option;
        Set(option, L"NotInstalled");
        EXPECT_FALSE(question(m_bag)) << option;
        Set(option, value);
        EXPECT_TRUE(question(m_bag)) << option;
    }
}

TEST_F(PrintTimeUiHelperTest, TellsTheAddressThatWasSetByHand) {
    const std::wstring address = L"<odrv-device-bidi-ip-address>192.0.2.7</odrv-device-bidi-ip-address>";
    const auto mode = [](const std::wstring& word) {
        return L"<odrv-device-bidi-communication>" + word + L"</odrv-device-bidi-communication>";
    };
    const Rows<std::wstring, const wchar_t*, const wchar_t*, bool> rows{
        {mode(L"bidi-communication-manual") + address, L"bidi-communication-manual", L"192.0.2.7", true},
        {mode(L"bidi-communication-manual"), L"bidi-communication-manual", L"", true},
        {mode(L"bidi-communication-automatic") + address, L"bidi-communication-automatic", L"", true},
        {mode(L"bidi-communication-off") + address, L"bidi-communication-off", L"", true},
        {mode(L"") + address, L"", L"", false},
        {L"<nested>" + mode(L"bidi-communication-off") + L"</nested>", L"", L"", false},
    };
    for (const auto& [settings, expectedMode, expectedAddress, isSaid] : rows) {
        SetDevice(settings);
        CXString found(L"old"), where(L"old");
        EXPECT_EQ(isSaid, Helper::GetBidiSettingsFromQueueSettings(m_bag, found, where)) << settings;
        EXPECT_EQ(std::wstring(expectedMode), std::wstring(found)) << settings;
        EXPECT_EQ(std::wstring(expectedAddress), std::wstring(where)) << settings;
    }
    CXString found, where;
    EXPECT_FALSE(Helper::GetBidiSettingsFromQueueSettings(nullptr, found, where));
}

TEST_F(PrintTimeUiHelperTest, ReadsSettingsOfAnyNamespaceAndReportsWhatIsNone) {
    const auto prefixed = L"<o:odrv-device-secure-print-only xmlns:o='urn:o'>secure-print-only-enabled"
                          L"</o:odrv-device-secure-print-only>";
    const auto plain = L"<odrv-device-secure-print-only><!-- set --> secure-print-only-<![CDATA[enabled ]]>"
                       L"</odrv-device-secure-print-only>";
    const std::wstring many =
        L"<OrvelDeviceSettings>" + std::wstring(5000, L' ') + L"|</OrvelDeviceSettings>";
    const Rows<const wchar_t*, std::wstring, bool, std::size_t> rows{
        {prefixed, L"<OrvelDeviceSettings>|</OrvelDeviceSettings>", true, 0},
        {plain, L"<s:OrvelDeviceSettings xmlns:s='urn:s' xmlns='urn:d'>|</s:OrvelDeviceSettings>", true, 0},
        {plain, L"<Settings>|</Settings>", false, 0},
        {plain, L" |", false, 0}, // the element itself is the root
        {L"", L" | ", false, 0},
        {plain, L"<OrvelDeviceSettings>|", false, 1},
    };
    for (const auto& [element, root, isOn, reports] : rows) {
        SetDevice(element, root);
        const ReportRecorder recorder;
        EXPECT_EQ(isOn, Helper::IsSecurePrintOnlyEnabled(m_bag)) << root;
        EXPECT_EQ(reports, ReportRecorder::reports().size()) << root;
    }
}

TEST_F(PrintTimeUiHelperTest, TracksJobsUnlessTheUserWantsToHearOfNone) {
    const Rows<const wchar_t*, const wchar_t*> notifications{
        {L"Notify For Completed Jobs", L"notify-completed-jobs-off"},
        {L"Notify For Completed But Altered Jobs", L"notify-completed-but-altered-jobs-off"},
        {L"Notify For Failed or Canceled Jobs", L"notify-failed-or-canceled-jobs-off"},
    };
    for (const auto& [name, off] : notifications) {
        EXPECT_TRUE(Helper::IsJobTrackerEnabledByUserPreferences(*m_bag)) << name;
        Set(name, off);
    }
    EXPECT_FALSE(Helper::IsJobTrackerEnabledByUserPreferences(*m_bag));
    for (const auto& [name, off] : notifications) {
        Set(name, L"notify-completed-jobs-on");
        EXPECT_TRUE(Helper::IsJobTrackerEnabledByUserPreferences(*m_bag)) << name;
        Set(name, off);
    }
}

} // namespace
