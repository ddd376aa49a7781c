#include "PageRewriter.h"

#include "MarkupText.h"
#include "WriteAll.h"

#include <LowLevelFacilities/Failures/ThrowComException.h>
#include <XpsParts/CWideToUTF8.h>

#include <utf16units.h>

#include <utility>

namespace {

constexpr std::size_t pieceUnits = 32 * 1024;

std::wstring_view View(const wchar_t* text, int length) { return {text, static_cast<std::size_t>(length)}; }

} // namespace

PageRewriter::PageRewriter(IPrintWriteStream& output, Stamper stamper)
    : m_output(output), m_stamper(std::move(stamper)),
      m_text(L"<?xml version=\"1.0\" encoding=\"utf-8\"?>\n") {}

void PageRewriter::ThrowFailure() const {
    if (m_failure) std::rethrow_exception(m_failure);
}

// Nothing may be thrown through the reader of the markup.
template <typename Work>
HRESULT PageRewriter::Event(Work&& work) noexcept {
    try {
        work();
        if (m_text.size() >= pieceUnits) Flush();
        return S_OK;
    } catch (...) {
        m_failure = std::current_exception();
        return E_FAIL;
    }
}

// Half of a surrogate pair waits for its other half.
void PageRewriter::Flush() {
    const bool waits = !m_text.empty() && OvPlatform::Utf16::IsHighSurrogate(m_text.back());
    const std::wstring last(waits ? 1 : 0, waits ? m_text.back() : L'\0');
    if (waits) m_text.pop_back();
    if (!m_text.empty()) {
        CXString text(m_text.c_str(), static_cast<int>(m_text.size()));
        void* bytes = nullptr;
        ULONG count = 0;
        CWideToUTF8 utf8(&text);
        ThrowIfFailed(utf8.GetBuffer(&bytes, &count));
        ThrowIfFailed(WriteAll(m_output, bytes, count));
    }
    m_text = last;
}

void PageRewriter::CloseTag() {
    if (std::exchange(m_isTagOpen, false)) m_text += L'>';
}

// Behind the root's own tag and the page's resources, where there are any.
void PageRewriter::BeginContent(bool isResources) {
    if (m_hasBackground || isResources) return;
    m_hasBackground = true;
    CloseTag();
    m_text += m_stamps.background;
}

void PageRewriter::WriteAttributes(ISAXAttributes& attributes) {
    int count = 0;
    ThrowIfFailed(attributes.getLength(&count));
    for (int index = 0; index < count; ++index) {
        const wchar_t* text = nullptr;
        int length = 0;
        ThrowIfFailed(attributes.getQName(index, &text, &length));
        (m_text += L' ') += View(text, length);
        ThrowIfFailed(attributes.getValue(index, &text, &length));
        m_text += L"=\"";
        AppendEscaped(m_text, View(text, length), true);
        m_text += L'"';
    }
}

HRESULT PageRewriter::startElement(const wchar_t* uri, int uriLength, const wchar_t* localName,
                                   int localNameLength, const wchar_t* qualifiedName, int qualifiedNameLength,
                                   ISAXAttributes* attributes) {
    return Event([&] {
        const std::wstring_view name = View(qualifiedName, qualifiedNameLength);
        if (m_depth == 0)
            m_stamps = m_stamper(
                PageRoot::Of(View(uri, uriLength), View(localName, localNameLength), name, *attributes));
        else if (m_depth == 1)
            BeginContent(View(localName, localNameLength) == L"FixedPage.Resources");
        ++m_depth;
        CloseTag();
        (m_text += L'<') += name;
        WriteAttributes(*attributes);
        m_isTagOpen = true;
    });
}

HRESULT PageRewriter::endElement(const wchar_t*, int, const wchar_t*, int, const wchar_t* qualifiedName,
                                 int qualifiedNameLength) {
    return Event([&] {
        if (--m_depth == 0) {
            BeginContent(false);
            m_text += m_stamps.foreground;
        }
        if (std::exchange(m_isTagOpen, false)) {
            m_text += L"/>";
            return;
        }
        ((m_text += L"</") += View(qualifiedName, qualifiedNameLength)) += L'>';
    });
}

HRESULT PageRewriter::endDocument() {
    return Event([&] { Flush(); });
}

HRESULT PageRewriter::characters(const wchar_t* text, int length) {
    return Event([&] {
        CloseTag();
        AppendEscaped(m_text, View(text, length), false);
    });
}

HRESULT PageRewriter::ignorableWhitespace(const wchar_t* text, int length) {
    return characters(text, length);
}

HRESULT PageRewriter::processingInstruction(const wchar_t* target, int targetLength, const wchar_t* data,
                                            int dataLength) {
    return Event([&] {
        CloseTag();
        ((((m_text += L"<?") += View(target, targetLength)) += L' ') += View(data, dataLength)) += L"?>";
    });
}
