#include "Configuration/ElementLine.h"

#include "ComSupport/FailureBarrier.h"
#include "ComSupport/ThrowHresult.h"

#include <Xml/SaxContentListener.h>
#include <Xml/XmlText.h>

#include <atlcomcli.h>

#include <string_view>

namespace {

class LineListener final : public SaxContentListener {
public:
    explicit LineListener(const ElementPlace& place) : m_place(place) {}

    HRESULT STDMETHODCALLTYPE putDocumentLocator(ISAXLocator* locator) override {
        m_locator = locator;
        return S_OK;
    }
    HRESULT STDMETHODCALLTYPE startElement(const wchar_t*, int, const wchar_t*, int, const wchar_t*, int,
                                           ISAXAttributes*) override {
        ++m_depth;
        if (m_depth == childDepth && m_childrenBefore++ == m_place.elementsBefore)
            return m_place.isInner ? NoteAndGoOn() : NoteAndStop();
        return m_depth == childDepth + 1 && IsInPlace() ? NoteAndStop() : S_OK;
    }
    HRESULT STDMETHODCALLTYPE endElement(const wchar_t*, int, const wchar_t*, int, const wchar_t*,
                                         int) override {
        const bool isOver = m_depth == childDepth && IsInPlace();
        --m_depth;
        return isOver ? stop : S_OK;
    }
    HRESULT STDMETHODCALLTYPE characters(const wchar_t* text, int length) override {
        // Text there is what is meant: it would be a fault before any element behind it.
        const bool isText = m_depth == childDepth - 1 && !CXString(text, length).IsBlank();
        return isText ? NoteAndStop() : S_OK;
    }

    [[nodiscard]] int GetLine() const noexcept { return m_line; }

private:
    static constexpr int childDepth = 2;
    static constexpr HRESULT stop = E_ABORT;

    // Between the tags of the element that is meant.
    [[nodiscard]] bool IsInPlace() const noexcept { return m_childrenBefore == m_place.elementsBefore + 1; }
    HRESULT NoteAndGoOn() {
        if (m_locator != nullptr) m_locator->getLineNumber(&m_line);
        return S_OK;
    }
    HRESULT NoteAndStop() {
        NoteAndGoOn();
        return stop;
    }

    ElementPlace m_place;
    ISAXLocator* m_locator = nullptr; // lives as long as the reader
    int m_depth = 0;
    std::size_t m_childrenBefore = 0;
    int m_line = 0;
};

} // namespace

int FindElementLine(const CXString& xml, const ElementPlace& place) {
    const OperationScope operation("FindElementLine");
    LineListener listener(place);
    try {
        CComPtr<ISAXXMLReader> reader;
        ThrowIfFailed(CoCreateInstance(__uuidof(SAXXMLReader60), nullptr, CLSCTX_INPROC_SERVER,
                                       __uuidof(ISAXXMLReader), reinterpret_cast<void**>(&reader)));
        ThrowIfFailed(reader->putContentHandler(&listener));
        const HRESULT hr = reader->parse(XmlText::toVariant(xml));
        reader->putContentHandler(nullptr);
        // It also fails where the listener has stopped it, with the line in hand.
        if (listener.GetLine() == 0) ThrowIfFailed(hr);
    } catch (...) {
        ReportCaughtException();
    }
    return listener.GetLine();
}
