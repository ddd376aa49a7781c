#include "Commands/FamilyHeader.h"

#include "Commands/StoppedClock.h"
#include "Common/Text.h"

#include <DataModel/FeatureNameTable.h>
#include <DeviceControl/PrintInstructionGenerator.h>

#include <algorithm>

namespace OvPipeline {

namespace {

enum class Name { Document, User, Domain };

// A job of which one name is not known.
class WithoutName final : public ForwardedFeatureAccess {
public:
    WithoutName(IFilterFeatureAccess& access, Name name) : ForwardedFeatureAccess(access), m_name(name) {}

    CXString GetPrintJobDocumentName() const override {
        return m_name == Name::Document ? CXString() : Access().GetPrintJobDocumentName();
    }
    CXString GetPrintJobUserName() const override {
        return m_name == Name::User ? CXString() : Access().GetPrintJobUserName();
    }
    CXString GetPrintJobUserDomainName() const override {
        return m_name == Name::Domain ? CXString() : Access().GetPrintJobUserDomainName();
    }

private:
    Name m_name;
};

struct NameRow {
    Name name;
    const char* text;
    CXString (IFilterFeatureAccess::*read)() const;
};
constexpr NameRow names[] = {
    {Name::Document, "the document's name", &IFilterFeatureAccess::GetPrintJobDocumentName},
    {Name::User, "the user's name", &IFilterFeatureAccess::GetPrintJobUserName},
    {Name::Domain, "the user's domain", &IFilterFeatureAccess::GetPrintJobUserDomainName}};

std::string NameOf(const FeatureQuestion& question) {
    const auto features = question.path.Features();
    if (features.empty())
        return question.kind == FeatureQuestionKind::Orientation ? "the orientation" : "the output size";
    std::string name;
    for (const DataModelIds::tagFeatureEnum feature : features) {
        const char* const text = FindFeatureName(feature);
        name += (name.empty() ? "" : "/") + (text != nullptr ? std::string(text) : std::to_string(feature));
    }
    if (question.path.Index()) name += "[" + std::to_string(*question.path.Index()) + "]";
    return name;
}

// Each question once, without those that nobody has answered.
std::vector<RecordedAnswer> Telling(const std::vector<RecordedAnswer>& answers) {
    std::vector<RecordedAnswer> telling;
    for (const RecordedAnswer& answer : answers) {
        const bool isKnown =
            std::ranges::find(telling, answer.question, &RecordedAnswer::question) != telling.end();
        if (answer.isSpecified && !isKnown) telling.push_back(answer);
    }
    return telling;
}

} // namespace

FamilyHeader::FamilyHeader(JobAtDevice& job, const DeviceFamily& family, const OnUnsafeText& onUnsafeText)
    : m_family(family), m_text(Generate(job, job.Settings().Features(), onUnsafeText)) {
    for (std::size_t section = 0; section < HeaderText::sectionCount; ++section)
        m_causes[section].resize(m_text.sections[section].size());
}

HeaderText FamilyHeader::Generate(JobAtDevice& job, IFilterFeatureAccess& features,
                                  const OnUnsafeText& onUnsafeText) const {
    CommandSafeFeatureAccess safe(features, m_family, onUnsafeText);
    PrintInstructionGenerator generator(safe, job.Driver());
    DeviceInstructions instructions;
    m_family.generate(generator, instructions);
    return HeaderText::Of(instructions);
}

void FamilyHeader::FindCauses(JobAtDevice& job) {
    const StoppedClock clock;
    RecordedFeatureAccess recorded = job.Settings().RecordedFeatures();
    m_text = Generate(job, recorded, {});
    for (const RecordedAnswer& answer : Telling(recorded.Answers())) {
        RecordedFeatureAccess without(job.Settings().Features());
        without.Withhold(answer.question);
        AddCause({NameOf(answer.question), ShownAnswer::Of(answer)}, Generate(job, without, {}));
    }
    for (const NameRow& row : names) {
        IFilterFeatureAccess& features = job.Settings().Features();
        WithoutName without(features, row.name);
        const ShownAnswer name{.value = Utf8((features.*row.read)().View())};
        AddCause({row.text, name}, Generate(job, without, {}));
    }
}

void FamilyHeader::AddCause(const Cause& cause, const HeaderText& without) {
    for (std::size_t section = 0; section < HeaderText::sectionCount; ++section)
        for (const std::size_t piece : MissingPieces(m_text.sections[section], without.sections[section]))
            m_causes[section][piece].push_back(cause);
}

const std::vector<FamilyHeader::Cause>& FamilyHeader::Causes(std::size_t section, std::size_t piece) const {
    return m_causes[section][piece];
}

} // namespace OvPipeline
