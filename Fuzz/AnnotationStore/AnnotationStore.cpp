// The input as the text of a store, and as a definition that is added to one. What is taken has one form, and
// can be found and read again.

#include <AnnotationStore/AnnotationStore.h>
#include <LowLevelFacilities/Failures/CPExceptionInvalidArgument.h>

#include <cstdint>
#include <cstdlib>
#include <string>

namespace {

void Check(const AnnotationStore& store) {
    const CPString xml = store.GetAnnotationStoreXml();
    const AnnotationStore again(CPString(xml), true);
    if (again.GetAnnotationStoreXml().view() != xml.view()) std::abort();
    const XmlDomNode::Pointer node = again.GetAnnotationDefinitionByNameAsXmlDomNode(L"a");
    if (static_cast<bool>(node) == again.GetAnnotationDefinitionByName(L"a").isEmpty()) std::abort();
}

void Read(const std::string& text) {
    Check(AnnotationStore(CPString(text.c_str()), false));
    AnnotationStore store;
    try {
        store.AddOrReplaceAnnotationDefinition(L"a", text.c_str());
    } catch (const CPExceptionInvalidArgument&) {
        return;
    }
    Check(store);
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    Read(std::string(reinterpret_cast<const char*>(data), size));
    return 0;
}
