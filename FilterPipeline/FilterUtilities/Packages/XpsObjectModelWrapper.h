#pragma once

#include "ComSupport/FilterUtilitiesExport.h"
#include "PrintSchema/PrintTicketXmlDocument.h"

#include <LowLevelFacilities/Ownership/OvlUniquePtr.h>
#include <LowLevelFacilities/WideStrings/CXString.h>
#include <SystemServices/SafeCoInitialize.h>

#include <windows.h>
#include <atlcomcli.h>
#include <xpsobjectmodel.h>
#include <xpsobjectmodel_1.h>

/// One package of a document, as a whole: read from a file or made anew, pages added, text and pictures put
/// on its pages, tickets asked for and given, and written to a file. Only the first document of a package is
/// handled; of the others nothing is read or counted, and they stay as they are.
///
/// Deliberate: unlike the rest of the library, it tells failures of the platform by what its operations give,
/// and throws none of them. Memory that is out, and tickets that are none, throw as documents do. An object
/// belongs to the thread that made it, which it keeps in a single-threaded apartment.
class OV_FILTER_UTILITIES_API XpsObjectModelWrapper {
public:
    /// Tells no failure: on a platform without an object model, every operation fails.
    XpsObjectModelWrapper();
    virtual ~XpsObjectModelWrapper();
    XpsObjectModelWrapper(const XpsObjectModelWrapper&) = delete;
    XpsObjectModelWrapper& operator=(const XpsObjectModelWrapper&) = delete;

    /// Takes the place of any package that the object had. E_FAIL without an object model; otherwise the
    /// platform's result. Deliberate: a job's ticket that the object keeps stays, whichever package it was
    /// read from or made for, since whoever asked for it may use it as long as the object lives; it is
    /// written with this package.
    HRESULT ReadPackageFromFile(const CXString& path);

    /// A sequence with one document without pages. False if there is a package, and on failure. Deliberate: a
    /// package that was made counts no pages, and is asked for no tickets but the one that is made for it.
    bool CreateEmptyPackage();

    /// Of the first document. 0 if no package was read.
    DWORD GetTotalNumberOfPages();

    /// A page behind the others: gives its serial number, by which its part is called, and the page, for the
    /// caller to release; 0 on failure, which uses its number up. Sizes are in 96ths of an inch; the language
    /// is a tag such as "en-US".
    int AddEmptyPage(IXpsOMPage** page, const wchar_t* language, float width, float height);

    /// Puts a text on all pages, or on the first, over what is there: its baseline begins at the origin
    /// (96ths of an inch). Of the font, cut to the text, one part serves all pages; its name must be a GUID
    /// with an extension. On failure pages may have been stamped already.
    bool AddTextToPages(const CXString& fontPartName, CXString& text, const XPS_POINT& origin,
                        const XPS_COLOR& color, const CXString& fontFace, int charset, int pointSize,
                        bool firstPageOnly);

    /// Puts the viewbox of a picture (in 96ths of an inch of the picture) into a rectangle of all pages, or
    /// of the first, over what is there. A file that ends in "jpg" or "png" goes into the package as it is,
    /// "gif" and "bmp" as PNG, and anything else as if it were PNG; the part's name gets that as its
    /// extension. One part serves all pages. On failure pages may have been stamped already.
    bool AddImageToPages(const CXString& partName, const CXString& imageFile, const XPS_RECT& pathRect,
                         const XPS_RECT& viewbox, float opacity, bool firstPageOnly);

    /// The ticket that the object keeps; where it keeps none, that of the package that was read, and null
    /// where that has none. The object keeps it to its end. What is changed in it is written with the
    /// package.
    PrintTicketXmlDocument* TryToGetPtrToJobLevelPrintTicket();
    /// The same, or a new one.
    PrintTicketXmlDocument* TryToGetPtrToOrCreateJobLevelPrintTicket();
    /// False where the object has a ticket already, and for null.
    bool AddEmptyJobLevelPrintTicket(PrintTicketXmlDocument** ticket);
    /// Of a page of the package that was read, counted from 0: read anew each time, for the caller. Empty
    /// where there is none.
    OvlUniquePtr<PrintTicketXmlDocument, AlwaysOwned, UniquePtrCompare<PrintTicketXmlDocument>>
    TryToGetUniquePtrToPageLevelPrintTicket(unsigned pageIndex);

    /// In the format that it was read in. It may be the file that was read.
    bool WritePackageToFile(const CXString& path);

protected:
    /// A closed, filled rectangle without brushes.
    HRESULT CreateRectanglePath(const XPS_RECT* rectangle, IXpsOMPath** path);

private:
    HRESULT OpenDocument();
    HRESULT CreateFontPart(const CXString& name, CXString& text, const CXString& face, int charset,
                           int pointSize, IXpsOMFontResource** font);
    HRESULT CreateImagePart(const CXString& name, const CXString& file, IXpsOMImageResource** image);
    HRESULT CreateText(IXpsOMFontResource* font, const CXString& text, const XPS_POINT& origin,
                       const XPS_COLOR& color, int pointSize, IXpsOMGlyphs** glyphs);
    HRESULT CreatePicture(IXpsOMImageResource* image, const XPS_RECT& pathRect, const XPS_RECT& viewbox,
                          float opacity, IXpsOMPath** path);
    /// Makes a visual for each page that is to have one, and puts it over the others.
    template <class Make>
    HRESULT AppendToPages(bool firstPageOnly, Make&& make);
    HRESULT SetJobLevelPrintTicket();

    CXString m_fileName;
    SafeCoInitialize m_apartment;
    CComPtr<IXpsOMObjectFactory1> m_factory1;
    CComPtr<IXpsOMObjectFactory> m_factory;
    CComPtr<IXpsOMPackage1> m_package1;
    CComPtr<IXpsOMPackage> m_package;
    CComPtr<IXpsOMDocumentSequence> m_sequence;
    CComPtr<IUnknown> m_reserved; // always null
    CComPtr<IXpsOMDocument> m_document;
    CComPtr<IXpsOMPageReferenceCollection> m_pages;
    OvlUniquePtr<PrintTicketXmlDocument> m_jobTicket;
    bool m_wasRead = false;
    unsigned m_pageNumber = 0;
};
