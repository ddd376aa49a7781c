#include "Job/FinishingCheck.h"

#include "Options/OptionTable.h"
#include "Options/TicketText.h"

#include <Commands/QueueConfiguration.h>
#include <Commands/StoppedClock.h>
#include <Commands/TicketExplanation.h>
#include <Common/Text.h>
#include <DeviceControl/CommandSafeFeatureAccess.h>
#include <DeviceControl/DeviceFamily.h>
#include <DeviceControl/PrintInstructionGenerator.h>
#include <DeviceDescription/OrvelDriverPropertyBag.h>
#include <FeatureAccess/JobSettings.h>
#include <PrintTicket/TicketOverlay.h>

#include <algorithm>

namespace OvPrintServer {

namespace {

const DeviceFamily* FamilyOf(const OvPlatform::QueueFolder& queue) {
    const auto found = queue.DriverProperties().find(deviceFamilyPropertyName);
    if (found == queue.DriverProperties().end()) return nullptr;
    const auto* const name = std::get_if<std::wstring>(&found->second);
    return name == nullptr ? nullptr : FindDeviceFamily(OvPipeline::Utf8(*name));
}

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

bool IsFinishing(const AskedSetting& asked) {
    return std::ranges::find(GetFinishingWords(), asked.setting, &FinishingWord::feature) !=
           GetFinishingWords().end();
}

// What stands there where nobody asks for anything.
const OfferedOption* StandardOf(const OfferedFeature& feature) {
    return feature.byDefault != nullptr ? feature.byDefault : feature.Find("None");
}

} // namespace

std::vector<LeftOption> FindUntold(const QueueOffer& offer, const JobTicket& ticket) {
    std::vector<AskedSetting> finishings;
    std::ranges::copy_if(ticket.asked, std::back_inserter(finishings), IsFinishing);
    const DeviceFamily* const family = FamilyOf(offer.Queue());
    if (finishings.empty() || family == nullptr) return {};
    OvPipeline::TicketExplanation merge(offer.SharedQueue());
    merge.Add("job", kPTJobScope, &ticket.xml);
    const OvPipeline::StoppedClock clock;
    Device device(offer.Queue(), *family);
    const CXString commands = device.Commands(merge.Ticket());
    std::vector<LeftOption> untold;
    for (const AskedSetting& asked : finishings) {
        const OfferedFeature* const feature = offer.Feature(asked.setting);
        const OfferedOption* const standard = StandardOf(*feature);
        if (standard == nullptr || standard->localName == asked.value) continue;
        TicketText without(offer);
        without.Choose(asked.setting, *standard);
        if (device.Commands(OvPlatform::TicketOverlay(without.Xml()).Over(merge.Ticket())) == commands)
            untold.push_back(
                {asked.option, asked.name,
                 "devices of the family " + std::string(family->name) + " get no command for it"});
    }
    return untold;
}

} // namespace OvPrintServer
