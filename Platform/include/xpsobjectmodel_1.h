#pragma once

// What the document object model got with its second release: packages and pages of either format, by its
// name.

#include <xpsobjectmodel.h>

#define XPS_E_INVALID_NUMBER_OF_POINTS_IN_CURVE_SEGMENTS _HRESULT_TYPEDEF_(0x80520600)
#define XPS_E_ABSOLUTE_REFERENCE _HRESULT_TYPEDEF_(0x80520601)
#define XPS_E_INVALID_NUMBER_OF_COLOR_CHANNELS _HRESULT_TYPEDEF_(0x80520602)

enum XPS_DOCUMENT_TYPE {
    XPS_DOCUMENT_TYPE_UNSPECIFIED = 1,
    XPS_DOCUMENT_TYPE_XPS = 2,
    XPS_DOCUMENT_TYPE_OPENXPS = 3
};

struct IXpsOMPackage1;
struct IXpsOMPage1;

MIDL_INTERFACE("0a91b617-d612-4181-bf7c-be5824e9cc8f") IXpsOMObjectFactory1 : public IXpsOMObjectFactory {
public:
    virtual HRESULT STDMETHODCALLTYPE GetDocumentTypeFromFile(LPCWSTR filename,
                                                              XPS_DOCUMENT_TYPE * documentType) = 0;
    virtual HRESULT STDMETHODCALLTYPE GetDocumentTypeFromStream(IStream * xpsDocumentStream,
                                                                XPS_DOCUMENT_TYPE * documentType) = 0;
    virtual HRESULT STDMETHODCALLTYPE ConvertHDPhotoToJpegXR(IXpsOMImageResource * imageResource) = 0;
    virtual HRESULT STDMETHODCALLTYPE ConvertJpegXRToHDPhoto(IXpsOMImageResource * imageResource) = 0;
    virtual HRESULT STDMETHODCALLTYPE CreatePackageWriterOnFile1(
        LPCWSTR fileName, SECURITY_ATTRIBUTES * securityAttributes, DWORD flagsAndAttributes,
        BOOL optimizeMarkupSize, XPS_INTERLEAVING interleaving, IOpcPartUri * documentSequencePartName,
        IXpsOMCoreProperties * coreProperties, IXpsOMImageResource * packageThumbnail,
        IXpsOMPrintTicketResource * documentSequencePrintTicket, IOpcPartUri * discardControlPartName,
        XPS_DOCUMENT_TYPE documentType, IXpsOMPackageWriter * *packageWriter) = 0;
    virtual HRESULT STDMETHODCALLTYPE CreatePackageWriterOnStream1(
        ISequentialStream * outputStream, BOOL optimizeMarkupSize, XPS_INTERLEAVING interleaving,
        IOpcPartUri * documentSequencePartName, IXpsOMCoreProperties * coreProperties,
        IXpsOMImageResource * packageThumbnail, IXpsOMPrintTicketResource * documentSequencePrintTicket,
        IOpcPartUri * discardControlPartName, XPS_DOCUMENT_TYPE documentType,
        IXpsOMPackageWriter * *packageWriter) = 0;
    virtual HRESULT STDMETHODCALLTYPE CreatePackage1(IXpsOMPackage1 * *package) = 0;
    virtual HRESULT STDMETHODCALLTYPE CreatePackageFromStream1(IStream * stream, BOOL reuseObjects,
                                                               IXpsOMPackage1 * *package) = 0;
    virtual HRESULT STDMETHODCALLTYPE CreatePackageFromFile1(LPCWSTR filename, BOOL reuseObjects,
                                                             IXpsOMPackage1 * *package) = 0;
    virtual HRESULT STDMETHODCALLTYPE CreatePage1(const XPS_SIZE* pageDimensions, LPCWSTR language,
                                                  IOpcPartUri* partUri, IXpsOMPage1** page) = 0;
    virtual HRESULT STDMETHODCALLTYPE CreatePageFromStream1(IStream * pageMarkupStream, IOpcPartUri * partUri,
                                                            IXpsOMPartResources * resources,
                                                            BOOL reuseObjects, IXpsOMPage1 * *page) = 0;
    virtual HRESULT STDMETHODCALLTYPE CreateRemoteDictionaryResourceFromStream1(
        IStream * dictionaryMarkupStream, IOpcPartUri * partUri, IXpsOMPartResources * resources,
        IXpsOMRemoteDictionaryResource * *dictionaryResource) = 0;
};
__CRT_UUID_DECL(IXpsOMObjectFactory1, 0x0a91b617, 0xd612, 0x4181, 0xbf, 0x7c, 0xbe, 0x58, 0x24, 0xe9, 0xcc,
                0x8f)

MIDL_INTERFACE("95a9435e-12bb-461b-8e7f-c6adb04cd96a") IXpsOMPackage1 : public IXpsOMPackage {
public:
    virtual HRESULT STDMETHODCALLTYPE GetDocumentType(XPS_DOCUMENT_TYPE * documentType) = 0;
    virtual HRESULT STDMETHODCALLTYPE WriteToFile1(LPCWSTR fileName, SECURITY_ATTRIBUTES * securityAttributes,
                                                   DWORD flagsAndAttributes, BOOL optimizeMarkupSize,
                                                   XPS_DOCUMENT_TYPE documentType) = 0;
    virtual HRESULT STDMETHODCALLTYPE WriteToStream1(
        ISequentialStream * outputStream, BOOL optimizeMarkupSize, XPS_DOCUMENT_TYPE documentType) = 0;
};
__CRT_UUID_DECL(IXpsOMPackage1, 0x95a9435e, 0x12bb, 0x461b, 0x8e, 0x7f, 0xc6, 0xad, 0xb0, 0x4c, 0xd9, 0x6a)

MIDL_INTERFACE("305b60ef-6892-4dda-9cbb-3aa65974508a") IXpsOMPage1 : public IXpsOMPage {
public:
    virtual HRESULT STDMETHODCALLTYPE GetDocumentType(XPS_DOCUMENT_TYPE * documentType) = 0;
    virtual HRESULT STDMETHODCALLTYPE Write1(ISequentialStream * stream, BOOL optimizeMarkupSize,
                                             XPS_DOCUMENT_TYPE documentType) = 0;
};
__CRT_UUID_DECL(IXpsOMPage1, 0x305b60ef, 0x6892, 0x4dda, 0x9c, 0xbb, 0x3a, 0xa6, 0x59, 0x74, 0x50, 0x8a)

MIDL_INTERFACE("3b0b6d38-53ad-41da-b212-d37637a6714e") IXpsDocumentPackageTarget : public IUnknown {
public:
    virtual HRESULT STDMETHODCALLTYPE GetXpsOMPackageWriter(IOpcPartUri * documentSequencePartName,
                                                            IOpcPartUri * discardControlPartName,
                                                            IXpsOMPackageWriter * *packageWriter) = 0;
    virtual HRESULT STDMETHODCALLTYPE GetXpsOMFactory(IXpsOMObjectFactory * *xpsFactory) = 0;
    virtual HRESULT STDMETHODCALLTYPE GetXpsType(XPS_DOCUMENT_TYPE * documentType) = 0;
};
__CRT_UUID_DECL(IXpsDocumentPackageTarget, 0x3b0b6d38, 0x53ad, 0x41da, 0xb2, 0x12, 0xd3, 0x76, 0x37, 0xa6,
                0x71, 0x4e)

MIDL_INTERFACE("bf8fc1d4-9d46-4141-ba5f-94bb9250d041")
IXpsOMRemoteDictionaryResource1 : public IXpsOMRemoteDictionaryResource {
public:
    virtual HRESULT STDMETHODCALLTYPE GetDocumentType(XPS_DOCUMENT_TYPE * documentType) = 0;
    virtual HRESULT STDMETHODCALLTYPE Write1(ISequentialStream * stream, XPS_DOCUMENT_TYPE documentType) = 0;
};
__CRT_UUID_DECL(IXpsOMRemoteDictionaryResource1, 0xbf8fc1d4, 0x9d46, 0x4141, 0xba, 0x5f, 0x94, 0xbb, 0x92,
                0x50, 0xd0, 0x41)
