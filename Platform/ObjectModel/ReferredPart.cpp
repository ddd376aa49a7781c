#include "ObjectModel/ReferredPart.h"

#include "Xml/XmlPointer.h"
#include "Xml/XmlString.h"

#include <libxml/uri.h>
#include <msopc.h>

namespace OvPlatform {

std::string ResolveReference(const std::string& base, const std::string& reference) {
    const std::string withoutFragment = reference.substr(0, reference.find('#'));
    const XmlPointer<xmlChar> resolved(xmlBuildURI(AsXml(withoutFragment.c_str()), AsXml(base.c_str())));
    if (!resolved || withoutFragment.empty())
        throw PackageError(OPC_E_NONCONFORMING_URI, base,
                           "the reference \"" + reference + "\" cannot be resolved");
    return std::string(View(resolved.get()));
}

const PackagePart* FindReferred(const PackageReader& package, const std::string& base,
                                const std::string& reference) {
    // References are IRIs: what a part's name must encode may stand in them as it is.
    const XmlPointer<xmlChar> escaped(
        xmlURIEscapeStr(AsXml(reference.c_str()), AsXml("/:@!$&'()*+,;=%-._~#?")));
    const std::string resolved =
        ResolveReference(base, escaped ? std::string(View(escaped.get())) : reference);
    if (const PackagePart* part = package.Find(resolved)) return part;
    const XmlPointer<char> plain(xmlURIUnescapeString(resolved.c_str(), 0, nullptr));
    return plain ? package.Find(plain.get()) : nullptr;
}

} // namespace OvPlatform
