#pragma once

#include "Support/DeviceBag.h"
#include "Support/TableFeatureAccess.h"

#include <DataModel/FeatureNameTable.h>
#include <DataModel/ValueNameTable.h>
#include <DeviceControl/DeviceFamily.h>
#include <DeviceControl/PrintInstructionGenerator.h>
#include <LowLevelFacilities/Strings/CPStringUtils.h>
#include <SystemServices/OperatingSystem.h>

#include <set>
#include <string>
#include <vector>

/// Runs a family once for each value of each option that it asks for, also of those that it asks for only
/// where another has a certain value, and keeps what it writes. Knows nothing of the family's tables.
class EveryChoice {
public:
    EveryChoice(const DeviceFamily& family, const DeviceBag& device) : m_family(family), m_bag(device) {}

    using Features = std::vector<DataModelIds::tagFeatureEnum>; // from the outermost collection
    using Filter = bool (*)(const Features&);

    /// What else a job says is as in `job`. filter: which options.
    void Walk(
        const TableFeatureAccess& job, Filter filter = [](const Features&) { return true; }) {
        m_met.clear();
        m_filter = filter;
        m_waiting = {Job(job)};
        while (!m_waiting.empty()) {
            Job next = std::move(m_waiting.back());
            m_waiting.pop_back();
            WalkNew(next);
        }
    }

    std::set<std::string> pjl;
    std::set<std::string> setup;
    std::set<std::string> trailers;
    /// The choices that change something, each with what is written then; the texts without any.
    std::set<std::string> effects;

private:
    using tagValueEnum = DataModelIds::tagValueEnum;

    struct Job : TableFeatureAccess {
        explicit Job(const TableFeatureAccess& job) : TableFeatureAccess(job) {}

        SimpleOptionValue GetOptionValue(tagFeatureEnum feature) const override {
            asked.insert({feature});
            return TableFeatureAccess::GetOptionValue(feature);
        }
        SimpleOptionValue GetOptionValueWithContext(tagFeatureEnum outer, tagFeatureEnum inner,
                                                    tagFeatureEnum feature) const override {
            asked.insert({outer, inner, feature});
            return TableFeatureAccess::GetOptionValueWithContext(outer, inner, feature);
        }
        SimpleOptionValue GetOptionValueWithContext(tagFeatureEnum outer,
                                                    tagFeatureEnum feature) const override {
            asked.insert({outer, feature});
            return TableFeatureAccess::GetOptionValueWithContext(outer, feature);
        }

        mutable std::set<Features> asked;
    };

    static FeaturePath PathOf(const Features& features) {
        return features.size() == 1   ? FeaturePath(features[0])
               : features.size() == 2 ? FeaturePath(features[0], features[1])
                                      : FeaturePath(features[0], features[1], features[2]);
    }

    void WalkNew(Job& job) {
        const std::string unchanged = Write(job);
        effects.insert(unchanged);
        const auto all = job.asked;
        for (const auto& features : all) {
            if (!m_filter(features) || !m_met.insert(features).second) continue;
            for (const auto& value : GetValueNames()) {
                job.asked.clear();
                job.Choose(PathOf(features), value.id);
                if (const std::string changed = Write(job); changed != unchanged)
                    effects.insert(NameOf(features) + value.name + changed);
                for (const auto& asked : job.asked)
                    if (!all.contains(asked) && !m_met.contains(asked)) {
                        m_waiting.push_back(job);
                        break;
                    }
            }
            job.Choose(PathOf(features), DataModelIds::VAL_UNSPECIFIED);
        }
    }

    static std::string NameOf(const Features& features) {
        std::string name;
        for (const auto feature : features)
            name.append(FindFeatureName(feature)) += ' ';
        return name;
    }

    /// What changes from run to run is left out.
    static std::string Lasting(std::string text) {
        const std::string computer = CPStringUtils::narrowToStdString(OperatingSystem::GetFullComputerName());
        if (const std::size_t at = text.find("LHOSTID=\""); at != std::string::npos)
            text.erase(at + 9, computer.size());
        if (const std::size_t at = text.find("_AFTER \""); at != std::string::npos) text.erase(at + 8, 14);
        return text;
    }

    std::string Write(Job& job) {
        OrvelDriverPropertyBag device(m_bag);
        PrintInstructionGenerator generator(job, device);
        DeviceInstructions texts;
        m_family.generate(generator, texts);
        const std::string written[] = {CPStringUtils::narrowToStdString(texts.pjlCommands),
                                       CPStringUtils::narrowToStdString(texts.setupCommands),
                                       CPStringUtils::narrowToStdString(texts.trailerComments)};
        pjl.insert(written[0]);
        setup.insert(written[1]);
        trailers.insert(written[2]);
        return Lasting(written[0]) + written[1] + written[2];
    }

    const DeviceFamily& m_family;
    DeviceBag m_bag;
    Filter m_filter = nullptr;
    std::set<Features> m_met;
    std::vector<Job> m_waiting;
};
