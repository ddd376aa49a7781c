#pragma once

#include "LowLevelFacilities/UtilitiesExport.h"
#include "LowLevelFacilities/WideStrings/CXString.h"

#include <vector>

/// Reads an XML text once, without making a document of it, and answers all attached queries on the way.
/// Belongs to one thread, which must be in a COM apartment.
class OV_UTILITIES_API XmlLiteWrapper {
public:
    /// The texts that a query found, in document order.
    class OV_UTILITIES_API Result {
    public:
        /// Null if there are not that many. Valid until the queries run again.
        [[nodiscard]] const CXString* TryGet(int index) const noexcept;
        [[nodiscard]] int GetCount() const noexcept { return static_cast<int>(m_texts.size()); }

    private:
        friend class XmlLiteWrapper;
        std::vector<CXString> m_texts;
    };

    /// A path of element names from the root on, such as "/settings/tray/name": the text of each such element
    /// with all below it. A last step "@name" asks for that attribute instead. Names are compared with their
    /// prefixes. A path that does not begin with a slash, or has an empty step, finds nothing.
    class OV_UTILITIES_API Query {
    public:
        explicit Query(const CXString& path);
        [[nodiscard]] const Result& GetResult() const noexcept { return m_result; }

    private:
        friend class XmlLiteWrapper;
        friend class QueryRun;
        std::vector<CXString> m_steps;
        CXString m_attribute; // empty if the query asks for elements
        bool m_isValid;
        Result m_result;
    };

    /// Keeps the text. False if it is blank.
    bool LoadXmlStringAsReadOnly(const CXString& xml);
    /// The query must outlive the wrapper's last run.
    void AttachQuery(Query& query);
    /// Answers all attached queries anew. False, with all results empty, if the text is not well formed or
    /// the platform cannot read it.
    bool RunAttachedQueries();

private:
    CXString m_xml;
    std::vector<Query*> m_queries;
};
