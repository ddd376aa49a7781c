#pragma once

#include "LowLevelFacilities/Strings/CPString.h"
#include "LowLevelFacilities/WideStrings/CXString.h"
#include "Xml/XmlDomDocument.h"
#include "Xml/XmlOutputCallback.h"

#include <cstddef>

/// Parses XML into a document and writes it out again. One parser holds one document at a time and belongs to
/// one thread, which must be in a COM apartment. Failures are thrown as CPComException; that of malformed XML
/// says what is wrong and where, and leaves the document empty.
class OrvelXmlParser {
public:
    virtual ~OrvelXmlParser() = default;

    /// From text, whatever encoding it declares.
    virtual void parse(const CPString& xml) = 0;
    virtual void parse(const CXString& xml) = 0;
    /// From bytes in the encoding that they declare.
    virtual void parse(const unsigned char* bytes, std::size_t length) = 0;
    virtual void parseThisFile(const CXString& path) = 0;

    [[nodiscard]] virtual const XmlDomDocument& getDocument() const = 0;
    /// Without withDeclaration the XML declaration is left out, also if the document has one.
    virtual void convertToXmlStream(XmlOutputCallback& output, bool withDeclaration) const = 0;
    virtual void SaveXmlToFile(const CXString& path) const = 0;
};
