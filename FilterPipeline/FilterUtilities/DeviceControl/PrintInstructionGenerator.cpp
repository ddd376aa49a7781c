#include "DeviceControl/PrintInstructionGenerator.h"

#include "DeviceControl/HarrierInstructions.h"
#include "DeviceControl/InstructionText.h"
#include "DeviceControl/JobFinishings.h"
#include "DeviceControl/JobQuestions.h"
#include "DeviceControl/KestrelColor.h"
#include "DeviceControl/KestrelInstructions.h"
#include "DeviceControl/LowEndInstructions.h"
#include "DeviceControl/MerlinInstructions.h"
#include "DeviceControl/OspreyInstructions.h"
#include "DeviceControl/ProductPdlData.h"
#include "DeviceControl/SparComments.h"

#include <DeviceDescription/OrvelDriverPropertyBag.h>

namespace {

template <typename... Texts>
void EmptyAll(Texts&... texts) {
    (texts.Empty(), ...);
}

struct ApplicationName {
    bool isAtEnd;
    const wchar_t* text;
    const wchar_t* creator;
};
constexpr ApplicationName applications[] = {
    {false, L"Microsoft Word - ", L"winword"},
    {false, L"Microsoft Outlook - ", L"outlook"},
    {false, L"Microsoft PowerPoint - ", L"powerpnt"},
    {true, L" - Notepad", L"notepad"},
    {true, L".xlsx", L"excel"},
    {true, L".xls", L"excel"},
};

bool Matches(const CXString& name, const ApplicationName& application) {
    if (!application.isAtEnd) return name.Find(application.text) == 0;
    const CXString ending(application.text);
    return name.Right(ending.GetLength()) == ending;
}

} // namespace

PrintInstructionGenerator::PrintInstructionGenerator(IFilterFeatureAccess& features,
                                                     OrvelDriverPropertyBag& device)
    : m_features(features), m_device(device) {}

PrintInstructionGenerator::~PrintInstructionGenerator() = default;

const CPString& PrintInstructionGenerator::ProductPdl() noexcept {
    try {
        if (m_productPdl.isEmpty()) m_productPdl = m_device.GetProductPdlDataXml();
    } catch (...) { // a job goes on without what its product would add
        m_productPdl.clear();
    }
    return m_productPdl;
}

void PrintInstructionGenerator::GenerateLegacyKestrelPostScript(CXString& pjlCommands,
                                                                CXString& setupCommands,
                                                                CXString& trailerComments) {
    EmptyAll(pjlCommands, setupCommands, trailerComments);
    const JobQuestions job(m_features, m_device);
    KestrelInstructions::Generate(pjlCommands, setupCommands, job, ProductPdlData(ProductPdl().view()));
    SparComments::Append(trailerComments, SparComments::postScript, job);
}

void PrintInstructionGenerator::GenerateLegacyHarrierPostScript(CXString& pjlCommands,
                                                                CXString& setupCommands,
                                                                CXString& trailerComments,
                                                                bool filterDoesColorCorrection) {
    EmptyAll(pjlCommands, setupCommands, trailerComments);
    const JobQuestions job(m_features, m_device);
    HarrierInstructions::Generate(pjlCommands, setupCommands, job, ProductPdlData(ProductPdl().view()),
                                  filterDoesColorCorrection);
    SparComments::Append(trailerComments, SparComments::postScript, job);
}

void PrintInstructionGenerator::GenerateLegacyOspreyPostScript(CXString& pjlCommands, CXString& setupCommands,
                                                               CXString& trailerComments) {
    EmptyAll(pjlCommands, setupCommands, trailerComments);
    const JobQuestions job(m_features, m_device);
    OspreyInstructions::Generate(pjlCommands, setupCommands, job);
    SparComments::Append(trailerComments, SparComments::postScript, job);
}

void PrintInstructionGenerator::GenerateLegacyMerlinPostScript(CXString& pjlCommands, CXString& setupCommands,
                                                               CXString& trailerComments, bool) {
    EmptyAll(pjlCommands, setupCommands, trailerComments);
    const JobQuestions job(m_features, m_device);
    MerlinInstructions::GeneratePostScript(pjlCommands, job);
    SparComments::Append(trailerComments, SparComments::postScript, job);
}

void PrintInstructionGenerator::GenerateLegacyMerlinPCL6(CXString& pjlCommands, CXString& setupCommands,
                                                         CXString& trailerComments) {
    EmptyAll(pjlCommands, setupCommands, trailerComments);
    MerlinInstructions::GeneratePcl6(pjlCommands, JobQuestions(m_features, m_device));
}

void PrintInstructionGenerator::GenerateSpecialLowEndPS(CXString& pjlCommands, CXString& setupCommands,
                                                        CXString& trailerComments) {
    EmptyAll(pjlCommands, setupCommands, trailerComments);
    LowEndInstructions::GeneratePostScript(pjlCommands, JobQuestions(m_features, m_device));
}

void PrintInstructionGenerator::GenerateSpecialLowEndPCL6(CXString& pjlCommands, CXString& setupCommands,
                                                          CXString& trailerComments) {
    EmptyAll(pjlCommands, setupCommands, trailerComments);
    LowEndInstructions::GeneratePcl6(pjlCommands, JobQuestions(m_features, m_device));
}

void PrintInstructionGenerator::GenerateSpecialLowEndPCLm(CXString& pjlCommands, CXString& pageTicket) {
    EmptyAll(pjlCommands, pageTicket);
    LowEndInstructions::GeneratePclm(pjlCommands, pageTicket, JobQuestions(m_features, m_device));
}

std::vector<DataModelIds::tagValueEnum>
PrintInstructionGenerator::CalculateCppsFinishingsValuesFromIFilterFeatureAccess(
    IFilterFeatureAccess& features) {
    return JobFinishings::Of(JobFeatures(features));
}

bool PrintInstructionGenerator::GuessCreatorNamePdlFromDocumentName(const CXString& documentName,
                                                                    CXString& creator) {
    for (const ApplicationName& application : applications) {
        if (!Matches(documentName, application)) continue;
        creator = application.creator;
        return true;
    }
    creator = L"unknown-application";
    return false;
}

// NOLINTBEGIN(performance-unnecessary-value-param): the published forms take copies
CXString PrintInstructionGenerator::GeneratePDLSnippet(CXString command, CXString option, CXString feature) {
    CXString snippet;
    InstructionText::AppendSnippet(snippet, feature, option, command);
    return snippet;
}

CXString PrintInstructionGenerator::GenerateSPARInformationComments(PrintInstructionCommentType type) {
    CXString comments;
    const JobQuestions job(m_features, m_device);
    if (type == CommentTypePjl) SparComments::Append(comments, SparComments::pjl, job);
    if (type == CommentTypePostScript) SparComments::Append(comments, SparComments::postScript, job);
    return comments;
}

CXString PrintInstructionGenerator::GetProductSpecificPDLForFeature(CXString section, CXString option,
                                                                    DataModelIds::tagValueEnum pdl) {
    return GetProductSpecificPDLForFeature(std::move(section), std::move(option), {}, {}, pdl);
}

CXString PrintInstructionGenerator::GetProductSpecificPDLForFeature(CXString section, CXString option,
                                                                    CXString group,
                                                                    DataModelIds::tagValueEnum pdl) {
    return GetProductSpecificPDLForFeature(std::move(section), std::move(option), std::move(group), {}, pdl);
}

CXString PrintInstructionGenerator::GetProductSpecificPDLForFeature(CXString section, CXString option,
                                                                    CXString group, CXString subgroup,
                                                                    DataModelIds::tagValueEnum pdl) {
    return ProductPdlData(ProductPdl().view())
        .Find(section.View(), option.View(), group.View(), subgroup.View(), pdl);
}

CXString PrintInstructionGenerator::GenerateLegacyKestrelCustomColorPostScript() {
    CXString snippets;
    KestrelColor::AppendCustom(snippets, JobQuestions(m_features, m_device));
    return snippets;
}

CXString PrintInstructionGenerator::GenerateLegacyKestrelRgbPostScript(SimpleOptionValue value) {
    CXString snippets;
    KestrelColor::AppendRgb(snippets, value.GetValuePlusSpecifiedState());
    return snippets;
}

CXString PrintInstructionGenerator::GenerateLegacyKestrelCmykPostScript(SimpleOptionValue value) {
    CXString snippets;
    KestrelColor::AppendCmyk(snippets, value.GetValuePlusSpecifiedState());
    return snippets;
}

CXString PrintInstructionGenerator::GenerateLegacyHarrierCustomColorPostScript() {
    CXString snippets;
    HarrierInstructions::AppendCustomColor(snippets, JobQuestions(m_features, m_device));
    return snippets;
}
// NOLINTEND(performance-unnecessary-value-param)
