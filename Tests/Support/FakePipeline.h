#pragma once

// The pipeline around one filter: what it reads from, writes to, and is told.

#include "Support/FakeParts.h"

#include <filterpipeline.h>

#include <functional>
#include <map>
#include <string>
#include <vector>

/// What happened, in order, each as a word.
using Journal = std::vector<std::string>;

class FakePropertyBag : public ComFake<IPrintPipelinePropertyBag> {
public:
    std::vector<std::wstring> reads; // the names that were asked for, in order
    std::map<std::wstring, HRESULT> failures;

    void SetString(const wchar_t* name, const wchar_t* text) { m_values[name] = CComVariant(text); }
    void SetHandle(const wchar_t* name, void* handle) {
        VARIANT& value = m_values[name];
        value.vt = VT_BYREF;
        value.byref = handle;
    }
    void SetNumber(const wchar_t* name, ULONG number) {
        CComVariant value;
        value.vt = VT_UI4;
        value.ulVal = number;
        m_values[name] = value;
    }
    void SetObject(const wchar_t* name, IUnknown* object) { m_values[name] = CComVariant(object); }

    HRESULT STDMETHODCALLTYPE AddProperty(PCWSTR, const VARIANT*) override { return E_NOTIMPL; }
    HRESULT STDMETHODCALLTYPE GetProperty(PCWSTR name, VARIANT* value) override {
        reads.emplace_back(name);
        if (const auto failure = failures.find(name); failure != failures.end()) return failure->second;
        const auto found = m_values.find(name);
        if (found == m_values.end()) return E_ELEMENT_NOT_FOUND;
        if (found->second.vt != VT_BYREF) return VariantCopy(value, &found->second);
        *value = found->second; // a bare reference is no type that VariantCopy knows
        return S_OK;
    }
    BOOL STDMETHODCALLTYPE DeleteProperty(PCWSTR) override { return FALSE; }

private:
    std::map<std::wstring, CComVariant> m_values;
};

/// Hands out the parts in order, then none. The hook runs ahead of each part, with its index.
class FakeXpsProvider : public ComFake<IXpsDocumentProvider> {
public:
    std::vector<CComPtr<IUnknown>> parts;
    std::function<void(std::size_t)> beforePart;
    std::size_t failAt = static_cast<std::size_t>(-1);
    HRESULT failure = E_FAIL;
    std::size_t asked = 0;

    HRESULT STDMETHODCALLTYPE GetXpsPart(IUnknown** part) override {
        const std::size_t index = asked++;
        *part = nullptr;
        if (beforePart) beforePart(index);
        if (index == failAt) return failure;
        return index < parts.size() ? parts[index].CopyTo(part) : S_OK;
    }
};

/// Writes down what it is sent.
class FakeXpsConsumer : public ComFake<IXpsDocumentConsumer> {
public:
    Journal journal;
    HRESULT sendResult = S_OK;
    HRESULT sendUnknownResult = S_OK;
    std::vector<CComPtr<MemoryWriteStream>> newStreams;
    std::vector<std::wstring> newUris;

    HRESULT STDMETHODCALLTYPE SendXpsUnknown(IUnknown*) override {
        journal.push_back("unknown");
        return sendUnknownResult;
    }
    HRESULT STDMETHODCALLTYPE SendXpsDocument(IXpsDocument*) override { return Note("document"); }
    HRESULT STDMETHODCALLTYPE SendFixedDocumentSequence(IFixedDocumentSequence*) override {
        return Note("sequence");
    }
    HRESULT STDMETHODCALLTYPE SendFixedDocument(IFixedDocument*) override { return Note("fixed document"); }
    HRESULT STDMETHODCALLTYPE SendFixedPage(IFixedPage*) override { return Note("page"); }
    HRESULT STDMETHODCALLTYPE CloseSender() override { return Note("close"); }
    /// Makes image parts, whatever is asked for, unless it is a ticket.
    HRESULT STDMETHODCALLTYPE GetNewEmptyPart(PCWSTR uri, REFIID riid, void** part,
                                              IPrintWriteStream** stream) override {
        newUris.emplace_back(uri);
        newStreams.push_back(MakeFake<MemoryWriteStream>());
        if (riid == __uuidof(IPartPrintTicket))
            *part = CComPtr<IPartPrintTicket>(new FakePrintTicketPart(uri)).Detach();
        else
            *part = CComPtr<IPartImage>(new FakeImagePart(uri)).Detach();
        CComPtr<IPrintWriteStream> opened(newStreams.back());
        return opened.CopyTo(stream);
    }

private:
    HRESULT Note(const char* what) {
        journal.push_back(what);
        return sendResult;
    }
};

/// Connects a filter with whatever the test gives it.
class FakeCommunicator : public ComFake<IInterFilterCommunicator> {
public:
    FakeCommunicator(IUnknown* reader, IUnknown* writer) : reader(reader), writer(writer) {}

    CComPtr<IUnknown> reader;
    CComPtr<IUnknown> writer;
    HRESULT readerResult = S_OK;
    HRESULT writerResult = S_OK;
    Journal journal;

    HRESULT STDMETHODCALLTYPE RequestReader(void** out) override {
        journal.push_back("reader");
        return FAILED(readerResult) ? readerResult : reader.CopyTo(reinterpret_cast<IUnknown**>(out));
    }
    HRESULT STDMETHODCALLTYPE RequestWriter(void** out) override {
        journal.push_back("writer");
        return FAILED(writerResult) ? writerResult : writer.CopyTo(reinterpret_cast<IUnknown**>(out));
    }
};

class FakeManagerControl : public ComFake<IPrintPipelineManagerControl> {
public:
    std::vector<HRESULT> shutdowns;

    HRESULT STDMETHODCALLTYPE RequestShutdown(HRESULT reason, IImgErrorInfo*) override {
        shutdowns.push_back(reason);
        return S_OK;
    }
    HRESULT STDMETHODCALLTYPE FilterFinished() override { return S_OK; }
};
