#include "SampleTicket.h"

#include <cstdio>
#include <cstdlib>

namespace {

// About 7 KB, as drivers write them: some features with scored properties, a sub-feature, parameters, and
// bytes in Base64.
std::string MakeTicket() {
    const auto property = [](const std::string& name, const std::string& value) {
        return "<psf:ScoredProperty name=\"psk:" + name + "\"><psf:Value xsi:type=\"xsd:integer\">" + value +
               "</psf:Value></psf:ScoredProperty>";
    };
    const auto feature = [](const std::string& name, const std::string& option,
                            const std::string& inside = "") {
        return "<psf:Feature name=\"" + name + "\"><psf:Option name=\"" + option + "\">" + inside +
               "</psf:Option></psf:Feature>";
    };
    std::string ticket =
        "<?xml version=\"1.0\" encoding=\"UTF-8\"?>\n<psf:PrintTicket xmlns:psf=\"" +
        std::string(frameworkUri) +
        "\" xmlns:xsi=\"http://www.w3.org/2001/XMLSchema-instance\" "
        "xmlns:xsd=\"http://www.w3.org/2001/XMLSchema\" version=\"1\" "
        "xmlns:psk=\"http://schemas.microsoft.com/windows/2003/08/printing/printschemakeywords\">";
    ticket += feature("psk:JobInputBin", "psk:AutoSelect");
    ticket += feature("psk:JobDuplexAllDocumentsContiguously", "psk:TwoSidedLongEdge");
    ticket += feature("psk:DocumentCollate", "psk:Collated");
    ticket += feature("psk:JobStapleAllDocuments", "psk:None");
    ticket += "<psf:Feature name=\"psk:JobNUpAllDocumentsContiguously\"><psf:Option>" +
              property("PagesPerSheet", "4") + "</psf:Option>" +
              feature("psk:PresentationDirection", "psk:RightBottom") + "</psf:Feature>";
    ticket += feature("psk:PageOutputColor", "psk:Color",
                      property("DeviceBitsPerPixel", "24") + property("DriverBitsPerPixel", "24"));
    ticket += feature("psk:PageResolution", "psk:High",
                      property("ResolutionX", "600") + property("ResolutionY", "600"));
    ticket += feature("psk:PageMediaType", "psk:Plain", property("Weight", "80"));
    for (int index = 0; index < 16; ++index)
        ticket += feature("psk:PageVendorSetting" + std::to_string(index),
                          "psk:Choice" + std::to_string(index % 3));
    ticket += feature("psk:PageMediaSize", "psk:ISOA4",
                      property("MediaSizeWidth", "210000") + property("MediaSizeHeight", "297000"));
    ticket += feature("psk:PageOrientation", "psk:Portrait");
    ticket +=
        "<psf:ParameterInit name=\"psk:JobCopiesAllDocuments\"><psf:Value xsi:type=\"xsd:integer\">1"
        "</psf:Value></psf:ParameterInit><psf:ParameterInit name=\"psk:PageDevmodeSnapshot\"><psf:Value "
        "xsi:type=\"xsd:string\">";
    while (ticket.size() < std::size_t{7} << 10)
        ticket += "RABlAHYAbQBvAGQAZQAg";
    return ticket + "</psf:Value></psf:ParameterInit></psf:PrintTicket>";
}

} // namespace

const std::string ticketBytes = MakeTicket();

CComPtr<IStream> TicketStream() {
    CComPtr<IStream> stream;
    ULONG written = 0;
    if (FAILED(CreateStreamOnHGlobal(nullptr, TRUE, &stream)) ||
        FAILED(stream->Write(ticketBytes.data(), static_cast<ULONG>(ticketBytes.size()), &written)))
        std::abort();
    return stream;
}

void NumberTicket(IStream* stream, int number) {
    char digits[9];
    std::snprintf(digits, sizeof digits, "%08d", number);
    static const auto place = static_cast<LONGLONG>(ticketBytes.find("RABlAHYAbQBvAGQAZQAg"));
    const LARGE_INTEGER at{.QuadPart = place};
    if (FAILED(stream->Seek(at, STREAM_SEEK_SET, nullptr)) ||
        FAILED(stream->Write(digits, sizeof digits - 1, nullptr)) ||
        FAILED(stream->Seek({}, STREAM_SEEK_SET, nullptr)))
        std::abort();
}

xmlDoc* ParseWithLibxml() {
    return xmlReadMemory(ticketBytes.data(), static_cast<int>(ticketBytes.size()), nullptr, nullptr,
                         XML_PARSE_NONET);
}
