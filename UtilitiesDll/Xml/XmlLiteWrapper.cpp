#include "Xml/XmlLiteWrapper.h"

#include "LowLevelFacilities/Failures/CPComException.h"
#include "Xml/SaxContentListener.h"
#include "Xml/XmlText.h"

#include <msxml6.h>
#include <objbase.h>

#include <string_view>

/// Where one query stands on its way through the document.
class QueryRun {
public:
    explicit QueryRun(XmlLiteWrapper::Query& query) noexcept : m_query(query) {}

    void StartElement(std::size_t depth, std::wstring_view name, ISAXAttributes* attributes) {
        const auto& steps = m_query.m_steps;
        if (m_matched + 1 != depth || depth > steps.size() || steps[depth - 1].View() != name) return;
        m_matched = depth;
        if (depth != steps.size()) return;
        if (m_query.m_attribute.IsEmpty()) {
            m_isCollecting = true;
        } else {
            TakeAttribute(attributes);
        }
    }
    void Characters(const wchar_t* text, int length) {
        if (m_isCollecting) m_text += CXString(text, length);
    }
    void EndElement(std::size_t depth) {
        if (m_matched != depth) return;
        m_matched = depth - 1;
        if (!m_isCollecting) return;
        m_isCollecting = false;
        m_found.push_back(std::move(m_text));
        m_text.Empty();
    }
    [[nodiscard]] std::vector<CXString> TakeFound() noexcept { return std::move(m_found); }

private:
    void TakeAttribute(ISAXAttributes* attributes) {
        const wchar_t* value = nullptr;
        int length = 0;
        const CXString& name = m_query.m_attribute;
        if (attributes == nullptr) return;
        const HRESULT result = attributes->getValueFromQName(name, name.GetLength(), &value, &length);
        if (result == E_INVALIDARG) return; // there is no such attribute
        ThrowIfFailed(result);
        m_found.emplace_back(value, length);
    }

    XmlLiteWrapper::Query& m_query;
    std::size_t m_matched = 0; // steps of the path that the open elements fit
    bool m_isCollecting = false;
    CXString m_text;
    std::vector<CXString> m_found;
};

namespace {

/// Hands the events to the runs.
class QueryContentHandler final : public SaxContentListener {
public:
    explicit QueryContentHandler(std::vector<QueryRun>& runs) noexcept : m_runs(runs) {}

    HRESULT STDMETHODCALLTYPE startElement(const wchar_t*, int, const wchar_t*, int, const wchar_t* name,
                                           int nameLength, ISAXAttributes* attributes) override {
        ++m_depth;
        return ForEachRun([&](QueryRun& run) {
            run.StartElement(m_depth, {name, static_cast<std::size_t>(nameLength)}, attributes);
        });
    }
    HRESULT STDMETHODCALLTYPE endElement(const wchar_t*, int, const wchar_t*, int, const wchar_t*,
                                         int) override {
        const HRESULT result = ForEachRun([&](QueryRun& run) { run.EndElement(m_depth); });
        --m_depth;
        return result;
    }
    HRESULT STDMETHODCALLTYPE characters(const wchar_t* text, int length) override {
        return ForEachRun([&](QueryRun& run) { run.Characters(text, length); });
    }
    HRESULT STDMETHODCALLTYPE ignorableWhitespace(const wchar_t* text, int length) override {
        return characters(text, length);
    }

private:
    /// No exception may cross the reader.
    template <typename Action>
    HRESULT ForEachRun(Action action) noexcept {
        try {
            for (QueryRun& run : m_runs)
                action(run);
            return S_OK;
        } catch (const CPComException& failure) {
            return failure.GetHresult();
        } catch (...) {
            return E_OUTOFMEMORY;
        }
    }

    std::vector<QueryRun>& m_runs;
    std::size_t m_depth = 0;
};

HRESULT read(const CXString& xml, ISAXContentHandler& handler) {
    CComPtr<ISAXXMLReader> reader;
    HRESULT result = CoCreateInstance(__uuidof(SAXXMLReader60), nullptr, CLSCTX_INPROC_SERVER,
                                      __uuidof(ISAXXMLReader), reinterpret_cast<void**>(&reader));
    if (SUCCEEDED(result)) result = reader->putContentHandler(&handler);
    if (FAILED(result)) return result;
    result = reader->parse(XmlText::toVariant(xml));
    reader->putContentHandler(nullptr);
    return result;
}

} // namespace

const CXString* XmlLiteWrapper::Result::TryGet(int index) const noexcept {
    const bool exists = index >= 0 && static_cast<std::size_t>(index) < m_texts.size();
    return exists ? &m_texts[static_cast<std::size_t>(index)] : nullptr;
}

XmlLiteWrapper::Query::Query(const CXString& path)
    : m_steps(path.Mid(1).Tokenize(L'/')), m_isValid(path.Find(L'/') == 0) {
    if (!m_steps.empty() && m_steps.back().Find(L'@') == 0) {
        m_attribute = m_steps.back().Mid(1);
        m_steps.pop_back();
        m_isValid = m_isValid && !m_attribute.IsEmpty();
    }
    m_isValid = m_isValid && !m_steps.empty();
    for (const CXString& step : m_steps)
        m_isValid = m_isValid && !step.IsEmpty();
}

bool XmlLiteWrapper::LoadXmlStringAsReadOnly(const CXString& xml) {
    m_xml = xml;
    return !m_xml.IsBlank();
}

void XmlLiteWrapper::AttachQuery(Query& query) { m_queries.push_back(&query); }

bool XmlLiteWrapper::RunAttachedQueries() {
    const OperationScope operation("XmlLiteWrapper::RunAttachedQueries");
    std::vector<Query*> queries;
    std::vector<QueryRun> runs;
    for (Query* const query : m_queries) {
        query->m_result.m_texts.clear();
        if (!query->m_isValid) continue;
        queries.push_back(query);
        runs.emplace_back(*query);
    }
    QueryContentHandler handler(runs);
    if (FAILED(read(m_xml, handler))) return false;
    for (std::size_t i = 0; i < queries.size(); ++i)
        queries[i]->m_result.m_texts = runs[i].TakeFound();
    return true;
}
