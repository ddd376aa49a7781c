#include "ObjectModel/CanvasObject.h"

namespace OvPlatform {

namespace {

constexpr const char* edgeMode = "RenderOptions.EdgeMode";
constexpr const char* shortDescription = "AutomationProperties.Name";
constexpr const char* longDescription = "AutomationProperties.HelpText";

} // namespace

HRESULT CanvasObject::GetVisuals(IXpsOMVisualCollection** visuals) {
    return ElementCall([&] {
        RequirePlace(visuals);
        *visuals = &m_visuals;
        m_visuals.AddRef();
    });
}

HRESULT CanvasObject::GetUseAliasedEdgeMode(BOOL* isAliased) {
    return ElementCall([&] { Give(isAliased, BOOL{Attribute(edgeMode).value_or("") == "Aliased"}); });
}
HRESULT CanvasObject::SetUseAliasedEdgeMode(BOOL isAliased) {
    return ElementCall([&] {
        if (isAliased)
            SetAttribute(edgeMode, std::string("Aliased"));
        else
            RemoveAttribute(edgeMode);
    });
}

HRESULT CanvasObject::GetAccessibilityShortDescription(LPWSTR* description) {
    return ElementCall([&] { GiveTaskText(description, Attribute(shortDescription)); });
}
HRESULT CanvasObject::SetAccessibilityShortDescription(LPCWSTR description) {
    return ElementCall([&] { SetText(*this, shortDescription, description); });
}
HRESULT CanvasObject::GetAccessibilityLongDescription(LPWSTR* description) {
    return ElementCall([&] { GiveTaskText(description, Attribute(longDescription)); });
}
HRESULT CanvasObject::SetAccessibilityLongDescription(LPCWSTR description) {
    return ElementCall([&] { SetText(*this, longDescription, description); });
}

HRESULT CanvasObject::GetDictionary(IXpsOMDictionary** dictionary) {
    return GetElementDictionary(*this, dictionary);
}
HRESULT CanvasObject::GetDictionaryLocal(IXpsOMDictionary** dictionary) {
    return GetLocalDictionary(*this, dictionary);
}
HRESULT CanvasObject::SetDictionaryLocal(IXpsOMDictionary* dictionary) {
    return SetLocalValue(*this, "Resources", dictionary);
}
HRESULT CanvasObject::GetDictionaryResource(IXpsOMRemoteDictionaryResource** part) {
    return GetDictionaryPart(*this, part);
}
HRESULT CanvasObject::SetDictionaryResource(IXpsOMRemoteDictionaryResource* part) {
    return SetDictionaryPart(*this, part);
}

HRESULT CanvasObject::Clone(IXpsOMCanvas** canvas) { return OvPlatform::Clone(*this, canvas); }

} // namespace OvPlatform
