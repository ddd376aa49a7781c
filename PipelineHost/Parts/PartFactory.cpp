#include "Parts/PartFactory.h"

#include "Parts/FontPart.h"
#include "Streams/PackageContent.h"
#include "Streams/PrintWriteStream.h"

#include <msopc.h>

namespace OvPipeline {

namespace {

bool IsPartName(const std::string& name) {
    return name.size() > 1 && name.front() == '/' && name.back() != '/' &&
           name.find("//") == std::string::npos && name.find('\\') == std::string::npos &&
           name.find("/./") == std::string::npos && name.find("/../") == std::string::npos;
}

template <class Object, class Interface>
void Hand(Object* object, void** part) {
    *part = static_cast<Interface*>(object);
}

} // namespace

PartCore PartCore::Of(const SharedContext& context, const OvPlatform::PackagePart& part, PartKind kind) {
    PartCore core;
    core.context = context;
    core.kind = kind;
    core.name = part.name;
    core.contentType = part.contentType;
    core.content = std::make_shared<PackageContent>(context->package, part);
    core.compression = static_cast<EXpsCompressionOptions>(part.compression);
    core.stored = &part;
    return core;
}

CComPtr<IUnknown> MakeStoredPart(const SharedContext& context, const OvPlatform::PackagePart& part,
                                 bool isThumbnail) {
    const PartKind kind = KindOf(part.contentType, part.name);
    PartCore core = PartCore::Of(context, part, kind);
    CComPtr<IUnknown> object;
    if (isThumbnail)
        object.Attach(static_cast<IPartThumbnail*>(new ThumbnailPart(std::move(core))));
    else if (kind == PartKind::Font)
        object.Attach(static_cast<IPartFont2*>(new FontPart(std::move(core))));
    else if (kind == PartKind::Image)
        object.Attach(static_cast<IPartImage*>(new ImagePart(std::move(core))));
    else if (kind == PartKind::ColorProfile)
        object.Attach(static_cast<IPartColorProfile*>(new ColorProfilePart(std::move(core))));
    else if (kind == PartKind::ResourceDictionary)
        object.Attach(static_cast<IPartResourceDictionary*>(new ResourceDictionaryPart(std::move(core))));
    else if (kind == PartKind::PrintTicket)
        object.Attach(static_cast<IPartPrintTicket*>(new PrintTicketPart(std::move(core))));
    else
        object.Attach(static_cast<IPartBase*>(new UnknownPart(std::move(core))));
    return object;
}

HRESULT MakeNewPart(const SharedContext& context, const std::string& name, REFIID riid, void** part,
                    IPrintWriteStream** stream, const std::shared_ptr<const StreamMaker>& maker) {
    if (!IsPartName(name)) throw HostError(E_INVALIDARG, name, "\"" + name + "\" is not the name of a part");
    const auto content = std::make_shared<SpooledContent>(name, context->job, maker);
    const auto core = [&](PartKind kind) {
        PartCore c;
        c.context = context;
        c.kind = kind;
        c.name = name;
        c.contentType = DefaultContentType(kind, name);
        c.content = content;
        c.holder = maker;
        return c;
    };
    if (riid == __uuidof(IFixedDocument)) {
        *part = static_cast<IFixedDocument*>(new FixedDocumentPart(context, name, {}));
        return S_OK;
    }
    CComPtr<IPrintWriteStream> writer;
    writer.Attach(new PrintWriteStream(content->Bytes()));
    if (riid == __uuidof(IFixedPage))
        *part =
            static_cast<IFixedPage*>(new FixedPagePart(core(PartKind::Page), {}, {name, {}, {}, {}}, {}, {}));
    else if (riid == __uuidof(IPartImage))
        *part = static_cast<IPartImage*>(new ImagePart(core(PartKind::Image)));
    else if (riid == __uuidof(IPartThumbnail))
        *part = static_cast<IPartThumbnail*>(new ThumbnailPart(core(PartKind::Image)));
    else if (riid == __uuidof(IPartFont) || riid == __uuidof(IPartFont2))
        *part = static_cast<IPartFont2*>(new FontPart(core(PartKind::Font)));
    else if (riid == __uuidof(IPartPrintTicket))
        *part = static_cast<IPartPrintTicket*>(new PrintTicketPart(core(PartKind::PrintTicket)));
    else if (riid == __uuidof(IPartColorProfile))
        *part = static_cast<IPartColorProfile*>(new ColorProfilePart(core(PartKind::ColorProfile)));
    else
        return E_NOINTERFACE;
    *stream = writer.Detach();
    return S_OK;
}

} // namespace OvPipeline
