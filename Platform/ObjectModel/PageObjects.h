#pragma once

#include "Com/PlatformExport.h"

#include <windows.h>
#include <atlcomcli.h>
#include <xpsobjectmodel.h>
#include <xpsobjectmodel_1.h>

#include <string>
#include <vector>

namespace OvPlatform {

// Pages and what stands on them, as objects over their markup: all of a page's markup stays, and only what
// was changed or added is written anew. Results, null places and failures as the calls of the object model
// have them; objects that are no pages belong to at most one owner. A page and all that belongs to it may be
// used on one thread at a time.

// The empty objects.
OV_PLATFORM_API HRESULT CreateCanvasObject(IXpsOMCanvas** canvas);
OV_PLATFORM_API HRESULT CreateGlyphsObject(IXpsOMFontResource* font, IXpsOMGlyphs** glyphs);
OV_PLATFORM_API HRESULT CreatePathObject(IXpsOMPath** path);
OV_PLATFORM_API HRESULT CreateGeometryObject(IXpsOMGeometry** geometry);
OV_PLATFORM_API HRESULT CreateGeometryFigureObject(const XPS_POINT* startPoint,
                                                   IXpsOMGeometryFigure** figure);
OV_PLATFORM_API HRESULT CreateMatrixTransformObject(const XPS_MATRIX* matrix,
                                                    IXpsOMMatrixTransform** transform);
/// The profile is null unless the colour is one of a profile's channels.
OV_PLATFORM_API HRESULT CreateSolidColorBrushObject(const XPS_COLOR* color,
                                                    IXpsOMColorProfileResource* profile,
                                                    IXpsOMSolidColorBrush** brush);
OV_PLATFORM_API HRESULT CreateImageBrushObject(IXpsOMImageResource* image, const XPS_RECT* viewbox,
                                               const XPS_RECT* viewport, IXpsOMImageBrush** brush);
OV_PLATFORM_API HRESULT CreateDictionaryObject(IXpsOMDictionary** dictionary);
OV_PLATFORM_API HRESULT CreatePageObject(const XPS_SIZE* dimensions, LPCWSTR language, IOpcPartUri* name,
                                         IXpsOMPage1** page);

/// A page from its markup, from the stream's place to its end. What it refers to must be among the resources:
/// XPS_E_MISSING_RESOURCE_RELATIONSHIP. What is no page is XPS_E_INVALID_MARKUP.
OV_PLATFORM_API HRESULT ReadPage(IStream* markup, IOpcPartUri* name, IXpsOMPartResources* resources,
                                 BOOL reuseObjects, IXpsOMPage1** page);

/// The same for a resource dictionary that is a part of its own.
OV_PLATFORM_API HRESULT ReadDictionary(IStream* markup, IOpcPartUri* name, IXpsOMPartResources* resources,
                                       IXpsOMDictionary** dictionary);

/// The markup, in the format that is asked for; unspecified is that which it was read in, and XPS for a new
/// one. References are relative to the page's part name.
OV_PLATFORM_API HRESULT WritePage(IXpsOMPage* page, ISequentialStream* stream, XPS_DOCUMENT_TYPE type);
OV_PLATFORM_API HRESULT WriteDictionary(IXpsOMDictionary* dictionary, IOpcPartUri* name,
                                        ISequentialStream* stream, XPS_DOCUMENT_TYPE type);

/// A part that markup refers to, as it would be written now.
struct UsedPart {
    std::string name;
    /// Null only for what stands in markup compatibility and was not among the resources.
    CComPtr<IXpsOMResource> resource;
};

/// Each part that the page or the dictionary refers to, once, in the order of the markup.
OV_PLATFORM_API HRESULT ListUsedParts(IXpsOMPage* page, std::vector<UsedPart>& parts);
OV_PLATFORM_API HRESULT ListUsedParts(IXpsOMDictionary* dictionary, std::vector<UsedPart>& parts);

/// Whether anything was changed since the page was read. Always for a new one.
OV_PLATFORM_API bool IsPageChanged(IXpsOMPage* page);
/// Whether a part that its markup refers to has got another name since.
OV_PLATFORM_API bool RefersToRenamedParts(IXpsOMPage* page);

/// What GetOwner answers. Not counted: the owner calls again with null before it ends.
OV_PLATFORM_API HRESULT SetPageOwner(IXpsOMPage* page, IXpsOMPageReference* owner);
OV_PLATFORM_API HRESULT SetDictionaryOwner(IXpsOMDictionary* dictionary, IUnknown* owner);

} // namespace OvPlatform
