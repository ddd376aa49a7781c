#include "DeviceControl/MerlinInstructions.h"

#include "DeviceControl/CoverLines.h"
#include "DeviceControl/InstructionText.h"
#include "DeviceControl/JobAttributeLines.h"
#include "DeviceControl/JobFinishings.h"
#include "DeviceControl/JobHandlingLines.h"
#include "DeviceControl/JobQuestions.h"
#include "DeviceControl/SparComments.h"

using namespace DataModelIds;
using InstructionText::Append;

namespace {

void AppendTonerSaver(CXString& pjl, const JobQuestions& job) {
    switch (job.Choice(FEAT_TONER_SAVER)) {
    case VAL_TONER_SAVER_ON:
        return Append(pjl, L"@PJL SET ECONOMODE = ON\n", L"@PJL SET DARKENTEXT = ON\n");
    case VAL_TONER_SAVER_OFF:
        return Append(pjl, L"@PJL SET ECONOMODE = OFF\n", L"@PJL SET DARKENTEXT = OFF\n");
    default:
        return;
    }
}

void AppendQuality(CXString& pjl, const JobQuestions& job) {
    switch (job.Choice(FEAT_PRINT_QUALITY_LEVEL)) {
    case VAL_QUALITY_ENHANCED:
        return Append(pjl, L"@PJL SET IMAGEQUALITY = 2\n", L"@PJL SET RESOLUTION = 1200\n");
    case VAL_QUALITY_STANDARD:
        return Append(pjl, L"@PJL SET RESOLUTION = 600\n");
    default:
        return;
    }
}

bool IsCollated(tagValueEnum value) { return value == VAL_COLLATION_COLLATED || value == VAL_UNSPECIFIED; }

void AppendJobType(JobAttributeLines& lines, const JobQuestions& job, const CXString& jobName) {
    if (job.Choice(FEAT_JOB_TYPE) == VAL_JOB_TYPE_DELAYED_PRINT)
        lines.AddPrintAfter();
    else
        lines.AddJobType(jobName);
}

/// Deliberate: not the block of the other families: the network system has no account, and lines end
/// otherwise.
void AppendAccounting(CXString& pjl, const JobQuestions& job) {
    const tagValueEnum system = job.Choice({FEAT_JOB_ACCT_COL, FEAT_DEV_INSTALLABLE_JOB_ACCT_SYSTEM_ACTUAL});
    if (system == VAL_UNSPECIFIED || system == VAL_JOB_ACCT_SYSTEM_NONE) return;
    const auto addPair = [&](std::wstring_view name, tagFeatureEnum feature) {
        Append(pjl, L"@PJL COMMENT OID_ATT_ACCOUNTING_INFORMATION_AVP \"", name, L',',
               job.TextOrEmpty(feature), L"\";\n");
    };
    addPair(L"OVL_USERID", FEAT_JOB_ACCT_USER_ID);
    if (system != VAL_JOB_ACCT_SYSTEM_STANDARD) return;
    const tagValueEnum type = job.Choice(FEAT_JOB_ACCT_ACCOUNT_TYPE);
    if (type == VAL_ACCT_GENERAL_ACCOUNT) addPair(L"OVL_GENERALACCT", FEAT_JOB_ACCT_GENERAL_ID);
    if (type == VAL_ACCT_GROUP_ACCOUNT) addPair(L"OVL_GROUPACCT", FEAT_JOB_ACCT_GROUP_ID);
}

/// Deliberate: the blank behind the @ is the device's.
std::wstring_view StapleComment(const JobQuestions& job) {
    std::wstring_view comment;
    for (const tagValueEnum finishing : JobFinishings::Of(job)) {
        if (finishing == VAL_CPSS_FINISHING_6250) return L"";
        if (finishing == VAL_CPSS_FINISHING_6254) comment = L"@ PJL COMMENT OVLSTAPLE=PORTRAIT\n";
        if (finishing == VAL_CPSS_FINISHING_6255) comment = L"@ PJL COMMENT OVLSTAPLE=LANDSCAPE\n";
    }
    return comment;
}

} // namespace

void MerlinInstructions::GeneratePostScript(CXString& pjl, const JobQuestions& job) {
    JobHandlingLines::Append(pjl, job, L"@PJL COMMENT NORMAL PRINT\n");
    AppendTonerSaver(pjl, job);
    AppendQuality(pjl, job);
}

void MerlinInstructions::GeneratePcl6(CXString& pjl, const JobQuestions& job) {
    JobAttributeLines lines(pjl, job);
    const CXString jobName = job.JobName();
    const bool isGray = job.Choice(FEAT_COLOR_EFFECTS) == VAL_COLOR_EFFECTS_GRAYSCALE;

    SparComments::Append(pjl, SparComments::pjl, job);
    Append(pjl, L"@PJL COMMENT OVLbegin\n");
    Append(pjl, L"@PJL COMMENT OID_ATT_JOB_OWNER \"", job.UserName(), L"\"\n");
    Append(pjl, L"@PJL COMMENT OID_ATT_JOB_NAME \"", jobName, L"\"\n");
    Append(pjl, L"@PJL COMMENT OID_ATT_OUTPUT OID_VAL_OUTPUT_",
           IsCollated(job.Choice(FEAT_COLLATION)) ? L"PAGE_COLLATE;\n" : L"NO_PAGE_COLLATE;\n");
    AppendJobType(lines, job, jobName);
    AppendAccounting(pjl, job);
    Append(pjl, isGray ? L"@PJL SET RENDERMODE=GRAYSCALE\n" : L"@PJL SET RENDERMODE=COLOR\n");
    lines.AddTonerSaver();
    CoverLines::Append(pjl, job);
    Append(pjl, StapleComment(job));
    Append(pjl, L"@PJL COMMENT OVLend\n");
}
