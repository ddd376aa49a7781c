#include "Commands/TicketText.h"

#include "Common/HostError.h"

#include <Xml/MicrosoftXmlParser.h>
#include <Xml/XmlOutputUtf8StringCallback.h>

#include <atlcomcli.h>

namespace OvPipeline {

namespace {

std::string TextOf(IXMLDOMDocument2* document) {
    CComPtr<IStream> stream;
    if (FAILED(document->QueryInterface(&stream))) throw HostError(E_FAIL, {}, "there is no merged ticket");
    LARGE_INTEGER start{};
    stream->Seek(start, STREAM_SEEK_SET, nullptr);
    std::string text;
    char chunk[4096];
    ULONG read = 0;
    while (SUCCEEDED(stream->Read(chunk, sizeof chunk, &read)) && read > 0)
        text.append(chunk, read);
    return text;
}

} // namespace

std::string IndentedTicket(IXMLDOMDocument2* document) {
    const std::string xml = TextOf(document);
    MicrosoftXmlParser parser(L"the merged ticket", true);
    parser.parse(reinterpret_cast<const unsigned char*>(xml.data()), xml.size());
    CPString text;
    XmlOutputUtf8StringCallback output(text, XmlOutputCallback::EnhanceXmlLegibility);
    parser.convertToXmlStream(output, true);
    return std::string(text.view());
}

} // namespace OvPipeline
