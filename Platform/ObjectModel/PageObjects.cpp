#include "ObjectModel/PageObjects.h"

namespace OvPlatform {

// Until they are built.
HRESULT CreateCanvasObject(IXpsOMCanvas**) { return E_NOTIMPL; }
HRESULT CreateGlyphsObject(IXpsOMFontResource*, IXpsOMGlyphs**) { return E_NOTIMPL; }
HRESULT CreatePathObject(IXpsOMPath**) { return E_NOTIMPL; }
HRESULT CreateGeometryObject(IXpsOMGeometry**) { return E_NOTIMPL; }
HRESULT CreateGeometryFigureObject(const XPS_POINT*, IXpsOMGeometryFigure**) { return E_NOTIMPL; }
HRESULT CreateMatrixTransformObject(const XPS_MATRIX*, IXpsOMMatrixTransform**) { return E_NOTIMPL; }
HRESULT CreateSolidColorBrushObject(const XPS_COLOR*, IXpsOMColorProfileResource*, IXpsOMSolidColorBrush**) {
    return E_NOTIMPL;
}
HRESULT CreateImageBrushObject(IXpsOMImageResource*, const XPS_RECT*, const XPS_RECT*, IXpsOMImageBrush**) {
    return E_NOTIMPL;
}
HRESULT CreateDictionaryObject(IXpsOMDictionary**) { return E_NOTIMPL; }
HRESULT CreatePageObject(const XPS_SIZE*, LPCWSTR, IOpcPartUri*, IXpsOMPage1**) { return E_NOTIMPL; }
HRESULT ReadPage(IStream*, IOpcPartUri*, IXpsOMPartResources*, BOOL, IXpsOMPage1**) { return E_NOTIMPL; }
HRESULT ReadDictionary(IStream*, IOpcPartUri*, IXpsOMPartResources*, IXpsOMDictionary**) { return E_NOTIMPL; }
HRESULT WritePage(IXpsOMPage*, ISequentialStream*, XPS_DOCUMENT_TYPE) { return E_NOTIMPL; }
HRESULT WriteDictionary(IXpsOMDictionary*, IOpcPartUri*, ISequentialStream*, XPS_DOCUMENT_TYPE) {
    return E_NOTIMPL;
}
HRESULT ListUsedParts(IXpsOMPage*, std::vector<UsedPart>&) { return E_NOTIMPL; }
HRESULT ListUsedParts(IXpsOMDictionary*, std::vector<UsedPart>&) { return E_NOTIMPL; }
bool IsPageChanged(IXpsOMPage*) { return true; }
HRESULT SetPageOwner(IXpsOMPage*, IXpsOMPageReference*) { return E_NOTIMPL; }
HRESULT SetDictionaryOwner(IXpsOMDictionary*, IUnknown*) { return E_NOTIMPL; }

} // namespace OvPlatform
