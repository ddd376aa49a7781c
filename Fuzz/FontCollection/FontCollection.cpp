// A font, whose length is in the first two bytes, and the rest as the collection that it is looked for in.
// The member that is found has the font's number, and none before it has. Members can be taken out, and are
// then read again as they were.

#include <Fonts/FontTables.h>
#include <FontsAndImages/GdiDeviceContext.h>

#include <algorithm>
#include <cstdint>
#include <cstdlib>
#include <span>

namespace {

using OvPlatform::FontTables;

struct DeviceContext : GdiDeviceContext {
    using GdiDeviceContext::GetUniqueNumberRepresentingATrueTypeFont;
};

ULONG Number(ByteBuffer bytes, ULONG offset) {
    return DeviceContext().GetUniqueNumberRepresentingATrueTypeFont(bytes.data(), offset, bytes.getDword());
}

ULONG MemberOffset(const ByteBuffer& collection, std::size_t index) {
    if (12 + 4 * index + 4 > collection.size()) std::abort();
    ULONG offset = 0;
    for (std::size_t byte = 0; byte < 4; ++byte)
        offset = offset << 8 | collection[12 + 4 * index + byte];
    return offset;
}

void Search(const ByteBuffer& font, const ByteBuffer& collection) {
    const auto index = DeviceContext().FindIndexOfTrueTypeFontWithinSourceCollection(font, collection);
    if (index == 0xFFFF) return;
    const ULONG wanted = Number(font, 0);
    if (wanted == 0 || Number(collection, MemberOffset(collection, index)) != wanted) std::abort();
    for (std::size_t before = 0; before < index; ++before)
        if (Number(collection, MemberOffset(collection, before)) == wanted) std::abort();
}

void TakeOut(std::span<const std::byte> file, std::uint32_t index) {
    const auto tables = FontTables::Read(file, index);
    if (!tables) return;
    const auto own = tables->FileOfItsOwn();
    if (own.empty()) return;
    const auto again = FontTables::Read(own, 0);
    if (!again || again->FileOfItsOwn() != own) std::abort();
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    if (size < 2) return 0;
    const std::size_t length = std::min<std::size_t>(data[0] << 8 | data[1], size - 2);
    const ByteBuffer font(data + 2, length);
    const ByteBuffer collection(data + 2 + length, size - 2 - length);
    Search(font, collection);
    for (std::uint32_t index = 0; index < 4; ++index)
        TakeOut(std::as_bytes(std::span(collection)), index);
    return 0;
}
