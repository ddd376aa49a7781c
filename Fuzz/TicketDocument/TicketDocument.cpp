// Any bytes as a Print Ticket: they load or are refused, and what loads can be asked, edited and copied. A
// private name that was written is there for whoever reads the text next.

#include <LowLevelFacilities/Failures/CPException.h>
#include <PrintSchema/DomDocumentCache.h>
#include <PrintSchema/PrintTicketXmlDocument.h>

#include <cstddef>
#include <cstdint>
#include <cstdlib>

namespace {

// Each step may be refused by an exception of the library's family; any other ends the run.
template <typename Step>
void Try(const Step& step) {
    try {
        step();
    } catch (const CPException&) {
    }
}

// Whether the attribute bytes were written.
bool AskAndEdit(PrintTicketXmlDocument& ticket) {
    using namespace PrintSchema;
    const CComBSTR psk = ticket.GetKeywordsNsPrefix();
    const CComBSTR user = ticket.GetUserKeywordsNsPrefix();
    CComBSTR text;
    CXString value;
    int number = 0;
    float real = 0;
    ByteBuffer bytes;
    const auto fresh = [&text] {
        text.Empty();
        return &text;
    };
    Try([&] { ticket.GetFeatureOption(psk, L"PageMediaSize", fresh(), nullptr); });
    Try([&] { ticket.GetSubFeatureOption(L"DocumentNUp", true, L"PresentationDirection", true, fresh()); });
    Try([&] { ticket.GetScoredPropertyValue(L"PageMediaSize", true, L"MediaSizeWidth", &number); });
    Try([&] { ticket.GetScoredPropertyValue(L"PageScaling", true, L"Scale", &real); });
    Try([&] { ticket.GetStringParameterInitValue(psk, L"JobCopiesAllDocuments", value); });
    Try([&] { ticket.GetOrvelCompleteDocSettingsFromPrintTicket(bytes); });
    Try([&] { ticket.SetFeatureOption(L"PageMediaSize", true, L"ISOA5", true); });
    Try([&] { ticket.SetScoredPropertyValue(L"PageMediaSize", true, L"MediaSizeWidth", 5); });
    Try([&] { ticket.DeleteFeatureNodeIfADuplicateExists(psk, L"PageMediaSize"); });
    Try([&] { ticket.DeletePropertyNodesIfExist(user, L"P"); });
    Try([&] { ticket.DeletePrivateFeatures(USER_KEYWORDS_URI); });
    Try([&] { ticket.AddUserKeywordsNamespaceDefinitionIfMissing(); });
    Try([&] { ticket.SetProcessingInstructionsEncodingUtf8(); });
    Try([&] { ticket.AddOrReplaceOcptParameterInit(L"<ocpt/>"); });
    Try([&] { ticket.AppendChildIntegerScoredProperty(ticket.GetRootNode(), L"A", 1); });
    bool isWritten = false;
    Try([&] {
        isWritten = ticket.AddOrReplacePageOrvelCompleteDocSettingsInPrintTicket(ByteBuffer(20)) == S_OK;
    });
    return isWritten;
}

void RequireBytesIn(const PrintTicketXmlDocument& ticket) {
    CComBSTR text;
    CComPtr<IXMLDOMDocument2> document;
    VARIANT_BOOL isLoaded = VARIANT_FALSE;
    if (ticket.get_xml(&text) != S_OK || FAILED(document.CoCreateInstance(__uuidof(DOMDocument60))) ||
        FAILED(document->loadXML(text, &isLoaded)) || isLoaded != VARIANT_TRUE)
        return;
    ByteBuffer bytes;
    bool isFound = false;
    Try([&] {
        const PrintTicketXmlDocument fresh(document.p);
        isFound = fresh.GetOrvelCompleteDocSettingsFromPrintTicket(bytes) == S_OK;
    });
    if (!isFound) std::abort();
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    CComPtr<IStream> stream;
    ULONG written = 0;
    if (FAILED(CreateStreamOnHGlobal(nullptr, TRUE, &stream)) ||
        FAILED(stream->Write(data, static_cast<ULONG>(size), &written)))
        std::abort();
    Try([&] {
        PrintTicketXmlDocument ticket(stream.p);
        if (AskAndEdit(ticket)) RequireBytesIn(ticket);
        CComPtr<IXMLDOMDocument2> copy;
        if (SUCCEEDED(CreateCopyOfIXMLDOMDocument(ticket.GetDomDocPtr(), &copy)))
            PrintTicketXmlDocument again(copy.p);
    });
    return 0;
}
