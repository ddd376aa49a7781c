#include "Report/HresultText.h"

#include <algorithm>
#include <array>
#include <cstdint>
#include <cstdio>

namespace OvPipeline {

namespace {

struct KnownResult {
    std::uint32_t code;
    const char* name;
    const char* meaning;
};

// By code.
constexpr std::array Known{
    KnownResult{0x00000000, "S_OK", "success"},
    KnownResult{0x00000001, "S_FALSE", "success, with nothing found"},
    KnownResult{0x00040001, "S_PT_NO_CONFLICT", "the ticket needed no correction"},
    KnownResult{0x00040002, "S_PT_CONFLICT_RESOLVED", "the ticket was corrected to what the device can do"},
    KnownResult{0x80004001, "E_NOTIMPL", "not implemented"},
    KnownResult{0x80004002, "E_NOINTERFACE", "the object does not have the interface that was asked for"},
    KnownResult{0x80004003, "E_POINTER", "a null pointer where something is needed"},
    KnownResult{0x80004004, "E_ABORT", "aborted"},
    KnownResult{0x80004005, "E_FAIL", "unspecified failure"},
    KnownResult{0x8000000a, "E_PENDING", "what is asked for is not there yet"},
    KnownResult{0x8000ffff, "E_UNEXPECTED", "an unexpected failure"},
    KnownResult{0x80010106, "RPC_E_CHANGED_MODE", "the thread is in another kind of apartment"},
    KnownResult{0x80020005, "DISP_E_TYPEMISMATCH", "a value of the wrong type"},
    KnownResult{0x80030001, "STG_E_INVALIDFUNCTION", "the stream does not do that"},
    KnownResult{0x8003001e, "STG_E_READFAULT", "reading failed"},
    KnownResult{0x8003001d, "STG_E_WRITEFAULT", "writing failed"},
    KnownResult{0x80030070, "STG_E_MEDIUMFULL", "no space is left"},
    KnownResult{0x80040003, "E_PRINTTICKET_FORMAT",
                "the ticket that is merged on to is no valid Print Ticket"},
    KnownResult{0x80040004, "E_PRINTCAPABILITIES_FORMAT", "the queue's Print Capabilities are not valid"},
    KnownResult{0x80040005, "E_DELTA_PRINTTICKET_FORMAT", "the part's print ticket is no valid Print Ticket"},
    KnownResult{0x80040006, "E_PRINTDEVICECAPABILITIES_FORMAT", "the device capabilities are not valid"},
    KnownResult{0x80040111, "CLASS_E_CLASSNOTAVAILABLE", "the module does not make that class"},
    KnownResult{0x80040154, "REGDB_E_CLASSNOTREG", "no such class is registered"},
    KnownResult{0x800401f0, "CO_E_NOTINITIALIZED", "the thread is in no apartment"},
    KnownResult{0x80070002, "ERROR_FILE_NOT_FOUND", "no such file"},
    KnownResult{0x80070003, "ERROR_PATH_NOT_FOUND", "no such folder"},
    KnownResult{0x80070005, "E_ACCESSDENIED", "access denied"},
    KnownResult{0x80070006, "E_HANDLE", "an invalid handle"},
    KnownResult{0x8007000d, "ERROR_INVALID_DATA", "the data is not valid"},
    KnownResult{0x8007000e, "E_OUTOFMEMORY", "out of memory"},
    KnownResult{0x8007003f, "ERROR_PRINT_CANCELLED", "the job was cancelled"},
    KnownResult{0x80070057, "E_INVALIDARG", "an invalid argument"},
    KnownResult{0x8007007a, "ERROR_INSUFFICIENT_BUFFER", "a buffer is too small"},
    KnownResult{0x8007007e, "ERROR_MOD_NOT_FOUND", "no such module"},
    KnownResult{0x8007007f, "ERROR_PROC_NOT_FOUND", "the module has no such function"},
    KnownResult{0x800700a4, "ERROR_MAX_THRDS_REACHED", "the system gives no more threads"},
    KnownResult{0x800700c1, "ERROR_BAD_EXE_FORMAT", "the module cannot be loaded on this system"},
    KnownResult{0x80070490, "E_ELEMENT_NOT_FOUND", "no such element"},
    KnownResult{0x80070709, "ERROR_INVALID_PRINTER_NAME", "no queue has that printer name"},
    KnownResult{0x8007139f, "ERROR_INVALID_STATE", "not allowed in this state of the job"},
    KnownResult{0x80510001, "OPC_E_NONCONFORMING_URI", "not a valid part name"},
    KnownResult{0x80510004, "OPC_E_PART_CANNOT_BE_DIRECTORY", "not a valid part name"},
    KnownResult{0x80510005, "OPC_E_UNEXPECTED_CONTENT_TYPE", "a part of the wrong content type"},
    KnownResult{0x80510006, "OPC_E_INVALID_CONTENT_TYPE_XML", "the content types cannot be read"},
    KnownResult{0x80510007, "OPC_E_MISSING_CONTENT_TYPES", "the package has no content types"},
    KnownResult{0x80510008, "OPC_E_NONCONFORMING_CONTENT_TYPES_XML", "the content types break the rules"},
    KnownResult{0x80510009, "OPC_E_NONCONFORMING_RELS_XML", "relationships break the rules"},
    KnownResult{0x8051000a, "OPC_E_INVALID_RELS_XML", "relationships cannot be read"},
    KnownResult{0x8051000b, "OPC_E_DUPLICATE_PART", "two parts of one name"},
    KnownResult{0x8051000c, "OPC_E_INVALID_OVERRIDE_PART_NAME", "the content types name an invalid part"},
    KnownResult{0x8051000d, "OPC_E_DUPLICATE_OVERRIDE_PART", "two content types for one part"},
    KnownResult{0x80510010, "OPC_E_INVALID_RELATIONSHIP_ID", "an invalid relationship id"},
    KnownResult{0x80510012, "OPC_E_INVALID_RELATIONSHIP_TARGET", "an invalid relationship target"},
    KnownResult{0x80510013, "OPC_E_DUPLICATE_RELATIONSHIP", "two relationships of one id"},
    KnownResult{0x80510015, "OPC_E_DUPLICATE_PIECE", "a piece of a part occurs twice"},
    KnownResult{0x80510016, "OPC_E_INVALID_PIECE", "an invalid piece of a part"},
    KnownResult{0x80510017, "OPC_E_MISSING_PIECE", "a piece of a part is missing"},
    KnownResult{0x80510018, "OPC_E_NO_SUCH_PART", "the package has no such part"},
    KnownResult{0x8051004f, "OPC_E_UNSUPPORTED_PACKAGE", "a package beyond what can be read here"},
    KnownResult{0x80511001, "OPC_E_ZIP_INCORRECT_DATA_SIZE", "data of another size than declared"},
    KnownResult{0x80511002, "OPC_E_ZIP_CORRUPTED_ARCHIVE", "the zip archive is damaged"},
    KnownResult{0x80511003, "OPC_E_ZIP_COMPRESSION_FAILED", "data cannot be compressed"},
    KnownResult{0x80511004, "OPC_E_ZIP_DECOMPRESSION_FAILED", "data cannot be decompressed"},
    KnownResult{0x80511005, "OPC_E_ZIP_INCONSISTENT_FILEITEM", "an item contradicts the directory"},
    KnownResult{0x80511006, "OPC_E_ZIP_INCONSISTENT_DIRECTORY", "the directory contradicts itself"},
    KnownResult{0x80511007, "OPC_E_ZIP_MISSING_DATA_DESCRIPTOR", "an item's data descriptor is missing"},
    KnownResult{0x80511008, "OPC_E_ZIP_UNSUPPORTEDARCHIVE", "a zip archive of an unsupported kind"},
    KnownResult{0x80511009, "OPC_E_ZIP_CENTRAL_DIRECTORY_TOO_LARGE", "the directory is too large"},
    KnownResult{0x8051100a, "OPC_E_ZIP_NAME_TOO_LARGE", "an item's name is too long"},
    KnownResult{0x8051100b, "OPC_E_ZIP_DUPLICATE_NAME", "two items of one name"},
    KnownResult{0x8051100f, "OPC_E_ZIP_MISSING_END_OF_CENTRAL_DIRECTORY",
                "the directory is missing: the file is no zip archive, or cut short"},
    KnownResult{0x80511010, "OPC_E_ZIP_REQUIRES_64_BIT", "too large for this machine"},
    KnownResult{0x80520008, "XPS_E_UNEXPECTED_CONTENT_TYPE", "a part of the wrong content type"},
    KnownResult{0x8052000c, "XPS_E_INVALID_MARKUP", "markup that breaks the rules"},
    KnownResult{0x8052000f, "XPS_E_INVALID_OBFUSCATED_FONT_URI",
                "an obfuscated font needs a GUID as its name"},
    KnownResult{0x80520105, "XPS_E_MISSING_RELATIONSHIP_TARGET", "a relationship leads to no part"},
    KnownResult{0x80520108, "XPS_E_MISSING_DOCUMENTSEQUENCE_RELATIONSHIP",
                "the package names no document sequence"},
    KnownResult{0x80520109, "XPS_E_MISSING_DOCUMENT", "the document sequence has no document"},
    KnownResult{0x8052010a, "XPS_E_MISSING_REFERRED_DOCUMENT",
                "the package lacks a document that is referred to"},
    KnownResult{0x8052010b, "XPS_E_MISSING_REFERRED_PAGE", "the package lacks a page that is referred to"},
    KnownResult{0x8052010c, "XPS_E_MISSING_PAGE_IN_DOCUMENT", "there is no page"},
    KnownResult{0x80520110, "XPS_E_MISSING_PART_REFERENCE", "a reference without the part's name"},
    KnownResult{0x80520113, "XPS_E_MISSING_PART_STREAM", "a part was never written"},
    KnownResult{0x80520202, "XPS_E_MULTIPLE_DOCUMENTSEQUENCE_RELATIONSHIPS",
                "the package names two document sequences"},
    KnownResult{0x80520203, "XPS_E_MULTIPLE_THUMBNAILS_ON_PAGE", "a page has two thumbnails"},
    KnownResult{0x80520204, "XPS_E_MULTIPLE_THUMBNAILS_ON_PACKAGE", "the package has two thumbnails"},
    KnownResult{0x80520205, "XPS_E_MULTIPLE_PRINTTICKETS_ON_PAGE", "a page has two print tickets"},
    KnownResult{0x80520206, "XPS_E_MULTIPLE_PRINTTICKETS_ON_DOCUMENT", "a document has two print tickets"},
    KnownResult{0x80520207, "XPS_E_MULTIPLE_PRINTTICKETS_ON_DOCUMENTSEQUENCE",
                "the job has two print tickets"},
    KnownResult{0x80520208, "XPS_E_MULTIPLE_REFERENCES_TO_PART", "a part is referred to more than once"},
    KnownResult{0xc00ce000, "XML_E_PARSEERRORBASE", "XML that cannot be read"},
};

const KnownResult* Find(HRESULT result) {
    const auto code = static_cast<std::uint32_t>(result);
    const auto found =
        std::find_if(Known.begin(), Known.end(), [&](const KnownResult& k) { return k.code == code; });
    return found == Known.end() ? nullptr : &*found;
}

} // namespace

std::string HresultMeaning(HRESULT result) {
    const KnownResult* known = Find(result);
    return known ? known->meaning : std::string();
}

std::string HresultText(HRESULT result) {
    char number[16];
    std::snprintf(number, sizeof number, "0x%08x", static_cast<unsigned>(result));
    std::string text = number;
    if (const KnownResult* known = Find(result))
        text += std::string(" ") + known->name + " (" + known->meaning + ")";
    return text;
}

} // namespace OvPipeline
