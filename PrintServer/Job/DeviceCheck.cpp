#include "Job/DeviceCheck.h"

#include "Options/OptionTable.h"
#include "Options/TicketText.h"

#include <Commands/FamilyChoice.h>
#include <Commands/QueueConfiguration.h>
#include <Commands/StoppedClock.h>
#include <Common/Text.h>
#include <DeviceControl/CommandSafeFeatureAccess.h>
#include <DeviceControl/DeviceFamily.h>
#include <DeviceControl/PrintInstructionGenerator.h>
#include <DeviceDescription/OrvelDriverPropertyBag.h>
#include <EmbeddedSettings/PublicDocSettingsDocument.h>
#include <FeatureAccess/JobSettings.h>
#include <PrintTicket/TicketOverlay.h>

#include <algorithm>
#include <optional>
#include <set>
#include <span>
#include <string_view>

namespace OvPrintServer {

namespace {

// The queue's device, without any job.
class Device {
public:
    Device(const OvPlatform::QueueFolder& queue, const DeviceFamily& family)
        : m_family(family), m_capabilities(OvPipeline::Wide(queue.Capabilities())),
          m_properties(OvPipeline::BagOf(queue.DriverProperties())),
          m_access(*m_properties, NativeComPrinterPropertyBagAccess::AssertionPolicyBagIsHeldElsewhere),
          m_driver(m_access) {}

    // All that the family's generator writes for a merged ticket.
    CXString Commands(const std::string& ticket) {
        JobSettings settings(CXString(OvPipeline::Wide(ticket)), m_capabilities,
                             m_driver.GetSimpleOcapParser());
        CommandSafeFeatureAccess features(settings.Features(), m_family, {});
        PrintInstructionGenerator generator(features, m_driver);
        DeviceInstructions instructions;
        m_family.generate(generator, instructions);
        return instructions.pjlCommands + instructions.setupCommands + instructions.trailerComments;
    }

private:
    const DeviceFamily& m_family;
    const CXString m_capabilities;
    const CComPtr<IPrinterPropertyBag> m_properties;
    NativeComPrinterPropertyBagAccess m_access;
    OrvelDriverPropertyBag m_driver;
};

// What the filter says itself: with each page, or that it does not do it.
// clang-format off
constexpr std::string_view toldWithPages[] = {
    mediaSizeFeature,
    mediaTypeFeature,
    mediaColorFeature,
    mediaSourceFeature,
    "JobDuplexAllDocumentsContiguously",
    "JobNUpAllDocumentsContiguously",
    "JobNUpAllDocumentsContiguously/PresentationDirection",
    copiesParameter,
};
// clang-format on
// What makes no difference to a single copy.
constexpr std::string_view ofCopies[] = {"JobCollateAllDocuments", "DocumentCollate"};

bool IsAmong(std::span<const std::string_view> names, const AskedSetting& asked) {
    return std::ranges::find(names, asked.setting) != names.end();
}

// Those that only the family's commands can tell the device of.
std::vector<AskedSetting> ForCommands(const std::vector<AskedSetting>& all) {
    const bool hasCopies = std::ranges::find(all, copiesParameter, &AskedSetting::setting) != all.end();
    std::vector<AskedSetting> asked;
    std::ranges::copy_if(all, std::back_inserter(asked), [&](const AskedSetting& one) {
        return !IsAmong(toldWithPages, one) && (hasCopies || !IsAmong(ofCopies, one));
    });
    return asked;
}

// What stands there where nobody asks for anything.
const OfferedOption* StandardOf(const OfferedFeature& feature) {
    return feature.byDefault != nullptr ? feature.byDefault : feature.Find("None");
}

// Whether it also asks by the device's own settings.
bool HasOwnSetting(const std::string& option) {
    return std::ranges::any_of(
        GetOptionRows(), [&](const OptionRow& row) { return row.name == option && row.how == How::Setting; });
}

std::string StandardSettings(const QueueOffer& offer) {
    const std::string settings = offer.DefaultOf(settingsParameter);
    return settings.empty() ? std::string(PublicDocSettingsDocument::GetEmptyDocument().view()) : settings;
}

// The merged ticket as it would be had nobody asked; nothing where that is no other.
std::optional<std::string> Without(const QueueOffer& offer, const AskedSetting& asked,
                                   const std::string& ticket) {
    const OfferedFeature* const feature = offer.Feature(asked.setting);
    const OfferedOption* const standard = feature != nullptr ? StandardOf(*feature) : nullptr;
    if (standard == nullptr || standard->localName == asked.value) return std::nullopt;
    TicketText without(offer);
    without.Choose(asked.setting, *standard);
    if (HasOwnSetting(asked.name)) without.Set(std::string(settingsParameter), StandardSettings(offer));
    return OvPlatform::TicketOverlay(without.Xml()).Over(ticket);
}

} // namespace

std::vector<LeftOption> FindUntold(const QueueOffer& offer, const JobTicket& ticket,
                                   const std::string& merged) {
    const std::vector<AskedSetting> forCommands = ForCommands(ticket.asked);
    const DeviceFamily* const family = OvPipeline::FamilyOfQueue(offer.Queue());
    if (forCommands.empty() || family == nullptr) return {};
    const OvPipeline::StoppedClock clock;
    Device device(offer.Queue(), *family);
    const CXString commands = device.Commands(merged);
    const std::string reason =
        "devices of the family " + std::string(family->name) + " get no command for it";
    std::vector<LeftOption> untold;
    std::set<std::string> heard; // an option may ask for several settings: one is enough
    for (const AskedSetting& asked : forCommands) {
        const std::optional<std::string> without = Without(offer, asked, merged);
        if (!without || device.Commands(*without) != commands)
            heard.insert(asked.option);
        else if (std::ranges::find(untold, asked.option, &LeftOption::option) == untold.end())
            untold.push_back({asked.option, asked.name, reason});
    }
    std::erase_if(untold, [&](const LeftOption& option) { return heard.contains(option.option); });
    return untold;
}

} // namespace OvPrintServer
