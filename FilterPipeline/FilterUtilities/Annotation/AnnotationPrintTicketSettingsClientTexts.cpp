// The texts of time stamps that travel with a job, since they read as in the client's zone and locale.

#include "Annotation/AnnotationPrintTicketSettings.h"
#include "ComSupport/FailureBarrier.h"

#include <ClientJobData/ClientJobData2ReaderWriter.h>

#include <optional>
#include <string_view>

using namespace DataModelIds;

using This = AnnotationPrintTicketSettings;

namespace {

constexpr LONG textsOfJob = 205;
constexpr LONG textsOfCoverSheet = 207;

bool ShowsTime(const AnnotationElementSettings& element) {
    return element.type == VAL_ANNOTATION_TYPE_TIME_STAMP || element.isJobId;
}

/// Nothing but the digits of a number; anything else may stand in what came with the job.
std::optional<std::size_t> ParseIndex(std::wstring_view text) {
    constexpr std::size_t maxDigits = 9;
    if (text.empty() || text.size() > maxDigits) return std::nullopt;
    std::size_t index = 0;
    for (const wchar_t digit : text) {
        if (digit < L'0' || digit > L'9') return std::nullopt;
        index = index * 10 + static_cast<std::size_t>(digit - L'0');
    }
    return index;
}

} // namespace

HRESULT This::SetClientGeneratedTimestampTextInClientJobData2(ClientJobData2ReaderWriter* clientData) {
    const OperationScope operation(
        "AnnotationPrintTicketSettings::SetClientGeneratedTimestampTextInClientJobData2");
    if (clientData == nullptr) return E_FAIL;
    HRESULT hr = S_OK;
    try {
        CXString texts;
        for (std::size_t index = 0; index < m_elements.size(); ++index) {
            const AnnotationElementSettings& element = *m_elements[index];
            if (!ShowsTime(element)) continue;
            CXString entry;
            entry.Format(L"%u:%s;", index, element.text.Base64EncodeUnicodeString());
            texts += entry;
        }
        clientData->AddOrReplaceInParameterList(m_isFax ? textsOfCoverSheet : textsOfJob, texts);
    }
    CATCH_VARIOUS(hr)
    return hr;
}

HRESULT This::ReadClientGeneratedTimestampTextFromClientJobData2(ClientJobData2ReaderWriter* clientData) {
    const OperationScope operation(
        "AnnotationPrintTicketSettings::ReadClientGeneratedTimestampTextFromClientJobData2");
    if (clientData == nullptr) return E_FAIL;
    HRESULT hr = S_OK;
    try {
        CXString texts;
        if (!clientData->GetStringFromParameterList(m_isFax ? textsOfCoverSheet : textsOfJob, texts))
            return S_FALSE;
        for (const CXString& entry : texts.Tokenize(L';'))
            ReadClientText_throws(entry);
    }
    CATCH_VARIOUS(hr)
    return hr;
}

void This::ReadClientText_throws(const CXString& entry) {
    const int colon = entry.Find(L':');
    if (colon < 0) return;
    const std::optional<std::size_t> index = ParseIndex(entry.Left(colon).View());
    if (!index || *index >= m_elements.size() || !ShowsTime(*m_elements[*index])) return;
    const CXString encoded = entry.Mid(colon + 1);
    const CXString text = encoded.Base64DecodeAsUnicodeString();
    // What is no Base64 is no text either, and the one that is there stays.
    if (text.IsEmpty() && !encoded.IsEmpty()) return;
    m_elements[*index]->text = text;
}
