#include "Parts/DescribePart.h"

#include "Parts/FixedPagePart.h"
#include "Report/FilterWords.h"

namespace OvPipeline {

std::string DescribePart(IUnknown* part) {
    const auto named = [](const char* kind, auto* object) {
        CComBSTR uri;
        object->GetUri(&uri);
        ThreadPart() = Utf8Argument(uri);
        return std::string(kind) + " " + ThreadPart();
    };
    if (const CComQIPtr<IHostPart> host(part); host) {
        const PartCore& core = host->Core();
        ThreadPart() = core.name;
        return std::string(KindName(core.kind)) + " " + core.name;
    }
    if (const CComQIPtr<IFixedDocument> document(part); document) return named("document", document.p);
    if (const CComQIPtr<IFixedDocumentSequence> sequence(part); sequence)
        return named("document sequence", sequence.p);
    ThreadPart().clear();
    const CComQIPtr<IXpsDocument> package(part);
    return package ? "XPS document" : "part";
}

void NoteReceived(IUnknown* part, Trace& log, const std::shared_ptr<const StreamMaker>& holder) {
    FilterWords::Forget();
    const std::string what = part != nullptr ? DescribePart(part) : "the end of the parts";
    TakenPart() = ThreadPart();
    if (const CComQIPtr<IHostPart> host(part); host) host->Core().holder = holder;
    if (log.IsOn()) log.Step("receives", what);
}

} // namespace OvPipeline
