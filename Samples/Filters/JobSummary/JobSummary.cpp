// XPS in, bytes out: writes one line for the job, with its names and with what all places of its settings
// together ask for.
#include "FilterModule.h"
#include "WriteAll.h"

#include <FeatureAccess/JobSettings.h>
#include <Filter/XpsInStreamOutFilterBase.h>
#include <LowLevelFacilities/Strings/CPString.h>
#include <Ticket/PrintTicketManager.h>

#include <string>

namespace {

using namespace DataModelIds;

class JobSummary final : public XpsInStreamOutFilterBase {
protected:
    HRESULT OnFixedDocumentSequence(IFixedDocumentSequence* sequence) override {
        const HRESULT merged = GetPTManagerPtr()->MergeAndValidatePartPrintTicket(sequence);
        if (FAILED(merged)) return merged;
        const JobSettings job = JobSettingsOf(kPTJobScope);
        const std::string line = LineOf(job.Features());
        return WriteAll(*m_streamWriter, line.data(), static_cast<ULONG>(line.size()));
    }

private:
    static std::string LineOf(const DataModelLessFeatureAccess& features) {
        int copies = 0; // what is left for a queue that makes none
        features.GetIntegerValue(FEAT_COPIES, copies);
        const bool isBooklet = features.GetOptionValue(FEAT_BOOKLET).GetValue() == VAL_BOOKLET_ON;
        return Utf8(features.GetPrintJobDocumentName()) + " of " + Utf8(features.GetPrintJobUserName()) +
               ", copies: " + std::to_string(copies) + ", booklet: " + (isBooklet ? "yes" : "no") + "\n";
    }
    static std::string Utf8(const CXString& text) { return std::string(CPString(text).view()); }
};

} // namespace

FILTER_MODULE(JobSummary, {0x3c5d2b81, 0x7e4a, 0x49d6, {0x8f, 0x10, 0x62, 0xb4, 0xd9, 0x3e, 0x75, 0xa8}})
