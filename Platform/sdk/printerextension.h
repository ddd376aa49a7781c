#pragma once

// The printer extension's published interfaces. One declaration for both builds, since the MinGW-w64 headers
// lack them. Booleans are BOOL of four bytes, not VARIANT_BOOL. The script forms and the views of a queue's
// jobs are left out.

#include <windows.h>
#include <oaidl.h>

#define PRINTSCHEMA_KEYWORDS_NAMESPACE_URI                                                                   \
    "http://schemas.microsoft.com/windows/2003/08/printing/printschemakeywords"
#define PRINTSCHEMA_KEYWORDSV11_NAMESPACE_URI                                                                \
    L"http://schemas.microsoft.com/windows/2013/05/printing/printschemakeywordsv11"

/// Why a printer extension was started.
inline constexpr GUID PRINTER_EXTENSION_REASON_PRINT_PREFERENCES = {
    0xec8f261f, 0x267c, 0x469f, {0xb5, 0xd6, 0x39, 0x33, 0x02, 0x3c, 0x29, 0xcc}};
inline constexpr GUID PRINTER_EXTENSION_REASON_DRIVER_EVENT = {
    0x23bb1328, 0x63de, 0x4293, {0x91, 0x5b, 0xa6, 0xa2, 0x3d, 0x92, 0x9a, 0xcb}};
inline constexpr GUID PRINTER_EXTENSION_DETAILEDREASON_PRINTER_STATUS = {
    0x5d5a1704, 0xdfd1, 0x4181, {0x8e, 0xee, 0x81, 0x5c, 0x86, 0xed, 0xad, 0x31}};

enum PrintSchemaConstrainedSetting {
    PrintSchemaConstrainedSetting_None = 0,
    PrintSchemaConstrainedSetting_PrintTicket = 1,
    PrintSchemaConstrainedSetting_Admin = 2,
    PrintSchemaConstrainedSetting_Device = 3
};

enum PrintSchemaSelectionType { PrintSchemaSelectionType_PickOne = 0, PrintSchemaSelectionType_PickMany = 1 };

enum PrintSchemaParameterDataType {
    PrintSchemaParameterDataType_Integer = 0,
    PrintSchemaParameterDataType_NumericString = 1,
    PrintSchemaParameterDataType_String = 2
};

struct IPrinterQueueView;
struct IPrinterBidiSetRequestCallback;
struct IPrinterExtensionAsyncOperation;
struct IPrintSchemaTicket;
struct IPrinterPropertyBag;
struct IPrinterQueue;
struct IPrinterQueue2;
struct IPrinterQueueEvent;
struct IPrinterExtensionContext;
struct IPrinterExtensionContextCollection;
struct IPrinterExtensionRequest;
struct IPrinterExtensionEventArgs;
struct IPrinterExtensionEvent;
struct IPrinterExtensionManager;
struct IPrintSchemaElement;
struct IPrintSchemaDisplayableElement;
struct IPrintSchemaOption;
struct IPrintSchemaOptionCollection;
struct IPrintSchemaFeature;
struct IPrintSchemaParameterInitializer;
struct IPrintSchemaCapabilities;
struct IPrintSchemaCapabilities2;
struct IPrintSchemaAsyncOperation;
struct IPrintSchemaAsyncOperationEvent;
struct IPrintSchemaTicket2;
struct IPrintSchemaPageMediaSizeOption;
struct IPrintSchemaNUpOption;
struct IPrintSchemaPageImageableSize;
struct IPrintSchemaParameterDefinition;

// The formatter does not know the interface macro.
// clang-format off

/// Named values of a driver, a queue or a user. GetBytes allocates with the task allocator and its caller
/// frees. An absent name is a failing result.
MIDL_INTERFACE("fea77364-df95-4a23-a905-019b79a8e481")
IPrinterPropertyBag : public IDispatch {
public:
    virtual HRESULT STDMETHODCALLTYPE GetBool(BSTR name, BOOL* value) = 0;
    virtual HRESULT STDMETHODCALLTYPE SetBool(BSTR name, BOOL value) = 0;
    virtual HRESULT STDMETHODCALLTYPE GetInt32(BSTR name, LONG* value) = 0;
    virtual HRESULT STDMETHODCALLTYPE SetInt32(BSTR name, LONG value) = 0;
    virtual HRESULT STDMETHODCALLTYPE GetString(BSTR name, BSTR* text) = 0;
    virtual HRESULT STDMETHODCALLTYPE SetString(BSTR name, BSTR value) = 0;
    virtual HRESULT STDMETHODCALLTYPE GetBytes(BSTR name, DWORD* count, BYTE** bytes) = 0;
    virtual HRESULT STDMETHODCALLTYPE SetBytes(BSTR name, DWORD count, BYTE* bytes) = 0;
    virtual HRESULT STDMETHODCALLTYPE GetReadStream(BSTR name, IStream** stream) = 0;
    virtual HRESULT STDMETHODCALLTYPE GetWriteStream(BSTR name, IStream** stream) = 0;
};
__CRT_UUID_DECL(IPrinterPropertyBag, 0xfea77364, 0xdf95, 0x4a23, 0xa9, 0x05, 0x01, 0x9b, 0x79, 0xa8, 0xe4,
                0x81)

MIDL_INTERFACE("3580a828-07fe-4b94-ac1a-757d9d2d3056")
IPrinterQueue : public IDispatch {
public:
    virtual HRESULT STDMETHODCALLTYPE get_Handle(HANDLE* handle) = 0;
    virtual HRESULT STDMETHODCALLTYPE get_Name(BSTR* text) = 0;
    virtual HRESULT STDMETHODCALLTYPE SendBidiQuery(BSTR text) = 0;
    virtual HRESULT STDMETHODCALLTYPE GetProperties(IPrinterPropertyBag** bag) = 0;
};
__CRT_UUID_DECL(IPrinterQueue, 0x3580a828, 0x07fe, 0x4b94, 0xac, 0x1a, 0x75, 0x7d, 0x9d, 0x2d, 0x30, 0x56)

MIDL_INTERFACE("8cd444e8-c9bb-49b3-8e38-e03209416131")
IPrinterQueue2 : public IPrinterQueue {
public:
    virtual HRESULT STDMETHODCALLTYPE SendBidiSetRequestAsync(
        BSTR text, IPrinterBidiSetRequestCallback* request, IPrinterExtensionAsyncOperation** operation) = 0;
    virtual HRESULT STDMETHODCALLTYPE GetPrinterQueueView(ULONG offset, ULONG size,
                                                          IPrinterQueueView** queue) = 0;
};
__CRT_UUID_DECL(IPrinterQueue2, 0x8cd444e8, 0xc9bb, 0x49b3, 0x8e, 0x38, 0xe0, 0x32, 0x09, 0x41, 0x61, 0x31)

MIDL_INTERFACE("214685f6-7b78-4681-87e0-495f739273d1")
IPrinterQueueEvent : public IDispatch {
public:
    virtual HRESULT STDMETHODCALLTYPE OnBidiResponseReceived(BSTR text, HRESULT result) = 0;
};
__CRT_UUID_DECL(IPrinterQueueEvent, 0x214685f6, 0x7b78, 0x4681, 0x87, 0xe0, 0x49, 0x5f, 0x73, 0x92, 0x73,
                0xd1)

MIDL_INTERFACE("39843bf2-c4d2-41fd-b4b2-aedbee5e1900")
IPrinterExtensionContext : public IDispatch {
public:
    virtual HRESULT STDMETHODCALLTYPE get_PrinterQueue(IPrinterQueue** queue) = 0;
    virtual HRESULT STDMETHODCALLTYPE get_PrintSchemaTicket(IPrintSchemaTicket** ticket) = 0;
    virtual HRESULT STDMETHODCALLTYPE get_DriverProperties(IPrinterPropertyBag** bag) = 0;
    virtual HRESULT STDMETHODCALLTYPE get_UserProperties(IPrinterPropertyBag** bag) = 0;
};
__CRT_UUID_DECL(IPrinterExtensionContext, 0x39843bf2, 0xc4d2, 0x41fd, 0xb4, 0xb2, 0xae, 0xdb, 0xee, 0x5e,
                0x19, 0x00)

MIDL_INTERFACE("fb476970-9bab-4861-811e-3e98b0c5addf")
IPrinterExtensionContextCollection : public IDispatch {
public:
    virtual HRESULT STDMETHODCALLTYPE get_Count(ULONG* value) = 0;
    virtual HRESULT STDMETHODCALLTYPE GetAt(ULONG value, IPrinterExtensionContext** context) = 0;
    virtual HRESULT STDMETHODCALLTYPE get__NewEnum(IUnknown** object) = 0;
};
__CRT_UUID_DECL(IPrinterExtensionContextCollection, 0xfb476970, 0x9bab, 0x4861, 0x81, 0x1e, 0x3e, 0x98, 0xb0,
                0xc5, 0xad, 0xdf)

MIDL_INTERFACE("39843bf3-c4d2-41fd-b4b2-aedbee5e1900")
IPrinterExtensionRequest : public IDispatch {
public:
    virtual HRESULT STDMETHODCALLTYPE Cancel(HRESULT result, BSTR text) = 0;
    virtual HRESULT STDMETHODCALLTYPE Complete() = 0;
};
__CRT_UUID_DECL(IPrinterExtensionRequest, 0x39843bf3, 0xc4d2, 0x41fd, 0xb4, 0xb2, 0xae, 0xdb, 0xee, 0x5e,
                0x19, 0x00)

MIDL_INTERFACE("39843bf4-c4d2-41fd-b4b2-aedbee5e1900")
IPrinterExtensionEventArgs : public IPrinterExtensionContext {
public:
    virtual HRESULT STDMETHODCALLTYPE get_BidiNotification(BSTR* text) = 0;
    virtual HRESULT STDMETHODCALLTYPE get_ReasonId(GUID* id) = 0;
    virtual HRESULT STDMETHODCALLTYPE get_Request(IPrinterExtensionRequest** request) = 0;
    virtual HRESULT STDMETHODCALLTYPE get_SourceApplication(BSTR* text) = 0;
    virtual HRESULT STDMETHODCALLTYPE get_DetailedReasonId(GUID* id) = 0;
    virtual HRESULT STDMETHODCALLTYPE get_WindowModal(BOOL* value) = 0;
    virtual HRESULT STDMETHODCALLTYPE get_WindowParent(HANDLE* handle) = 0;
};
__CRT_UUID_DECL(IPrinterExtensionEventArgs, 0x39843bf4, 0xc4d2, 0x41fd, 0xb4, 0xb2, 0xae, 0xdb, 0xee, 0x5e,
                0x19, 0x00)

MIDL_INTERFACE("c093cb63-5ef5-4585-af8e-4d5637487b57")
IPrinterExtensionEvent : public IDispatch {
public:
    virtual HRESULT STDMETHODCALLTYPE OnDriverEvent(IPrinterExtensionEventArgs* arguments) = 0;
    virtual HRESULT STDMETHODCALLTYPE OnPrinterQueuesEnumerated(
        IPrinterExtensionContextCollection* collection) = 0;
};
__CRT_UUID_DECL(IPrinterExtensionEvent, 0xc093cb63, 0x5ef5, 0x4585, 0xaf, 0x8e, 0x4d, 0x56, 0x37, 0x48, 0x7b,
                0x57)

/// Starts and ends the printer extension's events.
MIDL_INTERFACE("93c6eb8c-b001-4355-9629-8e8a1b3f8e77")
IPrinterExtensionManager : public IUnknown {
public:
    virtual HRESULT STDMETHODCALLTYPE EnableEvents(GUID id) = 0;
    virtual HRESULT STDMETHODCALLTYPE DisableEvents() = 0;
};
__CRT_UUID_DECL(IPrinterExtensionManager, 0x93c6eb8c, 0xb001, 0x4355, 0x96, 0x29, 0x8e, 0x8a, 0x1b, 0x3f,
                0x8e, 0x77)

/// What every object over a Print Schema document answers. get_XmlNode gives an IXMLDOMElement.
MIDL_INTERFACE("724c1646-e64b-4bbf-8eb4-d45e4fd580da")
IPrintSchemaElement : public IDispatch {
public:
    virtual HRESULT STDMETHODCALLTYPE get_XmlNode(IUnknown** object) = 0;
    virtual HRESULT STDMETHODCALLTYPE get_Name(BSTR* text) = 0;
    virtual HRESULT STDMETHODCALLTYPE get_NamespaceUri(BSTR* text) = 0;
};
__CRT_UUID_DECL(IPrintSchemaElement, 0x724c1646, 0xe64b, 0x4bbf, 0x8e, 0xb4, 0xd4, 0x5e, 0x4f, 0xd5, 0x80,
                0xda)

MIDL_INTERFACE("af45af49-d6aa-407d-bf87-3912236e9d94")
IPrintSchemaDisplayableElement : public IPrintSchemaElement {
public:
    virtual HRESULT STDMETHODCALLTYPE get_DisplayName(BSTR* text) = 0;
};
__CRT_UUID_DECL(IPrintSchemaDisplayableElement, 0xaf45af49, 0xd6aa, 0x407d, 0xbf, 0x87, 0x39, 0x12, 0x23,
                0x6e, 0x9d, 0x94)

MIDL_INTERFACE("66bb2f51-5844-4997-8d70-4b7cc221cf92")
IPrintSchemaOption : public IPrintSchemaDisplayableElement {
public:
    virtual HRESULT STDMETHODCALLTYPE get_Selected(BOOL* value) = 0;
    virtual HRESULT STDMETHODCALLTYPE get_Constrained(PrintSchemaConstrainedSetting* constrained) = 0;
    virtual HRESULT STDMETHODCALLTYPE GetPropertyValue(BSTR name, BSTR namespaceUri, IUnknown** object) = 0;
};
__CRT_UUID_DECL(IPrintSchemaOption, 0x66bb2f51, 0x5844, 0x4997, 0x8d, 0x70, 0x4b, 0x7c, 0xc2, 0x21, 0xcf,
                0x92)

MIDL_INTERFACE("baecb0bd-a946-4771-bc30-e8b24f8d45c1")
IPrintSchemaOptionCollection : public IDispatch {
public:
    virtual HRESULT STDMETHODCALLTYPE get_Count(ULONG* value) = 0;
    virtual HRESULT STDMETHODCALLTYPE GetAt(ULONG value, IPrintSchemaOption** option) = 0;
    virtual HRESULT STDMETHODCALLTYPE get__NewEnum(IUnknown** object) = 0;
};
__CRT_UUID_DECL(IPrintSchemaOptionCollection, 0xbaecb0bd, 0xa946, 0x4771, 0xbc, 0x30, 0xe8, 0xb2, 0x4f, 0x8d,
                0x45, 0xc1)

/// A feature of a ticket or of the capabilities.
MIDL_INTERFACE("ef189461-5d62-4626-8e57-ff83583c4826")
IPrintSchemaFeature : public IPrintSchemaDisplayableElement {
public:
    virtual HRESULT STDMETHODCALLTYPE get_SelectedOption(IPrintSchemaOption** option) = 0;
    virtual HRESULT STDMETHODCALLTYPE put_SelectedOption(IPrintSchemaOption* option) = 0;
    virtual HRESULT STDMETHODCALLTYPE get_SelectionType(PrintSchemaSelectionType* type) = 0;
    virtual HRESULT STDMETHODCALLTYPE GetOption(BSTR name, BSTR namespaceUri,
                                                IPrintSchemaOption** option) = 0;
    virtual HRESULT STDMETHODCALLTYPE get_DisplayUI(BOOL* value) = 0;
};
__CRT_UUID_DECL(IPrintSchemaFeature, 0xef189461, 0x5d62, 0x4626, 0x8e, 0x57, 0xff, 0x83, 0x58, 0x3c, 0x48,
                0x26)

MIDL_INTERFACE("52027082-0b74-4648-9564-828cc6cb656c")
IPrintSchemaParameterInitializer : public IPrintSchemaElement {
public:
    virtual HRESULT STDMETHODCALLTYPE get_Value(VARIANT* value) = 0;
    virtual HRESULT STDMETHODCALLTYPE put_Value(VARIANT* value) = 0;
};
__CRT_UUID_DECL(IPrintSchemaParameterInitializer, 0x52027082, 0x0b74, 0x4648, 0x95, 0x64, 0x82, 0x8c, 0xc6,
                0xcb, 0x65, 0x6c)

/// The device's capabilities. An absent feature is S_FALSE and null.
MIDL_INTERFACE("5a577640-501d-4927-bcd0-5ef57a7ed175")
IPrintSchemaCapabilities : public IPrintSchemaElement {
public:
    virtual HRESULT STDMETHODCALLTYPE GetFeatureByKeyName(BSTR name, IPrintSchemaFeature** feature) = 0;
    virtual HRESULT STDMETHODCALLTYPE GetFeature(BSTR name, BSTR namespaceUri,
                                                 IPrintSchemaFeature** feature) = 0;
    virtual HRESULT STDMETHODCALLTYPE get_PageImageableSize(IPrintSchemaPageImageableSize** size) = 0;
    virtual HRESULT STDMETHODCALLTYPE get_JobCopiesAllDocumentsMinValue(ULONG* value) = 0;
    virtual HRESULT STDMETHODCALLTYPE get_JobCopiesAllDocumentsMaxValue(ULONG* value) = 0;
    virtual HRESULT STDMETHODCALLTYPE GetSelectedOptionInPrintTicket(
        IPrintSchemaFeature* feature, IPrintSchemaOption** option) = 0;
    virtual HRESULT STDMETHODCALLTYPE GetOptions(IPrintSchemaFeature* feature,
                                                 IPrintSchemaOptionCollection** collection) = 0;
};
__CRT_UUID_DECL(IPrintSchemaCapabilities, 0x5a577640, 0x501d, 0x4927, 0xbc, 0xd0, 0x5e, 0xf5, 0x7a, 0x7e,
                0xd1, 0x75)

MIDL_INTERFACE("b58845f4-9970-4d87-a636-169fb82ed642")
IPrintSchemaCapabilities2 : public IPrintSchemaCapabilities {
public:
    virtual HRESULT STDMETHODCALLTYPE GetParameterDefinition(
        BSTR name, BSTR namespaceUri, IPrintSchemaParameterDefinition** definition) = 0;
};
__CRT_UUID_DECL(IPrintSchemaCapabilities2, 0xb58845f4, 0x9970, 0x4d87, 0xa6, 0x36, 0x16, 0x9f, 0xb8, 0x2e,
                0xd6, 0x42)

MIDL_INTERFACE("143c8dcb-d37f-47f7-88e8-6b1d21f2c5f7")
IPrintSchemaAsyncOperation : public IDispatch {
public:
    virtual HRESULT STDMETHODCALLTYPE Start() = 0;
    virtual HRESULT STDMETHODCALLTYPE Cancel() = 0;
};
__CRT_UUID_DECL(IPrintSchemaAsyncOperation, 0x143c8dcb, 0xd37f, 0x47f7, 0x88, 0xe8, 0x6b, 0x1d, 0x21, 0xf2,
                0xc5, 0xf7)

MIDL_INTERFACE("23adbb16-0133-4906-b29a-1dce1d026379")
IPrintSchemaAsyncOperationEvent : public IDispatch {
public:
    virtual HRESULT STDMETHODCALLTYPE Completed(IPrintSchemaTicket* ticket, HRESULT result) = 0;
};
__CRT_UUID_DECL(IPrintSchemaAsyncOperationEvent, 0x23adbb16, 0x0133, 0x4906, 0xb2, 0x9a, 0x1d, 0xce, 0x1d,
                0x02, 0x63, 0x79)

/// A ticket in its application's hands. An absent feature is S_FALSE and null. NotifyXmlChanged after an edit
/// of the XML node.
MIDL_INTERFACE("e480b861-4708-4e6d-a5b4-a2b4eeb9baa4")
IPrintSchemaTicket : public IPrintSchemaElement {
public:
    virtual HRESULT STDMETHODCALLTYPE GetFeatureByKeyName(BSTR name, IPrintSchemaFeature** feature) = 0;
    virtual HRESULT STDMETHODCALLTYPE GetFeature(BSTR name, BSTR namespaceUri,
                                                 IPrintSchemaFeature** feature) = 0;
    virtual HRESULT STDMETHODCALLTYPE ValidateAsync(IPrintSchemaAsyncOperation** operation) = 0;
    virtual HRESULT STDMETHODCALLTYPE CommitAsync(IPrintSchemaTicket* ticket,
                                                  IPrintSchemaAsyncOperation** operation) = 0;
    virtual HRESULT STDMETHODCALLTYPE NotifyXmlChanged() = 0;
    virtual HRESULT STDMETHODCALLTYPE GetCapabilities(IPrintSchemaCapabilities** capabilities) = 0;
    virtual HRESULT STDMETHODCALLTYPE get_JobCopiesAllDocuments(ULONG* value) = 0;
    virtual HRESULT STDMETHODCALLTYPE put_JobCopiesAllDocuments(ULONG value) = 0;
};
__CRT_UUID_DECL(IPrintSchemaTicket, 0xe480b861, 0x4708, 0x4e6d, 0xa5, 0xb4, 0xa2, 0xb4, 0xee, 0xb9, 0xba,
                0xa4)

MIDL_INTERFACE("2ec1f844-766a-47a1-91f4-2eeb6190f80c")
IPrintSchemaTicket2 : public IPrintSchemaTicket {
public:
    virtual HRESULT STDMETHODCALLTYPE GetParameterInitializer(
        BSTR name, BSTR namespaceUri, IPrintSchemaParameterInitializer** initializer) = 0;
};
__CRT_UUID_DECL(IPrintSchemaTicket2, 0x2ec1f844, 0x766a, 0x47a1, 0x91, 0xf4, 0x2e, 0xeb, 0x61, 0x90, 0xf8,
                0x0c)

MIDL_INTERFACE("68746729-f493-4830-a10f-69028774605d")
IPrintSchemaPageMediaSizeOption : public IPrintSchemaOption {
public:
    virtual HRESULT STDMETHODCALLTYPE get_WidthInMicrons(ULONG* value) = 0;
    virtual HRESULT STDMETHODCALLTYPE get_HeightInMicrons(ULONG* value) = 0;
};
__CRT_UUID_DECL(IPrintSchemaPageMediaSizeOption, 0x68746729, 0xf493, 0x4830, 0xa1, 0x0f, 0x69, 0x02, 0x87,
                0x74, 0x60, 0x5d)

MIDL_INTERFACE("1f6342f2-d848-42e3-8995-c10a9ef9a3ba")
IPrintSchemaNUpOption : public IPrintSchemaOption {
public:
    virtual HRESULT STDMETHODCALLTYPE get_PagesPerSheet(ULONG* value) = 0;
};
__CRT_UUID_DECL(IPrintSchemaNUpOption, 0x1f6342f2, 0xd848, 0x42e3, 0x89, 0x95, 0xc1, 0x0a, 0x9e, 0xf9, 0xa3,
                0xba)

MIDL_INTERFACE("7c85bf5e-dc7c-4f61-839b-4107e1c9b68e")
IPrintSchemaPageImageableSize : public IPrintSchemaElement {
public:
    virtual HRESULT STDMETHODCALLTYPE get_ImageableSizeWidthInMicrons(ULONG* microns) = 0;
    virtual HRESULT STDMETHODCALLTYPE get_ImageableSizeHeightInMicrons(ULONG* microns) = 0;
    virtual HRESULT STDMETHODCALLTYPE get_OriginWidthInMicrons(ULONG* microns) = 0;
    virtual HRESULT STDMETHODCALLTYPE get_OriginHeightInMicrons(ULONG* microns) = 0;
    virtual HRESULT STDMETHODCALLTYPE get_ExtentWidthInMicrons(ULONG* microns) = 0;
    virtual HRESULT STDMETHODCALLTYPE get_ExtentHeightInMicrons(ULONG* microns) = 0;
};
__CRT_UUID_DECL(IPrintSchemaPageImageableSize, 0x7c85bf5e, 0xdc7c, 0x4f61, 0x83, 0x9b, 0x41, 0x07, 0xe1,
                0xc9, 0xb6, 0x8e)

MIDL_INTERFACE("b5ade81e-0e61-4fe1-81c6-c333e4ffe0f1")
IPrintSchemaParameterDefinition : public IPrintSchemaDisplayableElement {
public:
    virtual HRESULT STDMETHODCALLTYPE get_UserInputRequired(BOOL* value) = 0;
    virtual HRESULT STDMETHODCALLTYPE get_UnitType(BSTR* text) = 0;
    virtual HRESULT STDMETHODCALLTYPE get_DataType(PrintSchemaParameterDataType* type) = 0;
    virtual HRESULT STDMETHODCALLTYPE get_RangeMin(INT* value) = 0;
    virtual HRESULT STDMETHODCALLTYPE get_RangeMax(INT* value) = 0;
};
__CRT_UUID_DECL(IPrintSchemaParameterDefinition, 0xb5ade81e, 0x0e61, 0x4fe1, 0x81, 0xc6, 0xc3, 0x33, 0xe4,
                0xff, 0xe0, 0xf1)

// The classes that CoCreateInstance may make or that name an event source.
class PrinterExtensionManager;
__CRT_UUID_DECL(PrinterExtensionManager,
                0x331b60da, 0x9e90, 0x4dd0, 0x9c, 0x84, 0xea, 0xc4, 0xe6, 0x59, 0xb6, 0x1f)
class PrinterQueue;
__CRT_UUID_DECL(PrinterQueue,
                0xeb54c230, 0x798c, 0x4c9e, 0xb4, 0x61, 0x29, 0xfa, 0xd0, 0x40, 0x39, 0xb1)
class PrintSchemaAsyncOperation;
__CRT_UUID_DECL(PrintSchemaAsyncOperation,
                0x43b2f83d, 0x10f2, 0x48ab, 0x83, 0x1b, 0x55, 0xfd, 0xbd, 0xbd, 0x34, 0xa4)
