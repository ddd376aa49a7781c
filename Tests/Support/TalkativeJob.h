#pragma once

#include "Support/TableFeatureAccess.h"

/// A job that answers every text, number, flag, password and time that instructions are made of. What it
/// chooses is left to the test.
inline TableFeatureAccess TalkativeJob() {
    using namespace DataModelIds;
    TableFeatureAccess job;
    const auto saved = [](tagFeatureEnum feature) {
        return FeaturePath(FEAT_SAVE_COL, FEAT_SAVE_INFO_COL, feature);
    };
    const auto recipient = [](unsigned int index, tagFeatureEnum feature) {
        return FeaturePath(FEAT_FAX_OUT_COL, FEAT_FAX_RECIPIENT_COL, feature).At(index);
    };
    for (const tagFeatureEnum name :
         {FEAT_JOB_NAME, FEAT_CREATOR_VERSION_ATTRIBUTES, FEAT_CREATOR_NAME_PDL, FEAT_CREATOR_VERSION_PDL,
          FEAT_JOB_ACCT_USER_ID, FEAT_JOB_ACCT_ACCOUNT_ID, FEAT_JOB_ACCT_GENERAL_ID, FEAT_JOB_ACCT_GROUP_ID,
          FEAT_DEV_ACCT_USER_ID, FEAT_DEV_ACCT_ACCOUNT_ID})
        job.Set(name, (L"Stra\u00DFe " + std::to_wstring(name)).c_str());
    for (const tagFeatureEnum number :
         {FEAT_LIGHTNESS, FEAT_CONTRAST, FEAT_SATURATION, FEAT_COLORBALANCE_CYAN_RED,
          FEAT_COLORBALANCE_MAGENTA_GREEN, FEAT_COLORBALANCE_YELLOW_BLUE, FEAT_TONER_DENSITY, FEAT_COPIES})
        job.Set(number, -3);
    std::tm soon = UtcTime().GetTimeInUtc(); // so that a test does not run over it
    ++soon.tm_hour;
    job.Set(saved(FEAT_SAVE_NAME), L"name")
        .Set(saved(FEAT_SAVE_LOCATION), L"folder")
        .SetPassword(saved(FEAT_SAVE_PASSWORD), "1234")
        .SetPassword(FEAT_JOB_PASSWORD, "1234")
        .SetPassword({FEAT_FAX_OUT_COL, FEAT_FAX_BILLING_COL, FEAT_FAX_CREDIT_CARD}, "4711")
        .Set({FEAT_FAX_OUT_COL, FEAT_FAX_DIAL_PREFIX}, L"9")
        .Set(recipient(0, FEAT_FAX_RECIPIENT_PHONE), L"0123")
        .Set(recipient(1, FEAT_FAX_RECIPIENT_PHONE), L"0456")
        .Set(recipient(1, FEAT_FAX_RECIPIENT_MAILBOX), 3)
        .SetTime(FEAT_JOB_PRINT_AFTER, UtcTime(soon))
        .SetTime({FEAT_FAX_OUT_COL, FEAT_JOB_PRINT_AFTER}, UtcTime(soon));
    job.outputSize = {{Dimension(210, Dimension::Millimeter), Dimension(297, Dimension::Millimeter)}};
    return job;
}
