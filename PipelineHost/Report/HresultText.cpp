#include "Report/HresultText.h"

#include <Xml/XmlFailure.h>

#include <filterpipeline.h>
#include <msopc.h>
#include <prntvpt.h>
#include <xpsobjectmodel.h>

#include <algorithm>
#include <cstdint>
#include <cstdio>
#include <iterator>

namespace OvPipeline {

using OvPlatform::XML_E_PARSEERRORBASE;

namespace {

struct KnownResult {
    // Some headers give a code as a signed number, some as an unsigned one.
    template <typename Code>
    constexpr KnownResult(Code published, const char* itsName, const char* itsMeaning)
        : code(static_cast<HRESULT>(published)), name(itsName), meaning(itsMeaning) {}

    HRESULT code;
    const char* name;
    const char* meaning;
};

// In the order of the codes, read as unsigned.
constexpr KnownResult knownResults[] = {
    {S_OK, "S_OK", "success"},
    {S_FALSE, "S_FALSE", "success, with nothing found"},
    {S_PT_NO_CONFLICT, "S_PT_NO_CONFLICT", "the ticket needed no correction"},
    {S_PT_CONFLICT_RESOLVED, "S_PT_CONFLICT_RESOLVED", "the ticket was corrected to what the device can do"},
    {E_PENDING, "E_PENDING", "what is asked for is not there yet"},
    {E_NOTIMPL, "E_NOTIMPL", "not implemented"},
    {E_NOINTERFACE, "E_NOINTERFACE", "the object does not have the interface that was asked for"},
    {E_POINTER, "E_POINTER", "a null pointer where something is needed"},
    {E_ABORT, "E_ABORT", "aborted"},
    {E_FAIL, "E_FAIL", "unspecified failure"},
    {E_UNEXPECTED, "E_UNEXPECTED", "an unexpected failure"},
    {RPC_E_CHANGED_MODE, "RPC_E_CHANGED_MODE", "the thread is in another kind of apartment"},
    {DISP_E_TYPEMISMATCH, "DISP_E_TYPEMISMATCH", "a value of the wrong type"},
    {STG_E_INVALIDFUNCTION, "STG_E_INVALIDFUNCTION", "the stream does not do that"},
    {STG_E_WRITEFAULT, "STG_E_WRITEFAULT", "writing failed"},
    {STG_E_READFAULT, "STG_E_READFAULT", "reading failed"},
    {STG_E_MEDIUMFULL, "STG_E_MEDIUMFULL", "no space is left"},
    {E_PRINTTICKET_FORMAT, "E_PRINTTICKET_FORMAT",
     "the ticket that is merged on to is no valid Print Ticket"},
    {E_PRINTCAPABILITIES_FORMAT, "E_PRINTCAPABILITIES_FORMAT",
     "the queue's Print Capabilities are not valid"},
    {E_DELTA_PRINTTICKET_FORMAT, "E_DELTA_PRINTTICKET_FORMAT",
     "the part's print ticket is no valid Print Ticket"},
    {E_PRINTDEVICECAPABILITIES_FORMAT, "E_PRINTDEVICECAPABILITIES_FORMAT",
     "the device capabilities are not valid"},
    {CLASS_E_CLASSNOTAVAILABLE, "CLASS_E_CLASSNOTAVAILABLE", "the module does not make that class"},
    {REGDB_E_CLASSNOTREG, "REGDB_E_CLASSNOTREG", "no such class is registered"},
    {CO_E_NOTINITIALIZED, "CO_E_NOTINITIALIZED", "the thread is in no apartment"},
    {HRESULT_FROM_WIN32(ERROR_FILE_NOT_FOUND), "ERROR_FILE_NOT_FOUND", "no such file"},
    {HRESULT_FROM_WIN32(ERROR_PATH_NOT_FOUND), "ERROR_PATH_NOT_FOUND", "no such folder"},
    {E_ACCESSDENIED, "E_ACCESSDENIED", "access denied"},
    {E_HANDLE, "E_HANDLE", "an invalid handle"},
    {HRESULT_FROM_WIN32(ERROR_INVALID_DATA), "ERROR_INVALID_DATA", "the data is not valid"},
    {E_OUTOFMEMORY, "E_OUTOFMEMORY", "out of memory"},
    {HRESULT_FROM_WIN32(ERROR_PRINT_CANCELLED), "ERROR_PRINT_CANCELLED", "the job was cancelled"},
    {E_INVALIDARG, "E_INVALIDARG", "an invalid argument"},
    {HRESULT_FROM_WIN32(ERROR_INSUFFICIENT_BUFFER), "ERROR_INSUFFICIENT_BUFFER", "a buffer is too small"},
    {HRESULT_FROM_WIN32(ERROR_MOD_NOT_FOUND), "ERROR_MOD_NOT_FOUND", "no such module"},
    {HRESULT_FROM_WIN32(ERROR_PROC_NOT_FOUND), "ERROR_PROC_NOT_FOUND", "the module has no such function"},
    {HRESULT_FROM_WIN32(ERROR_MAX_THRDS_REACHED), "ERROR_MAX_THRDS_REACHED",
     "the system gives no more threads"},
    {HRESULT_FROM_WIN32(ERROR_BAD_EXE_FORMAT), "ERROR_BAD_EXE_FORMAT",
     "the module cannot be loaded on this system"},
    {E_ELEMENT_NOT_FOUND, "E_ELEMENT_NOT_FOUND", "no such element"},
    {HRESULT_FROM_WIN32(ERROR_INVALID_PRINTER_NAME), "ERROR_INVALID_PRINTER_NAME",
     "no queue has that printer name"},
    {HRESULT_FROM_WIN32(ERROR_INVALID_STATE), "ERROR_INVALID_STATE", "not allowed in this state of the job"},
    {OPC_E_NONCONFORMING_URI, "OPC_E_NONCONFORMING_URI", "not a valid part name"},
    {OPC_E_PART_CANNOT_BE_DIRECTORY, "OPC_E_PART_CANNOT_BE_DIRECTORY", "not a valid part name"},
    {OPC_E_UNEXPECTED_CONTENT_TYPE, "OPC_E_UNEXPECTED_CONTENT_TYPE", "a part of the wrong content type"},
    {OPC_E_INVALID_CONTENT_TYPE_XML, "OPC_E_INVALID_CONTENT_TYPE_XML", "the content types cannot be read"},
    {OPC_E_MISSING_CONTENT_TYPES, "OPC_E_MISSING_CONTENT_TYPES", "the package has no content types"},
    {OPC_E_NONCONFORMING_CONTENT_TYPES_XML, "OPC_E_NONCONFORMING_CONTENT_TYPES_XML",
     "the content types break the rules"},
    {OPC_E_NONCONFORMING_RELS_XML, "OPC_E_NONCONFORMING_RELS_XML", "relationships break the rules"},
    {OPC_E_INVALID_RELS_XML, "OPC_E_INVALID_RELS_XML", "relationships cannot be read"},
    {OPC_E_DUPLICATE_PART, "OPC_E_DUPLICATE_PART", "two parts of one name"},
    {OPC_E_INVALID_OVERRIDE_PART_NAME, "OPC_E_INVALID_OVERRIDE_PART_NAME",
     "the content types name an invalid part"},
    {OPC_E_DUPLICATE_OVERRIDE_PART, "OPC_E_DUPLICATE_OVERRIDE_PART", "two content types for one part"},
    {OPC_E_INVALID_RELATIONSHIP_ID, "OPC_E_INVALID_RELATIONSHIP_ID", "an invalid relationship id"},
    {OPC_E_INVALID_RELATIONSHIP_TARGET, "OPC_E_INVALID_RELATIONSHIP_TARGET",
     "an invalid relationship target"},
    {OPC_E_DUPLICATE_RELATIONSHIP, "OPC_E_DUPLICATE_RELATIONSHIP", "two relationships of one id"},
    {OPC_E_DUPLICATE_PIECE, "OPC_E_DUPLICATE_PIECE", "a piece of a part occurs twice"},
    {OPC_E_INVALID_PIECE, "OPC_E_INVALID_PIECE", "an invalid piece of a part"},
    {OPC_E_MISSING_PIECE, "OPC_E_MISSING_PIECE", "a piece of a part is missing"},
    {OPC_E_NO_SUCH_PART, "OPC_E_NO_SUCH_PART", "the package has no such part"},
    {OPC_E_UNSUPPORTED_PACKAGE, "OPC_E_UNSUPPORTED_PACKAGE", "a package beyond what can be read here"},
    {OPC_E_ZIP_INCORRECT_DATA_SIZE, "OPC_E_ZIP_INCORRECT_DATA_SIZE", "data of another size than declared"},
    {OPC_E_ZIP_CORRUPTED_ARCHIVE, "OPC_E_ZIP_CORRUPTED_ARCHIVE", "the zip archive is damaged"},
    {OPC_E_ZIP_COMPRESSION_FAILED, "OPC_E_ZIP_COMPRESSION_FAILED", "data cannot be compressed"},
    {OPC_E_ZIP_DECOMPRESSION_FAILED, "OPC_E_ZIP_DECOMPRESSION_FAILED", "data cannot be decompressed"},
    {OPC_E_ZIP_INCONSISTENT_FILEITEM, "OPC_E_ZIP_INCONSISTENT_FILEITEM", "an item contradicts the directory"},
    {OPC_E_ZIP_INCONSISTENT_DIRECTORY, "OPC_E_ZIP_INCONSISTENT_DIRECTORY",
     "the directory contradicts itself"},
    {OPC_E_ZIP_MISSING_DATA_DESCRIPTOR, "OPC_E_ZIP_MISSING_DATA_DESCRIPTOR",
     "an item's data descriptor is missing"},
    {OPC_E_ZIP_UNSUPPORTEDARCHIVE, "OPC_E_ZIP_UNSUPPORTEDARCHIVE", "a zip archive of an unsupported kind"},
    {OPC_E_ZIP_CENTRAL_DIRECTORY_TOO_LARGE, "OPC_E_ZIP_CENTRAL_DIRECTORY_TOO_LARGE",
     "the directory is too large"},
    {OPC_E_ZIP_NAME_TOO_LARGE, "OPC_E_ZIP_NAME_TOO_LARGE", "an item's name is too long"},
    {OPC_E_ZIP_DUPLICATE_NAME, "OPC_E_ZIP_DUPLICATE_NAME", "two items of one name"},
    {OPC_E_ZIP_MISSING_END_OF_CENTRAL_DIRECTORY, "OPC_E_ZIP_MISSING_END_OF_CENTRAL_DIRECTORY",
     "the directory is missing: the file is no zip archive, or cut short"},
    {OPC_E_ZIP_REQUIRES_64_BIT, "OPC_E_ZIP_REQUIRES_64_BIT", "too large for this machine"},
    {XPS_E_UNEXPECTED_CONTENT_TYPE, "XPS_E_UNEXPECTED_CONTENT_TYPE", "a part of the wrong content type"},
    {XPS_E_INVALID_MARKUP, "XPS_E_INVALID_MARKUP", "markup that breaks the rules"},
    {XPS_E_INVALID_OBFUSCATED_FONT_URI, "XPS_E_INVALID_OBFUSCATED_FONT_URI",
     "an obfuscated font needs a GUID as its name"},
    {XPS_E_MISSING_RELATIONSHIP_TARGET, "XPS_E_MISSING_RELATIONSHIP_TARGET",
     "a relationship leads to no part"},
    {XPS_E_MISSING_DOCUMENTSEQUENCE_RELATIONSHIP, "XPS_E_MISSING_DOCUMENTSEQUENCE_RELATIONSHIP",
     "the package names no document sequence"},
    {XPS_E_MISSING_DOCUMENT, "XPS_E_MISSING_DOCUMENT", "the document sequence has no document"},
    {XPS_E_MISSING_REFERRED_DOCUMENT, "XPS_E_MISSING_REFERRED_DOCUMENT",
     "the package lacks a document that is referred to"},
    {XPS_E_MISSING_REFERRED_PAGE, "XPS_E_MISSING_REFERRED_PAGE",
     "the package lacks a page that is referred to"},
    {XPS_E_MISSING_PAGE_IN_DOCUMENT, "XPS_E_MISSING_PAGE_IN_DOCUMENT", "there is no page"},
    {XPS_E_MISSING_PART_REFERENCE, "XPS_E_MISSING_PART_REFERENCE", "a reference without the part's name"},
    {XPS_E_MISSING_PART_STREAM, "XPS_E_MISSING_PART_STREAM", "a part was never written"},
    {XPS_E_MULTIPLE_DOCUMENTSEQUENCE_RELATIONSHIPS, "XPS_E_MULTIPLE_DOCUMENTSEQUENCE_RELATIONSHIPS",
     "the package names two document sequences"},
    {XPS_E_MULTIPLE_THUMBNAILS_ON_PAGE, "XPS_E_MULTIPLE_THUMBNAILS_ON_PAGE", "a page has two thumbnails"},
    {XPS_E_MULTIPLE_THUMBNAILS_ON_PACKAGE, "XPS_E_MULTIPLE_THUMBNAILS_ON_PACKAGE",
     "the package has two thumbnails"},
    {XPS_E_MULTIPLE_PRINTTICKETS_ON_PAGE, "XPS_E_MULTIPLE_PRINTTICKETS_ON_PAGE",
     "a page has two print tickets"},
    {XPS_E_MULTIPLE_PRINTTICKETS_ON_DOCUMENT, "XPS_E_MULTIPLE_PRINTTICKETS_ON_DOCUMENT",
     "a document has two print tickets"},
    {XPS_E_MULTIPLE_PRINTTICKETS_ON_DOCUMENTSEQUENCE, "XPS_E_MULTIPLE_PRINTTICKETS_ON_DOCUMENTSEQUENCE",
     "the job has two print tickets"},
    {XPS_E_MULTIPLE_REFERENCES_TO_PART, "XPS_E_MULTIPLE_REFERENCES_TO_PART",
     "a part is referred to more than once"},
    {XML_E_PARSEERRORBASE, "XML_E_PARSEERRORBASE", "XML that cannot be read"},
};
static_assert(std::ranges::is_sorted(knownResults, {}, [](const KnownResult& each) {
    return static_cast<std::uint32_t>(each.code);
}));

const KnownResult* Find(HRESULT result) {
    const auto* const found = std::find_if(std::begin(knownResults), std::end(knownResults),
                                           [result](const KnownResult& each) { return each.code == result; });
    return found == std::end(knownResults) ? nullptr : found;
}

} // namespace

std::string HresultMeaning(HRESULT result) {
    const KnownResult* known = Find(result);
    return known != nullptr ? known->meaning : std::string();
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
