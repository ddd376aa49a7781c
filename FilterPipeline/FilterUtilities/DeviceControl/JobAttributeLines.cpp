#include "DeviceControl/JobAttributeLines.h"

#include "DeviceControl/InstructionText.h"
#include "DeviceControl/JobQuestions.h"

#include <utf16units.h>

using namespace DataModelIds;
using InstructionText::Append;

namespace {

constexpr int longestSaveName = 40;

FeaturePath InSaveInfo(tagFeatureEnum feature) { return {FEAT_SAVE_COL, FEAT_SAVE_INFO_COL, feature}; }

CXString Shortened(const CXString& name) {
    if (name.GetLength() <= longestSaveName) return name;
    const bool splitsPair = OvPlatform::Utf16::IsHighSurrogate(name.View()[longestSaveName - 1]);
    return name.Left(splitsPair ? longestSaveName - 1 : longestSaveName);
}

} // namespace

void JobAttributeLines::AddJobType(const CXString& jobName) {
    switch (m_job.Choice(FEAT_JOB_TYPE)) {
    case VAL_UNSPECIFIED:
    case VAL_JOB_TYPE_NORMAL_PRINT:
        return Append(m_pjl, L"@PJL COMMENT OID_ATT_JOB_TYPE OID_VAL_JOB_TYPE_PRINT;\n");
    case VAL_JOB_TYPE_SECURE_PRINT:
        return AddSecureJob();
    case VAL_JOB_TYPE_PROOF_PRINT:
    case VAL_JOB_TYPE_PROOF_PRINT_WITH_JOB_NAME:
        return Append(m_pjl, L"@PJL COMMENT OID_ATT_JOB_TYPE OID_VAL_JOB_TYPE_PROOF_PRINT;\n");
    case VAL_JOB_TYPE_SAVED_PRINT:
        return AddSavedJob(jobName);
    default:
        return;
    }
}

void JobAttributeLines::AddSecureJob() { AddSecureJob(m_job.ScrambledPassword(FEAT_JOB_PASSWORD)); }

void JobAttributeLines::AddSecureJob(const CXString& password) {
    Append(m_pjl, L"@PJL COMMENT OID_ATT_JOB_TYPE OID_VAL_JOB_TYPE_SECURE_PRINT;\n");
    Append(m_pjl, L"@PJL COMMENT OID_ATT_JOB_PASSWORD \"", password, L"\";\r\n");
}

void JobAttributeLines::AddSavedJob(const CXString& jobName) {
    switch (m_job.Choice({FEAT_SAVE_COL, FEAT_SAVE_DISPOSITION})) {
    case VAL_SAVE_DISPOSITION_SAVE_ONLY:
        Append(m_pjl, L"@PJL COMMENT OID_ATT_SAVE_DISPOSITION OID_VAL_SAVE_DISPOSITION_SAVE_ONLY;\n");
        break;
    case VAL_SAVE_DISPOSITION_PRINT_SAVE:
        Append(m_pjl, L"@PJL COMMENT OID_ATT_SAVE_DISPOSITION OID_VAL_SAVE_DISPOSITION_PRINT_SAVE;\n");
        break;
    default:
        break;
    }
    if (const FeaturePath location = InSaveInfo(FEAT_SAVE_LOCATION);
        m_job.Choice(location) != VAL_UNSPECIFIED)
        Append(m_pjl, L"@PJL COMMENT OID_ATT_SAVE_LOCATION \"", m_job.TextOrEmpty(location), L"\";\n");
    const CXString name = m_job.TextOrEmpty(InSaveInfo(FEAT_SAVE_NAME));
    Append(m_pjl, L"@PJL COMMENT OID_ATT_SAVE_NAME \"", Shortened(name.IsEmpty() ? jobName : name), L"\";\n");
    if (m_job.Choice(InSaveInfo(FEAT_SAVE_ACCESS)) == VAL_SAVE_ACCESS_PRIVATE)
        AddSecureJob(m_job.ScrambledPassword(InSaveInfo(FEAT_SAVE_PASSWORD)));
}

void JobAttributeLines::AddPrintAfter() { AddTime(L"OID_ATT_JOB_PRINT_AFTER", FEAT_JOB_PRINT_AFTER); }

void JobAttributeLines::AddTime(std::wstring_view attribute, const FeaturePath& path) {
    std::optional<UtcTime> time = m_job.Time(path);
    if (!time) return;
    time->EnsureTimeIsWithinOneDayAfterCurrentTime();
    const std::tm local = time->GetTimeInCurrentTimeZone();
    CXString digits;
    digits.Format(L"%04d%02d%02d%02d%02d%02d", local.tm_year + 1900, local.tm_mon + 1, local.tm_mday,
                  local.tm_hour, local.tm_min, local.tm_sec);
    Append(m_pjl, L"@PJL COMMENT ", attribute, L" \"", digits, L"\";\n");
}

void JobAttributeLines::AddStartSheet() {
    if (m_job.Flag(FEAT_START_SHEET_FROM_APPLICATION))
        return Append(m_pjl, L"@PJL COMMENT OID_ATT_START_SHEET OID_VAL_JOB_SHEET_USER;\n");
    switch (m_job.Choice(FEAT_JOB_IDENTIFICATION)) {
    case VAL_UNSPECIFIED:
        return;
    case VAL_PRINT_ID_ON_BANNER_SHEET:
    case VAL_PRINT_ID_CUSTOM_BANNER_SHEET:
        return Append(m_pjl, L"@PJL COMMENT OID_ATT_START_SHEET OID_VAL_JOB_SHEET_FULL;\n");
    default:
        return Append(m_pjl, L"@PJL COMMENT OID_ATT_START_SHEET OID_VAL_JOB_SHEET_NONE;\n");
    }
}

void JobAttributeLines::AddAccounting() {
    const std::optional<CXString> user = m_job.Text(FEAT_JOB_ACCT_USER_ID);
    const CXString account = m_job.TextOrEmpty(FEAT_JOB_ACCT_ACCOUNT_ID);
    AddAccounting({.hasUser = user.has_value(),
                   .user = user.value_or(CXString()),
                   .account = account,
                   .general = account,
                   .group = account,
                   .type = m_job.Choice(FEAT_JOB_ACCT_ACCOUNT_TYPE)});
}

void JobAttributeLines::AddAccounting(const Account& account) {
    if (!account.hasUser &&
        m_job.Choice({FEAT_JOB_ACCT_COL, FEAT_JOB_ACCT_PROMPT_MODE}) == VAL_ACCT_PROMPT_AT_DEVICE)
        return;
    const tagValueEnum system =
        m_job.Choice({FEAT_JOB_ACCT_COL, FEAT_DEV_INSTALLABLE_JOB_ACCT_SYSTEM_ACTUAL});
    const bool isNetwork = system == VAL_JOB_ACCT_SYSTEM_NETWORK;
    if (!isNetwork && system != VAL_JOB_ACCT_SYSTEM_STANDARD) return;
    const auto addPair = [&](std::wstring_view name, const CXString& value) {
        Append(m_pjl, L"@PJL COMMENT OID_ATT_ACCOUNTING_INFORMATION_AVP \"", name, L',', value, L"\";\r\n");
    };
    addPair(L"OVL_USERID", account.user);
    if (isNetwork)
        addPair(L"OVL_ACCTID", account.account);
    else if (account.type == VAL_ACCT_GENERAL_ACCOUNT)
        addPair(L"OVL_GENERALACCT", account.general);
    else if (account.type == VAL_ACCT_GROUP_ACCOUNT)
        addPair(L"OVL_GROUPACCT", account.group);
}

void JobAttributeLines::AddContentOrientation(bool isPortrait, std::wstring_view lineEnd) {
    Append(m_pjl, L"@PJL COMMENT OID_ATT_CONTENT_ORIENTATION OID_VAL_CONTENT_ORIENTATION_",
           isPortrait ? L"PORTRAIT;" : L"LANDSCAPE;", lineEnd);
}

void JobAttributeLines::AddTonerSaver() {
    switch (m_job.Choice(FEAT_TONER_SAVER)) {
    case VAL_TONER_SAVER_ON:
        return Append(m_pjl, L"@PJL SET ECONOMODE = ON\n");
    case VAL_TONER_SAVER_OFF:
        return Append(m_pjl, L"@PJL SET ECONOMODE = OFF\n");
    default:
        return;
    }
}
