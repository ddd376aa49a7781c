#include "DeviceControl/JobHandlingLines.h"

#include "DeviceControl/InstructionText.h"
#include "DeviceControl/JobQuestions.h"

using namespace DataModelIds;
using InstructionText::Append;

namespace {

FeaturePath InSaveInfo(tagFeatureEnum feature) { return {FEAT_SAVE_COL, FEAT_SAVE_INFO_COL, feature}; }

void AppendPassword(CXString& pjl, const CXString& password) {
    Append(pjl, L"@PJL XJOBPASSWORD = ", password, L"\r\n"); // as it is: this device does not unscramble
}

void AppendSavedJob(CXString& pjl, const JobQuestions& job, CXString& jobName) {
    if (const CXString name = job.TextOrEmpty(InSaveInfo(FEAT_SAVE_NAME)); !name.IsEmpty()) jobName = name;
    if (job.Choice(InSaveInfo(FEAT_SAVE_ACCESS)) == VAL_SAVE_ACCESS_PUBLIC)
        return Append(pjl, L"@PJL XSAVEDJOB\n");
    const std::optional<CXString> password = job.Password(InSaveInfo(FEAT_SAVE_PASSWORD));
    Append(pjl, L"@PJL XPERSONALSAVEDJOB\n");
    if (password) AppendPassword(pjl, *password);
}

void AppendJobType(CXString& pjl, const JobQuestions& job, CXString& jobName, std::wstring_view normalPrint) {
    switch (job.Choice(FEAT_JOB_TYPE)) {
    case VAL_JOB_TYPE_SECURE_PRINT:
        Append(pjl, L"@PJL XSECUREJOB\n");
        return AppendPassword(pjl, job.Password(FEAT_JOB_PASSWORD).value_or(CXString()));
    case VAL_JOB_TYPE_PERSONAL_SAVED_PRINT:
        return AppendSavedJob(pjl, job, jobName);
    case VAL_JOB_TYPE_PROOF_PRINT:
    case VAL_JOB_TYPE_PROOF_PRINT_WITH_JOB_NAME:
        return Append(pjl, L"@PJL XPROOFJOB\n");
    case VAL_UNSPECIFIED:
    case VAL_JOB_TYPE_NORMAL_PRINT:
        return Append(pjl, normalPrint);
    default:
        return;
    }
}

} // namespace

void JobHandlingLines::Append(CXString& pjl, const JobQuestions& job, std::wstring_view normalPrint) {
    CXString jobName = job.JobName();
    AppendJobType(pjl, job, jobName, normalPrint);
    InstructionText::Append(pjl, L"@PJL JOB NAME = \"", jobName, L"\"\r\n");
    InstructionText::Append(pjl, L"@PJL XJAUSERNAME = \"", job.UserName(), L"\"\r\n");
    InstructionText::Append(pjl, L"@PJL COMMENT OID_ATT_JOB_NAME \"", jobName, L"\"\r\n");
}
