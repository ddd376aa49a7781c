#pragma once

#include <XpsParts/CSaxHandler.h>
#include <XpsParts/PageRoot.h>

#include <exception>
#include <functional>
#include <string>
#include <string_view>

/// What is put on a page: markup that lies below its content, and above it.
struct StampMarkup {
    std::wstring background = {};
    std::wstring foreground = {};
};

/// Writes a page's markup as it is read, with stamps below and above its content. What it holds does not grow
/// with the page. The text is written as UTF-8; comments go, and what else says the same may be spelled
/// otherwise.
class PageRewriter final : public CSaxHandler {
public:
    /// Called once, when the root is known.
    using Stamper = std::function<StampMarkup(const PageRoot&)>;

    PageRewriter(IPrintWriteStream& output, Stamper stamper);

    /// Throws what an event threw that ended the parse; nothing if none did.
    void ThrowFailure() const;

    HRESULT STDMETHODCALLTYPE endDocument() override;
    HRESULT STDMETHODCALLTYPE startElement(const wchar_t* uri, int uriLength, const wchar_t* localName,
                                           int localNameLength, const wchar_t* qualifiedName,
                                           int qualifiedNameLength, ISAXAttributes* attributes) override;
    HRESULT STDMETHODCALLTYPE endElement(const wchar_t* uri, int uriLength, const wchar_t* localName,
                                         int localNameLength, const wchar_t* qualifiedName,
                                         int qualifiedNameLength) override;
    HRESULT STDMETHODCALLTYPE characters(const wchar_t* text, int length) override;
    HRESULT STDMETHODCALLTYPE ignorableWhitespace(const wchar_t* text, int length) override;
    HRESULT STDMETHODCALLTYPE processingInstruction(const wchar_t* target, int targetLength,
                                                    const wchar_t* data, int dataLength) override;

private:
    template <typename Work>
    HRESULT Event(Work&& work) noexcept;
    void WriteAttributes(ISAXAttributes& attributes);
    void BeginContent(bool isResources);
    void CloseTag();
    void Flush();

    IPrintWriteStream& m_output;
    const Stamper m_stamper;
    StampMarkup m_stamps;
    std::wstring m_text; // not written yet
    int m_depth = 0;
    std::exception_ptr m_failure; // of an event
    bool m_isTagOpen = false;     // its closing bracket is still to come
    bool m_hasBackground = false; // written
};
