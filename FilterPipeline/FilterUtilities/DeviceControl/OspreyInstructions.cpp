#include "DeviceControl/OspreyInstructions.h"

#include "DeviceControl/CommandRow.h"
#include "DeviceControl/FaxLines.h"
#include "DeviceControl/FinishingSnippets.h"
#include "DeviceControl/HeldJobPasscode.h"
#include "DeviceControl/InstructionText.h"
#include "DeviceControl/JobAttributeLines.h"
#include "DeviceControl/JobQuestions.h"

using namespace DataModelIds;
using InstructionText::Append;
using InstructionText::AppendSnippet;

namespace {

constexpr CommandRow jobOffsets[] = {
    {VAL_JOB_OFFSET_NONE, L"none", L"<< /Jog 0 >> setpagedevice"},
    {VAL_JOB_OFFSET_SET, L"offset-set", L"<< /Jog 3 >> setpagedevice"},
};

// Deliberate: the blanks in "/ HWResolution", "(<< )" and "(>> )" are the device's.
#define OV_RESOLUTION(dpi)                                                                                   \
    L"(<<) cvx exec /DeviceRenderingInfo (<<) cvx exec /Type 4 /ValuesPerColorComponent 2 (>>) cvx exec "    \
    L"(>>) cvx exec setpagedevice(<< ) cvx exec / HWResolution[" dpi                                         \
    " " dpi L"](>> ) cvx exec setpagedevice"
constexpr CommandRow resolutions[] = {
    {VAL_RESOLUTION_600, L"DPI_600_X_600", OV_RESOLUTION(L"600")},
    {VAL_RESOLUTION_1200, L"DPI_1200_X_1200", OV_RESOLUTION(L"1200")},
    {VAL_RESOLUTION_1800, L"DPI_1800_X_1800", OV_RESOLUTION(L"1800")},
};
#undef OV_RESOLUTION

void AppendRow(CXString& setup, const CommandRow* row, std::wstring_view feature) {
    if (row != nullptr) AppendSnippet(setup, feature, row->option, row->command);
}

bool IsHeld(const JobQuestions& job) {
    return job.IsInTicket("hold-for-authentication") &&
           job.Choice(FEAT_HOLD_FOR_AUTHENTICATION) == VAL_HOLD_FOR_AUTHENTICATION_USER_ID;
}

void AppendJobType(JobAttributeLines& lines, const JobQuestions& job, const CXString& jobName) {
    switch (job.Choice(FEAT_JOB_TYPE)) {
    case VAL_JOB_TYPE_DELAYED_PRINT:
        return lines.AddPrintAfter();
    case VAL_JOB_TYPE_SECURE_PRINT: {
        const CXString password = job.ScrambledPassword(FEAT_JOB_PASSWORD);
        return lines.AddSecureJob(IsHeld(job) ? HeldJobPasscode::Make() : password);
    }
    default:
        return lines.AddJobType(jobName);
    }
}

void AppendDeviceLines(CXString& pjl, JobAttributeLines& lines, const JobQuestions& job) {
    lines.AddTonerSaver();
    // The feature's scale runs the other way from the device's.
    if (const std::optional<int> density = job.Integer(FEAT_TONER_DENSITY))
        Append(pjl, L"@PJL SET DENSITY=", InstructionText::Decimal(4LL - *density), L'\n');
    if (const tagValueEnum face = job.Choice(FEAT_OUTPUT_FACE); face != VAL_UNSPECIFIED)
        Append(pjl, L"@PJL COMMENT OID_ATT_OUTPUT_FACE_UP ",
               face == VAL_OUTPUT_FACE_UP ? L"TRUE;\n" : L"FALSE;\n");
    switch (job.Choice(FEAT_JOB_OFFSET_API)) {
    case VAL_JOB_OFFSET_NONE:
        return Append(pjl, L"@PJL SET JOBOFFSET = OFF\n");
    case VAL_JOB_OFFSET_SET:
        return Append(pjl, L"@PJL SET JOBOFFSET = ON\n");
    default:
        return;
    }
}

/// What the job does not say of its account, the device's own settings say.
JobAttributeLines::Account AccountOf(const JobQuestions& job) {
    const std::optional<CXString> user = job.Text(FEAT_JOB_ACCT_USER_ID);
    const std::optional<CXString> account = job.Text(FEAT_JOB_ACCT_ACCOUNT_ID);
    const tagValueEnum type = job.Choice(FEAT_JOB_ACCT_ACCOUNT_TYPE);
    return {.hasUser = user.has_value(),
            .user = user ? *user : job.TextOrEmpty(FEAT_DEV_ACCT_USER_ID),
            .account = account ? *account : job.TextOrEmpty(FEAT_DEV_ACCT_ACCOUNT_ID),
            .general = job.TextOrEmpty(FEAT_JOB_ACCT_GENERAL_ID),
            .group = job.TextOrEmpty(FEAT_JOB_ACCT_GROUP_ID),
            .type = type != VAL_UNSPECIFIED ? type : job.Choice(FEAT_DEV_ACCT_ACCOUNT_TYPE)};
}

} // namespace

void OspreyInstructions::Generate(CXString& pjl, CXString& setup, const JobQuestions& job) {
    JobAttributeLines lines(pjl, job);
    const CXString jobName = job.JobName();
    const bool isPortrait = job.IsPortrait();

    Append(pjl, L"@PJL COMMENT OVLbegin\n");
    Append(pjl, L"@PJL COMMENT OID_ATT_JOB_OWNER \"", job.UserName(), L"\";\n");
    Append(pjl, L"@PJL COMMENT OID_ATT_JOB_OWNER_DOMAIN \"", job.UserDomainName(), L"\";\n");
    Append(pjl, L"@PJL COMMENT OID_ATT_JOB_NAME \"", jobName, L"\";\n");
    if (job.IsCollectionSpecified(FEAT_FAX_OUT_COL)) {
        FaxLines::Append(pjl, job);
    } else {
        AppendJobType(lines, job, jobName);
        AppendDeviceLines(pjl, lines, job);
    }
    lines.AddStartSheet();
    lines.AddAccounting(AccountOf(job));
    lines.AddContentOrientation(isPortrait, L"\r\n");
    Append(pjl, L"@PJL COMMENT OVLend\n");

    FinishingSnippets::Append(setup, job, isPortrait);
    AppendRow(setup, FindRow(jobOffsets, job.Choice(FEAT_JOB_OFFSET_API)), L"job-offset");
    AppendRow(setup, FindRow(resolutions, job.Choice(FEAT_PRINT_RESOLUTION)), L"Resolution");
}
