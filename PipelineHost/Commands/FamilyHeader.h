#pragma once

#include "Commands/HeaderText.h"
#include "Commands/JobAtDevice.h"
#include "Commands/ShownAnswer.h"

#include <DeviceControl/CommandSafeFeatureAccess.h>

#include <array>
#include <string>
#include <vector>

namespace OvPipeline {

/// What a family's generator writes around the pages of a job, and on request why.
class FamilyHeader {
public:
    /// A feature, or a name of the job, without which a piece would not stand there.
    struct Cause {
        std::string name;
        ShownAnswer answer; // without a source for a name
    };
    using OnUnsafeText = CommandSafeFeatureAccess::OnChange;

    /// Throws what the generator throws.
    FamilyHeader(JobAtDevice& job, const DeviceFamily& family, const OnUnsafeText& onUnsafeText);

    /// Finds the causes, by asking the generator again without one answer at a time. For what a family
    /// writes in any case there is none, nor for what stands because nobody asked for anything else. A
    /// held job has another passcode afterwards.
    void FindCauses(JobAtDevice& job);

    const DeviceFamily& Family() const { return m_family; }
    const HeaderText& Text() const { return m_text; }
    /// Of a piece; empty before FindCauses.
    const std::vector<Cause>& Causes(std::size_t section, std::size_t piece) const;

private:
    HeaderText Generate(JobAtDevice& job, IFilterFeatureAccess& features,
                        const OnUnsafeText& onUnsafeText) const;
    void AddCause(const Cause& cause, const HeaderText& without);

    const DeviceFamily& m_family;
    HeaderText m_text;
    std::array<std::vector<std::vector<Cause>>, HeaderText::sectionCount> m_causes; // by piece
};

} // namespace OvPipeline
