#include "DeviceControl/SparComments.h"

#include "DeviceControl/InstructionText.h"
#include "DeviceControl/JobQuestions.h"

using namespace DataModelIds;

void SparComments::Append(CXString& text, std::wstring_view prefix, const JobQuestions& job) {
    if (const CXString version = job.TextOrEmpty(FEAT_CREATOR_VERSION_ATTRIBUTES); !version.IsEmpty())
        InstructionText::Append(text, prefix, L"OrvelVersion: ", version, L'\n');
    CXString application = job.TextOrEmpty(FEAT_CREATOR_NAME_PDL);
    if (application.IsEmpty()) return;
    if (const CXString version = job.TextOrEmpty(FEAT_CREATOR_VERSION_PDL); !version.IsEmpty())
        InstructionText::Append(application, L' ', version);
    InstructionText::Append(text, prefix, L"OvlPrintingApp: ", application, L'\n');
}
