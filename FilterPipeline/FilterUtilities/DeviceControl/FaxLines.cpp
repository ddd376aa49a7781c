#include "DeviceControl/FaxLines.h"

#include "DeviceControl/CommandRow.h"
#include "DeviceControl/InstructionText.h"
#include "DeviceControl/JobAttributeLines.h"
#include "DeviceControl/JobQuestions.h"

using namespace DataModelIds;
using InstructionText::Append;

namespace {

constexpr ValueText resolutions[] = {
    {VAL_FAX_RESOLUTION_STANDARD, L"@PJL COMMENT OID_ATT_FAX_RESOLUTION 0\r\n"},
    {VAL_FAX_RESOLUTION_FINE, L"@PJL COMMENT OID_ATT_FAX_RESOLUTION 1\r\n"},
    {VAL_FAX_RESOLUTION_SUPER_FINE, L"@PJL COMMENT OID_ATT_FAX_RESOLUTION 2\r\n"},
};

constexpr ValueText types[] = {
    {VAL_FAX_TYPE_G3_FORCED_4800, L"@PJL COMMENT OID_ATT_FAX_TYPE OID_VAL_FAX_TYPE_G3_FORCED_4800\r\n"},
    {VAL_FAX_TYPE_G3_14400, L"@PJL COMMENT OID_ATT_FAX_TYPE OID_VAL_FAX_TYPE_G3_14400\r\n"},
    {VAL_FAX_TYPE_G3_AUTO, L"@PJL COMMENT OID_ATT_FAX_TYPE OID_VAL_FAX_TYPE_G3_AUTO\r\n"},
};

constexpr ValueText confirmations[] = {
    {VAL_FAX_CONFIRMATION_OFF, L"@PJL COMMENT OID_ATT_FAX_CONFIRMATION_SHEET FALSE\r\n"},
    {VAL_FAX_CONFIRMATION_ON, L"@PJL COMMENT OID_ATT_FAX_CONFIRMATION_SHEET TRUE\r\n"},
};

FeaturePath InRecipient(unsigned int index, tagFeatureEnum feature) {
    return FeaturePath(FEAT_FAX_OUT_COL, FEAT_FAX_RECIPIENT_COL, feature).At(index);
}

void AppendRecipients(CXString& pjl, const JobQuestions& job) {
    CXString prefix = job.TextOrEmpty({FEAT_FAX_OUT_COL, FEAT_FAX_DIAL_PREFIX});
    if (prefix.IsBlank())
        prefix.Empty();
    else
        prefix += L',';
    for (unsigned int index = 0; index < FaxLines::mostRecipients; ++index) {
        const std::optional<CXString> phone = job.Text(InRecipient(index, FEAT_FAX_RECIPIENT_PHONE));
        if (!phone) return;
        Append(pjl, L"@PJL COMMENT OID_ATT_FAX_DESTINATION_PHONE \"", prefix, *phone, L"\";\r\n");
        if (const auto mailbox = job.Integer(InRecipient(index, FEAT_FAX_RECIPIENT_MAILBOX)))
            Append(pjl, L"@PJL COMMENT OID_ATT_FAX_MAILBOX \"", InstructionText::Decimal(*mailbox),
                   L"\";\r\n");
    }
}

} // namespace

void FaxLines::Append(CXString& pjl, const JobQuestions& job) {
    using InstructionText::Append;
    const auto addRow = [&](const auto& rows, tagFeatureEnum feature) {
        Append(pjl, TextOf(rows, job.Choice({FEAT_FAX_OUT_COL, feature})));
    };
    Append(pjl, L"@PJL COMMENT OID_ATT_JOB_TYPE OID_VAL_JOB_TYPE_FAX_SEND;\n");
    AppendRecipients(pjl, job);
    // Deliberate: the device reads this number as it is.
    if (const auto card = job.Password({FEAT_FAX_OUT_COL, FEAT_FAX_BILLING_COL, FEAT_FAX_CREDIT_CARD}))
        Append(pjl, L"@PJL COMMENT OID_ATT_CREDIT_CARD \"", *card, L"\";\r\n");
    addRow(resolutions, FEAT_FAX_RESOLUTION);
    addRow(types, FEAT_FAX_TYPE);
    if (job.Choice({FEAT_FAX_OUT_COL, FEAT_FAX_SEND_TIME_MODE}) == VAL_FAX_SEND_AT_TIME)
        JobAttributeLines(pjl, job).AddTime(L"OID_ATT_JOB_FAX_AFTER",
                                            {FEAT_FAX_OUT_COL, FEAT_JOB_PRINT_AFTER});
    addRow(confirmations, FEAT_FAX_CONFIRMATION);
}
