#include "Packages/XpsObjectModelWrapper.h"

#include "FontsAndImages/GdiDeviceContext.h"
#include "FontsAndImages/WICHelper.h"

#include <LowLevelFacilities/Strings/CPStringUtils.h>
#include <SystemServices/WindowsDesktopUtilities.h>

#include <msopc.h>

#include <iterator>

namespace {

constexpr const wchar_t* sequenceName = L"/FixedDocumentSequence.fdseq";
constexpr const wchar_t* documentName = L"/Documents/1/FixedDocument.fdoc";
constexpr const wchar_t* pageNameFormat = L"/Documents/1/Pages/Page_%u.fpage";
constexpr const wchar_t* jobTicketName = L"/Job_PT.xml";

constexpr DWORD singleThreaded = 2; // COINIT_APARTMENTTHREADED
constexpr int extensionLength = 3;

using Ticket = PrintTicketXmlDocument;

// What a picture's file becomes in the package, by the end of its name.
struct PictureKind {
    const wchar_t* extension;
    XPS_IMAGE_TYPE type;
    bool isConverted;
};
constexpr PictureKind pictureKinds[] = {
    {L"jpg", XPS_IMAGE_TYPE_JPEG, false},
    {L"png", XPS_IMAGE_TYPE_PNG, false},
    {L"gif", XPS_IMAGE_TYPE_PNG, true},
    {L"bmp", XPS_IMAGE_TYPE_PNG, true},
};
// Deliberate: it may be none, and then the platform says so or not.
constexpr PictureKind otherPicture{L"", XPS_IMAGE_TYPE_PNG, false};

const PictureKind& KindOf(const CXString& extension) {
    for (const PictureKind& kind : pictureKinds)
        if (extension == kind.extension) return kind;
    return otherPicture;
}

// The converter's stream, of which it adds no reference.
HRESULT ConvertToPng(const CXString& file, CComPtr<IStream>& stream) {
    WICHelper picture{CXString(file)};
    picture.Initialize();
    IStream* converted = nullptr;
    if (!picture.IsInitialized() || !picture.ConvertImage(GUID_ContainerFormatPng) ||
        !picture.GetTargetStream(&converted)) {
        const HRESULT result = picture.GetLastError();
        return FAILED(result) ? result : E_FAIL;
    }
    stream = converted;
    return S_OK;
}

template <class Resource>
OvlUniquePtr<Ticket> ReadTicket(Resource* owner) {
    CComPtr<IXpsOMPrintTicketResource> resource;
    CComPtr<IStream> stream;
    if (FAILED(owner->GetPrintTicketResource(&resource)) || !resource || FAILED(resource->GetStream(&stream)))
        return {};
    return OvlUniquePtr<Ticket>(new Ticket(stream));
}

} // namespace

XpsObjectModelWrapper::XpsObjectModelWrapper() {
    m_apartment.TryInitializeCom(singleThreaded, false);
    m_factory.CoCreateInstance(__uuidof(XpsOMObjectFactory), nullptr, CLSCTX_INPROC_SERVER);
    if (m_factory) m_factory->QueryInterface(&m_factory1);
}

XpsObjectModelWrapper::~XpsObjectModelWrapper() = default;

HRESULT XpsObjectModelWrapper::ReadPackageFromFile(const CXString& path) {
    if (!m_factory) return E_FAIL;
    m_fileName = path;
    m_pages.Release();
    m_document.Release();
    m_sequence.Release();
    m_package.Release();
    m_package1.Release();
    m_wasRead = false;
    HRESULT result;
    if (m_factory1) {
        result = m_factory1->CreatePackageFromFile1(m_fileName, TRUE, &m_package1);
        if (SUCCEEDED(result)) result = m_package1->QueryInterface(&m_package);
    } else {
        result = m_factory->CreatePackageFromFile(m_fileName, TRUE, &m_package);
    }
    if (SUCCEEDED(result)) result = OpenDocument();
    m_wasRead = SUCCEEDED(result);
    return result;
}

HRESULT XpsObjectModelWrapper::OpenDocument() {
    CComPtr<IXpsOMDocumentCollection> documents;
    HRESULT result = m_package->GetDocumentSequence(&m_sequence);
    if (SUCCEEDED(result)) result = m_sequence->GetDocuments(&documents);
    if (SUCCEEDED(result)) result = documents->GetAt(0, &m_document);
    if (SUCCEEDED(result)) result = m_document->GetPageReferences(&m_pages);
    return result;
}

bool XpsObjectModelWrapper::CreateEmptyPackage() {
    if (!m_factory || m_sequence) return false;
    CComPtr<IXpsOMPackage> package;
    CComPtr<IXpsOMDocumentSequence> sequence;
    CComPtr<IXpsOMDocumentCollection> documents;
    CComPtr<IXpsOMDocument> document;
    CComPtr<IOpcPartUri> sequenceUri;
    CComPtr<IOpcPartUri> documentUri;
    CComPtr<IXpsOMPageReferenceCollection> pages;
    HRESULT result = m_factory->CreatePackage(&package);
    if (SUCCEEDED(result)) result = m_factory->CreatePartUri(sequenceName, &sequenceUri);
    if (SUCCEEDED(result)) result = m_factory->CreateDocumentSequence(sequenceUri, &sequence);
    if (SUCCEEDED(result)) result = package->SetDocumentSequence(sequence);
    if (SUCCEEDED(result)) result = m_factory->CreatePartUri(documentName, &documentUri);
    if (SUCCEEDED(result)) result = m_factory->CreateDocument(documentUri, &document);
    if (SUCCEEDED(result)) result = sequence->GetDocuments(&documents);
    if (SUCCEEDED(result)) result = documents->Append(document);
    if (SUCCEEDED(result)) result = document->GetPageReferences(&pages);
    if (FAILED(result)) return false;
    m_package = package;
    m_sequence = sequence;
    m_document = document;
    m_pages = pages;
    return true;
}

DWORD XpsObjectModelWrapper::GetTotalNumberOfPages() {
    UINT32 count = 0;
    return m_wasRead && m_pages && SUCCEEDED(m_pages->GetCount(&count)) ? count : 0;
}

int XpsObjectModelWrapper::AddEmptyPage(IXpsOMPage** page, const wchar_t* language, float width,
                                        float height) {
    if (!m_pages) return 0;
    ++m_pageNumber;
    if (page == nullptr) return 0;
    *page = nullptr;
    CXString name;
    name.Format(pageNameFormat, m_pageNumber);
    const XPS_SIZE size{width, height};
    CComPtr<IOpcPartUri> uri;
    CComPtr<IXpsOMPage> made;
    CComPtr<IXpsOMPageReference> reference;
    HRESULT result = m_factory->CreatePartUri(name, &uri);
    if (SUCCEEDED(result)) result = m_factory->CreatePage(&size, language, uri, &made);
    if (SUCCEEDED(result)) result = m_factory->CreatePageReference(&size, &reference);
    if (SUCCEEDED(result)) result = m_pages->Append(reference);
    if (SUCCEEDED(result)) result = reference->SetPage(made);
    *page = made.Detach();
    return SUCCEEDED(result) ? static_cast<int>(m_pageNumber) : 0;
}

template <class Make>
HRESULT XpsObjectModelWrapper::AppendToPages(bool firstPageOnly, Make&& make) {
    UINT32 count = 0;
    HRESULT result = m_pages->GetCount(&count);
    if (firstPageOnly) count = 1;
    for (UINT32 index = 0; SUCCEEDED(result) && index < count; ++index) {
        CComPtr<IXpsOMPageReference> reference;
        CComPtr<IXpsOMPage> page;
        CComPtr<IXpsOMVisual> visual;
        CComPtr<IXpsOMVisualCollection> visuals;
        result = m_pages->GetAt(index, &reference);
        if (SUCCEEDED(result)) result = reference->GetPage(&page);
        if (SUCCEEDED(result)) result = make(visual);
        if (SUCCEEDED(result)) result = page->GetVisuals(&visuals);
        if (SUCCEEDED(result)) result = visuals->Append(visual);
    }
    return result;
}

HRESULT XpsObjectModelWrapper::CreateFontPart(const CXString& name, CXString& text, const CXString& face,
                                              int charset, int pointSize, IXpsOMFontResource** font) {
    CComPtr<IOpcPartUri> uri;
    HRESULT result = m_factory->CreatePartUri(name, &uri);
    if (FAILED(result)) return result;
    const ByteBuffer subset = GdiDeviceContext().GetFontSubset(face, charset, pointSize, text);
    CComPtr<IStream> stream;
    if (subset.empty() || FAILED(WindowsDesktopUtilities::CreateReadOnlyIStreamFromBuffer(
                              &stream, subset.getLpbyte(), subset.size())))
        return E_FAIL;
    CComPtr<IXpsOMFontResource> made;
    result = m_factory->CreateFontResource(stream, XPS_FONT_EMBEDDING_OBFUSCATED, uri, FALSE, &made);
    if (SUCCEEDED(result)) result = made->SetContent(stream, XPS_FONT_EMBEDDING_OBFUSCATED, uri);
    if (SUCCEEDED(result)) *font = made.Detach();
    return result;
}

HRESULT XpsObjectModelWrapper::CreateText(IXpsOMFontResource* font, const CXString& text,
                                          const XPS_POINT& origin, const XPS_COLOR& color, int pointSize,
                                          IXpsOMGlyphs** glyphs) {
    CComPtr<IXpsOMSolidColorBrush> brush;
    CComPtr<IXpsOMGlyphs> made;
    CComPtr<IXpsOMGlyphsEditor> editor;
    HRESULT result = m_factory->CreateSolidColorBrush(&color, nullptr, &brush);
    if (SUCCEEDED(result)) result = m_factory->CreateGlyphs(font, &made);
    if (SUCCEEDED(result)) result = made->SetOrigin(&origin);
    if (SUCCEEDED(result))
        result = made->SetFontRenderingEmSize(static_cast<float>(pointSize) / 72.0F * 96.0F);
    if (SUCCEEDED(result)) result = made->SetFillBrushLocal(brush);
    if (SUCCEEDED(result)) result = made->GetGlyphsEditor(&editor);
    if (SUCCEEDED(result)) result = editor->SetUnicodeString(text);
    if (SUCCEEDED(result)) result = editor->ApplyEdits();
    if (SUCCEEDED(result)) *glyphs = made.Detach();
    return result;
}

bool XpsObjectModelWrapper::AddTextToPages(const CXString& fontPartName, CXString& text,
                                           const XPS_POINT& origin, const XPS_COLOR& color,
                                           const CXString& fontFace, int charset, int pointSize,
                                           bool firstPageOnly) {
    if (!m_pages) return false;
    CComPtr<IXpsOMFontResource> font;
    if (FAILED(CreateFontPart(fontPartName, text, fontFace, charset, pointSize, &font))) return false;
    return SUCCEEDED(AppendToPages(firstPageOnly, [&](CComPtr<IXpsOMVisual>& visual) {
        CComPtr<IXpsOMGlyphs> glyphs;
        const HRESULT result = CreateText(font, text, origin, color, pointSize, &glyphs);
        visual = glyphs.p;
        return result;
    }));
}

HRESULT XpsObjectModelWrapper::CreateImagePart(const CXString& name, const CXString& file,
                                               IXpsOMImageResource** image) {
    CXString extension = file.Right(extensionLength);
    extension.MakeLower();
    const PictureKind& kind = KindOf(extension);
    CComPtr<IStream> stream;
    HRESULT result =
        kind.isConverted ? ConvertToPng(file, stream) : m_factory->CreateReadOnlyStreamOnFile(file, &stream);
    CXString partName;
    partName.Format(L"%s.%s", name, kind.isConverted ? CXString(L"png") : extension);
    CComPtr<IOpcPartUri> uri;
    CComPtr<IXpsOMImageResource> made;
    if (SUCCEEDED(result)) result = m_factory->CreatePartUri(partName, &uri);
    if (SUCCEEDED(result)) result = m_factory->CreateImageResource(stream, kind.type, uri, &made);
    if (SUCCEEDED(result)) result = made->SetContent(stream, kind.type, uri);
    if (SUCCEEDED(result)) *image = made.Detach();
    return result;
}

HRESULT XpsObjectModelWrapper::CreateRectanglePath(const XPS_RECT* rectangle, IXpsOMPath** path) {
    if (rectangle == nullptr || path == nullptr) return E_POINTER;
    *path = nullptr;
    if (!m_factory) return E_FAIL;
    const float right = rectangle->x + rectangle->width;
    const float bottom = rectangle->y + rectangle->height;
    const XPS_POINT start{rectangle->x, rectangle->y};
    const XPS_SEGMENT_TYPE types[] = {XPS_SEGMENT_TYPE_LINE, XPS_SEGMENT_TYPE_LINE, XPS_SEGMENT_TYPE_LINE};
    const float points[] = {rectangle->x, bottom, right, bottom, right, rectangle->y};
    const BOOL strokes[] = {TRUE, TRUE, TRUE};
    CComPtr<IXpsOMGeometryFigure> figure;
    CComPtr<IXpsOMGeometry> geometry;
    CComPtr<IXpsOMGeometryFigureCollection> figures;
    CComPtr<IXpsOMPath> made;
    HRESULT result = m_factory->CreateGeometryFigure(&start, &figure);
    if (SUCCEEDED(result)) result = figure->SetIsClosed(TRUE);
    if (SUCCEEDED(result)) result = figure->SetIsFilled(TRUE);
    if (SUCCEEDED(result))
        result = figure->SetSegments(static_cast<UINT32>(std::size(types)),
                                     static_cast<UINT32>(std::size(points)), types, points, strokes);
    if (SUCCEEDED(result)) result = m_factory->CreateGeometry(&geometry);
    if (SUCCEEDED(result)) result = geometry->GetFigures(&figures);
    if (SUCCEEDED(result)) result = figures->Append(figure);
    if (SUCCEEDED(result)) result = m_factory->CreatePath(&made);
    if (SUCCEEDED(result)) result = made->SetGeometryLocal(geometry);
    if (SUCCEEDED(result)) *path = made.Detach();
    return result;
}

HRESULT XpsObjectModelWrapper::CreatePicture(IXpsOMImageResource* image, const XPS_RECT& pathRect,
                                             const XPS_RECT& viewbox, float opacity, IXpsOMPath** path) {
    CComPtr<IXpsOMImageBrush> brush;
    CComPtr<IXpsOMPath> made;
    HRESULT result = m_factory->CreateImageBrush(image, &viewbox, &pathRect, &brush);
    if (SUCCEEDED(result)) result = brush->SetOpacity(opacity);
    if (SUCCEEDED(result)) result = CreateRectanglePath(&pathRect, &made);
    if (SUCCEEDED(result)) result = made->SetFillBrushLocal(brush);
    if (SUCCEEDED(result)) *path = made.Detach();
    return result;
}

bool XpsObjectModelWrapper::AddImageToPages(const CXString& partName, const CXString& imageFile,
                                            const XPS_RECT& pathRect, const XPS_RECT& viewbox, float opacity,
                                            bool firstPageOnly) {
    if (!m_pages) return false;
    CComPtr<IXpsOMImageResource> image;
    if (FAILED(CreateImagePart(partName, imageFile, &image))) return false;
    return SUCCEEDED(AppendToPages(firstPageOnly, [&](CComPtr<IXpsOMVisual>& visual) {
        CComPtr<IXpsOMPath> path;
        const HRESULT result = CreatePicture(image, pathRect, viewbox, opacity, &path);
        visual = path.p;
        return result;
    }));
}

PrintTicketXmlDocument* XpsObjectModelWrapper::TryToGetPtrToJobLevelPrintTicket() {
    if (!m_sequence) return nullptr;
    if (!m_jobTicket && m_wasRead) m_jobTicket = ReadTicket(m_sequence.p);
    return m_jobTicket.get();
}

PrintTicketXmlDocument* XpsObjectModelWrapper::TryToGetPtrToOrCreateJobLevelPrintTicket() {
    PrintTicketXmlDocument* ticket = TryToGetPtrToJobLevelPrintTicket();
    if (ticket == nullptr) AddEmptyJobLevelPrintTicket(&ticket);
    return ticket;
}

bool XpsObjectModelWrapper::AddEmptyJobLevelPrintTicket(PrintTicketXmlDocument** ticket) {
    if (m_jobTicket || ticket == nullptr) return false;
    m_jobTicket.reset(new Ticket(Ticket::GetBoilerplateForEmptyPrintTicket()));
    *ticket = m_jobTicket.get();
    return true;
}

OvlUniquePtr<PrintTicketXmlDocument, AlwaysOwned, UniquePtrCompare<PrintTicketXmlDocument>>
XpsObjectModelWrapper::TryToGetUniquePtrToPageLevelPrintTicket(unsigned pageIndex) {
    CComPtr<IXpsOMPageReference> page;
    if (!m_sequence || !m_wasRead || !m_pages || FAILED(m_pages->GetAt(pageIndex, &page))) return {};
    return ReadTicket(page.p);
}

// Deliberate: a ticket without text takes away the one that is there.
HRESULT XpsObjectModelWrapper::SetJobLevelPrintTicket() {
    CComPtr<IOpcPartUri> uri;
    CComBSTR text;
    CComPtr<IXpsOMPrintTicketResource> resource;
    HRESULT result = m_factory->CreatePartUri(jobTicketName, &uri);
    if (SUCCEEDED(result)) result = m_jobTicket->get_xml(&text);
    if (SUCCEEDED(result) && text.Length() > 0) {
        const std::string bytes = CPStringUtils::narrowToStdString(text, text.Length());
        CComPtr<IStream> stream;
        result =
            WindowsDesktopUtilities::CreateReadOnlyIStreamFromBuffer(&stream, bytes.data(), bytes.size());
        if (SUCCEEDED(result)) result = m_factory->CreatePrintTicketResource(stream, uri, &resource);
    }
    return SUCCEEDED(result) ? m_sequence->SetPrintTicketResource(resource) : result;
}

bool XpsObjectModelWrapper::WritePackageToFile(const CXString& path) {
    if (!m_document) return false;
    if (m_jobTicket && FAILED(SetJobLevelPrintTicket())) return false;
    return SUCCEEDED(m_package->WriteToFile(path, nullptr, FILE_ATTRIBUTE_NORMAL, FALSE));
}
