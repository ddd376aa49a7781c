#pragma once

// The print filter pipeline's published interfaces. One declaration for both builds, since the MinGW-w64
// headers lack them. Slot order, identifiers and values are those of the published interfaces; "may be null"
// marks an out argument that a caller may leave out.

#include <windows.h>
#include <oaidl.h>

#ifndef E_ELEMENT_NOT_FOUND
#define E_ELEMENT_NOT_FOUND ((HRESULT)0x80070490)
#endif

// Names of the properties in the pipeline's property bag.
#define XPS_FP_PRINTER_NAME L"PrinterName"
#define XPS_FP_PROGRESS_REPORT L"ProgressReport"
#define XPS_FP_PRINTER_HANDLE L"PrinterHandle"
#define XPS_FP_USER_PRINT_TICKET L"PerUserPrintTicket"
#define XPS_FP_JOB_LEVEL_PRINTTICKET L"JobPrintTicket"
#define XPS_FP_PRINTDEVICECAPABILITIES L"PrintDeviceCapabilities"
#define XPS_FP_MERGED_DATAFILE_PATH L"MergedDataFilePath"
#define XPS_FP_RESOURCE_DLL_PATHS L"ResourceDLLPaths"
#define XPS_FP_JOB_ID L"PrintJobId"
#define XPS_FP_USER_TOKEN L"UserSecurityToken"
#define XPS_FP_PRINT_CLASS_FACTORY L"PrintClassFactory"
#define XPS_FP_OUTPUT_FILE L"PrintOutputFileName"
#define XPS_FP_DRIVER_PROPERTY_BAG L"DriverPropertyBag"
#define XPS_FP_QUEUE_PROPERTY_BAG L"QueuePropertyBag"
#define XPS_FP_MS_CONTENT_TYPE L"DriverMultiContentType"
#define XPS_FP_MS_CONTENT_TYPE_XPS L"XPS"
#define XPS_FP_MS_CONTENT_TYPE_OPENXPS L"OpenXPS"

enum EXpsCompressionOptions {
    Compression_NotCompressed = 0,
    Compression_Normal = 1,
    Compression_Small = 2,
    Compression_Fast = 3
};

/// The published spelling.
enum EXpsFontOptions { Font_Normal = 0, Font_Obfusticate = 1 };

enum EXpsJobConsumption {
    XpsJob_DocumentSequenceAdded = 0,
    XpsJob_FixedDocumentAdded = 1,
    XpsJob_FixedPageAdded = 2
};

/// The embedding bits of a font's OS/2 table.
enum EXpsFontRestriction {
    Xps_Restricted_Font_Installable = 0,
    Xps_Restricted_Font_NoEmbedding = 2,
    Xps_Restricted_Font_PreviewPrint = 4,
    Xps_Restricted_Font_Editable = 8
};

struct IImgErrorInfo;
struct IInterFilterCommunicator;
struct IPrintPipelinePropertyBag;
struct IPrintPipelineManagerControl;
struct IPrintReadStream;
struct IPrintWriteStream;
struct IPartThumbnail;
struct IPartPrintTicket;
struct IXpsPartIterator;
struct IXpsDocument;
struct IFixedDocumentSequence;
struct IFixedDocument;
struct IFixedPage;

// The formatter does not know the interface macro.
// clang-format off

/// A filter. StartOperation returns when all of the filter's work is done; ShutdownOperation may come
/// meanwhile on another thread.
MIDL_INTERFACE("cdb62fc0-8bed-434e-86fb-a2cae55f19ea")
IPrintPipelineFilter : public IUnknown {
public:
    virtual HRESULT STDMETHODCALLTYPE InitializeFilter(IInterFilterCommunicator* communicator,
                                                       IPrintPipelinePropertyBag* bag,
                                                       IPrintPipelineManagerControl* control) = 0;
    virtual HRESULT STDMETHODCALLTYPE ShutdownOperation() = 0;
    virtual HRESULT STDMETHODCALLTYPE StartOperation() = 0;
};
__CRT_UUID_DECL(IPrintPipelineFilter, 0xcdb62fc0, 0x8bed, 0x434e, 0x86, 0xfb, 0xa2, 0xca, 0xe5, 0x5f, 0x19,
                0xea)

/// Gives a filter its two ends, of the kinds that the pipeline configuration names; each with a reference.
MIDL_INTERFACE("4daf1e69-81fd-462d-940f-8cd3ddf56fca")
IInterFilterCommunicator : public IUnknown {
public:
    virtual HRESULT STDMETHODCALLTYPE RequestReader(void** reader) = 0;
    virtual HRESULT STDMETHODCALLTYPE RequestWriter(void** writer) = 0;
};
__CRT_UUID_DECL(IInterFilterCommunicator, 0x4daf1e69, 0x81fd, 0x462d, 0x94, 0x0f, 0x8c, 0xd3, 0xdd, 0xf5,
                0x6f, 0xca)

/// Named values that all filters of a job share. GetProperty's caller clears the variant; DeleteProperty is
/// TRUE when something was deleted.
MIDL_INTERFACE("8b8c99dc-7892-4a95-8a04-57422e9fbb47")
IPrintPipelinePropertyBag : public IUnknown {
public:
    virtual HRESULT STDMETHODCALLTYPE AddProperty(PCWSTR name, const VARIANT* value) = 0;
    virtual HRESULT STDMETHODCALLTYPE GetProperty(PCWSTR name, VARIANT* value) = 0;
    virtual BOOL STDMETHODCALLTYPE DeleteProperty(PCWSTR name) = 0;
};
__CRT_UUID_DECL(IPrintPipelinePropertyBag, 0x8b8c99dc, 0x7892, 0x4a95, 0x8a, 0x04, 0x57, 0x42, 0x2e, 0x9f,
                0xbb, 0x47)

/// What a filter may ask of the pipeline. RequestShutdown ends the whole job with that result; its second
/// argument is unused and null. FilterFinished does nothing.
MIDL_INTERFACE("aa3e4910-5889-4681-91ef-823ad4ed4e44")
IPrintPipelineManagerControl : public IUnknown {
public:
    virtual HRESULT STDMETHODCALLTYPE RequestShutdown(HRESULT reason, IImgErrorInfo* unused) = 0;
    virtual HRESULT STDMETHODCALLTYPE FilterFinished() = 0;
};
__CRT_UUID_DECL(IPrintPipelineManagerControl, 0xaa3e4910, 0x5889, 0x4681, 0x91, 0xef, 0x82, 0x3a, 0xd4, 0xed,
                0x4e, 0x44)

/// Told by the rendering filter how far the job is. It takes this property and deletes it from the bag.
MIDL_INTERFACE("edc12c7c-ed40-4ea5-96a6-5e4397497a61")
IPrintPipelineProgressReport : public IUnknown {
public:
    virtual HRESULT STDMETHODCALLTYPE ReportProgress(EXpsJobConsumption update) = 0;
};
__CRT_UUID_DECL(IPrintPipelineProgressReport, 0xedc12c7c, 0xed40, 0x4ea5, 0x96, 0xa6, 0x5e, 0x43, 0x97, 0x49,
                0x7a, 0x61)

MIDL_INTERFACE("9af593dd-9b02-48a8-9bad-69ace423f88b")
IPrintClassObjectFactory : public IUnknown {
public:
    virtual HRESULT STDMETHODCALLTYPE GetPrintClassObject(PCWSTR printerName, REFIID riid, void** object) = 0;
};
__CRT_UUID_DECL(IPrintClassObjectFactory, 0x9af593dd, 0x9b02, 0x48a8, 0x9b, 0xad, 0x69, 0xac, 0xe4, 0x23,
                0xf8, 0x8b)

/// Bytes of a part or of a job. ReadBytes may give fewer bytes than asked without being at the end, so read
/// until *endOfFile; Seek may block; the origins are STREAM_SEEK_SET, _CUR, _END; newPosition may be null.
MIDL_INTERFACE("4d47a67c-66cc-4430-850e-daf466fe5bc4")
IPrintReadStream : public IUnknown {
public:
    virtual HRESULT STDMETHODCALLTYPE Seek(LONGLONG offset, DWORD origin, ULONGLONG* newPosition) = 0;
    virtual HRESULT STDMETHODCALLTYPE ReadBytes(void* bytes, ULONG wanted, ULONG* read, BOOL* endOfFile) = 0;
};
__CRT_UUID_DECL(IPrintReadStream, 0x4d47a67c, 0x66cc, 0x4430, 0x85, 0x0e, 0xda, 0xf4, 0x66, 0xfe, 0x5b, 0xc4)

/// Close is mandatory: without it the receiver never sees the end.
MIDL_INTERFACE("65bb7f1b-371e-4571-8ac7-912f510c1a38")
IPrintWriteStream : public IUnknown {
public:
    virtual HRESULT STDMETHODCALLTYPE WriteBytes(const void* bytes, ULONG count, ULONG* written) = 0;
    virtual void STDMETHODCALLTYPE Close() = 0;
};
__CRT_UUID_DECL(IPrintWriteStream, 0x65bb7f1b, 0x371e, 0x4571, 0x8a, 0xc7, 0x91, 0x2f, 0x51, 0x0c, 0x1a, 0x38)

/// Asked of an IPrintWriteStream; only the last filter gains from it.
MIDL_INTERFACE("07d11ff8-1753-4873-b749-6cdaf068e4c3")
IPrintWriteStreamFlush : public IUnknown {
public:
    virtual HRESULT STDMETHODCALLTYPE FlushData() = 0;
};
__CRT_UUID_DECL(IPrintWriteStreamFlush, 0x07d11ff8, 0x1753, 0x4873, 0xb7, 0x49, 0x6c, 0xda, 0xf0, 0x68, 0xe4,
                0xc3)

/// A new stream, at its start, with each call.
MIDL_INTERFACE("acb971e3-df8d-4fc2-bee6-0609d15f3cf9")
IPrintReadStreamFactory : public IUnknown {
public:
    virtual HRESULT STDMETHODCALLTYPE GetStream(IPrintReadStream** stream) = 0;
};
__CRT_UUID_DECL(IPrintReadStreamFactory, 0xacb971e3, 0xdf8d, 0x4fc2, 0xbe, 0xe6, 0x06, 0x09, 0xd1, 0x5f,
                0x3c, 0xf9)

/// The upstream end of an XPS filter. A null part with S_OK is the end of the job; a part's kind is found by
/// QueryInterface.
MIDL_INTERFACE("b8cf8530-5562-47c4-ab67-b1f69ecf961e")
IXpsDocumentProvider : public IUnknown {
public:
    virtual HRESULT STDMETHODCALLTYPE GetXpsPart(IUnknown** part) = 0;
};
__CRT_UUID_DECL(IXpsDocumentProvider, 0xb8cf8530, 0x5562, 0x47c4, 0xab, 0x67, 0xb1, 0xf6, 0x9e, 0xcf, 0x96,
                0x1e)

/// The downstream end of an XPS filter. At most one document and one sequence may be sent in a job. On
/// failure a filter calls RequestShutdown before CloseSender. GetNewEmptyPart makes IFixedDocument,
/// IFixedPage, IPartImage, IPartThumbnail, IPartFont, IPartPrintTicket and IPartColorProfile parts.
MIDL_INTERFACE("4368d8a2-4181-4a9f-b295-3d9a38bb9ba0")
IXpsDocumentConsumer : public IUnknown {
public:
    virtual HRESULT STDMETHODCALLTYPE SendXpsUnknown(IUnknown* part) = 0;
    virtual HRESULT STDMETHODCALLTYPE SendXpsDocument(IXpsDocument* document) = 0;
    virtual HRESULT STDMETHODCALLTYPE SendFixedDocumentSequence(IFixedDocumentSequence* sequence) = 0;
    virtual HRESULT STDMETHODCALLTYPE SendFixedDocument(IFixedDocument* document) = 0;
    virtual HRESULT STDMETHODCALLTYPE SendFixedPage(IFixedPage* page) = 0;
    virtual HRESULT STDMETHODCALLTYPE CloseSender() = 0;
    virtual HRESULT STDMETHODCALLTYPE GetNewEmptyPart(PCWSTR uri, REFIID riid, void** part,
                                                      IPrintWriteStream** stream) = 0;
};
__CRT_UUID_DECL(IXpsDocumentConsumer, 0x4368d8a2, 0x4181, 0x4a9f, 0xb2, 0x95, 0x3d, 0x9a, 0x38, 0xbb, 0x9b,
                0xa0)

/// The package. E_ELEMENT_NOT_FOUND where it has no thumbnail.
MIDL_INTERFACE("e8d907db-62a9-4a95-abe7-e01763dd30f8")
IXpsDocument : public IUnknown {
public:
    virtual HRESULT STDMETHODCALLTYPE GetThumbnail(IPartThumbnail** thumbnail) = 0;
    virtual HRESULT STDMETHODCALLTYPE SetThumbnail(IPartThumbnail* thumbnail) = 0;
};
__CRT_UUID_DECL(IXpsDocument, 0xe8d907db, 0x62a9, 0x4a95, 0xab, 0xe7, 0xe0, 0x17, 0x63, 0xdd, 0x30, 0xf8)

/// GetPrintTicket gives E_ELEMENT_NOT_FOUND where the part has none.
MIDL_INTERFACE("8028d181-2c32-4249-8493-1bfb22045574")
IFixedDocumentSequence : public IUnknown {
public:
    virtual HRESULT STDMETHODCALLTYPE GetUri(BSTR* uri) = 0;
    virtual HRESULT STDMETHODCALLTYPE GetPrintTicket(IPartPrintTicket** ticket) = 0;
    virtual HRESULT STDMETHODCALLTYPE SetPrintTicket(IPartPrintTicket* ticket) = 0;
};
__CRT_UUID_DECL(IFixedDocumentSequence, 0x8028d181, 0x2c32, 0x4249, 0x84, 0x93, 0x1b, 0xfb, 0x22, 0x04, 0x55,
                0x74)

/// GetPrintTicket gives E_ELEMENT_NOT_FOUND where the part has none.
MIDL_INTERFACE("f222ca9f-9968-4db9-81bd-abaebf15f93f")
IFixedDocument : public IUnknown {
public:
    virtual HRESULT STDMETHODCALLTYPE GetUri(BSTR* uri) = 0;
    virtual HRESULT STDMETHODCALLTYPE GetPrintTicket(IPartPrintTicket** ticket) = 0;
    virtual HRESULT STDMETHODCALLTYPE SetPrintTicket(IPartPrintTicket* ticket) = 0;
};
__CRT_UUID_DECL(IFixedDocument, 0xf222ca9f, 0x9968, 0x4db9, 0x81, 0xbd, 0xab, 0xae, 0xbf, 0x15, 0xf9, 0x3f)

/// A part with bytes. GetStream gives a stream at the start of the content, each call its own.
MIDL_INTERFACE("36d51e28-369e-43ba-a666-9540c62c3f58")
IPartBase : public IUnknown {
public:
    virtual HRESULT STDMETHODCALLTYPE GetUri(BSTR* uri) = 0;
    virtual HRESULT STDMETHODCALLTYPE GetStream(IPrintReadStream** stream) = 0;
    virtual HRESULT STDMETHODCALLTYPE GetPartCompression(EXpsCompressionOptions* compression) = 0;
    virtual HRESULT STDMETHODCALLTYPE SetPartCompression(EXpsCompressionOptions compression) = 0;
};
__CRT_UUID_DECL(IPartBase, 0x36d51e28, 0x369e, 0x43ba, 0xa6, 0x66, 0x95, 0x40, 0xc6, 0x2c, 0x3f, 0x58)

/// A page's markup and the parts that it uses. GetWriteStream replaces the markup.
MIDL_INTERFACE("3d9f6448-7e95-4cb5-94fb-0180c2883a57")
IFixedPage : public IPartBase {
public:
    virtual HRESULT STDMETHODCALLTYPE GetPrintTicket(IPartPrintTicket** ticket) = 0;
    virtual HRESULT STDMETHODCALLTYPE GetPagePart(PCWSTR uri, IUnknown** part) = 0;
    virtual HRESULT STDMETHODCALLTYPE GetWriteStream(IPrintWriteStream** stream) = 0;
    virtual HRESULT STDMETHODCALLTYPE SetPrintTicket(IPartPrintTicket* ticket) = 0;
    virtual HRESULT STDMETHODCALLTYPE SetPagePart(IUnknown* part) = 0;
    virtual HRESULT STDMETHODCALLTYPE DeleteResource(PCWSTR uri) = 0;
    virtual HRESULT STDMETHODCALLTYPE GetXpsPartIterator(IXpsPartIterator** iterator) = 0;
};
__CRT_UUID_DECL(IFixedPage, 0x3d9f6448, 0x7e95, 0x4cb5, 0x94, 0xfb, 0x01, 0x80, 0xc2, 0x88, 0x3a, 0x57)

/// GetImageProperties gives the content type.
MIDL_INTERFACE("725f2e3c-401a-4705-9de0-fe6f1353b87f")
IPartImage : public IPartBase {
public:
    virtual HRESULT STDMETHODCALLTYPE GetImageProperties(BSTR* contentType) = 0;
    virtual HRESULT STDMETHODCALLTYPE SetImageContent(PCWSTR contentType) = 0;
};
__CRT_UUID_DECL(IPartImage, 0x725f2e3c, 0x401a, 0x4705, 0x9d, 0xe0, 0xfe, 0x6f, 0x13, 0x53, 0xb8, 0x7f)

/// The stream holds the plain font; Font_Obfusticate says how it lies in the package.
MIDL_INTERFACE("e07fe0ab-1124-43d0-a865-e8ffb6a3ea82")
IPartFont : public IPartBase {
public:
    virtual HRESULT STDMETHODCALLTYPE GetFontProperties(BSTR* contentType, EXpsFontOptions* options) = 0;
    virtual HRESULT STDMETHODCALLTYPE SetFontContent(PCWSTR contentType) = 0;
    virtual HRESULT STDMETHODCALLTYPE SetFontOptions(EXpsFontOptions options) = 0;
};
__CRT_UUID_DECL(IPartFont, 0xe07fe0ab, 0x1124, 0x43d0, 0xa8, 0x65, 0xe8, 0xff, 0xb6, 0xa3, 0xea, 0x82)

MIDL_INTERFACE("511e025f-d6cb-43be-bf65-63fe88515a39")
IPartFont2 : public IPartFont {
public:
    virtual HRESULT STDMETHODCALLTYPE GetFontRestriction(EXpsFontRestriction* restriction) = 0;
};
__CRT_UUID_DECL(IPartFont2, 0x511e025f, 0xd6cb, 0x43be, 0xbf, 0x65, 0x63, 0xfe, 0x88, 0x51, 0x5a, 0x39)

MIDL_INTERFACE("027ed1c9-ba39-4cc5-aa55-7ec3a0de171a")
IPartThumbnail : public IPartBase {
public:
    virtual HRESULT STDMETHODCALLTYPE GetThumbnailProperties(BSTR* contentType) = 0;
    virtual HRESULT STDMETHODCALLTYPE SetThumbnailContent(PCWSTR contentType) = 0;
};
__CRT_UUID_DECL(IPartThumbnail, 0x027ed1c9, 0xba39, 0x4cc5, 0xaa, 0x55, 0x7e, 0xc3, 0xa0, 0xde, 0x17, 0x1a)

MIDL_INTERFACE("4a0f50f6-f9a2-41f0-99e7-5ae955be8e9e")
IPartPrintTicket : public IPartBase {
public:
};
__CRT_UUID_DECL(IPartPrintTicket, 0x4a0f50f6, 0xf9a2, 0x41f0, 0x99, 0xe7, 0x5a, 0xe9, 0x55, 0xbe, 0x8e, 0x9e)

MIDL_INTERFACE("63cca95b-7d18-4762-b15e-98658693d24a")
IPartColorProfile : public IPartBase {
public:
};
__CRT_UUID_DECL(IPartColorProfile, 0x63cca95b, 0x7d18, 0x4762, 0xb1, 0x5e, 0x98, 0x65, 0x86, 0x93, 0xd2, 0x4a)

MIDL_INTERFACE("16cfce6d-e744-4fb3-b474-f1d54f024a01")
IPartResourceDictionary : public IPartBase {
public:
};
__CRT_UUID_DECL(IPartResourceDictionary, 0x16cfce6d, 0xe744, 0x4fb3, 0xb4, 0x74, 0xf1, 0xd5, 0x4f, 0x02,
                0x4a, 0x01)

/// The parts of a page. Nothing may be added or deleted meanwhile; ask IsDone before Current; either out may
/// be null.
MIDL_INTERFACE("0021d3cd-af6f-42ab-9999-14bc82a62d2e")
IXpsPartIterator : public IUnknown {
public:
    virtual void STDMETHODCALLTYPE Reset() = 0;
    virtual HRESULT STDMETHODCALLTYPE Current(BSTR* uri, IUnknown** part) = 0;
    virtual BOOL STDMETHODCALLTYPE IsDone() = 0;
    virtual void STDMETHODCALLTYPE Next() = 0;
};
__CRT_UUID_DECL(IXpsPartIterator, 0x0021d3cd, 0xaf6f, 0x42ab, 0x99, 0x99, 0x14, 0xbc, 0x82, 0xa6, 0x2d, 0x2e)

/// Says that a part is not needed after the sentinel page.
MIDL_INTERFACE("cc350c00-095b-42a5-bf0f-c8780edadb3c")
IPartDiscardControl : public IUnknown {
public:
    virtual HRESULT STDMETHODCALLTYPE GetDiscardProperties(BSTR* uriSentinelPage, BSTR* uriPartToDiscard) = 0;
};
__CRT_UUID_DECL(IPartDiscardControl, 0xcc350c00, 0x095b, 0x42a5, 0xbf, 0x0f, 0xc8, 0x78, 0x0e, 0xda, 0xdb,
                0x3c)
