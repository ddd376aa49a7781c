// Any bytes as a stored device mode, and as the record that a program hands over. Whatever comes of it is a
// whole reader or an empty one, and the same when it is asked again; nothing behind the bytes is read.

#include <AttributeStore/AttributeBytesIndexedList.h>
#include <AttributeStore/IAttributeBytesDebugDisplayHelper.h>
#include <LowLevelFacilities/Failures/CPException.h>
#include <PrintTime/V4DevmodeReader.h>
#include <Spooler/DevmodeLayout.h>
#include <Spooler/QueueFolder.h>
#include <Spooler/QueueRegistry.h>

#include <algorithm>
#include <cstdint>
#include <cstdlib>
#include <cstring>
#include <memory>
#include <vector>

namespace {

class Numbers : public IAttributeBytesDebugDisplayHelper {
public:
    [[nodiscard]] std::unique_ptr<IAttributeBytesDebugDisplayHelper> Clone() const override {
        return std::make_unique<Numbers>();
    }
};

constexpr char declarations[] =
    R"( xmlns:psf="http://schemas.microsoft.com/windows/2003/08/printing/printschemaframework")"
    R"( xmlns:psk="http://schemas.microsoft.com/windows/2003/08/printing/printschemakeywords")"
    R"( xmlns:xsi="http://www.w3.org/2001/XMLSchema-instance" xmlns:xsd="http://www.w3.org/2001/XMLSchema")"
    R"( xmlns:d="urn:driver" version="1">)";

std::string Definition(const char* name, const char* type, const char* limits) {
    return std::string("<psf:ParameterDef name='") + name +
           "'><psf:Property name='psf:DataType'><psf:Value xsi:type='xsd:QName'>xsd:" + type +
           "</psf:Value></psf:Property><psf:Property name='psf:Mandatory'><psf:Value xsi:type='xsd:QName'>"
           "psk:Optional</psf:Value></psf:Property>" +
           limits + "</psf:ParameterDef>";
}

std::string Offer(const char* name, const std::string& options) {
    return std::string("<psf:Feature name='psk:") + name +
           "'><psf:Property name='psf:SelectionType'><psf:Value xsi:type='xsd:QName'>psk:PickOne</psf:Value>"
           "</psf:Property>" +
           options + "</psf:Feature>";
}

std::string Paper(const char* name, const char* shownName, int width, int height) {
    const auto length = [](const char* property, int microns) {
        return std::string("<psf:ScoredProperty name='psk:") + property +
               "'><psf:Value xsi:type='xsd:integer'>" + std::to_string(microns) +
               "</psf:Value></psf:ScoredProperty>";
    };
    return std::string("<psf:Option name='psk:") + name +
           "'><psf:Property name='psk:DisplayName'><psf:Value xsi:type='xsd:string'>" + shownName +
           "</psf:Value></psf:Property>" + length("MediaSizeWidth", width) +
           length("MediaSizeHeight", height) + "</psf:Option>";
}

// Offers little, so that a run is short, and a place for the driver's bytes.
const CXString& Printer() {
    static const CXString name = [] {
        OvPlatform::QueueDescription queue;
        queue.printerName = L"Mono Office";
        queue.portName = L"FILE:";
        queue.driverName = L"Office Mono V4";
        queue.defaultTicket = std::string("<psf:PrintTicket") + declarations + "</psf:PrintTicket>";
        queue.capabilities =
            std::string("<psf:PrintCapabilities") + declarations +
            Definition("psk:JobCopiesAllDocuments", "integer",
                       "<psf:Property name='psf:MaxValue'><psf:Value xsi:type='xsd:integer'>999</psf:Value>"
                       "</psf:Property>") +
            Definition("d:PageDevmodeSnapshot", "string", "") +
            Offer("PageOrientation", "<psf:Option name='psk:Portrait'/><psf:Option name='psk:Landscape'/>") +
            Offer("PageMediaSize",
                  Paper("ISOA4", "A4", 210'000, 297'000) + Paper("ISOA5", "A5", 148'000, 210'000)) +
            "</psf:PrintCapabilities>";
        OvPlatform::QueueRegistry::Add(std::make_shared<OvPlatform::QueueFolder>(std::move(queue)));
        return CXString(L"Mono Office");
    }();
    return name;
}

std::string TicketOf(const V4DevmodeReader& reader) {
    CComBSTR xml;
    if (FAILED(reader.GetConstPtrToPrintTicket()->get_xml(&xml))) std::abort();
    return {reinterpret_cast<const char*>(xml.m_str), xml.Length() * sizeof(wchar_t)};
}

void Check(std::vector<std::uint8_t>& record) {
    auto* const devmode = reinterpret_cast<DEVMODEW*>(record.data());
    V4DevmodeReader reader(Printer(), devmode, Numbers());
    if (!reader.IsInitialized()) {
        if (reader.GetConstPtrToDevmode() != nullptr || reader.GetConstPtrToPrintTicket() != nullptr)
            std::abort();
        return;
    }
    if (V4DevmodeReader::GetDevmodeSize(devmode) > record.size() ||
        std::memcmp(reader.GetConstPtrToDevmode(), devmode, V4DevmodeReader::GetDevmodeSize(devmode)) != 0)
        std::abort();
    static_cast<void>(reader.GetConstPtrToAttributeBytesReaderWriter()->IsAttributeBytesListEmpty());
    const std::string first = TicketOf(reader);
    if (!reader.Init(Printer(), devmode, Numbers()) || TicketOf(reader) != first) std::abort();
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    std::vector<std::uint8_t> record = OvPlatform::LoadDevmode({data, data + size});
    if (!record.empty()) Check(record);

    // As a record whose sizes are those of its bytes, which is all that a caller vouches for.
    constexpr std::size_t head = offsetof(DEVMODEW, dmFields);
    if (size < head || size > 0xFFFF) return 0;
    record.assign(data, data + size);
    DEVMODEW sizes{};
    std::memcpy(&sizes, data, head);
    const std::size_t own = (std::min)(std::size_t{sizes.dmDriverExtra}, size - 1);
    sizes.dmDriverExtra = static_cast<WORD>(own);
    sizes.dmSize = static_cast<WORD>(size - own);
    std::memcpy(record.data(), &sizes, head);
    Check(record);
    return 0;
}
