#include <Encryption/DataEncrypter.h>
#include <LowLevelFacilities/Failures/CPExceptionInvalidArgument.h>

#include <cstdint>
#include <cstdlib>
#include <string>

namespace {

CXString TextOf(const ByteBuffer& bytes) { return bytes.getAsCXStringFromUtf8Buffer(); }

// What somebody sends as a scrambled form is refused, or a text that has a form itself.
void Uncover(const CXString& form, int mode) {
    try {
        const ByteBuffer text = DataEncrypter::DecryptStringWithOrvelSimple1(form, mode);
        if (text.size() > static_cast<std::size_t>(form.GetLength())) std::abort();
    } catch (const CPExceptionInvalidArgument&) {
    }
}

// A text comes back from its form, from no other mode's, and not from a form of which a letter is changed.
void Cover(const CXString& text, int mode, std::size_t place) {
    const ByteBuffer form = DataEncrypter::EncryptStringWithOrvelSimple1(text, mode);
    if (form.empty() != text.IsEmpty()) std::abort();
    ByteBuffer expected;
    expected.appendAsUtf8(text);
    if (DataEncrypter::DecryptStringWithOrvelSimple1(TextOf(form), mode) != expected) std::abort();
    if (form.empty()) return;

    const auto isRefused = [](const ByteBuffer& other, int otherMode) {
        try {
            (void)DataEncrypter::DecryptStringWithOrvelSimple1(TextOf(other), otherMode);
            return false;
        } catch (const CPExceptionInvalidArgument&) {
            return true;
        }
    };
    if (!isRefused(form, mode ^ 1)) std::abort();
    // The last letter before padding has bits that say nothing; a group before it has none.
    ByteBuffer changed = form;
    unsigned char& letter = changed[place % (form.size() - 4)];
    letter = letter == 'A' ? 'B' : 'A';
    if (!isRefused(changed, mode)) std::abort();
    if (!isRefused(ByteBuffer(form.data(), form.size() - 4), mode)) std::abort();
}

} // namespace

// A mode and the place of a change, then the text, as one that is scrambled and as a scrambled one.
extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    if (size < 2) return 0;
    const int mode = data[0] < 128 ? data[0] : data[0] - 256;
    const CXString text = TextOf(ByteBuffer(data + 2, size - 2));
    Uncover(text, mode);
    Cover(text, mode, data[1]);
    return 0;
}
