#include "Support/FakePrinterPropertyBag.h"
#include "Support/InApartment.h"
#include "Support/ReportRecorder.h"
#include "Support/Rows.h"
#include "Support/SkipOnWindows.h"
#include "Support/VirtualSlots.h"

#include <PropertyBags/NativeComPrinterPropertyBagAccess.h>
#include <PropertyBags/NativeComQueuePropertyBagAccess.h>

#include <gtest/gtest.h>

#include <memory>

namespace {

using Access = NativeComQueuePropertyBagAccess;
using Options = IQueuePropertyBagAccess::InstallableOptions;

constexpr auto properties = L"OrvelQueueProperties";

// A queue's bag in memory, for a device with two installable options.
struct QueueInMemory {
    std::wstring Stored(const wchar_t* key) const {
        CXString text;
        plain.GetPrinterPropertyBagString(key, text);
        return std::wstring(text.View());
    }
    void Store(const wchar_t* key, const wchar_t* text) { plain.SetPrinterPropertyBagString(key, text); }

    CComPtr<FakePrinterPropertyBag> bag = MakeFake<FakePrinterPropertyBag>();
    NativeComPrinterPropertyBagAccess plain{
        *bag, NativeComPrinterPropertyBagAccess::AssertionPolicyBagIsHeldElsewhere};
    std::unique_ptr<IQueuePropertyBagAccess> queue =
        std::make_unique<Access>(L"Printer", std::vector<CXString>{L"first-option", L"second-option"}, plain);
};

class NativeComQueuePropertyBagAccessTest : public InApartment<>, protected QueueInMemory {
protected:
    std::string DeviceSettings() const {
        CPString text("old");
        queue->GetOrvelDeviceSettings(text);
        return std::string(text.view());
    }
    std::string Configuration() const {
        CPString text("old");
        queue->GetOrvelQueuePrePostConfiguration(text);
        return std::string(text.view());
    }
    static std::size_t Reports() { return ReportRecorder::reports().size(); }

    ReportRecorder recorder;
};

TEST_F(NativeComQueuePropertyBagAccessTest, NamesOfOptionsAreSpelledAsABagTakesThem) {
    const Rows<const wchar_t*, const wchar_t*, const wchar_t*> names{
        // the name, as stored, and as it comes back
        {L"installable-tray-actual", L"InstallableTrayActual", L"installable-tray-actual"},
        {L"3-trays", L"3Trays", L"3-trays"},
        {L"punch-2-and-3-hole-stack", L"Punch_2And_3HoleStack", L"punch-2-and-3-hole-stack"},
        {L"a_b.c", L"A_UNS_b_DOT_c", L"a_b.c"},
        {L"a-_b", L"A__UNS_b", L"a-_b"},
        {L"ends-", L"Ends_", L"ends-"},
        {L"a--b", L"A_B", L"a-b"}, // the hyphen before the letter's own is lost
        {L"Some-Capitals", L"SomeCapitals", L"some-capitals"},
        {L"\x00C4-\x00E9t\x00E9", L"\x00E4_\x00E9t\x00E9", L"\x00E4-\x00E9t\x00E9"},
    };
    for (const auto& [name, stored, back] : names) {
        NativeComQueuePropertyBagAccess device(L"", {name}, plain);
        device.SetInstallableOptions({{name, name}});
        EXPECT_EQ(Stored((L"Config:" + std::wstring(stored)).c_str()), stored);
        Options options;
        EXPECT_TRUE(device.GetInstallableOptions(options));
        EXPECT_EQ(options, (Options{{name, back}}));
        EXPECT_EQ(Access::TryGetInstallableOption(bag, name), back);
    }
    EXPECT_EQ(Access::TryGetInstallableOption(bag, L"missing"), L"");
    EXPECT_EQ(Access::TryGetInstallableOption(nullptr, L"3-trays"), L"");
    EXPECT_EQ(Reports(), 0u);
}

TEST_F(NativeComQueuePropertyBagAccessTest, OptionsAreThoseOfTheDevice) {
    Options options{{L"old", L"old"}};
    Store(L"Config:SecondOption", L"IsThere");
    EXPECT_FALSE(queue->GetInstallableOptions(options)) << "one has no value";
    EXPECT_EQ(options, (Options{{L"second-option", L"is-there"}}));

    Store(L"FirstOption", L"set");
    queue->SetInstallableOptions(
        {{L"unknown", L"x"}, {L"second-option", L"gone"}, {L"second-option", L"twice"}});
    EXPECT_EQ(Stored(L"Config:SecondOption"), L"Gone");
    EXPECT_EQ(Stored(L"Config:Unknown"), L"");
    EXPECT_EQ(Stored(L"FirstOption"), L"") << "what is not set is emptied under its bare name";

    Store(L"SecondOption", L"set");
    queue->SetInstallableOptions({});
    EXPECT_EQ(Stored(L"SecondOption"), L"");
    EXPECT_EQ(Stored(L"Config:SecondOption"), L"Gone");

    EXPECT_TRUE(Access(L"", {}, plain).GetInstallableOptions(options));
    EXPECT_TRUE(options.empty());
}

TEST_F(NativeComQueuePropertyBagAccessTest, EachItemIsTheElementOfItsName) {
    Store(properties, L" <any> <IpOrHostName>host</IpOrHostName>"
                      L"<FullyQualifiedDomainName>host.example</FullyQualifiedDomainName>"
                      L"<DeviceSerialNumber>S1</DeviceSerialNumber>"
                      L"<Other><ObdsPrintTimePromptValue>too deep</ObdsPrintTimePromptValue></Other>"
                      L"<ObdsPrintTimePromptValue>ui</ObdsPrintTimePromptValue>"
                      L"<ObdsPrintTimePromptResponse>obds</ObdsPrintTimePromptResponse>"
                      L"<PrintServerResidentTtfFonts>fonts</PrintServerResidentTtfFonts>"
                      L"<OrvelDeviceSettings>\n <!-- set --> <![CDATA[ <s> ]]>\n</OrvelDeviceSettings>"
                      L"<OrvelQueuePrePostConfiguration><![CDATA[<a>]]]]><![CDATA[></a>]]>"
                      L"</OrvelQueuePrePostConfiguration></any>\n");
    using Getter = void (IQueuePropertyBagAccess::*)(CXString&);
    const Rows<Getter, const wchar_t*> getters{
        {&IQueuePropertyBagAccess::GetRawIpOrHostName, L"host"},
        {&IQueuePropertyBagAccess::GetFullyQualifiedDomainName, L"host.example"},
        {&IQueuePropertyBagAccess::GetDeviceSerialNumber, L"S1"},
        {&IQueuePropertyBagAccess::GetAutoConfigRegData, L"S1"},
        {&IQueuePropertyBagAccess::GetJobAccountingRequiredFromUiValue, L"ui"},
        {&IQueuePropertyBagAccess::GetJobAccountingRequiredFromObdsValue, L"obds"},
    };
    CXString text;
    for (const auto& [getter, expected] : getters) {
        (queue.get()->*getter)(text);
        EXPECT_EQ(text, expected);
    }
    queue->GetPrintServerResidentTtfFonts(text);
    EXPECT_EQ(text, L"fonts");
    queue->GetPrinterName(text);
    EXPECT_EQ(text, L"Printer");
    EXPECT_EQ(DeviceSettings(), " <s> ");
    EXPECT_EQ(Configuration(), "<a>]]></a>");
    EXPECT_EQ(Reports(), 0u);
}

TEST_F(NativeComQueuePropertyBagAccessTest, WhatIsNotThereIsEmptyAndWhatCannotBeReadReported) {
    const Rows<const wchar_t*, std::size_t> documents{
        {L"", 0},
        {L" \r\n", 0},
        {L"<q/>", 0},
        {L"<q>text<IpOrHostName/><OrvelDeviceSettings></OrvelDeviceSettings></q>", 0},
        {L"no XML", 1},
        {L"<q><IpOrHostName>host</IpOrHostName>", 1},
        {L"<!DOCTYPE q [<!ENTITY e 'x'>]><q><IpOrHostName>&e;</IpOrHostName></q>", 1},
    };
    for (const auto& [document, faults] : documents) {
        if (IsWine() && std::wstring_view(document).starts_with(L"<!DOCTYPE")) continue; // is taken there
        Store(properties, document);
        EXPECT_EQ(DeviceSettings(), "") << document;
        EXPECT_EQ(Reports(), faults) << document;
        CXString text(L"old");
        queue->GetRawIpOrHostName(text);
        EXPECT_EQ(text, L"") << document;
        ASSERT_EQ(Reports(), 2 * faults) << document;
        if (faults == 1) {
            EXPECT_NE(ReportRecorder::reports()[0].text.find("while parsing the Queue Property Bag"),
                      std::string::npos);
            EXPECT_NE(ReportRecorder::reports()[1].text.find("while parsing OCAP for installable options"),
                      std::string::npos);
        }
        ReportRecorder::reports().clear();
        // A document that cannot be changed stays as it is.
        queue->SetOrvelDeviceSettings("<new/>");
        const bool isDocument = std::wstring_view(document).starts_with(L"<q") && faults == 0;
        EXPECT_EQ(DeviceSettings(), isDocument ? "<new/>" : "") << document;
        EXPECT_TRUE(isDocument || Stored(properties) == document) << document;
        ReportRecorder::reports().clear();
    }
}

TEST_F(NativeComQueuePropertyBagAccessTest, SettingsReplaceTheOldOnesAndLeaveTheRest) {
    Store(properties, L"<q a='1'> <IpOrHostName>host</IpOrHostName><OrvelDeviceSettings>old"
                      L"</OrvelDeviceSettings>&amp; <!-- kept --><OrvelDeviceSettings>second"
                      L"</OrvelDeviceSettings></q>");
    for (const char* settings :
         {"", " <s>\xC3\xA4 & </s> ", "]]>", "a]]>b]]]]>>", "<s><![CDATA[inner]]></s>", "]]"}) {
        queue->SetOrvelDeviceSettings(settings);
        EXPECT_EQ(DeviceSettings(), settings);
    }
    // A line may end behind the root.
    EXPECT_EQ(CXString(Stored(properties).c_str()).Trim(),
              L"<q a=\"1\"> <IpOrHostName>host</IpOrHostName>&amp; <!-- kept -->"
              L"<OrvelDeviceSettings><![CDATA[]]]]></OrvelDeviceSettings></q>");
    EXPECT_EQ(Reports(), 0u);
    std::size_t reports = 0;
    for (const char* noXml : {"a control: \x01", "no character: \xEF\xBF\xBE"}) {
        queue->SetOrvelDeviceSettings(noXml);
        EXPECT_EQ(DeviceSettings(), "]]") << noXml;
        EXPECT_EQ(Reports(), ++reports) << noXml;
    }
}

TEST_F(NativeComQueuePropertyBagAccessTest, KeepsItsSlots) {
    // Between the two runs, and behind the second, stand setters that do nothing.
    const std::size_t slots[] = {
        SlotOf(&Access::GetPrinterName),
        SlotOf(&Access::GetInstallableOptions),
        SlotOf(&Access::SetInstallableOptions),
        SlotOf(&Access::GetOrvelDeviceSettings),
        SlotOf(&Access::SetOrvelDeviceSettings),
        SlotOf(&Access::GetOrvelQueuePrePostConfiguration),
        SlotOf(&Access::GetRawIpOrHostName),
        SlotOf(&Access::GetFullyQualifiedDomainName),
        SlotOf(&Access::GetDeviceSerialNumber),
        SlotOf(&Access::GetAutoConfigRegData),
        SlotOf(&Access::GetJobAccountingRequiredFromUiValue),
        SlotOf(&Access::GetJobAccountingRequiredFromObdsValue),
    };
    constexpr std::size_t firstRun = 6;
    for (std::size_t i = 0; i < std::size(slots); ++i)
        EXPECT_EQ(slots[i], i < firstRun ? i + 2 : i - firstRun + 11);
    EXPECT_EQ(SlotOf(&Access::GetPrintServerResidentTtfFonts), 23u);
    EXPECT_EQ(SlotOf(&OneMore<Access>::Next), 25u);
}

} // namespace
