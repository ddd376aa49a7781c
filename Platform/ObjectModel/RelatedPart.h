#pragma once

#include "ObjectModel/SourcePackage.h"

#include <memory>
#include <string>

namespace OvPlatform {

/// Where a part of a model stands in the package that it was read from; nowhere for a new one.
struct SourcePlace {
    std::shared_ptr<SourcePackage> package;
    std::string name; // "/" for the package itself

    explicit operator bool() const { return package != nullptr; }
};

/// A part that hangs on another by a relationship of its own kind: looked for in the package when it is first
/// asked for, and replaced at will.
template <class Interface>
class RelatedPart {
public:
    RelatedPart(Relation relation, HRESULT ifTwice) : m_relation(relation), m_ifTwice(ifTwice) {}

    /// Null where there is none. Throws PackageError.
    const CComPtr<Interface>& Get(const SourcePlace& place) const {
        if (!m_isKnown && place)
            if (const PackagePart* part = place.package->Related(place.name, m_relation, m_ifTwice))
                m_part = place.package->template Resource<Interface>(*part);
        m_isKnown = true;
        return m_part;
    }
    void Set(Interface* part) {
        m_part = part;
        m_isKnown = true;
        m_isChanged = true;
    }

    /// The body of a getter, and of a setter, which takes null to mean none.
    HRESULT Give(const SourcePlace& place, Interface** part) {
        return ModelCall(part, [&] {
            *part = CComPtr<Interface>(Get(place)).Detach();
            return S_OK;
        });
    }
    HRESULT Take(Interface* part) {
        return ModelCall([&] {
            if (part != nullptr) static_cast<void>(ModelResource(part));
            Set(part);
            return S_OK;
        });
    }

    Relation Kind() const { return m_relation; }
    bool IsChanged() const { return m_isChanged; }
    /// Once changed.
    Interface* Changed() const { return m_part; }

private:
    Relation m_relation;
    HRESULT m_ifTwice;
    mutable bool m_isKnown = false;
    bool m_isChanged = false;
    mutable CComPtr<Interface> m_part;
};

using RelatedTicket = RelatedPart<IXpsOMPrintTicketResource>;

/// The picture of a page or a package.
class RelatedThumbnail : public RelatedPart<IXpsOMImageResource> {
public:
    using RelatedPart::RelatedPart;

    /// XPS_E_INVALID_THUMBNAIL_IMAGE_TYPE for what is neither JPEG nor PNG.
    HRESULT Take(IXpsOMImageResource* image) {
        XPS_IMAGE_TYPE type = XPS_IMAGE_TYPE_PNG;
        if (image != nullptr)
            if (const HRESULT result = image->GetImageType(&type); FAILED(result)) return result;
        if (type != XPS_IMAGE_TYPE_PNG && type != XPS_IMAGE_TYPE_JPEG)
            return XPS_E_INVALID_THUMBNAIL_IMAGE_TYPE;
        return RelatedPart::Take(image);
    }
};

} // namespace OvPlatform
