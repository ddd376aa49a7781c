#include <AttributeStore/AttributeBytesIndexedList.h>
#include <AttributeStore/PersistentAttributes.h>
#include <BinaryForms/PackedBytes.h>
#include <LowLevelFacilities/Failures/CPExceptionInvalidArgument.h>

#include <cstdint>
#include <cstdlib>
#include <memory>
#include <span>

namespace {

const AttributeBytesNameSpacesId ours = PersistentAttributes::GetDataModelDocPropNameSpaceId();

class Numbers : public IAttributeBytesDebugDisplayHelper {
public:
    [[nodiscard]] std::unique_ptr<IAttributeBytesDebugDisplayHelper> Clone() const override {
        return std::make_unique<Numbers>(*this);
    }
};

/// All questions of all features, at all levels.
void ask(const AttributeBytesIndexedList& list) {
    unsigned int index = 0;
    for (auto i = list.GetIndexedListIterator(); list.IsValidIndexedListIterator(i);
         list.IncrementIndexedListIterator(i), ++index) {
        const AttributeBytesFeatureId feature = list.GetAttributeBytesPtr(i)->GetFeatureId();
        if (list.GetAttributeBytesPtr(feature) != list.GetAttributeBytesPtr(i)) std::abort();
        bool found[4] = {};
        (void)list.GetOptionValue(feature, &found[0]);
        (void)list.GetIntegerValue(feature, &found[1]);
        (void)list.GetStringValue(feature, &found[2]);
        (void)list.GetDimensionValue(feature, &found[3]);
        if (found[0] + found[1] + found[2] + found[3] > 1) std::abort();
        AttributeBytesIndexedList members;
        AttributeBytesIndexedList sameMembers;
        const bool isCollection = list.GetCollection(feature, members);
        if (isCollection != list.GetCollectionByIndex(index, sameMembers) ||
            members.GetNumberOfAttributeBytes() != sameMembers.GetNumberOfAttributeBytes())
            std::abort();
        if (isCollection) ask(members);
    }
}

/// The store's bytes, once our attributes were asked and set again.
ByteBuffer rewritten(const ByteBuffer& bytes) {
    PersistentAttributes store(bytes, false, nullptr);
    AttributeBytesRawList raw;
    AttributeBytesIndexedList list;
    if (store.GetAttributeBytesListForNameSpace(ours, raw)) {
        list.ImportFromRawList(raw);
        ask(list);
        (void)list.AttributeBytesDump(Numbers());
        raw.ImportFromIndexedList(list);
        AttributeBytesNameSpaces nameSpaces;
        nameSpaces.SetNameSpaceAttributes(ours, raw);
        store.SetAttributeBytesNameSpaces(nameSpaces);
    }
    return store.GetPersistentAttributesState();
}

void read(const ByteBuffer& bytes) {
    try {
        // A content has one form: only a dimension that was not in lowest terms is written otherwise, and
        // then no longer.
        const ByteBuffer once = rewritten(bytes);
        if (!bytes.empty() && once.size() > bytes.size()) std::abort();
        if (once != bytes && rewritten(once) != once) std::abort();
    } catch (const CPExceptionInvalidArgument&) {
        PersistentAttributes tolerant(bytes, true, nullptr);
        AttributeBytesRawList raw;
        tolerant.GetAttributeBytesListForNameSpace(ours, raw);
        if (tolerant.GetDamage().empty()) std::abort();
    }
}

} // namespace

// The input as a store, and as the content of one whose check fits.
extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    read(ByteBuffer(data, size));
    ByteBuffer store = PackedBytes::beginEnvelope("OA");
    store.insert(store.end(), data, data + size);
    PackedBytes::endEnvelope(store);
    read(store);
    return 0;
}
