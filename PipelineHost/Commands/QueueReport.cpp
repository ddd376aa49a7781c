#include "Commands/QueueReport.h"

#include "Commands/JobAtDevice.h"
#include "Commands/QueueConfiguration.h"
#include "Commands/ShownAnswer.h"
#include "Common/Text.h"
#include "Report/TextTable.h"

#include <DataModel/ValueNameTable.h>
#include <PrintTime/PrintTimeUiHelper.h>
#include <PrinterExtension/UserProperties.h>
#include <PropertyBags/NativeComQueuePropertyBagAccess.h>

#include <algorithm>
#include <utility>

namespace OvPipeline {

namespace {

using OvPlatform::QueueValue;
using OvPlatform::QueueValues;
using Lines = std::vector<std::vector<std::string>>;

constexpr std::wstring_view optionPrefix = L"Config:";
constexpr std::size_t longestShown = 100; // characters of a text that a table shows

NativeComPrinterPropertyBagAccess AccessTo(IPrinterPropertyBag& bag) {
    return {bag, NativeComPrinterPropertyBagAccess::AssertionPolicyBagIsHeldElsewhere};
}

std::vector<CXString> OptionsOfDevice(const OvPlatform::QueueFolder& queue) {
    const auto bag = BagOf(queue.DriverProperties());
    NativeComPrinterPropertyBagAccess access = AccessTo(*bag);
    const OrvelDriverPropertyBag driver(access);
    CheckDevice(driver, queue);
    return driver.GetSimpleOcapParser()->GetSupportedInstallableOptionFeaturesFromOcap();
}

// A name as bags spell it, in the device's own spelling: a bag's values are spelled like its names.
std::string CpssName(const std::wstring& name) {
    const auto bag = BagOf({{std::wstring(optionPrefix) + L"Name", name}});
    return Utf8(NativeComQueuePropertyBagAccess::TryGetInstallableOption(bag, L"name").View());
}

struct KindOfValue {
    const char* operator()(const std::wstring&) const { return "text"; }
    const char* operator()(bool) const { return "flag"; }
    const char* operator()(std::int32_t) const { return "number"; }
    const char* operator()(const OvPlatform::QueueBytes&) const { return "bytes"; }
    const char* operator()(const OvPlatform::QueueStream&) const { return "stream"; }
};

struct TextOfValue {
    std::string operator()(const std::wstring& text) const {
        const bool isShort = text.size() <= longestShown && text.find(L'\n') == std::wstring::npos;
        return isShort ? Utf8(text) : Counted(text.size(), "character");
    }
    std::string operator()(bool value) const { return YesOrNo(value); }
    std::string operator()(std::int32_t value) const { return std::to_string(value); }
    std::string operator()(const OvPlatform::QueueBytes& value) const {
        return ByteCount(value.bytes.size());
    }
    std::string operator()(const OvPlatform::QueueStream& value) const {
        return ByteCount(value.bytes.size());
    }
};

struct JsonOfValue {
    JsonText& json;
    void operator()(const std::wstring& text) const { json.Key("value").Text(Utf8(text)); }
    void operator()(bool value) const { json.Key("value").Bool(value); }
    void operator()(std::int32_t value) const { json.Key("value").Number(value); }
    void operator()(const OvPlatform::QueueBytes& value) const { Size(value.bytes.size()); }
    void operator()(const OvPlatform::QueueStream& value) const { Size(value.bytes.size()); }

private:
    void Size(std::size_t size) const { json.Key("size").Number(static_cast<long long>(size)); }
};

std::string NameOf(DataModelIds::tagValueEnum value) {
    const char* const name = FindValueName(value);
    return name != nullptr ? name : std::to_string(value);
}

std::string Section(const std::string& title, Lines lines, std::size_t width) {
    const char* const end = lines.empty() ? ": none\n" : "\n";
    return title + end + AlignedTable(std::move(lines), width, "  ");
}

std::string Cell(const std::string& value) { return value.empty() ? "-" : value; }

} // namespace

QueueReport::QueueReport(const OvPlatform::QueueFolder& queue) {
    AddPrinter(queue.Description());
    m_bags.push_back({"driver", queue.DriverProperties()});
    m_bags.push_back({"queue", queue.QueueProperties()});
    m_bags.push_back({"user", OvPlatform::UserProperties(queue.PrinterName()).Load()});
    AddOptions(queue);
    const auto queueBag = BagOf(queue.QueueProperties());
    const auto userBag = BagOf(m_bags.back().values);
    AddAnswers(queueBag, *userBag);
}

void QueueReport::AddPrinter(const OvPlatform::QueueDescription& queue) {
    m_printer = {{"name", Utf8(queue.printerName)},  {"port", Utf8(queue.portName)},
                 {"driver", Utf8(queue.driverName)}, {"comment", Utf8(queue.comment)},
                 {"location", Utf8(queue.location)}, {"server", Utf8(queue.serverName)},
                 {"share", Utf8(queue.shareName)}};
    m_jobs = queue.jobs.size();
}

void QueueReport::AddOptions(const OvPlatform::QueueFolder& queue) {
    const auto bag = BagOf(queue.QueueProperties());
    const auto valueOf = [&](const CXString& name) {
        return Utf8(NativeComQueuePropertyBagAccess::TryGetInstallableOption(bag, name).View());
    };
    for (const CXString& name : OptionsOfDevice(queue))
        m_options.push_back({Utf8(name.View()), valueOf(name), true});
    const std::size_t ofDevice = m_options.size();
    for (const auto& [key, value] : queue.QueueProperties()) {
        const auto* const text = std::get_if<std::wstring>(&value);
        if (!key.starts_with(optionPrefix) || text == nullptr) continue;
        std::string name = CpssName(key.substr(optionPrefix.size()));
        const auto end = m_options.begin() + static_cast<std::ptrdiff_t>(ofDevice);
        const bool isListed =
            std::any_of(m_options.begin(), end, [&](const Option& option) { return option.name == name; });
        if (!isListed) m_options.push_back({std::move(name), CpssName(*text), false});
    }
}

void QueueReport::AddAnswers(IPrinterPropertyBag* queueBag, IPrinterPropertyBag& userBag) {
    using Helper = PrintTimeUiHelper;
    CXString mode, address;
    Helper::GetBidiSettingsFromQueueSettings(queueBag, mode, address);
    const auto flag = [&](const char* question, bool answer) {
        m_answers.push_back({question, YesOrNo(answer), true});
    };
    m_answers.push_back({"bidirectional communication", Utf8(mode.View())});
    m_answers.push_back({"its address set by hand", Utf8(address.View())});
    m_answers.push_back({"accounting prompt", NameOf(Helper::GetPrintTimeAccountingPromptOption(queueBag))});
    flag("prompts for accounting", Helper::IsPrintTimeAccountingPromptEnabledByQueueSettings(queueBag));
    flag("print-time prompt", Helper::PrintTimePromptToggleEnabled(queueBag));
    flag("black and white only", Helper::BlackAndWhiteOnlyToggleEnabled(queueBag));
    flag("secure print only", Helper::IsSecurePrintOnlyEnabled(queueBag));
    flag("secure print by login", Helper::IsSecurePrintViaLoginEnabled(queueBag));
    flag("fax", Helper::IsFaxEnabledByQueueSettings(queueBag));
    flag("job tracker of the user", Helper::IsJobTrackerEnabledByUserPreferences(userBag));
}

// ---- For people

std::string QueueReport::AsText(std::size_t width) const {
    Lines printer;
    for (const Fact& fact : m_printer)
        if (!fact.value.empty()) printer.push_back({fact.name, fact.value});
    printer.push_back({"jobs", std::to_string(m_jobs)});
    std::string text = Section("printer", std::move(printer), width);
    for (const Bag& bag : m_bags) {
        Lines lines;
        for (const auto& [name, value] : bag.values)
            lines.push_back({Utf8(name), std::visit(KindOfValue(), value), std::visit(TextOfValue(), value)});
        text += "\n" + Section(std::string("bag of the ") + bag.name, std::move(lines), width);
    }
    Lines options;
    for (const Option& option : m_options)
        options.push_back({option.name, Cell(option.value), option.isOfDevice ? "" : "not of this device"});
    text += "\n" + Section("installable options", std::move(options), width);
    Lines answers;
    for (const Answer& answer : m_answers)
        answers.push_back({answer.question, Cell(answer.value)});
    return text + "\n" + Section("at print time", std::move(answers), width);
}

// ---- For programs

JsonText QueueReport::AsJson() const {
    JsonText json;
    json.BeginObject().Key("printer").BeginObject();
    for (const Fact& fact : m_printer)
        json.Key(fact.name).Text(fact.value);
    json.Key("jobs").Number(static_cast<long long>(m_jobs)).EndObject().Key("bags").BeginObject();
    for (const Bag& bag : m_bags) {
        json.Key(bag.name).BeginArray();
        for (const auto& [name, value] : bag.values) {
            json.BeginObject()
                .Key("name")
                .Text(Utf8(name))
                .Key("kind")
                .Text(std::visit(KindOfValue(), value));
            std::visit(JsonOfValue{json}, value);
            json.EndObject();
        }
        json.EndArray();
    }
    json.EndObject().Key("installableOptions").BeginArray();
    for (const Option& option : m_options) {
        json.BeginObject().Key("name").Text(option.name).Key("value");
        option.value.empty() ? json.Null() : json.Text(option.value);
        json.Key("isOfDevice").Bool(option.isOfDevice).EndObject();
    }
    json.EndArray().Key("answers").BeginArray();
    for (const Answer& answer : m_answers) {
        json.BeginObject().Key("question").Text(answer.question).Key("answer");
        if (answer.isFlag)
            json.Bool(answer.value == YesOrNo(true));
        else
            answer.value.empty() ? json.Null() : json.Text(answer.value);
        json.EndObject();
    }
    json.EndArray().EndObject();
    return json;
}

} // namespace OvPipeline
